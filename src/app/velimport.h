// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "app/velprogress.h"
#include "document/velimportreport.h"

#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

class VelDoc;

/**
 * One import on its way: reads a file while the window stays alive, and adds its entries all at once when it has been read,
 * as one step. Stopped, or with the calendar gone meanwhile, it leaves nothing behind.
 */
class VelImport
{
public:
    enum class Result {
        Done, ///< there is a report
        Stopped, ///< by the user
        Gone, ///< the window, or the calendar that was to take the entries
        Locked, ///< the calendar may not be changed any more
        CannotOpen,
        CannotRead
    };
    /** All of these must outlive the import, but for the document's window, whose end @p life tells. */
    struct Context {
        VelDoc &doc;
        std::weak_ptr<bool> life;
        VelProgress::Maker progress;
        std::function<void(bool)> setEditLock;
        std::function<bool()> mayChange;
    };

    explicit VelImport(Context context)
        : m_context(std::move(context))
    {
    }

    [[nodiscard]] Result run(const QUrl &url);
    /** What to tell, after Result::Done. */
    [[nodiscard]] const std::optional<VelImportReport> &report() const { return m_report; }

private:
    [[nodiscard]] Result read(const QUrl &url, VelForeignContent &content);
    void add(VelForeignContent content);

    Context m_context;
    std::optional<VelImportReport> m_report;
};
