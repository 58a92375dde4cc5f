#include "made_files.h"

#include "base/runtime_error.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace
{

const char *const Friday = "2026-11-20";

using Texts = std::vector<std::string>;

/// "Table: column, column, ..." of each table of ours, by name.
Texts TablesOf(const char *file)
{
    return MadeOn(Friday).Rows(
        file, "SELECT m.name || ': ' || group_concat(c.name, ', ') "
              "FROM sqlite_master m, pragma_table_info(m.name) c "
              "WHERE m.type = 'table' AND m.name <> 'sqlite_sequence' GROUP BY m.name "
              "ORDER BY m.name");
}

const std::string ControlFields =
    ": TableName, Field01, Field02, Field03, Field04, Field05, Field06, Field07, Field08, Field09, "
    "Field10, Field11, Field12";

void CopyFolder(const QString &from, const QString &to)
{
    QDir().mkpath(to);
    for (const QString &name : QDir(from).entryList(QDir::Files))
        ASSERT_TRUE(QFile::copy(from + "/" + name, to + "/" + name)) << qPrintable(name);
}

/// A copy of the data folder whose texts a test may spoil.
struct SpoiledData
{
    SpoiledData()
    {
        CopyFolder(DataFolder(), data.path());
        CopyFolder(DataFolder() + "/schema", data.filePath("schema"));
    }
    void Replace(const char *name, const QByteArray &what, const QByteArray &by)
    {
        QFile file(data.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QByteArray text = file.readAll();
        file.close();
        ASSERT_TRUE(text.contains(what));
        text.replace(text.indexOf(what), what.size(), by);
        QFile::remove(file.fileName());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    /// The description of the error, "made" without one.
    std::string Make()
    {
        try {
            MakeDeliveredFiles(data.path(), target.path(), QDate(2026, 11, 20));
            return "made";
        } catch (const RuntimeError &error) {
            return error.Description().toStdString();
        }
    }
    QTemporaryDir data;
    QTemporaryDir target;
};

} // namespace

TEST(Delivery, MakesAnAccountWithAllItsTables)
{
    const Texts expected = {
        "DailyProfitLoss: ID, Symbol, Name, ProfitLoss, TransDate, Time",
        "DailyTracker: Symbol, Name, Shares, CurrPrice, Basis, AvrgPrice, ProfitLossToday, "
        "ProfitLossToDate, ActualProfitLoss, TransCostToday, TransCostToDate, NumberTransToday, "
        "NumberTransToDate, InvestedValue, InvestedToDate, TransDate, Time, PerCentGainToday",
        "DescriptiveTable" + ControlFields,
        "History: ID, Symbol, Name, Description, Shares, TransactionCost, Price, Amount, "
        "TransDate, Time",
        "PortfolioDailyBalance: DailyBalance, TransDate, Time, TrackName",
        "PriceHistory: ID, Symbol, Shares, PurchasePrice, TransDate, Time",
    };
    EXPECT_EQ(TablesOf("Template.xxx"), expected);
    Texts used = expected; // what a posting keeps until it is final
    used.push_back("PendingBalance: ID, AccountBalance");
    used.push_back("PendingLots: LotID, Symbol, Shares, PurchasePrice, TransDate, Time");
    std::sort(used.begin(), used.end());
    EXPECT_EQ(TablesOf("Sample Portfolio.mdb"), used);
}

TEST(Delivery, MakesTheSharedFilesWithAllTheirTables)
{
    const Texts control = {
        "ApplicationTable" + ControlFields,
        "SecurityAssetClass: Symbol, AssetClass, PerCentAllocated",
        "SecurityDetail: Symbol, Name, SecurityType",
    };
    const Texts prices = {"HistoricalPrices: Symbol, PriceDate, PriceOpen, DayHigh, DayLow, "
                          "PriceClose, Volume, AdjClose"};
    EXPECT_EQ(TablesOf("ApplControl.xxx"), control);
    EXPECT_EQ(TablesOf("ApplControl.mdb"), control);
    EXPECT_EQ(TablesOf("HistPrices.xxx"), prices);
    EXPECT_EQ(TablesOf("HistPrices.mdb"), prices);
    EXPECT_EQ(TablesOf("WebSites.mdb"),
              Texts{"WebParameters: ID, WebSiteName, BegWebAddress, EndWebAddress, "
                    "AddressBuildCharacters, SymbolBegText, SymbolEndText, CharToPrice, "
                    "PriceBegText, PriceEndText, DelayTime, UpdateCount, ServiceFlag, SignUpURL, "
                    "OptionPrefix, OptionSuffix, SimilarSite, DeselectFlagTemp, DeselectFlagPerm"});
}

TEST(Delivery, LeavesTheTemplatesWithoutRowsApartFromTheAssetClasses)
{
    const MadeFiles &files = MadeOn(Friday);
    for (const char *table : {"DailyTracker", "DailyProfitLoss", "DescriptiveTable", "History",
                              "PortfolioDailyBalance", "PriceHistory"})
        EXPECT_EQ(
            files.Value("Template.xxx", (std::string("SELECT COUNT(*) FROM ") + table).c_str()),
            "0")
            << table;
    EXPECT_EQ(files.Value("HistPrices.xxx", "SELECT COUNT(*) FROM HistoricalPrices"), "0");
    EXPECT_EQ(files.Value("ApplControl.xxx", "SELECT COUNT(*) FROM SecurityDetail"), "0");
    EXPECT_EQ(files.Value("ApplControl.xxx", "SELECT COUNT(*) FROM SecurityAssetClass"), "0");
    EXPECT_EQ(files.Rows("ApplControl.xxx",
                         "SELECT DISTINCT TableName, Field04, Field05 FROM ApplicationTable"),
              Texts{"AssetClass|2026-11-20|2026-11-20"});
}

TEST(Delivery, OffersTheSameAssetClassesInTheTemplateAndInUse)
{
    const char *const names = "SELECT Field08 FROM ApplicationTable ORDER BY Field08";
    const Texts classes = MadeOn(Friday).Rows("ApplControl.xxx", names);
    EXPECT_EQ(classes.size(), 17u);
    EXPECT_EQ(classes.front(), "Cash");
    EXPECT_EQ(classes.back(), "Utilities");
    EXPECT_EQ(MadeOn(Friday).Rows("ApplControl.mdb", names), classes);
}

TEST(Delivery, PutsThePracticeSiteAmongTheQuoteSitesAsItIsTold)
{
    EXPECT_EQ(MadeOn(Friday).Value("WebSites.mdb", "SELECT * FROM WebParameters WHERE ID = 10"),
              "10|Practice quotes (simulated by this program)|http://127.0.0.1:8917/quotes?s=||+|"
              "<td class=\"sym\">|</td>|120|<td class=\"last\">|</td>|1|20|0||None||9|0|0");
}

TEST(Delivery, HasARealSiteAsNumberOneAndOneNamedYahooFinance)
{
    EXPECT_EQ(MadeOn(Friday).Rows("WebSites.mdb", "SELECT ID FROM WebParameters WHERE "
                                                  "WebSiteName LIKE '%Yahoo Finance%'"),
              Texts{"1"});
    EXPECT_EQ(MadeOn(Friday).Value("WebSites.mdb", "SELECT COUNT(*) FROM WebParameters"), "10");
}

TEST(Delivery, LeavesThePracticeSiteAloneInItsGroup)
{
    EXPECT_EQ(
        MadeOn(Friday).Rows("WebSites.mdb", "SELECT ID FROM WebParameters WHERE SimilarSite = 9"),
        Texts{"10"});
}

TEST(Delivery, AllocatesEverySecurityWhollyAmongKnownClasses)
{
    EXPECT_EQ(MadeOn(Friday).Rows("ApplControl.mdb",
                                  "SELECT Symbol FROM SecurityAssetClass GROUP BY Symbol "
                                  "HAVING ABS(SUM(PerCentAllocated) - 1) > 0.0001"),
              Texts());
    EXPECT_EQ(MadeOn(Friday).Rows("ApplControl.mdb",
                                  "SELECT AssetClass FROM SecurityAssetClass WHERE AssetClass NOT "
                                  "IN (SELECT Field08 FROM ApplicationTable)"),
              Texts());
    EXPECT_EQ(MadeOn(Friday).Value("ApplControl.mdb",
                                   "SELECT COUNT(*) FROM SecurityDetail WHERE SecurityType <> "
                                   "'Index' AND Symbol NOT IN (SELECT Symbol FROM "
                                   "SecurityAssetClass)"),
              "0");
}

TEST(Delivery, HoldsTwoYearsOfDailyPricesOfEverySecurity)
{
    const MadeFiles &files = MadeOn(Friday);
    EXPECT_EQ(files.Rows("HistPrices.mdb",
                         "SELECT DISTINCT MIN(PriceDate), MAX(PriceDate), COUNT(*) "
                         "FROM HistoricalPrices GROUP BY Symbol"),
              Texts{"2024-11-20|2026-11-19|522"});
    EXPECT_EQ(files.Rows("HistPrices.mdb", "SELECT DISTINCT Symbol FROM HistoricalPrices "
                                           "ORDER BY Symbol"),
              files.Rows("ApplControl.mdb", "SELECT Symbol FROM SecurityDetail ORDER BY Symbol"));
}

TEST(Delivery, GivesTheSameRowsForTheSameDay)
{
    EXPECT_EQ(MadeFiles(QDate(2026, 11, 20)).Dump(), MadeOn(Friday).Dump());
}

TEST(Delivery, GivesNewerDatesOnAnotherDay)
{
    EXPECT_NE(MadeOn("2026-11-23").Dump(), MadeOn(Friday).Dump());
    EXPECT_EQ(
        MadeOn("2026-11-23").Value("HistPrices.mdb", "SELECT MAX(PriceDate) FROM HistoricalPrices"),
        "2026-11-20");
}

TEST(Delivery, LeavesNothingButTheFilesInTheFolder)
{
    const MadeFiles files(QDate(2026, 11, 20));
    QStringList expected = DeliveredFiles();
    expected.sort();
    EXPECT_EQ(QDir(files.Path(""))
                  .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name),
              expected);
}

TEST(Delivery, ReplacesTheFilesOfAnEarlierRun)
{
    SpoiledData world;
    EXPECT_EQ(world.Make(), "made");
    EXPECT_EQ(world.Make(), "made");
    EXPECT_EQ(QDir(world.target.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(),
              DeliveredFiles().size());
}

TEST(Delivery, LeavesTheFolderAsItWasWhenATextIsBroken)
{
    struct Broken
    {
        const char *file, *what, *by, *reason;
    };
    const Broken cases[] = {
        {"sample_portfolio.json", "\"action\": \"Buy\"", "\"action\": \"Bought\"",
         "Sample portfolio: unknown action 'Bought'"},
        {"sample_portfolio.json", "\"type\": \"Stock\"", "\"type\": \"Share\"",
         "Sample portfolio: unknown type of security ARLN"},
        {"sample_portfolio.json", "\"daysBack\": 518", "\"daysBack\": 2",
         "Sample portfolio: the transactions are not in order of time"},
        {"sample_portfolio.json", "\"symbol\": \"ARLN\", \"shares\"",
         "\"symbol\": \"NONE\", \"shares\"", "Sample portfolio: no security 'NONE'"},
        {"sample_portfolio.json", "\"time\": \"09:45\"", "\"time\": \"25:45\"",
         "Sample portfolio: Buy without a day or time"},
        {"sample_portfolio.json", "\"amount\": \"84.00\"", "\"shares\": \"84.00\"",
         "Sample portfolio: Dividend Received  without a count"},
        {"sample_portfolio.json", "\"oldShares\": 1", "\"oldShares\": 0",
         "Sample portfolio: a split without its ratio"},
        {"sample_portfolio.json", "{\"Technology\": 1}", "{\"Magic\": 1}",
         "Sample portfolio: unknown asset class 'Magic'"},
        {"sample_portfolio.json", "Practice quotes", "Praktice quotes",
         "Sample portfolio: no quote site 'Praktice quotes (simulated by this program)'"},
        {"quote_sites.json", "\"WebSiteName\"", "\"SiteName\"",
         "Row 1: there is no column SiteName."},
        {"asset_classes.txt", "Technology", "Technologie",
         "Sample portfolio: unknown asset class 'Technology'"},
    };
    for (const Broken &broken : cases) {
        SpoiledData world;
        QFile before(world.target.filePath("Template.xxx"));
        ASSERT_TRUE(before.open(QIODevice::WriteOnly));
        before.write("of the last build");
        before.close();
        world.Replace(broken.file, broken.what, broken.by);
        EXPECT_EQ(world.Make(), broken.reason);
        EXPECT_EQ(QDir(world.target.path())
                      .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
                  QStringList("Template.xxx"))
            << broken.reason;
        ASSERT_TRUE(before.open(QIODevice::ReadOnly));
        EXPECT_EQ(before.readAll(), "of the last build");
    }
}

TEST(Delivery, NamesATextThatIsMissingOrNoJson)
{
    SpoiledData world;
    world.Replace("sample_portfolio.json", "\"about\":", "about:");
    EXPECT_NE(world.Make().find("sample_portfolio.json: "), std::string::npos);
    QFile::remove(world.data.filePath("sample_portfolio.json"));
    EXPECT_NE(world.Make().find("File not found: "), std::string::npos);
}

TEST(Delivery, RefusesATargetFolderThatDoesNotExist)
{
    const QTemporaryDir folder;
    EXPECT_THROW(MakeDeliveredFiles(DataFolder(), folder.filePath("none"), QDate(2026, 11, 20)),
                 RuntimeError);
}
