// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velmessages.h"

#include <QStringList>

#include <deque>
#include <vector>

/**
 * Keeps what the program tells and asks, and gives the answers that the test ordered.
 *
 * A question nobody ordered an answer for gets the one that changes nothing: No, or Cancel where there is one.
 */
class FakeMessages : public VelMessages
{
public:
    enum class Kind { Error, Information, YesNo, YesNoCancel, Choice };

    struct Message {
        Kind kind;
        QString text;
        QString caption;
        QString yes; ///< the button's text; empty for the usual one
        QString no;
        bool isUnasked = false; ///< it came by itself
    };

    /** Answers the next question that is not yet answered by an earlier order. */
    void orderAnswer(Answer answer) { m_answers.push_back(answer); }
    /** The same for choices, of which those nobody ordered are left without one. */
    void orderChoice(int choice) { m_choices.push_back(choice); }

    void error(const QString &text) override
    {
        m_messages.push_back({Kind::Error, text, {}, {}, {}, isUnasked()});
    }

    void information(const QString &text, const QString &caption = {}) override
    {
        m_messages.push_back({Kind::Information, text, caption, {}, {}, isUnasked()});
    }

    Answer questionYesNo(const QString &text, const QString &caption, const QString &yes = {},
                         const QString &no = {}) override
    {
        m_messages.push_back({Kind::YesNo, text, caption, yes, no, isUnasked()});
        return takeAnswer(Answer::No);
    }

    Answer warningYesNoCancel(const QString &text, const QString &caption, const QString &yes = {},
                              const QString &no = {}) override
    {
        m_messages.push_back({Kind::YesNoCancel, text, caption, yes, no, isUnasked()});
        return takeAnswer(Answer::Cancel);
    }

    std::optional<int> choose(const QString &text, const QString &caption, const std::vector<Choice> &,
                              int) override
    {
        m_messages.push_back({Kind::Choice, text, caption, {}, {}});
        if (m_choices.empty())
            return std::nullopt;
        const int choice = m_choices.front();
        m_choices.pop_front();
        return choice;
    }

    /** All that was told and asked, the oldest first. */
    [[nodiscard]] const std::vector<Message> &messages() const { return m_messages; }
    [[nodiscard]] int count() const { return static_cast<int>(m_messages.size()); }
    /** The last message; one without texts when there was none. */
    [[nodiscard]] Message last() const
    {
        return m_messages.empty() ? Message{Kind::Error, {}, {}, {}, {}} : m_messages.back();
    }
    /** The texts of the errors, the oldest first. */
    [[nodiscard]] QStringList errors() const
    {
        QStringList texts;
        for (const Message &message : m_messages) {
            if (message.kind == Kind::Error)
                texts.append(message.text);
        }
        return texts;
    }

private:
    Answer takeAnswer(Answer otherwise)
    {
        if (m_answers.empty())
            return otherwise;
        const Answer answer = m_answers.front();
        m_answers.pop_front();
        return answer;
    }

    std::vector<Message> m_messages;
    std::deque<Answer> m_answers;
    std::deque<int> m_choices;
};
