// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velprintdialogs.h"

#include "app/velfilechooser.h"
#include "app/velprintpreview.h"
#include "document/velmessages.h"
#include "hub/velprintout.h"

#include <KLocalizedString>

#include <QFile>
#include <QGuiApplication>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QSaveFile>
#include <QTimer>

#include <optional>

using Result = VelPrintPages::Result;

namespace
{
/** So many pages are there at once. */
constexpr int PagesWithoutProgress = 50;
/** Millimetres; what all printers can do, and room to file the sheet. */
constexpr QMarginsF Margins(15, 12, 12, 12);

/** Tells that there is something to wait for. */
class BusyCursor
{
public:
    BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(BusyCursor)
};

/** Shows how far it is, when it is far, and lets the user put an end to it. */
class PrintProgress
{
public:
    explicit PrintProgress(QWidget *parent)
        : m_parent(parent)
    {
    }
    ~PrintProgress() { delete m_dialog.data(); }
    Q_DISABLE_COPY_MOVE(PrintProgress)

    bool operator()(int done, int total)
    {
        m_whileLaidOut.reset();
        if (total <= PagesWithoutProgress)
            return true;
        if (!m_parent)
            return false;
        if (!m_dialog) {
            m_dialog = new QProgressDialog(i18n("Printing..."), i18n("Cancel"), 0, total, m_parent);
            m_dialog->setWindowModality(Qt::WindowModal);
            m_dialog->setMinimumDuration(500);
        }
        m_dialog->setValue(done);
        return m_dialog && !m_dialog->wasCanceled(); // while it is shown the window may be closed
    }

private:
    std::optional<BusyCursor> m_whileLaidOut{std::in_place}; // before there are pages to count
    QPointer<QWidget> m_parent;
    QPointer<QProgressDialog> m_dialog;
};

QString printError()
{
    return i18n("Cannot print. Please check the printer or the file.");
}
} // namespace

VelPrintDialogs::VelPrintDialogs(Context context)
    : m_context(std::move(context))
{
}

VelPrintDialogs::~VelPrintDialogs() = default;

void VelPrintDialogs::preparePrinter(const VelPrintout &printout)
{
    if (!m_printer) {
        m_printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
        m_printer->setPageMargins(Margins, QPageLayout::Millimeter);
    }
    m_printer->setDocName(printout.title());
    // The file and the pages of the last printout say nothing about this one.
    m_printer->setOutputFileName(QString());
    m_printer->setPrintRange(QPrinter::AllPages);
    m_printer->setFromTo(0, 0);
}

VelPrintPages::Result VelPrintDialogs::printPages(VelPrintout &printout, QPagedPaintDevice &device,
                                                  QWidget *parent) const
{
    QPainter painter;
    if (!painter.begin(&device))
        return Result::Failed;
    VelPrintPages pages(printout, m_context.now());
    PrintProgress progress(parent);
    const Result result = pages.print(painter, device, std::ref(progress));
    return painter.end() || result == Result::Cancelled ? result : Result::Failed;
}

/** What is not done may be tried anew. */
void VelPrintDialogs::finish(Result result, VelPrintPreview &preview, const QString &error) const
{
    if (result == Result::Done)
        preview.accept();
    else if (result == Result::Failed)
        m_context.messages.error(error);
}

void VelPrintDialogs::print(VelPrintout &printout, VelPrintPreview &preview)
{
    const QPointer<VelPrintPreview> alive(&preview);
    const QPointer<QPrintDialog> dialog(new QPrintDialog(m_printer.get(), &preview));
    const bool isWanted = dialog->exec() == QDialog::Accepted;
    delete dialog.data();
    if (!alive || !isWanted)
        return;
    const Result result = printPages(printout, *m_printer, &preview);
    if (alive)
        finish(result, preview, printError());
}

QString VelPrintDialogs::pdfPath(const VelPrintPreview &preview) const
{
    const QPointer<const VelPrintPreview> alive(&preview);
    const QUrl url =
        m_context.files.getSaveUrl(i18n("Save as PDF"), QStringLiteral("*.pdf|") + i18n("PDF files"));
    if (url.isEmpty() || !alive)
        return {};
    if (!url.isLocalFile()) {
        m_context.messages.error(i18n("Cannot write to the file."));
        return {};
    }
    QString path = url.toLocalFile();
    if (!path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
        path += QLatin1String(".pdf");
    const bool isFree = !QFile::exists(path)
        || m_context.messages.questionYesNo(i18n("Do you want to overwrite existing file?"),
                                            i18n("File exists"))
            == VelMessages::Answer::Yes;
    return isFree && alive ? path : QString();
}

VelPrintPages::Result VelPrintDialogs::writePdf(VelPrintout &printout, const QString &path,
                                                QWidget *parent) const
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Result::Failed;
    QPdfWriter writer(&file);
    writer.setResolution(m_printer->resolution());
    writer.setPageLayout(m_printer->pageLayout());
    writer.setTitle(printout.title());
    const Result result = printPages(printout, writer, parent);
    if (result != Result::Done)
        return result; // without a commit the file stays as it was
    return file.commit() ? Result::Done : Result::Failed;
}

void VelPrintDialogs::savePdf(VelPrintout &printout, VelPrintPreview &preview) const
{
    const QPointer<VelPrintPreview> alive(&preview);
    const QString path = pdfPath(preview);
    if (path.isEmpty())
        return;
    const Result result = writePdf(printout, path, &preview);
    if (alive)
        finish(result, preview, i18n("Cannot write to the file."));
}

void VelPrintDialogs::printOut(VelPrintout &printout)
{
    preparePrinter(printout);
    // The window may be closed meanwhile: the preview goes with it and this object, too, but not what is printed on.
    const std::shared_ptr<QPrinter> printer = m_printer;
    auto *preview = new VelPrintPreview(*printer, printout.title(), m_context.parent);
    const QPointer<VelPrintPreview> alive(preview);
    QObject::connect(preview, &VelPrintPreview::paintRequested, preview, [&, preview](QPrinter *device) {
        const Result result = printPages(printout, *device, preview);
        if (!alive || result == Result::Done)
            return;
        finish(result, *preview, printError());
        if (alive)
            QTimer::singleShot(0, preview, &QDialog::reject);
    });
    QObject::connect(preview, &VelPrintPreview::printWanted, preview,
                     [&, preview] { print(printout, *preview); });
    QObject::connect(preview, &VelPrintPreview::pdfWanted, preview,
                     [&, preview] { savePdf(printout, *preview); });
    preview->exec();
    delete alive.data();
}
