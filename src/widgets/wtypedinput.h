// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QComboBox>

/**
 * An input of a value that is typed freely, stepped through with keys and wheel, or chosen from what pops up.
 *
 * What is typed is taken with Return, when the input is left for another one, or with finishInput(), and then shown in the
 * locale's form. What cannot be read stays as it was typed and is marked until it can be.
 */
class WTypedInput : public QComboBox
{
    Q_OBJECT
public:
    /** What becomes of a text that is not taken yet, or cannot be, when the value is set. */
    enum class Typed { Forget, Keep };

    explicit WTypedInput(QWidget *parent = nullptr);

    /** Takes what is typed as if the input were left. False when it cannot be read. */
    bool finishInput();
    /** A sentence about a text that could not be read; empty when there is none. */
    [[nodiscard]] QString getProblem() const { return m_problem; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /** getProblem() is another one. */
    void problemChanged();

protected:
    void changeEvent(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

    /** Why @p text cannot be read; empty for one that can. */
    [[nodiscard]] virtual QString problemOf(const QString &text) const = 0;
    /** Makes the value of a text that can be read, and tells so. */
    virtual void take(const QString &text) = 0;
    /** The value as the locale has it. */
    [[nodiscard]] virtual QString valueText() const = 0;
    /** Moves the value by so many small or large steps, and tells so. */
    virtual void step(int count, bool isLarge) = 0;

    /** Shows the value, unless something is typed that is to be kept. */
    void showValue(Typed typed);
    /** Wide enough for @p longest, and for the mark beside it where there is room. */
    void setLongestText(const QString &longest);

private:
    [[nodiscard]] QSize sizeFor(int mark) const;
    [[nodiscard]] bool isTyped() const;
    void setProblem(const QString &problem);
    void updateMark();
    void stepFromTyped(int count, bool isLarge);

    QString m_longest;
    QString m_problem;
    QAction *m_mark = nullptr; // made when there is first something to mark
    int m_wheelAngle = 0; // eighths of a degree that are no whole step yet
};
