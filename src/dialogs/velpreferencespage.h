// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QIcon>
#include <QWidget>

class VelSettings;
struct VelLook;

/** One page of the preferences: inputs for some of their fields. */
class VelPreferencesPage : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;
    using QWidget::show;

    [[nodiscard]] virtual QString title() const = 0;
    [[nodiscard]] virtual QIcon icon() const = 0;
    /** Fills the inputs. */
    virtual void show(const VelSettings &settings, const VelLook &look) = 0;
    /**
     * What is stored has changed while the page was open: takes it over where the inputs still show what was stored
     * before, and keeps what was typed. Does not report that as a change.
     */
    virtual void follow(const VelSettings &) { }
    /** Writes what the inputs hold, and leaves all other fields as they are. */
    virtual void store(VelSettings &settings, VelLook &look) const = 0;
    /** Takes what is being typed, as a button pressed by its letter leaves it. */
    virtual void finishInput() { }
    /** Why the inputs cannot be stored as they are; empty when they can. */
    [[nodiscard]] virtual QString problem() const { return {}; }
    /** False when there is no way that the inputs were at first. */
    [[nodiscard]] virtual bool hasDefaults() const { return true; }

Q_SIGNALS:
    /** Some input holds another value, by the user's hand or by a function. */
    void changed();

protected:
    /** Reports each change of each input that is on the page by now. */
    void watchInputs();
    /** A tool tip that is the What's-This text too. */
    static void explain(QWidget *widget, const QString &text);
};
