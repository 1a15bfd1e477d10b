// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <memory>
#include <optional>
#include <vector>

/**
 * Where questions and error boxes go. The window's body shows message boxes; that of a test answers by
 * itself.
 */
class VelMessages
{
public:
    enum class Answer { Yes, No, Cancel };

    /**
     * As long as one lives, what is told and asked comes by itself, while the user may be typing. Then error() and
     * information() return at once, and what they tell stays until it is read, also after the window has gone. It may
     * outlive the messages.
     */
    class Unasked
    {
    public:
        explicit Unasked(const VelMessages &messages)
            : m_count(messages.m_unasked)
        {
            ++*m_count;
        }
        ~Unasked() { --*m_count; }
        Unasked(const Unasked &) = delete;
        Unasked &operator=(const Unasked &) = delete;

    private:
        std::shared_ptr<int> m_count;
    };

    virtual ~VelMessages() = default;

    virtual void error(const QString &text) = 0;
    virtual void information(const QString &text, const QString &caption = {}) = 0;
    /** @p yes and @p no are the buttons' texts, here and below; empty ones stand for the usual Yes and No. */
    virtual Answer questionYesNo(const QString &text, const QString &caption, const QString &yes = {},
                                 const QString &no = {}) = 0;
    virtual Answer warningYesNoCancel(const QString &text, const QString &caption, const QString &yes = {},
                                      const QString &no = {}) = 0;

    /** One of several ways to go on. */
    struct Choice {
        QString text; ///< short, as on a button
        QString explanation; ///< what comes of it
    };
    /**
     * Lets the user take one of @p choices, beginning with that at @p usual, which is to be harmless. Its index; none when
     * the box was closed.
     */
    virtual std::optional<int> choose(const QString &text, const QString &caption,
                                      const std::vector<Choice> &choices, int usual) = 0;

protected:
    [[nodiscard]] bool isUnasked() const { return *m_unasked > 0; }

private:
    std::shared_ptr<int> m_unasked = std::make_shared<int>(0);
};
