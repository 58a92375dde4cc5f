/// How screens come and go, and the boxes of the desktop.

#include "platform/widgets/real_dialogs.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>

namespace
{

/// A screen with a routine for its load.
class LoadingScreen : public Form
{
public:
    LoadingScreen(Program &program, std::function<void()> load)
        : Form(program, "frmLoading", "Loading", Placement::Child), m_load(std::move(load))
    {}
    void Load() override { m_load(); }
    void Activate() override { ++activated; }
    static inline int activated = 0;

private:
    std::function<void()> m_load;
};

/// A dialog that takes more of the desktop once it is there.
class GrowingScreen : public Form
{
public:
    explicit GrowingScreen(Program &program)
        : Form(program, "frmLoading", "Growing", Placement::Dialog)
    {}

protected:
    void showEvent(QShowEvent *event) override
    {
        Form::showEvent(event);
        resize(300, screen()->availableGeometry().height() - 20);
    }
};

class Hosting : public testing::Test
{
protected:
    Hosting()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.App().Launch();
    }
    ScreenHost &Host() { return run.App().Host(); }
    void AddLoading(std::function<void()> load)
    {
        Host().Register(
            "frmLoading",
            [load](Program &program) { return std::make_unique<LoadingScreen>(program, load); },
            "mnuVWHistory");
    }

    TestAppFolder folder;
    ShellRun run{folder};
};

/// Presses this button of the box that is up, and keeps what the box looked like.
struct BoxSeen
{
    QString text, title, defaultButton;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};
BoxSeen PressInBox(QMessageBox::StandardButton button, int buttonsValue, Answer &answer)
{
    BoxSeen seen;
    QTimer press;
    QObject::connect(&press, &QTimer::timeout, &press, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        seen = {box->text(), box->windowTitle(), box->defaultButton()->text().remove('&'),
                box->icon()};
        box->button(button)->click();
    });
    press.start(1);
    answer = RealDialogs().MsgBox("Is <this> OK?", buttonsValue, "Quillon Editor");
    return seen;
}

} // namespace

TEST_F(Hosting, KeepsAScreenThatRefusesToGo)
{
    run.AddScreen("frmUserSetup");
    Host().Show("frmUserSetup");
    auto *setup = static_cast<PlainScreen *>(Host().Find("frmUserSetup"));
    setup->refuses = true;
    EXPECT_FALSE(Host().Unload("frmUserSetup"));
    setup->close();
    EXPECT_TRUE(Host().Loaded("frmUserSetup"));
    setup->refuses = false;
    EXPECT_TRUE(Host().Unload("frmUserSetup"));
    EXPECT_FALSE(Host().Loaded("frmUserSetup"));
    EXPECT_TRUE(Host().Unload("frmUserSetup")); // which is not there any more
}

TEST_F(Hosting, LeavesNothingBehindWhenALoadFails)
{
    AddLoading([] { throw RuntimeError::Store("disk I/O error"); });
    EXPECT_THROW(Host().Show("frmLoading"), RuntimeError);
    EXPECT_FALSE(Host().Loaded("frmLoading"));
    EXPECT_FALSE(run.Commands().Checked("mnuVWHistory"));
}

TEST_F(Hosting, KeepsADialogThatGrowsOnTheDesktop)
{
    Host().Register("frmLoading", [](Program &program) -> std::unique_ptr<Form> {
        return std::make_unique<GrowingScreen>(program);
    });
    Host().Show("frmLoading");
    const Form *form = Host().Find("frmLoading");
    ASSERT_TRUE(form);
    const QRect desktop = form->screen()->availableGeometry();
    EXPECT_EQ(form->height(), desktop.height() - 20);
    EXPECT_TRUE(desktop.contains(form->frameGeometry()))
        << form->frameGeometry().top() << " to " << form->frameGeometry().bottom();
}

TEST_F(Hosting, DoesNotShowAScreenThatUnloadsItselfWhileItLoads)
{
    AddLoading([this] { Host().Unload("frmLoading"); });
    EXPECT_TRUE(Host().Show("frmLoading"));
    EXPECT_TRUE(Host().ShowModal("frmLoading")); // and comes back at once
    EXPECT_FALSE(Host().Loaded("frmLoading"));
    EXPECT_EQ(Host().ActiveChild(), nullptr);
}

TEST_F(Hosting, ActivatesAScreenThatIsShownAgain)
{
    AddLoading([] {});
    LoadingScreen::activated = 0;
    Host().Show("frmLoading");
    const int first = LoadingScreen::activated;
    Host().Show("frmLoading");
    EXPECT_EQ(LoadingScreen::activated, first + 1);
}

TEST_F(Hosting, LeavesTheScreenBehindAMaximizedOneMaximized)
{
    AddLoading([] {});
    ASSERT_TRUE(Host().Show("frmDailyTracker"));
    ASSERT_TRUE(Host().ActiveChild()->parentWidget()->isMaximized());
    ASSERT_TRUE(Host().Show("frmLoading"));
    ASSERT_TRUE(Host().Unload("frmLoading"));
    QCoreApplication::processEvents();
    ASSERT_TRUE(Host().ActiveChild());
    EXPECT_EQ(Host().ActiveChild()->objectName(), "frmDailyTracker");
    EXPECT_TRUE(Host().ActiveChild()->parentWidget()->isMaximized());
}

TEST_F(Hosting, MovesTheFocusIntoAScreenWhoseFirstButtonIsDisabled)
{
    Host().Register("frmLoading",
                    [](Program &program) {
                        auto screen = std::make_unique<LoadingScreen>(program, [] {});
                        auto *row = new QHBoxLayout(screen.get());
                        for (const char *name : {"cmdOK", "cmdClose"}) {
                            auto *button = new QPushButton(QString::fromLatin1(name));
                            button->setObjectName(name);
                            button->setEnabled(button->objectName() == "cmdClose");
                            row->addWidget(button);
                        }
                        return screen;
                    },
                    {});
    ASSERT_TRUE(Host().Show("frmDailyTracker"));
    ASSERT_TRUE(Host().Show("frmLoading"));
    ASSERT_TRUE(run.App().MainWindow().focusWidget());
    EXPECT_EQ(run.App().MainWindow().focusWidget()->objectName(), "cmdClose");
}

TEST_F(Hosting, ShowsAnErrorThatNoHandlerKnewAndGoesOn)
{
    AddLoading([] { throw RuntimeError::Store("disk I/O error"); });
    RunGuarded(run.State(), [this] { Host().Show("frmLoading"); });
    EXPECT_EQ(run.boxes.Texts(),
              QStringList("Error number -2147467259\nDescription: disk I/O error"));
    EXPECT_FALSE(run.App().Ended());
}

TEST_F(Hosting, ComesBackFromAModalScreenWhenItIsClosed)
{
    run.AddScreen("frmAbout");
    run.WhenModal("frmAbout", [this] { Host().Find("frmAbout")->close(); });
    run.Choose("mnuHelpAbout");
    EXPECT_EQ(run.log, QStringList({"load frmAbout", "unload frmAbout"}));
}

TEST_F(Hosting, KeepsTheSmallWindowOnTopAndTheMainWindowInUse)
{
    run.AddScreen("frmTransactionUpdate", Placement::OnTop);
    Host().Show("frmTransactionUpdate");
    const Form *entry = Host().Find("frmTransactionUpdate");
    EXPECT_TRUE(entry->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(entry->windowModality(), Qt::NonModal);
    EXPECT_EQ(entry->parentWidget(), &run.App().MainWindow());
}

TEST_F(Hosting, LeavesNoScreenBehindThatWasUnloadedJustBeforeTheEnd)
{
    AddLoading([] {});
    Host().Show("frmLoading");
    const QPointer<Form> shown = Host().Find("frmLoading");
    Host().Unload("frmLoading");
    Host().Load("frmLoading");
    const QPointer<Form> hidden = Host().Find("frmLoading");
    Host().Unload("frmLoading");
    EXPECT_TRUE(shown && hidden); // the event loop has not come round to them
    run.Renew();
    EXPECT_TRUE(!shown && !hidden);
}

// --- boxes of the desktop ------------------------------------------------------------------------

TEST(RealDialogs, AsksWithTheButtonsIconAndDefaultOfTheValue)
{
    Answer answer = Answer::Ok;
    BoxSeen seen = PressInBox(QMessageBox::Yes, Box::YesNo + Box::Question, answer);
    EXPECT_EQ(answer, Answer::Yes);
    EXPECT_EQ(seen.text, "Is <this> OK?");
    EXPECT_EQ(seen.title, "Quillon Editor");
    EXPECT_EQ(seen.defaultButton, "Yes");
    EXPECT_EQ(seen.icon, QMessageBox::Question);

    seen = PressInBox(QMessageBox::No, Box::YesNo + Box::Stop + Box::SecondDefault, answer);
    EXPECT_EQ(answer, Answer::No);
    EXPECT_EQ(seen.defaultButton, "No");
    EXPECT_EQ(seen.icon, QMessageBox::Critical);

    seen = PressInBox(QMessageBox::Retry, Box::RetryCancel + Box::Exclamation, answer);
    EXPECT_EQ(answer, Answer::Retry);
    EXPECT_EQ(seen.icon, QMessageBox::Warning);

    seen = PressInBox(QMessageBox::Ok, Box::Information, answer);
    EXPECT_EQ(answer, Answer::Ok);
    EXPECT_EQ(seen.icon, QMessageBox::Information);
}

TEST(RealDialogs, ReadsTheFilterOfAFileDialog)
{
    EXPECT_EQ(NameFilters("Tracker Databases (*.mdb)|*.mdb"),
              QStringList("Tracker Databases (*.mdb)"));
    EXPECT_EQ(NameFilters("Books|*.xls;*.csv|All|*.*"),
              QStringList({"Books (*.xls *.csv)", "All (*.*)"}));
}
