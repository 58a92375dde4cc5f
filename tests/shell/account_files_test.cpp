/// The File menu's New and Save As: what is asked, what is made, and what every way out leaves.

#include "shell_run.h"

#include "support/old_account.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace
{

const QString NameTaken = QStringLiteral("This account name already exist, please select another.");

QByteArray Bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

class AccountCommands : public testing::Test
{
protected:
    AccountCommands() : m_run(m_folder)
    {
        m_run.SetOption("ShowTipOfDay", "0").SetOption("WebPriceUpdate", "0");
        m_run.GiveBalance(m_folder.SampleAccount(), "2026-03-02", 4);
    }
    void Launch()
    {
        // In place of the settings screen, whose going opens the new account.
        m_run.AddScreen("frmUserSetup");
        m_run.WhenModal("frmUserSetup", [this] {
            m_settingsSeen = State().account;
            m_newAccountSeen = State().run.NewAccount;
            OpenDatabases(State().databases, State().settings, State().account, State().services);
            State().run.NewAccount = false;
            m_run.App().Host().Unload("frmUserSetup");
            State().accountRoutines->OpenAccount();
        });
        ASSERT_TRUE(m_run.App().Launch());
    }
    Program &State() { return m_run.State(); }
    QString In(const char *name) const { return m_folder.File(QString::fromUtf8(name)); }
    /// Without the screen that fills the window.
    QString Caption()
    {
        return m_run.App().MainWindow().windowTitle().section(QStringLiteral(" - ["), 0, 0);
    }

    TestAppFolder m_folder;
    ShellRun m_run;
    AccountState m_settingsSeen; ///< what the settings screen found
    bool m_newAccountSeen = false;
};

using NewAccountCommand = AccountCommands;
using SaveAsCommand = AccountCommands;

} // namespace

TEST_F(NewAccountCommand, CopiesTheTemplateAndShowsTheSettingsOnAFreshState)
{
    m_run.GiveSecurity(m_folder.SampleAccount(), 0, 1, 45);
    Launch();
    m_run.boxes.files = {In("Broker.mdb")};
    m_run.Choose("mnuFLNew");
    EXPECT_TRUE(m_newAccountSeen);
    EXPECT_EQ(m_settingsSeen.AccountBalance, Currency());
    EXPECT_EQ(m_settingsSeen.CommissionStyle, "n/a");
    EXPECT_EQ(m_settingsSeen.CommissionCost, Currency());
    EXPECT_EQ(m_settingsSeen.CommissionPerShare, Currency());
    EXPECT_EQ(m_settingsSeen.LogoffEnabled, 0);
    EXPECT_EQ(m_settingsSeen.LogoffMinutes, 15);
    EXPECT_EQ(m_settingsSeen.LoginID, "");
    EXPECT_EQ(m_settingsSeen.LoginPassword, "");
    EXPECT_EQ(Caption(), "Quillon - Broker");
    EXPECT_EQ(m_run.SavedOption("CurrentFilePath"), In("Broker.mdb"));
    EXPECT_EQ(m_run.SavedOption("AccountName"), "Broker");
    EXPECT_TRUE(m_run.boxes.Texts().isEmpty());
    EXPECT_EQ(QFile::permissions(In("Broker.mdb")) &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
}

TEST_F(NewAccountCommand, AsksForTheNameInTheFolderOfTheOpenAccount)
{
    Launch();
    m_run.boxes.files = {std::nullopt};
    m_run.Choose("New");
    ASSERT_EQ(m_run.boxes.fileRequests.size(), 1u);
    const FileRequest &request = m_run.boxes.fileRequests[0];
    EXPECT_EQ(request.kind, FileRequest::Kind::Save);
    EXPECT_EQ(request.title, "Create new account");
    EXPECT_EQ(request.filter, "Tracker Databases (*.mdb)|*.mdb");
    EXPECT_EQ(request.initial, m_folder.Path() + "/*.mdb");
    EXPECT_EQ(Caption(), "Quillon - Sample Portfolio");
    EXPECT_TRUE(State().databases.gConnAccount.IsOpen());
    EXPECT_TRUE(m_run.boxes.Texts().isEmpty());
}

TEST_F(NewAccountCommand, AsksAgainForANameThatIsTakenAndLeavesThatFileAlone)
{
    Launch();
    const QString taken = m_folder.AddFile("Taken.mdb", "Dear diary");
    m_run.boxes.files = {taken, m_folder.SampleAccount(), In("Free.mdb")};
    m_run.Choose("mnuFLNew");
    EXPECT_EQ(m_run.boxes.Texts(), QStringList({NameTaken, NameTaken}));
    EXPECT_EQ(m_run.boxes.boxes[0].buttonsValue, Box::Exclamation);
    EXPECT_EQ(m_run.boxes.boxes[0].title, "MDI Editor");
    EXPECT_EQ(Bytes(taken), "Dear diary");
    EXPECT_EQ(Caption(), "Quillon - Free");
}

TEST_F(NewAccountCommand, GivesANameItsExtensionAndKeepsAMixedCaseOne)
{
    Launch();
    m_run.boxes.files = {In("Fidelity X12.34567")};
    m_run.Choose("mnuFLNew");
    EXPECT_EQ(Caption(), "Quillon - Fidelity X12.34567");
    EXPECT_TRUE(QFile::exists(In("Fidelity X12.34567.mdb")));
    m_run.boxes.files = {In("Broker.Mdb")};
    m_run.Choose("mnuFLSaveAs");
    EXPECT_EQ(Caption(), "Quillon - Broker.Mdb");
    EXPECT_TRUE(QFile::exists(In("Broker.Mdb")));
}

TEST_F(NewAccountCommand, CalledEmptyIsThePlaceholderFromThenOn)
{
    Launch();
    m_run.boxes.files = {In("Empty.mdb")};
    m_run.Choose("mnuFLNew");
    EXPECT_FALSE(m_run.App().Exit());
    EXPECT_TRUE(m_run.boxes.Texts().last().startsWith("Please create a name for this account"));
}

TEST_F(NewAccountCommand, WithoutTheTemplateIsToldAndEndsTheProgramWithTheAccountWhole)
{
    Launch();
    QFile::remove(In("Template.xxx"));
    m_run.boxes.files = {In("Broker.mdb")};
    m_run.Choose("mnuFLNew");
    ASSERT_EQ(m_run.boxes.boxes.size(), 1u);
    EXPECT_EQ(m_run.boxes.boxes[0].text,
              "An error has occured while creating a new account\nError number 53\n"
              "Description: File not found: " +
                  In("Template.xxx"));
    EXPECT_EQ(m_run.boxes.boxes[0].buttonsValue, Box::Stop);
    EXPECT_EQ(m_run.boxes.boxes[0].title, "MDI Editor");
    EXPECT_TRUE(m_run.App().Ended());
    EXPECT_FALSE(QFile::exists(In("Broker.mdb")));
    EXPECT_EQ(m_folder.Value(m_folder.SampleAccount(), "SELECT COUNT(*) FROM DescriptiveTable"),
              "1");
}

TEST_F(SaveAsCommand, GoesOverToACopyAndLeavesTheOriginalAsItIs)
{
    const QString original = m_folder.AddAccount("elsewhere/Broker.mdb");
    m_run.GiveBalance(original, "2026-03-02", 4);
    m_folder.Execute(original, "INSERT INTO PriceHistory (ID, Symbol, Shares) VALUES (7, 'A', 3)");
    m_run.SetOption("CurrentFilePath", original).SetOption("AccountName", "Broker");
    Launch();
    m_run.boxes.files = {In("Copy.MDB")};
    m_run.Choose("SaveAs");
    EXPECT_EQ(m_run.boxes.fileRequests[0].title, "Save As...");
    EXPECT_EQ(m_run.boxes.fileRequests[0].initial, m_folder.Path() + "/elsewhere/*.mdb");
    EXPECT_EQ(Caption(), "Quillon - Copy");
    EXPECT_EQ(m_run.SavedOption("CurrentFilePath"), In("Copy.MDB"));
    State().databases.gConnAccount.Execute("DELETE FROM PriceHistory");
    EXPECT_TRUE(m_run.App().Exit());
    EXPECT_EQ(m_folder.Value(original, "SELECT ID || Symbol FROM PriceHistory"), "7A");
    EXPECT_EQ(m_folder.Value(In("Copy.MDB"), "SELECT COUNT(*) FROM PriceHistory"), "0");
    EXPECT_EQ(m_folder.Value(In("Copy.MDB"), "PRAGMA application_id"),
              QString::number(ApplicationMark));
    EXPECT_EQ(m_folder.Value(In("Copy.MDB"), "PRAGMA integrity_check"), "ok");
    EXPECT_EQ(QDir(m_folder.Path()).entryList({"Copy.MDB*"}, QDir::Files), QStringList("Copy.MDB"));
}

TEST_F(SaveAsCommand, RefusesTheOpenAccountItselfAndKeepsItsScreens)
{
    Launch();
    m_run.boxes.files = {m_folder.SampleAccount(), std::nullopt};
    m_run.Choose("mnuFLSaveAs");
    EXPECT_EQ(m_run.boxes.Texts(), QStringList(NameTaken));
    EXPECT_TRUE(m_run.App().Host().Loaded("frmDailyTracker"));
    EXPECT_TRUE(State().databases.gConnAccount.IsOpen());
}

TEST_F(SaveAsCommand, AsksAgainForALinkThatLeadsNowhere)
{
    Launch();
    ASSERT_TRUE(QFile::link(In("gone/Broker.mdb"), In("Link.mdb")));
    m_run.boxes.files = {In("Link.mdb"), In("Broker.mdb")};
    m_run.Choose("mnuFLSaveAs");
    EXPECT_EQ(m_run.boxes.Texts(), QStringList(NameTaken));
    EXPECT_FALSE(m_run.App().Ended());
    EXPECT_EQ(State().settings.AccountName, "Broker");
}

TEST_F(SaveAsCommand, TakesAlongWhatIsStillInTheLog)
{
    Launch();
    State().databases.gConnAccount.Execute("INSERT INTO PriceHistory (Symbol, Shares) "
                                           "VALUES ('NEW', 1)");
    Connection reader; // keeps the log from being brought home
    reader.Open(m_folder.SampleAccount());
    std::optional<Statement> reading = reader.Prepare("SELECT * FROM PriceHistory");
    reading->Step();
    m_run.boxes.files = {In("Copy.mdb")};
    m_run.Choose("mnuFLSaveAs");
    reading.reset();
    reader.Close();
    EXPECT_EQ(Caption(), "Quillon - Copy");
    Statement row = State().databases.gConnAccount.Prepare("SELECT Symbol FROM PriceHistory");
    ASSERT_TRUE(row.Step());
    EXPECT_EQ(row.Text(0), "NEW");
}

TEST_F(SaveAsCommand, IntoAMissingFolderIsToldWithTheWordsOfANewAccountAndEndsTheProgram)
{
    Launch();
    m_run.boxes.files = {In("nowhere/Copy.mdb")};
    m_run.Choose("mnuFLSaveAs");
    EXPECT_EQ(m_run.boxes.Texts(),
              QStringList("An error has occured while creating a new account\nError number 76\n"
                          "Description: Path not found: " +
                          In("nowhere/Copy.mdb")));
    EXPECT_TRUE(m_run.App().Ended());
}

TEST_F(AccountCommands, ConvertAnOldAccountWhenItIsOpened)
{
    Launch();
    m_run.boxes.files = {AddOldAccount(m_folder, "Broker.mdb")};
    m_run.Choose("mnuFLOpenExisting");
    EXPECT_TRUE(m_run.boxes.Texts().isEmpty());
    EXPECT_EQ(Caption(), "Quillon - Broker");
    EXPECT_TRUE(m_run.App().Host().Loaded("frmDailyTracker"));
    EXPECT_EQ(State().account.CommissionCost, Currency("9.95"));
    EXPECT_FALSE(QFile::exists(In("Temp.mdb")));
}

TEST_F(AccountCommands, EndTheProgramWhenAnOldAccountCannotBeConverted)
{
    Launch();
    m_run.boxes.files = {AddOldAccount(m_folder, "Broker.mdb")};
    QFile::remove(In("Template.xxx"));
    m_run.Choose("mnuFLOpenExisting");
    ASSERT_EQ(m_run.boxes.boxes.size(), 1u);
    EXPECT_TRUE(m_run.boxes.boxes[0].text.startsWith(
        "A critical error has occured on account database convertion logic.\n"));
    EXPECT_TRUE(m_run.App().Ended());
    EXPECT_EQ(m_folder.Value(In("Broker.mdb"), "SELECT COUNT(*) FROM History"), "4");
}
