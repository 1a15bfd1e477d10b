// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velprintpreview.h"

#include "hub/velapp.h"

#include <KLocalizedString>

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPageSetupDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{
/** Of the screen's height and width. */
constexpr qreal ScreenShare = 0.8;
} // namespace

VelPrintPreview::VelPrintPreview(QPrinter &printer, const QString &title, QWidget *parent)
    : QDialog(parent)
    , m_printer(printer)
    , m_preview(new QPrintPreviewWidget(&printer, this))
    , m_pageLabel(new QLabel(this))
{
    setWindowTitle(i18nc("@title:window", "Print Preview: %1", title));
    auto *layout = new QVBoxLayout(this);
    auto *row = new QHBoxLayout;
    addViewButtons(row);
    row->addStretch();
    addPaperButtons(row);
    layout->addLayout(row);
    layout->addWidget(m_preview, 1);
    layout->addWidget(makeButtonBox());
    connect(m_preview, &QPrintPreviewWidget::paintRequested, this, &VelPrintPreview::paintRequested);
    connect(m_preview, &QPrintPreviewWidget::previewChanged, this, &VelPrintPreview::updatePageLabel);
    m_preview->fitInView();
    resize((QSizeF(screen()->availableSize()) * ScreenShare).toSize().expandedTo(sizeHint()));
}

void VelPrintPreview::addButton(QBoxLayout *row, const char *icon, const QString &text,
                                const QKeySequence &shortcut, void (VelPrintPreview::*slot)())
{
    auto *button = new QToolButton(this);
    auto *action = new QAction(VelApp::getIcon(QLatin1String(icon)), text, button);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, slot);
    button->setDefaultAction(action);
    button->setAutoRaise(true);
    row->addWidget(button);
}

void VelPrintPreview::addViewButtons(QBoxLayout *row)
{
    addButton(row, "go-previous", i18n("Previous Page"), Qt::Key_PageUp, &VelPrintPreview::slotPrevious);
    row->addWidget(m_pageLabel);
    addButton(row, "go-next", i18n("Next Page"), Qt::Key_PageDown, &VelPrintPreview::slotNext);
    addButton(row, "zoom-out", i18n("Zoom Out"), QKeySequence::ZoomOut, &VelPrintPreview::slotZoomOut);
    addButton(row, "zoom-in", i18n("Zoom In"), QKeySequence::ZoomIn, &VelPrintPreview::slotZoomIn);
    addButton(row, "page-zoom", i18n("Whole Page"), {}, &VelPrintPreview::slotWholePage);
    addButton(row, "zoom-fit-width", i18n("Full Width"), {}, &VelPrintPreview::slotFullWidth);
}

void VelPrintPreview::addPaperButtons(QBoxLayout *row)
{
    auto *orientation = new QComboBox(this);
    orientation->addItems(
        {i18nc("orientation of paper", "Portrait"), i18nc("orientation of paper", "Landscape")});
    orientation->setCurrentIndex(m_printer.pageLayout().orientation());
    orientation->setAccessibleName(i18n("Orientation"));
    connect(orientation, QOverload<int>::of(&QComboBox::activated), this, &VelPrintPreview::slotOrientation);
    // The dialog of the paper offers it, too.
    connect(m_preview, &QPrintPreviewWidget::previewChanged, orientation,
            [this, orientation] { orientation->setCurrentIndex(m_printer.pageLayout().orientation()); });
    row->addWidget(orientation);
    auto *paper = new QPushButton(i18n("Paper..."), this);
    paper->setAutoDefault(false);
    connect(paper, &QPushButton::clicked, this, &VelPrintPreview::slotPaper);
    row->addWidget(paper);
}

QDialogButtonBox *VelPrintPreview::makeButtonBox()
{
    auto *box = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *pdf = box->addButton(i18n("Save as PDF..."), QDialogButtonBox::ActionRole);
    pdf->setObjectName(QStringLiteral("pdf"));
    connect(pdf, &QPushButton::clicked, this, &VelPrintPreview::pdfWanted);
    QPushButton *print = box->addButton(i18n("Print..."), QDialogButtonBox::ActionRole);
    print->setIcon(VelApp::getIcon(QStringLiteral("fileprint")));
    print->setDefault(true);
    connect(print, &QPushButton::clicked, this, &VelPrintPreview::printWanted);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return box;
}

void VelPrintPreview::goToPage(int page)
{
    m_preview->setCurrentPage(qBound(1, page, m_preview->pageCount()));
}

void VelPrintPreview::slotPrevious()
{
    goToPage(m_preview->currentPage() - 1);
}

void VelPrintPreview::slotNext()
{
    goToPage(m_preview->currentPage() + 1);
}

void VelPrintPreview::slotZoomIn()
{
    m_preview->zoomIn();
}

void VelPrintPreview::slotZoomOut()
{
    m_preview->zoomOut();
}

void VelPrintPreview::slotWholePage()
{
    m_preview->fitInView();
}

void VelPrintPreview::slotFullWidth()
{
    m_preview->fitToWidth();
}

void VelPrintPreview::slotPaper()
{
    QPageSetupDialog dialog(&m_printer, this);
    if (dialog.exec() == QDialog::Accepted)
        m_preview->updatePreview();
}

void VelPrintPreview::slotOrientation(int index)
{
    m_printer.setPageOrientation(static_cast<QPageLayout::Orientation>(index));
    m_preview->updatePreview();
}

void VelPrintPreview::updatePageLabel()
{
    m_pageLabel->setText(i18n("Page %1 of %2", m_preview->currentPage(), m_preview->pageCount()));
}
