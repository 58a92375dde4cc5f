#include "driver/scripted_dialogs.h"

#include "driver/failure.h"

#include <algorithm>

namespace
{

struct NamedAnswer
{
    Answer answer;
    const char *name;
};

constexpr NamedAnswer namedAnswers[] = {
    {Answer::Ok, "OK"},       {Answer::Cancel, "Cancel"}, {Answer::Abort, "Abort"},
    {Answer::Retry, "Retry"}, {Answer::Ignore, "Ignore"}, {Answer::Yes, "Yes"},
    {Answer::No, "No"},
};

QList<Answer> ButtonsOf(int buttonsValue)
{
    switch (buttonsValue & Box::ButtonsMask) {
    case Box::OkCancel:
        return {Answer::Ok, Answer::Cancel};
    case Box::YesNoCancel:
        return {Answer::Yes, Answer::No, Answer::Cancel};
    case Box::YesNo:
        return {Answer::Yes, Answer::No};
    case Box::RetryCancel:
        return {Answer::Retry, Answer::Cancel};
    default:
        return {Answer::Ok};
    }
}

/// One line, whatever the text holds.
QString OnOneLine(QString text)
{
    return text.replace(QLatin1Char('\n'), QLatin1String("\\n"))
        .replace(QLatin1Char('\t'), QLatin1String("\\t"));
}

QString Line(const ScriptedDialogs::RecordedBox &box)
{
    return QStringList{OnOneLine(box.title), QString::number(box.buttonsValue), OnOneLine(box.text),
                       NameOf(box.answer)}
        .join(QLatin1Char('\t'));
}

} // namespace

std::optional<Answer> AnswerNamed(const QString &name)
{
    for (const NamedAnswer &named : namedAnswers)
        if (name == QLatin1String(named.name))
            return named.answer;
    return std::nullopt;
}

QString NameOf(Answer answer)
{
    for (const NamedAnswer &named : namedAnswers)
        if (answer == named.answer)
            return QLatin1String(named.name);
    return QString();
}

ScriptedDialogs::ScriptedDialogs(std::function<void(const QString &)> unanswered)
    : m_unanswered(std::move(unanswered))
{}

void ScriptedDialogs::QueueAnswer(Answer answer, const QString &part)
{
    m_answers.append({answer, part});
}

void ScriptedDialogs::QueueFile(const std::optional<QString> &path)
{
    m_files.append(path);
}

void ScriptedDialogs::PickNextFile(const QString &path)
{
    m_files.prepend(path);
}

void ScriptedDialogs::QueueColor(const std::optional<Rgb> &color)
{
    m_colors.append(color);
}

QStringList ScriptedDialogs::TakeBoxes()
{
    QStringList lines;
    for (const RecordedBox &box : m_boxes)
        lines += Line(box);
    m_boxes.clear();
    return lines;
}

bool ScriptedDialogs::MatchBox(const QString &part)
{
    for (QString RecordedBox::*where : {&RecordedBox::text, &RecordedBox::title}) {
        for (RecordedBox &box : m_boxes) {
            if (!box.matched && (box.*where).contains(part)) {
                box.matched = true;
                return true;
            }
        }
    }
    return false;
}

std::optional<QString> ScriptedDialogs::UnmatchedBox() const
{
    const auto box = std::find_if(m_boxes.begin(), m_boxes.end(),
                                  [](const RecordedBox &each) { return !each.matched; });
    return box == m_boxes.end() ? std::nullopt : std::optional(Line(*box));
}

Answer ScriptedDialogs::MsgBox(const QString &text, int buttonsValue, const QString &title)
{
    const QList<Answer> buttons = ButtonsOf(buttonsValue);
    std::optional<Answer> answer = TakeAnswer(text, buttons);
    if (!answer && buttons.size() == 1)
        answer = buttons.first();
    if (!answer)
        Unanswered(QStringLiteral("no answer for the question \"%1\": %2").arg(title, text));
    if (!buttons.contains(*answer))
        Unanswered(QStringLiteral("the box \"%1\" has no button %2: %3")
                       .arg(title, NameOf(*answer), text));
    m_boxes.append({title, buttonsValue, text, *answer});
    return *answer;
}

std::optional<QString> ScriptedDialogs::PickFile(const FileRequest &request)
{
    if (m_files.isEmpty())
        Unanswered(QStringLiteral("no answer for the file dialog \"%1\"").arg(request.title));
    return m_files.takeFirst();
}

std::optional<QString> ScriptedDialogs::PickFolder(const QString &title, const QString &)
{
    if (m_files.isEmpty())
        Unanswered(QStringLiteral("no answer for the folder dialog \"%1\"").arg(title));
    return m_files.takeFirst();
}

std::optional<Rgb> ScriptedDialogs::PickColor(Rgb)
{
    if (m_colors.isEmpty())
        Unanswered(QStringLiteral("no answer for the colour dialog"));
    return m_colors.takeFirst();
}

std::optional<Answer> ScriptedDialogs::TakeAnswer(const QString &text, const QList<Answer> &buttons)
{
    auto queued = std::find_if(m_answers.begin(), m_answers.end(), [&](const QueuedAnswer &each) {
        return !each.part.isEmpty() && text.contains(each.part);
    });
    if (queued == m_answers.end())
        queued = std::find_if(m_answers.begin(), m_answers.end(),
                              [](const QueuedAnswer &each) { return each.part.isEmpty(); });
    if (queued == m_answers.end())
        return std::nullopt;
    // A notice on the way to the question that the answer is for does not use it up.
    const bool isForALaterQuestion =
        queued->part.isEmpty() && buttons.size() == 1 && !buttons.contains(queued->answer);
    if (isForALaterQuestion)
        return std::nullopt;
    const Answer answer = queued->answer;
    m_answers.erase(queued);
    return answer;
}

void ScriptedDialogs::Unanswered(const QString &reason)
{
    m_unanswered(reason);
    throw Failed(reason);
}
