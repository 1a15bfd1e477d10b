// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDialog>

class QBoxLayout;
class QDialogButtonBox;
class QLabel;
class QPrintPreviewWidget;
class QPrinter;

/**
 * Shows the pages that a printer would print and lets the user choose paper and orientation. Asks its owner for
 * the pages, and what to do with them.
 */
class VelPrintPreview : public QDialog
{
    Q_OBJECT
public:
    /** Keeps a reference to @p printer. @p title names what is printed. */
    VelPrintPreview(QPrinter &printer, const QString &title, QWidget *parent);

Q_SIGNALS:
    /** Paint the pages on @p printer before returning. */
    void paintRequested(QPrinter *printer);
    void printWanted();
    void pdfWanted();

private:
    void addViewButtons(QBoxLayout *row);
    void addPaperButtons(QBoxLayout *row);
    void addButton(QBoxLayout *row, const char *icon, const QString &text, const QKeySequence &shortcut,
                   void (VelPrintPreview::*slot)());
    [[nodiscard]] QDialogButtonBox *makeButtonBox();
    void goToPage(int page);
    void slotPrevious();
    void slotNext();
    void slotZoomIn();
    void slotZoomOut();
    void slotWholePage();
    void slotFullWidth();
    void slotPaper();
    void slotOrientation(int index);
    void updatePageLabel();

    QPrinter &m_printer;
    QPrintPreviewWidget *m_preview;
    QLabel *m_pageLabel;
};
