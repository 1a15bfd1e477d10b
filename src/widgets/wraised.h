// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>

class QDialog;
class QWidget;

/**
 * Makes a dialog one that may come up while the user is typing elsewhere, because nobody asked for it.
 *
 * It does not take the keyboard when it is shown. For a moment after that, and after it gets the keyboard, it is deaf to
 * keys: those are still meant for what was there before. A click into it shows that it has been seen. Nothing in it has the
 * focus at first, so that the blank answers nothing; Return is for its default button, as always.
 */
class WRaised : public QObject
{
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds DeafTime{1000};

    /** @p dialog, which is not yet shown, owns this. */
    explicit WRaised(QDialog *dialog, std::chrono::milliseconds deafTime = DeafTime);
    ~WRaised() override;

    /** True while keys are taken in and thrown away. */
    [[nodiscard]] bool isDeaf() const { return m_deaf.isActive(); }
    /** Ends that before its time. */
    void listen();

    /**
     * Keeps a dialog that blocks nothing from being blocked by modal ones, such as an editor that is open: the user need
     * not close those first. For one that is not yet shown.
     */
    void passModal() { m_passesModal = true; }

    /**
     * Shows the dialog and returns what it ends with: as QDialog::exec(), but a modal dialog would get the keyboard from the
     * window manager. Rejected when it is deleted meanwhile, and this with it. @p disabled, if any, takes no input until then;
     * its dialogs still do.
     */
    int run(QWidget *disabled = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void beDeaf();
    void leaveButtons();
    void joinModal();
    [[nodiscard]] bool isInDialog(const QObject *object) const;

    QDialog *m_dialog;
    QTimer m_deaf;
    bool m_passesModal = false;
};
