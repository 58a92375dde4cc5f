/// A report from the choice to the file: names, what is replaced, what a failure leaves.

#include "checked_book.h"
#include "report_account.h"

#include "reports/report_run.h"
#include "support/full_disk.h"
#include "support/test_services.h"

#include <QDir>
#include <QFileInfo>

namespace
{

class ReportRun : public testing::Test
{
protected:
    ReportRun()
    {
        m_account.Balance("Portfolio", "1", "2026-03-02");
        m_settings.CurrentFilePath = m_account.File().Path();
        m_settings.AccountName = "Broker";
        m_databases.gConnAccount.Open(m_account.File().Path());
        QFile::copy(m_folder.File("HistPrices.xxx"), m_folder.File("HistPrices.mdb"));
        QFile::copy(m_folder.File("ApplControl.xxx"), m_folder.File("ApplControl.mdb"));
        m_databases.gConnHistPrices.Open(m_folder.File("HistPrices.mdb"));
        m_databases.gConnApplControl.Open(m_folder.File("ApplControl.mdb"));
        m_databases.gRsApplication.Open(m_databases.gConnApplControl,
                                        {"*", "ApplicationTable", ""});
        m_machine.services.openDocument = [this](const QString &path) {
            m_opened << path;
            return m_hasProgram;
        };
    }
    bool Run(ReportKind kind)
    {
        ReportWork work{m_databases, m_settings,       m_machine.services,
                        m_tracker,   m_unsaved.path(), m_isFound};
        return RunReport(work, ReportAccount::Of(kind));
    }
    QString Beside(const char *name) const { return m_account.File().In(name); }
    std::string Heading(const QString &path) const { return ReadBack(path).Rows().at(0); }

    ReportAccount m_account;
    TestAppFolder m_folder;
    QTemporaryDir m_unsaved;
    TestServices m_machine;
    Settings m_settings;
    Databases m_databases;
    TrackerContent m_tracker;
    QStringList m_opened;
    bool m_hasProgram = true;
    bool m_isFound = false;
};

} // namespace

TEST_F(ReportRun, SavesEachReportBesideTheAccountUnderItsName)
{
    const std::vector<std::pair<ReportKind, const char *>> reports = {
        {ReportKind::TransactionHistory, "Transaction History.xls"},
        {ReportKind::ProfitLoss, "Daily Profit Loss.xls"},
        {ReportKind::HistoricalPriceList, "Historical Price List.xls"},
        {ReportKind::Summary, "Summary.xls"},
        {ReportKind::CostBasis, "Summary.xls"},
        {ReportKind::MonthlyPerformance, "Performance.xls"},
        {ReportKind::QuarterlyPerformance, "Performance.xls"},
        {ReportKind::YearlyPerformance, "Performance.xls"},
        {ReportKind::SelectedSecurityGain, "Amount Gain List.xls"},
        {ReportKind::PortfolioGain, "Amount Gain List.xls"},
    };
    for (const auto &[kind, name] : reports) {
        m_opened.clear();
        QFile::remove(Beside(name));
        EXPECT_TRUE(Run(kind)) << name;
        EXPECT_TRUE(QFile::exists(Beside(name))) << name;
        EXPECT_EQ(m_opened, QStringList(Beside(name)));
        EXPECT_FALSE(ReadBack(Beside(name)).Rows().empty()) << name;
    }
    EXPECT_EQ(m_machine.Status(), "Working on report....");
    EXPECT_TRUE(m_isFound);
    EXPECT_TRUE(m_machine.dialogs.Boxes().empty());
}

TEST_F(ReportRun, LetsTheTwoTaxReportsTakeEachOthersPlace)
{
    Run(ReportKind::Summary);
    EXPECT_EQ(Heading(Beside("Summary.xls")), "|DATE|DATE|SALES");
    Run(ReportKind::CostBasis);
    EXPECT_EQ(Heading(Beside("Summary.xls")), "|DATE|DATE|SALES PRICE|||SALES");
    Run(ReportKind::Summary);
    EXPECT_EQ(Heading(Beside("Summary.xls")), "|DATE|DATE|SALES");
}

TEST_F(ReportRun, KeepsTheWorkbookFromOthersAsTheAccountIs)
{
    Run(ReportKind::TransactionHistory);
    EXPECT_EQ(QFile::permissions(Beside("Transaction History.xls")) &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
}

TEST_F(ReportRun, IsReadAlikeByThreeSpreadsheetReaders)
{
    m_account.History("O'NEIL", "Bought", "150.5", "1234.5678", "-185807.4539", "2024-02-29", "-5",
                      "10:00:00", "O'Neil & Café 株");
    m_account.History("O'NEIL", "Sold", "-100", "1500", "149995", "2026-03-02", "-5");
    m_account.History("1E5", " Short  Sale", "-7", "0.0001", "0.0007", "2026-02-27");
    m_account.History("1E5", " Short Cover", "7", "12", "-84", "2026-02-28");
    m_account.Balance("O'NEIL", "1234567.891", "2026-03-02");
    m_databases.gConnHistPrices.Execute("INSERT INTO HistoricalPrices VALUES ('O''NEIL', "
                                        "'2026-03-02', 1, 2, 3, 1234567, 2147483647, 0)");
    m_tracker.totals = QStringList{"10,250.50", "-3"};
    QStringList paths;
    for (const ReportKind kind :
         {ReportKind::TransactionHistory, ReportKind::HistoricalPriceList, ReportKind::Summary,
          ReportKind::CostBasis, ReportKind::DailyTracker, ReportKind::PortfolioGain}) {
        Run(kind);
        paths << m_unsaved.filePath(QString("%1.xls").arg(int(kind)));
        QFile::copy(m_opened.back(), paths.back());
    }
    const std::vector<ReadBack> books = ReadBack::All(paths, "xlrd");
    for (const char *reader : {"libreoffice", "gnumeric"}) {
        if (!ReaderIsInstalled(reader))
            GTEST_SKIP() << reader << " is not installed";
        const std::vector<ReadBack> others = ReadBack::All(paths, reader);
        for (size_t book = 0; book < books.size(); ++book) {
            EXPECT_GE(books[book].Rows().size(), 2u);
            EXPECT_EQ(others[book].Rows(), books[book].Rows()) << reader;
            for (int row = 1; row <= 8; ++row)
                for (int column = 1; column <= 9; ++column)
                    EXPECT_EQ(others[book].Format(row, column), books[book].Format(row, column))
                        << reader << " " << row << " " << column;
        }
    }
}

TEST_F(ReportRun, GivesEachDailyTrackerReportAFileOfItsOwnThatIsNotBesideTheAccount)
{
    const std::string before = m_account.File().Listing();
    EXPECT_TRUE(Run(ReportKind::DailyTracker));
    EXPECT_TRUE(Run(ReportKind::DailyTracker));
    EXPECT_EQ(m_opened, QStringList({m_unsaved.filePath("Daily Tracker.xls"),
                                     m_unsaved.filePath("Daily Tracker 2.xls")}));
    EXPECT_EQ(Heading(m_opened[1]), "Date:02-Mar-26");
    EXPECT_EQ(m_account.File().Listing(), before);
}

TEST_F(ReportRun, SaysWhereTheWorkbookLiesWhenNoProgramShowsIt)
{
    const auto noProgram = [](const QString &path) {
        return "Excel Editor|64|No program was found that shows this report. It is in the file\n" +
               path.toStdString();
    };
    m_hasProgram = false;
    EXPECT_TRUE(Run(ReportKind::DailyTracker));
    EXPECT_FALSE(m_isFound);
    m_machine.services.openDocument = nullptr;
    EXPECT_TRUE(Run(ReportKind::Summary));
    EXPECT_FALSE(m_isFound);
    EXPECT_EQ(m_machine.dialogs.Boxes(), Lines({noProgram(m_unsaved.filePath("Daily Tracker.xls")),
                                                noProgram(m_account.File().In("Summary.xls"))}));
}

TEST_F(ReportRun, NamesTheFileAndTheReasonWhenItCannotBeWritten)
{
    m_settings.CurrentFilePath = m_account.File().In("gone") + "/Broker.mdb";
    EXPECT_FALSE(Run(ReportKind::Summary));
    ASSERT_EQ(m_machine.dialogs.Boxes().size(), 1u);
    const std::string box = m_machine.dialogs.Boxes()[0];
    EXPECT_EQ(box.rfind("Excel Editor|48|This report could not be written:\n" +
                            m_account.File().In("gone").toStdString() +
                            "/Summary.xls\nError number ",
                        0),
              0u)
        << box;
    EXPECT_NE(box.find("Description: "), std::string::npos);
    EXPECT_TRUE(m_opened.isEmpty());
}

TEST_F(ReportRun, KeepsTheOldWorkbookWhenTheDiskIsFull)
{
    Run(ReportKind::Summary);
    const QByteArray before = AccountFile::Bytes(Beside("Summary.xls"));
    const std::string files = m_account.File().Listing();
    m_opened.clear();
    {
        const FullDisk disk(1000);
        EXPECT_FALSE(Run(ReportKind::CostBasis));
    }
    ASSERT_EQ(m_machine.dialogs.Boxes().size(), 1u);
    EXPECT_NE(m_machine.dialogs.Boxes()[0].find("Summary.xls\nError number 61\n"),
              std::string::npos)
        << m_machine.dialogs.Boxes()[0];
    EXPECT_EQ(AccountFile::Bytes(Beside("Summary.xls")), before);
    EXPECT_EQ(m_account.File().Listing(), files);
    EXPECT_TRUE(m_opened.isEmpty());
}

TEST_F(ReportRun, DoesNotTakeThePlaceOfAFolder)
{
    QDir(m_account.File().Folder()).mkpath("Summary.xls/kept");
    EXPECT_FALSE(Run(ReportKind::Summary));
    EXPECT_EQ(m_machine.dialogs.Boxes().size(), 1u);
    EXPECT_TRUE(QFileInfo(Beside("Summary.xls/kept")).isDir());
}

TEST_F(ReportRun, TellsOfAnAccountThatCannotBeRead)
{
    m_databases.gConnAccount.Execute("DROP TABLE History");
    EXPECT_FALSE(Run(ReportKind::TransactionHistory));
    ASSERT_EQ(m_machine.dialogs.Boxes().size(), 1u);
    EXPECT_NE(m_machine.dialogs.Boxes()[0].find("no such table: History"), std::string::npos);
    EXPECT_FALSE(QFile::exists(Beside("Transaction History.xls")));
}

TEST_F(ReportRun, TakesTheAccountsThatAreSelectedForPerformance)
{
    m_databases.gRsApplication.Close();
    m_databases.gConnApplControl.Execute(
        "INSERT INTO ApplicationTable (TableName, Field08, Field10) VALUES "
        "('Portfolio', 'Broker', 1), ('Portfolio', 'Lost', 1), ('Portfolio', 'Other', 0)");
    m_databases.gRsApplication.Open(m_databases.gConnApplControl,
                                    {"*", "ApplicationTable", "ORDER BY TableName, Field08"});
    Run(ReportKind::YearlyPerformance);
    const Lines rows = ReadBack(Beside("Performance.xls")).Rows();
    ASSERT_EQ(rows.size(), 7u);
    EXPECT_EQ(rows[3], "Broker");
    EXPECT_EQ(rows[4], "2026|=1|=1|=0|=0|=0|=0");
    EXPECT_EQ(rows[6], "Lost|The file of this account was not found");
}
