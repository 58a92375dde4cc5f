/// The sign-on dialog.

#include "base/character_shift.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QLineEdit>

namespace
{

class SignOn : public testing::Test
{
protected:
    SignOn()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.App().Launch();
        run.State().account.LoginID = "Ann";
        run.State().account.LoginPassword = "secret";
        run.App().Host().Show("frmPassword");
    }
    /// Types both texts and presses Login; whether the dialog went.
    bool Login(const QString &login, const QString &password)
    {
        Text("txtLoginID")->setText(login);
        Text("txtPassword")->setText(password);
        run.Control<QPushButton>("frmPassword", "cmdLogin")->click();
        return !run.App().Host().Loaded("frmPassword");
    }
    QLineEdit *Text(const QString &name) { return run.Control<QLineEdit>("frmPassword", name); }

    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

TEST_F(SignOn, AsksForIdAndPasswordInTheStatusBar)
{
    EXPECT_EQ(run.Panel(1), "Please enter your Signon ID and password");
}

TEST_F(SignOn, LetsTheRightTextsIn)
{
    run.State().run.IdleMinutes = 4;
    EXPECT_TRUE(Login("Ann", "secret"));
    EXPECT_FALSE(run.State().run.SignOnCancelled);
    EXPECT_EQ(run.State().run.IdleMinutes, 0);
}

TEST_F(SignOn, RefusesTheRightLettersInTheWrongCase)
{
    EXPECT_FALSE(Login("ann", "secret"));
    EXPECT_FALSE(Login("Ann", "SECRET"));
    ASSERT_EQ(run.boxes.boxes.size(), 2u);
    EXPECT_EQ(run.boxes.boxes[0].text, "Invalid Sigon ID and/or invalid password");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::Exclamation);
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Editor");
    EXPECT_EQ(Text("txtLoginID")->selectedText(), "Ann");
    EXPECT_EQ(Text("txtPassword")->selectionLength(), 6);
    EXPECT_TRUE(Login("Ann", "secret")); // there is no limit on attempts
}

TEST_F(SignOn, IgnoresLoginWithAnEmptyFieldEvenWhereThePasswordIsEmpty)
{
    run.State().account.LoginPassword.clear();
    EXPECT_FALSE(Login("Ann", ""));
    EXPECT_FALSE(Login("", "secret"));
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(SignOn, IsCancelledByTheButtonAndByTheFrame)
{
    run.Control<QPushButton>("frmPassword", "cmdCancel")->click();
    EXPECT_TRUE(run.State().run.SignOnCancelled);
    EXPECT_FALSE(run.App().Host().Loaded("frmPassword"));
    run.App().Host().Show("frmPassword");
    EXPECT_FALSE(run.State().run.SignOnCancelled);
    run.App().Host().Find("frmPassword")->close();
    EXPECT_TRUE(run.State().run.SignOnCancelled);
    EXPECT_FALSE(run.App().Host().Loaded("frmPassword"));
}

TEST_F(SignOn, DoesNotShowWhatIsTypedAsThePassword)
{
    EXPECT_EQ(Text("txtPassword")->echoMode(), QLineEdit::Password);
}

// --- the character shift -------------------------------------------------------------------------

TEST(CharacterShift, IsItsOwnInverseForCodes3To252)
{
    for (int code = 3; code <= 252; ++code) {
        const QString text = QChar(code);
        EXPECT_EQ(ShiftDown(ShiftUp(text)), text) << code;
        EXPECT_EQ(ShiftUp(ShiftDown(text)), text) << code;
    }
    EXPECT_EQ(ShiftUp("abc"), "def");
}

TEST(CharacterShift, FailsForACharacterWithCode253OrHigher)
{
    EXPECT_EQ(ShiftUp(QString(QChar(252))), QString(QChar(255)));
    for (const int code : {253, 254, 255, 0x20AC})
        EXPECT_THROW(ShiftUp(QString(QChar(code))), RuntimeError) << code;
}

TEST(CharacterShift, TurnsATextThatWasNeverShiftedIntoOtherCharacters)
{
    EXPECT_EQ(ShiftDown("secret"), "pb`obq");
    EXPECT_THROW(ShiftDown(QString(QChar(2))), RuntimeError);
}
