// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/veldatetime.h"
#include "views/velprintpages.h"

#include <functional>
#include <memory>

class QPagedPaintDevice;
class QPrinter;
class QWidget;
class VelFileChooser;
class VelMessages;
class VelPrintPreview;
class VelPrintout;

/**
 * Shows printouts before they are printed or written to a PDF file, and remembers paper and orientation from one
 * to the next.
 */
class VelPrintDialogs
{
public:
    /** What it asks and tells through; all must outlive it. */
    struct Context {
        QWidget *parent;
        VelMessages &messages;
        VelFileChooser &files;
        std::function<VelDateTime()> now;
    };

    explicit VelPrintDialogs(Context context);
    ~VelPrintDialogs();
    Q_DISABLE_COPY_MOVE(VelPrintDialogs)

    /** Returns when the user is done with it. */
    void printOut(VelPrintout &printout);

private:
    void preparePrinter(const VelPrintout &printout);
    VelPrintPages::Result printPages(VelPrintout &printout, QPagedPaintDevice &device, QWidget *parent) const;
    void print(VelPrintout &printout, VelPrintPreview &preview);
    void savePdf(VelPrintout &printout, VelPrintPreview &preview) const;
    /** The file to write to, which may be written over; empty for none, or when the window has gone meanwhile. */
    [[nodiscard]] QString pdfPath(const VelPrintPreview &preview) const;
    /** Writes all of it, or leaves the file at @p path as it was. */
    VelPrintPages::Result writePdf(VelPrintout &printout, const QString &path, QWidget *parent) const;
    void finish(VelPrintPages::Result result, VelPrintPreview &preview, const QString &error) const;

    Context m_context;
    std::shared_ptr<QPrinter> m_printer; // made when first needed: to look for printers takes time
};
