#pragma once

/// Boxes as a test has them: answered from a queue, each recorded.
///
///     dialogs.Queue(Answer::No);          for the next question
///     dialogs.AnswerRest(Answer::Yes);    for every question behind the queue
///     dialogs.Boxes()                     {"Quillon Editor|36|Is this OK?"}: title, buttons value,
///                                         text
///
/// A box that has only an OK button is answered OK. A question without an answer throws
/// std::logic_error, which no handler of the program takes for a failure of its own. File, folder
/// and colour dialogs are cancelled.

#include "platform/dialogs.h"

#include <deque>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

class TestDialogs : public Dialogs
{
public:
    void Queue(Answer answer) { m_queue.push_back(answer); }
    void AnswerRest(Answer answer) { m_rest = answer; }

    const std::vector<std::string> &Boxes() const { return m_boxes; }
    /// The boxes since the last call.
    std::vector<std::string> TakeBoxes() { return std::exchange(m_boxes, {}); }

    Answer MsgBox(const QString &text, int buttonsValue, const QString &title) override
    {
        m_boxes.push_back(title.toStdString() + "|" + std::to_string(buttonsValue) + "|" +
                          text.toStdString());
        if ((buttonsValue & Box::ButtonsMask) == Box::Ok)
            return Answer::Ok;
        if (!m_queue.empty()) {
            const Answer answer = m_queue.front();
            m_queue.pop_front();
            return answer;
        }
        if (!m_rest)
            throw std::logic_error("no answer for: " + m_boxes.back());
        return *m_rest;
    }
    std::optional<QString> PickFile(const FileRequest &) override { return std::nullopt; }
    std::optional<QString> PickFolder(const QString &, const QString &) override
    {
        return std::nullopt;
    }
    std::optional<Rgb> PickColor(Rgb) override { return std::nullopt; }

private:
    std::deque<Answer> m_queue;
    std::optional<Answer> m_rest;
    std::vector<std::string> m_boxes;
};
