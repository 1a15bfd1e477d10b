// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velprintdialogs.h"

#include "app/velfilechooser.h"
#include "app/velprintpreview.h"
#include "document/velmessages.h"
#include "hub/velprintout.h"
#include "views/velprintpages.h"

#include <KLocalizedString>

#include <QFile>
#include <QPainter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QTimer>

namespace
{
/** So many pages are there at once. */
constexpr int PagesWithoutProgress = 50;
/** Millimetres; what all printers can do, and room to file the sheet. */
constexpr QMarginsF Margins(15, 12, 12, 12);

/** Shows how far it is, when it is far, and lets the user put an end to it. */
class PrintProgress
{
public:
    explicit PrintProgress(QWidget *parent)
        : m_parent(parent)
    {
    }

    bool operator()(int done, int total)
    {
        if (total <= PagesWithoutProgress)
            return true;
        if (!m_dialog) {
            m_dialog =
                std::make_unique<QProgressDialog>(i18n("Printing..."), i18n("Cancel"), 0, total, m_parent);
            m_dialog->setWindowModality(Qt::WindowModal);
            m_dialog->setMinimumDuration(500);
        }
        m_dialog->setValue(done);
        return !m_dialog->wasCanceled();
    }

private:
    QWidget *m_parent;
    std::unique_ptr<QProgressDialog> m_dialog;
};
} // namespace

VelPrintDialogs::VelPrintDialogs(Context context)
    : m_context(std::move(context))
{
}

VelPrintDialogs::~VelPrintDialogs() = default;

void VelPrintDialogs::preparePrinter(const VelPrintout &printout)
{
    if (!m_printer) {
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        m_printer->setPageMargins(Margins, QPageLayout::Millimeter);
    }
    m_printer->setDocName(printout.title());
    // The file and the pages of the last printout say nothing about this one.
    m_printer->setOutputFileName(QString());
    m_printer->setPrintRange(QPrinter::AllPages);
    m_printer->setFromTo(0, 0);
}

bool VelPrintDialogs::printPages(VelPrintout &printout, QPrinter &printer, QWidget *parent) const
{
    QPainter painter;
    if (!painter.begin(&printer)) {
        m_context.messages.error(i18n("Cannot print. Please check the printer or the file."));
        return true;
    }
    VelPrintPages pages(printout, m_context.now());
    PrintProgress progress(parent);
    return pages.print(painter, printer, std::ref(progress));
}

void VelPrintDialogs::print(VelPrintout &printout, VelPrintPreview &preview)
{
    QPrintDialog dialog(m_printer.get(), &preview);
    if (dialog.exec() != QDialog::Accepted)
        return;
    printPages(printout, *m_printer, &preview);
    preview.accept();
}

void VelPrintDialogs::savePdf(VelPrintout &printout, VelPrintPreview &preview) const
{
    const QUrl url =
        m_context.files.getSaveUrl(i18n("Save as PDF"), QStringLiteral("*.pdf|") + i18n("PDF files"));
    if (url.isEmpty())
        return;
    if (!url.isLocalFile()) {
        m_context.messages.error(i18n("Cannot write to the file."));
        return;
    }
    QString path = url.toLocalFile();
    if (!path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
        path += QLatin1String(".pdf");
    if (QFile::exists(path)
        && m_context.messages.questionYesNo(i18n("Do you want to overwrite existing file?"),
                                            i18n("File exists"))
            != VelMessages::Answer::Yes)
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    printer.setDocName(printout.title());
    printer.setPageLayout(m_printer->pageLayout());
    // Half a file is of no use to anybody.
    if (printPages(printout, printer, &preview))
        preview.accept();
    else
        QFile::remove(path);
}

void VelPrintDialogs::printOut(VelPrintout &printout)
{
    preparePrinter(printout);
    auto *preview = new VelPrintPreview(*m_printer, printout.title(), m_context.parent);
    // It goes with the window when that is closed meanwhile.
    const QPointer<VelPrintPreview> alive(preview);
    QObject::connect(preview, &VelPrintPreview::paintRequested, preview, [&, preview](QPrinter *printer) {
        if (!printPages(printout, *printer, preview))
            QTimer::singleShot(0, preview, &QDialog::reject);
    });
    QObject::connect(preview, &VelPrintPreview::printWanted, preview,
                     [&, preview] { print(printout, *preview); });
    QObject::connect(preview, &VelPrintPreview::pdfWanted, preview,
                     [&, preview] { savePdf(printout, *preview); });
    preview->exec();
    delete alive.data();
}
