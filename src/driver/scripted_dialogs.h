#pragma once

/// Boxes and common dialogs as a script has them: answered from queues, each box recorded.
///
///     dialogs.QueueAnswer(Answer::No, "backup");    for the next box whose text holds "backup"
///     dialogs.QueueAnswer(Answer::Yes);             for the next box
///
/// A box takes the first queued answer whose part its text holds; only when there is none, the
/// first answer without a part. With nothing queued for it, a box that has only an OK button is
/// answered OK; so it is when the answer without a part is another one, which stays for the
/// question to come.

#include "platform/dialogs.h"

#include <QList>
#include <QStringList>

#include <functional>
#include <optional>

class ScriptedDialogs : public Dialogs
{
public:
    struct RecordedBox
    {
        QString title;
        int buttonsValue = 0;
        QString text;
        Answer answer = Answer::Ok;
        bool matched = false; ///< an expectation has met it
    };

    /// `unanswered` is told why a box or dialog stays without an answer, and does not come back.
    explicit ScriptedDialogs(std::function<void(const QString &reason)> unanswered);

    void QueueAnswer(Answer answer, const QString &part = QString());
    /// Nothing: the dialog is cancelled. A file answer serves file and folder dialogs alike.
    void QueueFile(const std::optional<QString> &path);
    /// For the next dialog, before all that is queued.
    void PickNextFile(const QString &path);
    void QueueColor(const std::optional<Rgb> &color);

    /// A line a box, `title<TAB>buttons value<TAB>text<TAB>answer`, and forgets them.
    QStringList TakeBoxes();
    /// Matches the first box, not matched before, whose text (or else title) holds `part`.
    bool MatchBox(const QString &part);
    /// The first box that no expectation has met, as a line.
    std::optional<QString> UnmatchedBox() const;

    Answer MsgBox(const QString &text, int buttonsValue, const QString &title) override;
    std::optional<QString> PickFile(const FileRequest &request) override;
    std::optional<QString> PickFolder(const QString &title, const QString &initial) override;
    std::optional<Rgb> PickColor(Rgb initial) override;

private:
    struct QueuedAnswer
    {
        Answer answer;
        QString part; ///< empty: for any box
    };

    std::optional<Answer> TakeAnswer(const QString &text, const QList<Answer> &buttons);
    [[noreturn]] void Unanswered(const QString &reason);

    std::function<void(const QString &)> m_unanswered;
    QList<QueuedAnswer> m_answers;
    QList<std::optional<QString>> m_files;
    QList<std::optional<Rgb>> m_colors;
    QList<RecordedBox> m_boxes;
};

/// "OK", "Cancel", "Yes", "No", "Retry"; nothing for another word.
std::optional<Answer> AnswerNamed(const QString &name);
QString NameOf(Answer answer);
