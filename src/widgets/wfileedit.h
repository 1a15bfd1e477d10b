// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QUrl>
#include <QWidget>

class KUrlRequester;

/**
 * The input of a file, typed or chosen in a dialog. Local files are shown as plain paths.
 */
class WFileEdit : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QUrl url READ getUrl WRITE setUrl NOTIFY urlChanged USER true)
public:
    enum class Kind {
        OpenFile, ///< one that is there
        SaveFile, ///< one that may be there
        Command, ///< a program with its arguments; without a folder it is searched for where programs are
    };

    explicit WFileEdit(Kind kind, QWidget *parent = nullptr);

    /** Empty when nothing is entered. */
    [[nodiscard]] QUrl getUrl() const;
    void setUrl(const QUrl &url);

    /** What @p text means: a URL, or a path, which may begin at the home folder ("~/" or without a folder). */
    [[nodiscard]] static QUrl fromText(const QString &text, Kind kind);
    [[nodiscard]] static QString toText(const QUrl &url);

Q_SIGNALS:
    void urlChanged();

private:
    Kind m_kind;
    KUrlRequester *m_requester;
};
