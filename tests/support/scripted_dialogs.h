#pragma once

/// Boxes and common dialogs that a test answers beforehand and reads afterwards.
///
///     ScriptedBoxes boxes;
///     boxes.Prepare("Start Backup", Answer::No);       for the next box whose text holds this
///     boxes.files = {"/tmp/Broker.mdb", std::nullopt}; a file, then Cancel
///     ...
///     EXPECT_EQ(boxes.Texts(), QStringList("Is this OK?"));
///
/// A box with OK as its only button is answered OK. A question nobody answered fails the test, and
/// is answered with its last button.

#include "platform/dialogs.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <functional>
#include <vector>

class ScriptedBoxes : public Dialogs
{
public:
    struct ShownBox
    {
        QString text;
        int buttonsValue;
        QString title;
    };

    void Prepare(const QString &part, Answer answer) { m_answers.push_back({part, answer}); }

    Answer MsgBox(const QString &text, int buttonsValue, const QString &title) override
    {
        boxes.push_back({text, buttonsValue, title});
        if (OnBox)
            OnBox(boxes.back());
        for (auto at = m_answers.begin(); at != m_answers.end(); ++at) {
            if (text.contains(at->part)) {
                const Answer answer = at->answer;
                m_answers.erase(at);
                return answer;
            }
        }
        if ((buttonsValue & Box::ButtonsMask) == Box::Ok)
            return Answer::Ok;
        ADD_FAILURE() << "Nobody answers: " << qPrintable(text);
        return (buttonsValue & Box::ButtonsMask) == Box::YesNo ? Answer::No : Answer::Cancel;
    }
    std::optional<QString> PickFile(const FileRequest &request) override
    {
        fileRequests.push_back(request);
        return TakeFile();
    }
    std::optional<QString> PickFolder(const QString &, const QString &) override
    {
        return TakeFile();
    }
    std::optional<Rgb> PickColor(Rgb) override { return color; }

    /// The texts of all boxes so far.
    QStringList Texts() const
    {
        QStringList texts;
        for (const ShownBox &box : boxes)
            texts << box.text;
        return texts;
    }

    std::vector<ShownBox> boxes;
    std::vector<FileRequest> fileRequests;
    std::vector<std::optional<QString>> files;
    std::optional<Rgb> color;
    /// Called while the box is up.
    std::function<void(const ShownBox &)> OnBox;

private:
    struct PreparedAnswer
    {
        QString part;
        Answer answer;
    };

    std::optional<QString> TakeFile()
    {
        if (files.empty()) {
            ADD_FAILURE() << "Nobody picks a file";
            return std::nullopt;
        }
        const std::optional<QString> file = files.front();
        files.erase(files.begin());
        return file;
    }

    std::vector<PreparedAnswer> m_answers;
};
