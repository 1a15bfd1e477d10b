// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wfileedit.h"

#include <KUrlRequester>

#include <QDir>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>

WFileEdit::WFileEdit(Kind kind, QWidget *parent)
    : QWidget(parent)
    , m_kind(kind)
    , m_requester(new KUrlRequester(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_requester);
    m_requester->setMode(KFile::File | KFile::LocalOnly);
    if (kind == Kind::SaveFile)
        m_requester->setAcceptMode(QFileDialog::AcceptSave);
    if (m_requester->button()->icon().pixmap(16).isNull()) // the desktop has no icons
        m_requester->button()->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    setFocusProxy(m_requester);
    connect(m_requester, &KUrlRequester::textChanged, this, &WFileEdit::urlChanged);
}

QUrl WFileEdit::getUrl() const
{
    return fromText(m_requester->text(), m_kind);
}

void WFileEdit::setUrl(const QUrl &url)
{
    m_requester->setText(toText(url));
}

QUrl WFileEdit::fromText(const QString &text, Kind kind)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return {};
    if (trimmed.contains(QLatin1String("://")))
        return QUrl(trimmed);
    if (trimmed.startsWith(QLatin1String("~/")))
        return QUrl::fromLocalFile(QDir::home().absoluteFilePath(trimmed.mid(2)));
    if (kind == Kind::Command)
        return QUrl::fromLocalFile(trimmed);
    return QUrl::fromLocalFile(QDir::home().absoluteFilePath(trimmed));
}

QString WFileEdit::toText(const QUrl &url)
{
    return url.isLocalFile() ? url.toLocalFile() : url.toString(QUrl::RemovePassword);
}
