// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

class QProgressDialog;
class QWidget;

/** Shows that something takes its time, and lets the user stop it. */
class VelProgress
{
public:
    VelProgress() = default;
    virtual ~VelProgress() = default;
    Q_DISABLE_COPY_MOVE(VelProgress)

    /**
     * Shows that so many thousandths are done, and lets what happens meanwhile happen: the window may be gone afterwards.
     * False when the user wants no more of it.
     */
    virtual bool show(int done) = 0;

    /** Makes one with the text that says what is going on. */
    using Maker = std::function<std::unique_ptr<VelProgress>(const QString &)>;
};

/** A dialog that comes when it takes longer than a moment. It keeps the user from the window, not from others. */
class VelProgressDialog : public VelProgress
{
public:
    /** @p parent may go while this lives. */
    VelProgressDialog(const QString &text, QWidget *parent);
    ~VelProgressDialog() override;

    bool show(int done) override;

private:
    QPointer<QProgressDialog> m_dialog;
};
