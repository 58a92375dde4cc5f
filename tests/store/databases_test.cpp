/// The five databases of a run: opened, made from their templates, refused, closed.

#include "test_app_folder.h"
#include "test_services.h"

#include "store/control_rows.h"
#include "store/databases.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace
{

class AppFolder : public testing::Test
{
protected:
    AppFolder()
    {
        m_settings.CurrentFilePath = m_folder.SampleAccount();
        m_settings.AccountName = "Sample Portfolio";
    }
    void Open() { OpenDatabases(m_databases, m_settings, m_account, m_machine.services); }
    void AddSite(const QString &values)
    {
        m_folder.Execute(m_folder.File("WebSites.mdb"),
                         "INSERT INTO WebParameters (ID, WebSiteName, DelayTime, DeselectFlagTemp, "
                         "DeselectFlagPerm) VALUES " +
                             values);
    }
    bool Remove(const char *file) { return QFile::remove(m_folder.File(file)); }
    std::vector<std::string> Boxes() { return m_machine.dialogs.TakeBoxes(); }
    QString Shared(const char *file, const QString &sql)
    {
        return m_folder.Value(m_folder.File(file), sql);
    }

    TestAppFolder m_folder;
    TestServices m_machine{m_folder.Path()};
    Settings m_settings;
    AccountState m_account;
    Databases m_databases;
};

using OpenedDatabases = AppFolder;
using QuoteSites = AppFolder;
using ApplicationTable = AppFolder;

} // namespace

TEST_F(OpenedDatabases, AreAllFiveWithTheirTwoRecordsets)
{
    Open();
    EXPECT_TRUE(m_databases.gConnAccount.IsOpen());
    EXPECT_TRUE(m_databases.gConnUndo.IsOpen());
    EXPECT_EQ(m_databases.gConnUndo.Path(), m_databases.gConnAccount.Path());
    EXPECT_TRUE(m_databases.gConnWebSites.IsOpen());
    EXPECT_TRUE(m_databases.gConnApplControl.IsOpen());
    EXPECT_TRUE(m_databases.gConnHistPrices.IsOpen());
    EXPECT_TRUE(m_databases.gRsWebParameters.IsOpen());
    EXPECT_TRUE(m_databases.gRsApplication.IsOpen());
    EXPECT_FALSE(m_databases.accountError);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(OpenedDatabases, OfAFirstStartAreMadeFromTheirTemplatesWithoutAMessage)
{
    EXPECT_FALSE(QFile::exists(m_folder.File("ApplControl.mdb")));
    EXPECT_FALSE(QFile::exists(m_folder.File("HistPrices.mdb")));
    Open();
    EXPECT_TRUE(Boxes().empty());
    CloseDatabases(m_databases);
    EXPECT_EQ(Shared("ApplControl.mdb", "SELECT COUNT(*) FROM SecurityDetail"), "0");
    EXPECT_EQ(Shared("HistPrices.mdb", "SELECT COUNT(*) FROM HistoricalPrices"), "0");
}

TEST_F(OpenedDatabases, AreNotOverwrittenByTheirTemplates)
{
    Open();
    m_databases.gConnApplControl.Execute("INSERT INTO SecurityDetail (Symbol) VALUES ('ACME')");
    m_databases.gConnHistPrices.Execute(
        "INSERT INTO HistoricalPrices (Symbol, PriceDate) VALUES ('ACME', '2026-02-27')");
    CloseDatabases(m_databases);
    Open();
    EXPECT_EQ(m_databases.gConnApplControl.Execute("DELETE FROM SecurityDetail"), 1);
    EXPECT_EQ(m_databases.gConnHistPrices.Execute("DELETE FROM HistoricalPrices"), 1);
}

TEST_F(OpenedDatabases, CloseToSingleFilesAndOpenAgain)
{
    Open();
    CloseDatabases(m_databases);
    EXPECT_FALSE(m_databases.gConnAccount.IsOpen());
    EXPECT_FALSE(m_databases.gConnUndo.IsOpen());
    EXPECT_FALSE(m_databases.gConnHistPrices.IsOpen());
    EXPECT_FALSE(m_databases.gRsWebParameters.IsOpen());
    EXPECT_FALSE(m_databases.gRsApplication.IsOpen());
    EXPECT_TRUE(QDir(m_folder.Path()).entryList({"*-wal", "*-shm", "*-journal"}).isEmpty());
    CloseDatabases(m_databases); // closed ones stay closed
    Open();
    EXPECT_TRUE(m_databases.gConnAccount.IsOpen());
}

TEST_F(OpenedDatabases, MoveToAnotherAccount)
{
    Open();
    CloseDatabases(m_databases);
    m_settings.CurrentFilePath = m_folder.AddAccount("Ann's Broker.mdb");
    m_settings.AccountName = "Ann's Broker";
    Open();
    EXPECT_EQ(m_databases.gConnAccount.Path(), m_settings.CurrentFilePath);
    EXPECT_EQ(m_databases.gRsApplication.RecordCount(), 2);
}

TEST_F(OpenedDatabases, WithoutTheWebSitesFileEndTheProgram)
{
    ASSERT_TRUE(Remove("WebSites.mdb"));
    EXPECT_THROW(Open(), ProgramEnded);
    const std::vector<std::string> boxes = Boxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_TRUE(QString::fromStdString(boxes[0]).startsWith(
        "Quillon Editor|16|An error has occured connecting to the websites database "
        "(WebSites.mdb).\nPlease restore from backup.\nError number -2147467259\nDescription: "))
        << boxes[0];
    EXPECT_FALSE(QFile::exists(m_folder.File("WebSites.mdb")));
}

TEST_F(OpenedDatabases, WithABrokenControlFileEndTheProgramAndLeaveIt)
{
    m_folder.AddFile("ApplControl.mdb", "not a database");
    m_machine.dialogs.Queue(Answer::Cancel); // no other file in its place
    EXPECT_THROW(Open(), ProgramEnded);
    const std::vector<std::string> boxes = Boxes();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_TRUE(QString::fromStdString(boxes[1]).startsWith(
        "Quillon Editor|16|An error has occured connecting to this application control database "
        "(ApplControl.mdb).\nPlease restore from backup.\nError number -2147467259\n"))
        << boxes[1];
    QFile file(m_folder.File("ApplControl.mdb"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "not a database");
}

TEST_F(OpenedDatabases, WithoutATemplateToMakeThemFromEndTheProgram)
{
    ASSERT_TRUE(Remove("HistPrices.xxx"));
    EXPECT_THROW(Open(), ProgramEnded);
    const std::vector<std::string> boxes = Boxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_TRUE(QString::fromStdString(boxes[0]).startsWith(
        "Quillon Editor|16|An error has occured connecting to the Historical Price database "
        "(HistPrice.mdb).\nPlease restore from backup.\nError number 53\nDescription: File not "
        "found: "))
        << boxes[0];
}

TEST_F(OpenedDatabases, OfABadAccountSayNothingUntilItsControlRowsAreRead)
{
    m_settings.CurrentFilePath = m_folder.AddFile("Notes.mdb", "Dear diary");
    Open();
    EXPECT_TRUE(Boxes().empty());
    ASSERT_TRUE(m_databases.accountError);
    EXPECT_THROW(LoadDescriptiveTable(m_databases.gConnAccount, m_account, QDate(2026, 3, 2)),
                 RuntimeError);
    EXPECT_TRUE(m_databases.gConnHistPrices.IsOpen());

    CloseDatabases(m_databases);
    m_settings.CurrentFilePath = m_folder.SampleAccount();
    Open();
    EXPECT_FALSE(m_databases.accountError);
}

TEST_F(QuoteSites, WithoutAChosenOneAreSearchedForTheLastThatHoldsYahooFinance)
{
    AddSite("(1, 'Aardvark', 7, 0, 0), (5, 'Yahoo Finance UK', 15, 0, 0), "
            "(6, 'Yahoo Finance (delayed)', 20, 0, 0), (9, 'Zeta', 3, 0, 0)");
    Open();
    EXPECT_EQ(m_account.CurrentWebSiteName, "Yahoo Finance UK");
    EXPECT_EQ(m_account.CurrentWebSiteId, 5);
    EXPECT_EQ(m_account.WebUpdateMinutes, Integer::FromWide(15));
}

TEST_F(QuoteSites, InLowerCaseDoNotMatch)
{
    AddSite("(1, 'Yahoo finance', 7, 0, 0), (2, 'yahoo Finance', 7, 0, 0)");
    m_account.CurrentWebSiteName = "  ";
    Open();
    EXPECT_EQ(m_account.CurrentWebSiteId, 0);
    EXPECT_EQ(m_account.CurrentWebSiteName, "  ");
}

TEST_F(QuoteSites, ThatWereChosenStay)
{
    AddSite("(1, 'Yahoo Finance', 7, 0, 0)");
    m_account.CurrentWebSiteName = "Zeta";
    m_account.WebUpdateMinutes = Integer::FromWide(3);
    Open();
    EXPECT_EQ(m_account.CurrentWebSiteName, "Zeta");
    EXPECT_EQ(m_account.WebUpdateMinutes, Integer::FromWide(3));
}

TEST_F(QuoteSites, ThatFailedInAnEarlierRunGetAFreshChance)
{
    AddSite("(1, 'A', 7, 1, 0), (2, 'B', 7, 0, 1), (3, 'C', 7, 1, 1)");
    Open();
    EXPECT_EQ(m_databases.gRsWebParameters.RecordCount(), 3);
    const int temp = m_databases.gRsWebParameters.Column("DeselectFlagTemp");
    const int perm = m_databases.gRsWebParameters.Column("DeselectFlagPerm");
    std::string flags;
    Recordset &sites = m_databases.gRsWebParameters;
    for (sites.MoveFirst(); !sites.AtEnd(); sites.MoveNext())
        flags += std::to_string(sites.Flag(temp)) + std::to_string(sites.Flag(perm)) + " ";
    EXPECT_EQ(flags, "00 01 01 ");
    CloseDatabases(m_databases);
    EXPECT_EQ(Shared("WebSites.mdb", "SELECT SUM(DeselectFlagTemp) || SUM(DeselectFlagPerm) "
                                     "FROM WebParameters"),
              "02");
}

TEST_F(QuoteSites, StandInTheOrderOfTheirNamesOnTheFirst)
{
    AddSite("(1, 'Zeta', 7, 0, 0), (2, 'beta', 7, 0, 0), (3, 'Alpha', 7, 0, 0)");
    Open();
    QStringList names;
    Recordset &sites = m_databases.gRsWebParameters;
    EXPECT_EQ(sites.Position(), 0);
    for (; !sites.AtEnd(); sites.MoveNext())
        names << sites.Text("WebSiteName");
    EXPECT_EQ(names, QStringList({"Alpha", "beta", "Zeta"}));
}

TEST_F(QuoteSites, ThatCannotBeReadSwitchThePriceUpdateOffAndTheProgramGoesOn)
{
    m_folder.Execute(m_folder.File("WebSites.mdb"), "DROP TABLE WebParameters");
    Open();
    const std::vector<std::string> boxes = Boxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0],
              "Quillon Editor|48|An error has occured with the 'WebSites.mdb' database. \n"
              "The current price update option will be disabled. \n"
              "Please determine if this database is located in this \n"
              "application's folder or if corrupted. Restore from backup.");
    EXPECT_FALSE(m_settings.WebPriceUpdate);
    EXPECT_TRUE(m_databases.gConnHistPrices.IsOpen());
}

TEST_F(ApplicationTable, GetsTheRowOfAnAccountThatIsNewHereUnderItsTrimmedName)
{
    m_settings.AccountName = "  Ann's Broker ";
    Open();
    EXPECT_EQ(m_databases.gRsApplication.Position(), 0);
    CloseDatabases(m_databases);
    EXPECT_EQ(Shared("ApplControl.mdb",
                     "SELECT TableName || '|' || Field04 || '|' || Field05 || '|' || Field08 || "
                     "'|' || Field09 || '|' || Field10 || '|' || Field11 FROM ApplicationTable"),
              "Portfolio|2026-03-02|2026-03-02|Ann's Broker|N/A|0|0");
    EXPECT_EQ(Shared("ApplControl.mdb",
                     "SELECT COALESCE(Field01, Field02, Field03, Field06, Field07, Field12, "
                     "'all null') FROM ApplicationTable"),
              "all null");
}

TEST_F(ApplicationTable, KnowsAnAccountOfAnEarlierRun)
{
    Open();
    CloseDatabases(m_databases);
    Open();
    CloseDatabases(m_databases);
    EXPECT_EQ(Shared("ApplControl.mdb", "SELECT COUNT(*) FROM ApplicationTable"), "1");
}

TEST_F(ApplicationTable, DoesNotTakeAnAssetClassForAnAccountOfItsName)
{
    QFile::copy(m_folder.File("ApplControl.xxx"), m_folder.File("ApplControl.mdb"));
    m_folder.Execute(m_folder.File("ApplControl.mdb"),
                     "INSERT INTO ApplicationTable (TableName, Field08) "
                     "VALUES ('AssetClass', 'Sample Portfolio')");
    Open();
    CloseDatabases(m_databases);
    EXPECT_EQ(Shared("ApplControl.mdb", "SELECT COUNT(*) FROM ApplicationTable "
                                        "WHERE TableName = 'Portfolio'"),
              "1");
}

TEST_F(ApplicationTable, IsSortedByKindAndName)
{
    QFile::copy(m_folder.File("ApplControl.xxx"), m_folder.File("ApplControl.mdb"));
    m_folder.Execute(m_folder.File("ApplControl.mdb"),
                     "INSERT INTO ApplicationTable (TableName, Field08) VALUES ('Portfolio', 'B'), "
                     "('AssetClass', 'Z'), ('Portfolio', 'Sample Portfolio'), ('AssetClass', 'A')");
    Open();
    QStringList rows;
    Recordset &application = m_databases.gRsApplication;
    for (; !application.AtEnd(); application.MoveNext())
        rows << application.Text("TableName") + " " + application.Text("Field08");
    EXPECT_EQ(rows, QStringList({"AssetClass A", "AssetClass Z", "Portfolio B",
                                 "Portfolio Sample Portfolio"}));
}
