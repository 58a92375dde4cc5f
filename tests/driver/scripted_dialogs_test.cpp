#include "driver/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace
{

struct Unanswered
{
    QString reason;
};

class TheScriptsBoxes : public testing::Test
{
protected:
    Answer Ask(const char *text, int buttonsValue = Box::YesNo + Box::Question)
    {
        return dialogs.MsgBox(text, buttonsValue, "Quillon Editor");
    }

    ScriptedDialogs dialogs{[](const QString &reason) { throw Unanswered{reason}; }};
};

TEST_F(TheScriptsBoxes, AreAnsweredInTheOrderQueued)
{
    dialogs.QueueAnswer(Answer::Yes);
    dialogs.QueueAnswer(Answer::No);
    EXPECT_EQ(Ask("first"), Answer::Yes);
    EXPECT_EQ(Ask("second"), Answer::No);
}

TEST_F(TheScriptsBoxes, TakeTheAnswerWhosePartTheyHoldFirst)
{
    dialogs.QueueAnswer(Answer::Yes);
    dialogs.QueueAnswer(Answer::No, "backup");
    EXPECT_EQ(Ask("Start the backup procedure?"), Answer::No);
    EXPECT_EQ(Ask("Is this OK?"), Answer::Yes);
}

TEST_F(TheScriptsBoxes, LeaveAnAnswerForAnotherPartWaiting)
{
    dialogs.QueueAnswer(Answer::No, "backup");
    dialogs.QueueAnswer(Answer::Yes);
    EXPECT_EQ(Ask("Is this OK?"), Answer::Yes);
    EXPECT_EQ(Ask("A backup is recommended!"), Answer::No);
}

TEST_F(TheScriptsBoxes, WithAnOkButtonOnlyAreAnsweredOk)
{
    EXPECT_EQ(Ask("Done.", Box::Information), Answer::Ok);
}

TEST_F(TheScriptsBoxes, WithAnOkButtonOnlyLeaveAYesForTheQuestionBehindThem)
{
    dialogs.QueueAnswer(Answer::Yes);
    EXPECT_EQ(Ask("Mind this.", Box::Exclamation), Answer::Ok);
    EXPECT_EQ(Ask("Is this OK?"), Answer::Yes);
}

TEST_F(TheScriptsBoxes, WithAnOkButtonOnlyUseUpAQueuedOk)
{
    dialogs.QueueAnswer(Answer::Ok);
    Ask("Done.", Box::Information);
    EXPECT_THROW(Ask("Go on?", Box::OkCancel), Unanswered);
}

TEST_F(TheScriptsBoxes, EndTheScriptWithTheirTextWhenAQuestionHasNoAnswer)
{
    try {
        Ask("Is this OK?");
        FAIL() << "an unanswered question was answered";
    } catch (const Unanswered &unanswered) {
        EXPECT_TRUE(unanswered.reason.contains("Is this OK?")) << unanswered.reason.toStdString();
    }
}

TEST_F(TheScriptsBoxes, EndTheScriptWhenTheyLackTheButtonQueued)
{
    dialogs.QueueAnswer(Answer::Retry);
    EXPECT_THROW(Ask("Is this OK?"), Unanswered);
}

TEST_F(TheScriptsBoxes, AreRecordedALineEachAndForgottenOnceTaken)
{
    dialogs.QueueAnswer(Answer::No);
    Ask("Line 1\nLine 2", Box::YesNo + Box::Stop + Box::SecondDefault);
    Ask("Done.", Box::Information);
    EXPECT_EQ(dialogs.TakeBoxes(), (QStringList{"Quillon Editor\t276\tLine 1\\nLine 2\tNo",
                                                "Quillon Editor\t64\tDone.\tOK"}));
    EXPECT_EQ(dialogs.TakeBoxes(), QStringList());
}

TEST_F(TheScriptsBoxes, AreMatchedOnceEach)
{
    Ask("Done.", Box::Information);
    EXPECT_TRUE(dialogs.UnmatchedBox());
    EXPECT_FALSE(dialogs.MatchBox("other"));
    EXPECT_TRUE(dialogs.MatchBox("Done"));
    EXPECT_FALSE(dialogs.MatchBox("Done"));
    EXPECT_FALSE(dialogs.UnmatchedBox());
}

TEST_F(TheScriptsBoxes, AreMatchedByTheirTextBeforeTheirTitle)
{
    Ask("first", Box::Information);
    Ask("the Editor", Box::Information);
    EXPECT_TRUE(dialogs.MatchBox("Editor"));
    EXPECT_TRUE(dialogs.MatchBox("first"));
    EXPECT_FALSE(dialogs.UnmatchedBox());
}

TEST(ScriptedCommonDialogs, PickAFileAtOnceBeforeThoseThatAreQueued)
{
    ScriptedDialogs dialogs{[](const QString &reason) { throw Unanswered{reason}; }};
    dialogs.QueueFile("/tmp/valid.mdb");
    dialogs.PickNextFile("/tmp/foreign.mdb");
    EXPECT_EQ(dialogs.PickFile({}), QString("/tmp/foreign.mdb"));
    EXPECT_EQ(dialogs.PickFile({}), QString("/tmp/valid.mdb"));
}

TEST(ScriptedCommonDialogs, TakeTheirAnswersInTurn)
{
    ScriptedDialogs dialogs{[](const QString &reason) { throw Unanswered{reason}; }};
    dialogs.QueueFile("/tmp/a b.mdb");
    dialogs.QueueFile(std::nullopt);
    dialogs.QueueColor(0xFF8000);
    dialogs.QueueColor(std::nullopt);
    EXPECT_EQ(dialogs.PickFile({}), QString("/tmp/a b.mdb"));
    EXPECT_EQ(dialogs.PickFolder("Backup", "/"), std::nullopt);
    EXPECT_EQ(dialogs.PickColor(0), Rgb(0xFF8000));
    EXPECT_EQ(dialogs.PickColor(0), std::nullopt);
    EXPECT_THROW(dialogs.PickFile({}), Unanswered);
    EXPECT_THROW(dialogs.PickFolder("Backup", "/"), Unanswered);
    EXPECT_THROW(dialogs.PickColor(0), Unanswered);
}

} // namespace
