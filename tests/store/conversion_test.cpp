/// Accounts and control files of versions before 5: what becomes of each row, what is said on the
/// way, and what every failure leaves behind.

#include "account_file.h"
#include "full_disk.h"
#include "old_account.h"
#include "test_services.h"

#include "store/control_rows.h"
#include "store/conversion.h"

#include <gtest/gtest.h>

namespace
{

std::string Dump(const QString &path, const QString &sql)
{
    Connection file;
    file.Open(path);
    Statement row = file.Prepare(sql);
    std::string text;
    while (row.Step()) {
        for (int i = 0; i < row.ColumnCount(); ++i)
            text += (i ? "|" : "") + (row.IsNull(i) ? "null" : row.Text(i).toStdString());
        text += "\n";
    }
    return text;
}

/// All rows of an account but for the numbers, which the conversion gives anew, and the two fields
/// of the Balance row that every opening may change.
std::string RowsOf(const QString &account)
{
    std::string rows;
    for (const char *query :
         {"SELECT Symbol, Name, Shares, CurrPrice, Basis, AvrgPrice, NumberTransToDate, TransDate, "
          "Time, PerCentGainToday FROM DailyTracker ORDER BY rowid",
          "SELECT Symbol, Name, ProfitLoss, TransDate, Time FROM DailyProfitLoss ORDER BY Symbol",
          "SELECT * FROM PortfolioDailyBalance ORDER BY TransDate",
          "SELECT Symbol, Name, Description, Shares, TransactionCost, Price, Amount, TransDate, "
          "Time FROM History ORDER BY TransDate, Time, Amount",
          "SELECT Symbol, Shares, PurchasePrice, TransDate, Time FROM PriceHistory "
          "ORDER BY Symbol, TransDate, Time",
          "SELECT TableName, Field01, Field04, Field08, Field09 FROM DescriptiveTable "
          "ORDER BY rowid"})
        rows += Dump(account, query);
    return rows;
}

class Conversion : public testing::Test
{
protected:
    Conversion() : m_path(AddOldAccount(m_folder, "Broker.mdb")) {}

    /// Opens the account as the program does.
    void OpenAccount(const QString &path)
    {
        CloseDatabases(m_databases);
        m_account = AccountState();
        m_statuses.list.clear();
        m_settings.CurrentFilePath = path;
        m_settings.AccountName = QFileInfo(path).completeBaseName();
        OpenDatabases(m_databases, m_settings, m_account, m_services);
        ConversionWork work{m_databases, m_settings, m_account, m_services,
                            [this] { CloseDatabases(m_databases); }};
        LoadDescriptiveTable(m_databases.gConnAccount, m_account, m_services.clock.Today(),
                             [&work] { ConvertToVersion5(work); });
    }
    void Convert() { OpenAccount(m_path); }
    /// The one box of a conversion that ends the program.
    std::string FailureOf(const QString &path)
    {
        try {
            OpenAccount(path);
            ADD_FAILURE() << "did not end";
        } catch (const ProgramEnded &) {
        }
        CloseDatabases(m_databases);
        const std::vector<std::string> boxes = m_machine.dialogs.TakeBoxes();
        return boxes.size() == 1 ? boxes[0] : "boxes: " + std::to_string(boxes.size());
    }
    QString ControlFile() const { return m_folder.File("ApplControl.mdb"); }
    std::string Securities() const
    {
        return Dump(ControlFile(), "SELECT * FROM SecurityDetail ORDER BY Symbol");
    }
    std::string VersionIn(const QString &path) const
    {
        return m_folder
            .Value(path, "SELECT Field06 FROM DescriptiveTable WHERE TableName = 'Balance'")
            .toStdString();
    }
    bool HasOldLayout(const QString &path) const
    {
        return !m_folder
                    .Value(path, "SELECT name FROM pragma_table_info('DailyTracker') "
                                 "WHERE name = 'SecurityType'")
                    .isEmpty();
    }
    /// The databases of the folder by name: no temporary file, no log.
    std::string Listing() const
    {
        return QDir(m_folder.Path())
            .entryList({"*.mdb", "*.mdb-*", "*.mdb.new*"}, QDir::Files | QDir::Hidden)
            .join(' ')
            .toStdString();
    }

    struct RecordedStatuses : StatusLine
    {
        void Post(const QString &text) override { list << text; }
        QStringList list;
    };

    TestAppFolder m_folder;
    QString m_path;
    TestServices m_machine{m_folder.Path()};
    RecordedStatuses m_statuses;
    Services m_services{m_machine.clock,
                        m_machine.dialogs,
                        m_statuses,
                        m_machine.commands,
                        m_machine.services.lifetime,
                        m_machine.services.settingsStore,
                        m_machine.services.formats,
                        m_folder.Path()};
    Databases m_databases;
    Settings m_settings;
    AccountState m_account;
};

const char *const AllFiles = "ApplControl.mdb Broker.mdb HistPrices.mdb Sample Portfolio.mdb "
                             "WebSites.mdb";

} // namespace

TEST_F(Conversion, BringsEveryRowIntoTodaysLayout)
{
    MakeControlFileOld(m_folder);
    const std::string before = RowsOf(m_path);
    Convert();
    CloseDatabases(m_databases);
    EXPECT_EQ(RowsOf(m_path), before);
    EXPECT_FALSE(HasOldLayout(m_path));
    EXPECT_EQ(Dump(m_path, "PRAGMA integrity_check"), "ok\n");
    EXPECT_EQ(Dump(m_path, "PRAGMA application_id"), std::to_string(ApplicationMark) + "\n");
    EXPECT_EQ(Listing(), AllFiles);
    EXPECT_TRUE(m_machine.dialogs.Boxes().empty());
}

TEST_F(Conversion, GivesRowsNewNumbersInTheOrderOfTheirDates)
{
    Convert();
    CloseDatabases(m_databases);
    // The two deposits of one instant stay in their order.
    EXPECT_EQ(Dump(m_path, "SELECT ID, Symbol, Amount, TransDate FROM History ORDER BY ID"),
              "1| |100000000|2024-02-28\n"
              "2| |200000000|2024-02-28\n"
              "3|O'NEIL|10050000|2024-02-29\n"
              "4|FUNDX|6860000|2026-02-26\n");
    EXPECT_EQ(Dump(m_path, "SELECT ID, Symbol, Shares FROM PriceHistory ORDER BY ID"),
              "1|O'NEIL|100.0\n2|O'NEIL|0.5\n3|FUNDX|-7.0\n");
    EXPECT_EQ(Dump(m_path, "SELECT ID, Symbol FROM DailyProfitLoss ORDER BY ID"),
              "1|O'NEIL\n2|FUNDX\n");
    EXPECT_EQ(Dump(m_path, "SELECT TransDate FROM PortfolioDailyBalance ORDER BY rowid"),
              "2026-02-26\n2026-02-27\n");
}

TEST_F(Conversion, StampsTheVersionAndStartsTheWalkOfTheControlRowsOver)
{
    Convert();
    EXPECT_EQ(m_account.AccountBalance, Currency("12345.6789"));
    EXPECT_EQ(m_account.CommissionStyle, "Style1");
    EXPECT_EQ(m_account.CommissionCost, Currency("9.95"));
    EXPECT_EQ(m_account.LoginID, "Ann");
    EXPECT_EQ(m_account.ElapsedDays.Value(), 5); // 4, and today
    EXPECT_EQ(VersionIn(m_path), ProgramVersion().Text().toStdString());
    EXPECT_TRUE(m_databases.gConnAccount.IsOpen());
    EXPECT_TRUE(m_databases.gRsApplication.IsOpen());
    Convert(); // it is done once
    EXPECT_TRUE(m_statuses.list.isEmpty());
}

TEST_F(Conversion, SaysWhatItIsDoing)
{
    MakeControlFileOld(m_folder);
    Convert();
    EXPECT_EQ(m_statuses.list, QStringList({"Updating Application database to current version...",
                                            "Application database conversion completed...",
                                            "Updating account database to current version...",
                                            "Account database conversion completed..."}));
}

TEST_F(Conversion, BringsTheSecuritiesHeldIntoTheMasterList)
{
    MakeControlFileOld(m_folder);
    Convert();
    CloseDatabases(m_databases);
    EXPECT_EQ(Securities(), "FUNDX|Fund X|Mutual Fund\nO'NEIL|O'Neil & Café|Stock\n");
}

TEST_F(Conversion, OnACurrentControlFileLeavesItsRowsAndAddsTheSecurities)
{
    OpenAccount(m_folder.SampleAccount()); // makes the control file
    CloseDatabases(m_databases);
    m_folder.Execute(ControlFile(), "INSERT INTO SecurityAssetClass VALUES ('IBMX', 'Bonds', 50)");
    Convert();
    EXPECT_EQ(m_statuses.list, QStringList({"Updating account database to current version...",
                                            "Account database conversion completed..."}));
    CloseDatabases(m_databases);
    EXPECT_EQ(Dump(ControlFile(), "SELECT * FROM SecurityAssetClass"), "IBMX|Bonds|50.0\n");
    EXPECT_EQ(Securities(), "FUNDX|Fund X|Mutual Fund\nO'NEIL|O'Neil & Café|Stock\n");
}

TEST_F(Conversion, KeepsTheRowOfASecurityThatIsListedAlready)
{
    OpenAccount(m_folder.SampleAccount());
    CloseDatabases(m_databases);
    m_folder.Execute(ControlFile(),
                     "INSERT INTO SecurityDetail VALUES "
                     "('FUNDX', 'My name for it', 'Bond'), ('OLD', 'Old', 'Mutual')");
    Convert();
    CloseDatabases(m_databases);
    EXPECT_EQ(Securities(), "FUNDX|My name for it|Bond\nO'NEIL|O'Neil & Café|Stock\n"
                            "OLD|Old|Mutual Fund\n");
}

TEST_F(Conversion, KeepsTheControlRowsAndDoublesNoneThatIsDelivered)
{
    MakeControlFileOld(m_folder);
    Convert();
    CloseDatabases(m_databases);
    EXPECT_EQ(Dump(ControlFile(), "SELECT TableName, Field04, Field08, Field10 "
                                  "FROM ApplicationTable ORDER BY TableName, Field08"),
              "AssetClass|2020-01-03|Bonds|null\n"
              "AssetClass|2020-01-03|My class|null\n"
              "AssetClass|2026-01-01|Options|null\n"
              "Portfolio|2020-01-02|Broker|1\n"
              "Portfolio|2020-01-03|Savings|0\n");
}

TEST_F(Conversion, OfASecondOldAccountLeavesTheFirstAsItIs)
{
    MakeControlFileOld(m_folder);
    const QString second = AddOldAccount(m_folder, "Savings.mdb");
    m_folder.Execute(second, "UPDATE DailyTracker SET Symbol = 'OTHER' WHERE Symbol = 'FUNDX'");
    Convert();
    CloseDatabases(m_databases);
    const QByteArray first = AccountFile::Bytes(m_path);
    OpenAccount(second);
    CloseDatabases(m_databases);
    EXPECT_FALSE(HasOldLayout(second));
    EXPECT_EQ(AccountFile::Bytes(m_path), first);
    EXPECT_EQ(Securities(), "FUNDX|Fund X|Mutual Fund\nO'NEIL|O'Neil & Café|Stock\n"
                            "OTHER|Fund X|Mutual Fund\n");
}

TEST_F(Conversion, TakesAnAccountThatHasTodaysLayoutAlready)
{
    m_folder.Execute(m_path, "ALTER TABLE DailyTracker DROP COLUMN SecurityType");
    const std::string before = RowsOf(m_path);
    Convert();
    CloseDatabases(m_databases);
    EXPECT_EQ(RowsOf(m_path), before);
    EXPECT_EQ(VersionIn(m_path), ProgramVersion().Text().toStdString());
    EXPECT_EQ(Securities(), "");
}

TEST_F(Conversion, GivesAnEmptyFieldTheDefaultThatTodaysLayoutAsksFor)
{
    m_folder.Execute(m_path, R"sql(
        DROP TABLE PriceHistory;
        CREATE TABLE PriceHistory (ID INTEGER PRIMARY KEY, Symbol TEXT, Shares REAL,
                                   PurchasePrice INTEGER, TransDate TEXT, Time TEXT);
        INSERT INTO PriceHistory VALUES (5, 'FUNDX', NULL, NULL, NULL, NULL);
    )sql");
    Convert();
    CloseDatabases(m_databases);
    EXPECT_EQ(Dump(m_path, "SELECT * FROM PriceHistory"), "1|FUNDX|0.0|0|null|null\n");
}

namespace
{

struct VersionCase
{
    const char *name;
    const char *stored;
    bool isConverted;
};
class VersionText : public Conversion, public testing::WithParamInterface<VersionCase>
{};

} // namespace

TEST_P(VersionText, DecidesByItsFirstCharacter)
{
    m_folder.Execute(m_path, QString("UPDATE DescriptiveTable SET Field06 = '%1' "
                                     "WHERE TableName = 'Balance'")
                                 .arg(GetParam().stored));
    Convert();
    EXPECT_EQ(!m_statuses.list.isEmpty(), GetParam().isConverted);
    CloseDatabases(m_databases);
    EXPECT_EQ(HasOldLayout(m_path), !GetParam().isConverted);
    EXPECT_EQ(VersionIn(m_path), ProgramVersion().Text().toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    Conversion, VersionText,
    testing::Values(VersionCase{"FortyOne", "41", true}, VersionCase{"FourAlone", "4", true},
                    VersionCase{"AVeryOldOne", "1999", true}, VersionCase{"FiveAlone", "5", false},
                    VersionCase{"Zero", "0", false}, VersionCase{"ANewerOne", "7000", false}),
    [](const auto &info) { return info.param.name; });

// --- what is in the way --------------------------------------------------------------------------

TEST_F(Conversion, TouchesNoFileThatHasTheNameOfItsTargets)
{
    MakeControlFileOld(m_folder);
    const std::string before = RowsOf(m_path);
    const QString temp = m_folder.AddAccount("Temp.mdb"); // never opened here
    m_folder.Execute(temp, "INSERT INTO PriceHistory (Symbol, Shares) VALUES ('MINE', 3)");
    m_folder.AddFile("Temp 2.mdb", "taken");
    m_folder.AddFile("ApplTemp.mdb", "the user's");
    Convert();
    CloseDatabases(m_databases);
    EXPECT_EQ(RowsOf(m_path), before);
    EXPECT_FALSE(HasOldLayout(m_path));
    EXPECT_EQ(Dump(temp, "SELECT Symbol, Shares FROM PriceHistory"), "MINE|3.0\n");
    EXPECT_EQ(AccountFile::Bytes(m_folder.File("Temp 2.mdb")), "taken");
    EXPECT_EQ(AccountFile::Bytes(m_folder.File("ApplTemp.mdb")), "the user's");
    EXPECT_FALSE(QFile::exists(m_folder.File("Temp 3.mdb")));
    EXPECT_FALSE(QFile::exists(m_folder.File("ApplTemp 2.mdb")));
}

TEST_F(Conversion, ConvertsAnAccountThatIsItselfCalledTemp)
{
    const QString temp = AddOldAccount(m_folder, "Temp.mdb");
    const std::string before = RowsOf(temp);
    OpenAccount(temp);
    CloseDatabases(m_databases);
    EXPECT_EQ(RowsOf(temp), before);
    EXPECT_FALSE(HasOldLayout(temp));
}

TEST(TemporaryPath, HasTheNameReplacedInTheFoldersToo)
{
    EXPECT_EQ(TemporaryPathOf("/home/ann/Broker.mdb", "Broker"), "/home/ann/Temp.mdb");
    EXPECT_EQ(TemporaryPathOf("/home/Broker/Broker.mdb", "Broker"), "/home/Temp/Temp.mdb");
    EXPECT_EQ(TemporaryPathOf("/home/ann/Temp.mdb", "Temp"), "/home/ann/Temp.mdb.new");
    EXPECT_EQ(TemporaryPathOf("/home/ann/.mdb", ""), "/home/ann/.mdb.new");
}

// --- failures ------------------------------------------------------------------------------------

TEST_F(Conversion, OfAnAccountNamedLikeItsFolderFailsAndLeavesItAsItIs)
{
    const QString path = AddOldAccount(m_folder, "Broker/Broker.mdb");
    const std::string before = RowsOf(path);
    EXPECT_EQ(FailureOf(path),
              "Quillon Editor|16|A critical error has occured on account database convertion "
              "logic.\nPlease contact Tech Support and supply error number and description\n"
              "Error number: 76\nDescription: Path not found: " +
                  m_folder.File("Temp/Temp.mdb").toStdString());
    EXPECT_EQ(RowsOf(path), before);
    EXPECT_TRUE(HasOldLayout(path));
    EXPECT_EQ(VersionIn(path), "41");
}

TEST_F(Conversion, WithoutTheAccountTemplateEndsAndSucceedsOnceItIsThere)
{
    MakeControlFileOld(m_folder);
    const std::string before = RowsOf(m_path);
    QFile::rename(m_folder.File("Template.xxx"), m_folder.File("gone"));
    EXPECT_EQ(FailureOf(m_path),
              "Quillon Editor|16|A critical error has occured on account database convertion "
              "logic.\nPlease contact Tech Support and supply error number and description\n"
              "Error number: 53\nDescription: File not found: " +
                  m_folder.File("Template.xxx").toStdString());
    EXPECT_EQ(RowsOf(m_path), before);
    EXPECT_TRUE(HasOldLayout(m_path));
    EXPECT_EQ(m_folder.Value(m_path, "SELECT Field07 FROM DescriptiveTable LIMIT 1"), "4.0");
    QFile::rename(m_folder.File("gone"), m_folder.File("Template.xxx"));
    Convert();
    CloseDatabases(m_databases);
    EXPECT_EQ(RowsOf(m_path), before);
    EXPECT_EQ(Securities(), "FUNDX|Fund X|Mutual Fund\nO'NEIL|O'Neil & Café|Stock\n");
}

TEST_F(Conversion, WithoutTheControlTemplateEndsWithTheOldControlFileWhole)
{
    MakeControlFileOld(m_folder);
    QFile::remove(m_folder.File("ApplControl.xxx"));
    EXPECT_EQ(FailureOf(m_path),
              "Quillon Editor|16|A critical error has occured on application database convertion "
              "logic.\nPlease contact Tech Support and supply error number and description\n"
              "Error number: 53\nDescription: File not found: " +
                  m_folder.File("ApplControl.xxx").toStdString());
    EXPECT_EQ(Dump(ControlFile(), "SELECT Field08 FROM ApplicationTable ORDER BY Field08"),
              "Bonds\nBroker\nMy class\nSavings\n");
    EXPECT_TRUE(HasOldLayout(m_path));
}

TEST_F(Conversion, ToldByItsOuterRoutineWhenNeitherOfTheTwoKnewTheFailure)
{
    OpenAccount(m_path);
    ConversionWork work{m_databases, m_settings, m_account, m_services,
                        [] { throw RuntimeError::Overflow(); }};
    // What CloseAllScreens throws is the account's failure, not an unknown one.
    EXPECT_THROW(ConvertToVersion5(work), ProgramEnded);
    EXPECT_EQ(m_machine.dialogs.TakeBoxes().back(),
              "Quillon Editor|16|A critical error has occured on account database convertion "
              "logic.\nPlease contact Tech Support and supply error number and description\n"
              "Error number: 6\nDescription: Overflow");
}

TEST_F(Conversion, OnAFullDiskLosesNothingAndSucceedsWithRoom)
{
    MakeControlFileOld(m_folder);
    m_folder.Execute(m_path, "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE "
                             "i < 3000) INSERT INTO History (Symbol, Name, TransDate, Amount) "
                             "SELECT 'S' || i, hex(randomblob(40)), '2020-01-01', i FROM n");
    const std::string before = RowsOf(m_path);
    OpenAccount(m_folder.SampleAccount()); // the other files are there
    {
        const FullDisk disk(AccountFile::EmptyAccount().size() + 60000);
        const std::string failure = FailureOf(m_path);
        EXPECT_NE(failure.find("account database convertion logic."), std::string::npos) << failure;
        EXPECT_NE(failure.find("disk"), std::string::npos) << failure;
    }
    EXPECT_EQ(RowsOf(m_path), before);
    EXPECT_TRUE(HasOldLayout(m_path));
    Convert();
    CloseDatabases(m_databases);
    EXPECT_EQ(RowsOf(m_path), before);
    EXPECT_EQ(Listing(), AllFiles);
}

TEST_F(Conversion, OfAnAccountThatAnotherProgramReadsLeavesItToThatOne)
{
    const std::string before = RowsOf(m_path);
    Connection other;
    other.Open(m_path);
    std::optional<Statement> reading = other.Prepare("SELECT * FROM History");
    reading->Step();
    const std::string failure = FailureOf(m_path);
    EXPECT_NE(failure.find("Error number: 70\nDescription: The file is in use: "),
              std::string::npos)
        << failure;
    reading.reset();
    other.Close();
    EXPECT_EQ(RowsOf(m_path), before);
    EXPECT_TRUE(HasOldLayout(m_path));
    Convert();
    CloseDatabases(m_databases);
    EXPECT_EQ(RowsOf(m_path), before);
}

TEST_F(Conversion, OfABrokenAccountEndsAndTouchesNothing)
{
    m_folder.Execute(m_path, "DROP TABLE PortfolioDailyBalance");
    const std::string failure = FailureOf(m_path);
    EXPECT_NE(failure.find("Description: no such table: old.PortfolioDailyBalance"),
              std::string::npos)
        << failure;
    EXPECT_EQ(Dump(m_path, "SELECT COUNT(*) FROM History"), "4\n");
    EXPECT_TRUE(HasOldLayout(m_path));
}
