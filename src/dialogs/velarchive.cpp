// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velarchive.h"

#include "dialogs/veldialogsize.h"
#include "hub/velapp.h"
#include "widgets/wdatetimewidget.h"

#include <KLocalizedString>
#include <KUrlRequester>

#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

namespace
{
QString sizeName()
{
    return QStringLiteral("Archive");
}
} // namespace

VelArchive::VelArchive(Count count, QDate date, const QUrl &url, QWidget *parent)
    : QDialog(parent)
    , m_countEntries(std::move(count))
    , m_date(new WDateTimeWidget(WDateTimeWidget::Kind::Date, this))
    , m_file(new KUrlRequester(this))
    , m_countLabel(new QLabel(this))
{
    setWindowTitle(i18nc("@title:window", "Archive Old Entries"));
    if (const VelApp *app = VelApp::getApp(parent))
        m_date->setClock([app] { return app->now().date(); });
    m_date->setDate(date);
    m_date->setWhatsThis(
        i18n("Entries that ended before this day are archived: events by their end, tasks by the "
             "day they were due, recurring ones by their last occurrence. What recurs without an "
             "end is never archived."));
    m_file->setMode(KFile::File);
    m_file->setMimeTypeFilters({QStringLiteral("application/x-delmasttime-calendar")});
    // A bare name means a file beside the last one.
    m_file->setStartDir(url.isEmpty() ? QUrl::fromLocalFile(QDir::homePath())
                                      : url.adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash));
    m_file->setUrl(url);
    m_file->setPlaceholderText(i18n("Calendar file"));
    m_file->setWhatsThis(
        i18n("The calendar file that the entries are moved to. They are added to those it holds "
             "already; a file that is not there yet is made."));
    m_file->button()->setToolTip(i18n("Choose the archive file"));
    buildLayout();
    connect(m_date, &WDateTimeWidget::dateChanged, this, &VelArchive::slotDateChanged);
    connect(m_file, &KUrlRequester::textChanged, this, &VelArchive::updateOk);
    slotDateChanged();
    constexpr int characters = 60; // room for a path
    VelDialogSize::restore(*this, sizeName(),
                           sizeHint().expandedTo({fontMetrics().averageCharWidth() * characters, 0}));
}

VelArchive::~VelArchive()
{
    VelDialogSize::save(*this, sizeName());
}

void VelArchive::buildLayout()
{
    auto *form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    auto *dateLabel = new QLabel(i18n("Archive entries that ended &before:"), this);
    dateLabel->setBuddy(m_date->getBuddy());
    form->addRow(dateLabel, m_date);
    form->addRow(i18n("Archive &file:"), m_file);
    auto *box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = box->button(QDialogButtonBox::Ok);
    m_ok->setDefault(true);
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);

    m_countLabel->setTextFormat(Qt::PlainText);
    m_countLabel->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_countLabel);
    layout->addStretch();
    layout->addWidget(box);
}

QDate VelArchive::getDate() const
{
    return m_date->getDate();
}

QUrl VelArchive::getURL() const
{
    return m_file->text().trimmed().isEmpty() ? QUrl() : m_file->url();
}

void VelArchive::accept()
{
    if (!m_date->finishInput())
        m_date->focusProblem();
    else if (m_ok->isEnabled())
        QDialog::accept();
}

void VelArchive::slotDateChanged()
{
    m_count = m_countEntries(getDate());
    m_countLabel->setText(m_count == 0 ? i18n("No entry ended before that day.")
                                       : i18np("One entry will be moved to the archive.",
                                               "%1 entries will be moved to the archive.", m_count));
    updateOk();
}

void VelArchive::updateOk()
{
    m_ok->setEnabled(!getURL().fileName().isEmpty());
}
