#include "datamaker/sample_account.h"
#include "datamaker/shared_files.h"
#include "datamaker/unattended.h"
#include "made_files.h"
#include "marketdata/practice_walk.h"
#include "platform/simulated_clock.h"
#include "store/control_rows.h"
#include "store/create_database.h"
#include "tracking/recompute.h"
#include "tracking/sort_order.h"

#include <gtest/gtest.h>

#include <set>

namespace
{

const char *const Sample = "Sample Portfolio.mdb";
const char *const Friday = "2026-11-20";

using Texts = std::vector<std::string>;

/// A weekday, a weekend, a leap day, the days around the end of a year.
class SampleOnADay : public testing::TestWithParam<const char *>
{
protected:
    const MadeFiles &files = MadeOn(GetParam());
    const QDate weekday = LatestWeekday(files.Day());
};

INSTANTIATE_TEST_SUITE_P(Days, SampleOnADay,
                         testing::Values("2026-11-20", "2026-11-21", "2026-11-22", "2028-02-29",
                                         "2030-02-28", "2026-12-31", "2027-01-01", "2027-01-03"));

/// Opens the sample as the program does in the morning of `day`, with a user who has to be told.
struct OpenedSample
{
    OpenedSample(const MadeFiles &files, QDate day) : clock(QDateTime(day, QTime(12, 0)))
    {
        gConnAccount.Open(files.Path(Sample));
        LoadDescriptiveTable(gConnAccount, account, day);
        rows.Open(gConnAccount, InitialGridOrder());
        lots.Open(gConnAccount);
        Currency undoBalance;
        RecomputeWork work{rows, totals, account, settings, lots, undoBalance, services, "Test"};
        RecomputeRows(work, true); // the box of an imbalance would throw
    }

    const TrackerRow &Of(const QString &symbol)
    {
        EXPECT_TRUE(rows.Find(symbol)) << qPrintable(symbol);
        return rows.Current();
    }

    SimulatedClock clock;
    UnattendedDialogs dialogs;
    SilentStatus status;
    CommandStates commands;
    UnattendedLifetime lifetime;
    QTemporaryDir folder;
    SettingsStore settingsStore{folder.filePath("settings.ini")};
    Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    Services services{clock,    dialogs,       status,  commands,
                      lifetime, settingsStore, formats, folder.path()};
    Connection gConnAccount;
    TrackerRecordset rows;
    PurchaseLots lots;
    PortfolioTotals totals;
    AccountState account;
    Settings settings;
};

SamplePlan DeliveredPlan()
{
    return ReadSamplePlan(DataFolder() + "/sample_portfolio.json");
}

/// Posts a plan of one security ACME into an empty account; the error's text, "" without one.
std::string PostPlan(const std::vector<SampleTransaction> &transactions,
                     const QString &securityType = "Stock")
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("Broker.mdb");
    CreateDatabase(path, ReadSchema(DataFolder() + "/schema/account.sql"));
    SamplePlan plan = DeliveredPlan();
    plan.Securities = {{"ACME", "ACME Inc.", securityType, {}}};
    plan.Transactions = transactions;
    try {
        PostSampleAccount(path, plan, 1, QDate(2026, 11, 20));
        return "";
    } catch (const RuntimeError &error) {
        return error.Description().toStdString();
    }
}

SampleTransaction Trade(int daysBack, Action action, const char *shares, QTime time = QTime(9, 45))
{
    return {daysBack, time, action, "ACME", shares, 0, 0};
}

} // namespace

TEST_P(SampleOnADay, HasLotsThatSumToTheSharesOfEveryRow)
{
    OpenedSample sample(files, files.Day());
    for (int i = 0; i < sample.rows.RecordCount(); ++i)
        EXPECT_EQ(sample.lots.SharesOf(sample.rows.At(i).Symbol), sample.rows.At(i).Shares)
            << qPrintable(sample.rows.At(i).Symbol);
    EXPECT_EQ(files.Value(Sample, "SELECT COUNT(*) FROM PriceHistory WHERE Symbol NOT IN "
                                  "(SELECT Symbol FROM DailyTracker) OR Shares = 0"),
              "0");
}

TEST_P(SampleOnADay, HasALedgerThatGivesTheSharesOfEveryRow)
{
    EXPECT_EQ(files.Rows(Sample,
                         "SELECT Symbol FROM DailyTracker t WHERE ABS(Shares - IFNULL((SELECT "
                         "SUM(Shares) FROM History h WHERE h.Symbol = t.Symbol), 0)) > 0"),
              Texts());
}

TEST_P(SampleOnADay, HasOneLedgerRowForEachTransactionButTheSplit)
{
    EXPECT_EQ(files.Value(Sample, "SELECT COUNT(*) FROM History"),
              std::to_string(DeliveredPlan().Transactions.size() - 1));
}

TEST_P(SampleOnADay, HasABalanceOfEveryWeekdayAndNoOther)
{
    const Texts days = files.Rows(Sample, "SELECT TransDate FROM PortfolioDailyBalance WHERE "
                                          "TrackName = 'Portfolio' ORDER BY TransDate");
    Texts expected;
    for (int back = DeliveredPlan().Transactions.front().DaysBack; back >= 0; --back)
        expected.push_back(WeekdaysBefore(files.Day(), back).toString(Qt::ISODate).toStdString());
    EXPECT_EQ(days, expected);
    EXPECT_EQ(days.size(), 519u);
}

TEST_P(SampleOnADay, HasAGainOfEveryWeekdayForWhatIsHeld)
{
    const Texts held = files.Rows(Sample, "SELECT Symbol FROM DailyTracker WHERE Shares <> 0 "
                                          "AND Basis <> 0 ORDER BY Symbol");
    EXPECT_EQ(
        files.Rows(Sample, ("SELECT TrackName FROM PortfolioDailyBalance WHERE TransDate = '" +
                            weekday.toString(Qt::ISODate).toStdString() +
                            "' AND DailyBalance <> 0 AND TrackName <> 'Portfolio' "
                            "ORDER BY TrackName")
                               .c_str()),
        held);
    EXPECT_GE(held.size(), 10u);
}

TEST_P(SampleOnADay, WasKeptUpToTheDayOfTheBuild)
{
    OpenedSample sample(files, files.Day());
    EXPECT_EQ(sample.account.TrackerDay, files.Day());
    EXPECT_EQ(sample.account.LastPriceUpdate, files.Day());
    EXPECT_EQ(sample.account.ElapsedDays, Integer());
    EXPECT_EQ(files.Value(Sample, "SELECT MAX(TransDate) FROM History"),
              weekday.toString(Qt::ISODate).toStdString());
    const std::string today = files.Day().toString(Qt::ISODate).toStdString();
    EXPECT_EQ(files.Value(Sample,
                          ("SELECT (SELECT COUNT(*) FROM DailyTracker WHERE TransDate > '" + today +
                           "') + (SELECT COUNT(*) FROM DailyProfitLoss WHERE "
                           "TransDate > '" +
                           today + "')")
                              .c_str()),
              "0");
}

TEST_P(SampleOnADay, HasABalanceOfDepositsAndGains)
{
    // 100,000 at the beginning, what was put in and taken out, what is realized and what is not;
    // the sums of gains are Singles, which costs a cent or two.
    const std::int64_t cash =
        std::stoll(files.Value(Sample, "SELECT SUM(Amount) FROM History WHERE Symbol = ' '"));
    const std::int64_t gains = std::stoll(files.Value(
        Sample, "SELECT SUM(Basis + ProfitLossToday + ProfitLossToDate) FROM DailyTracker"));
    OpenedSample sample(files, files.Day());
    EXPECT_NEAR(double(sample.account.AccountBalance.Units()),
                double(Currency("100000").Units() + cash + gains), double(Currency("1").Units()));
    EXPECT_EQ(files.Value(Sample,
                          "SELECT DailyBalance FROM PortfolioDailyBalance WHERE TrackName = "
                          "'Portfolio' ORDER BY TransDate DESC LIMIT 1"),
              std::to_string(sample.account.AccountBalance.Units()));
}

TEST_P(SampleOnADay, HasSumsThatAnInvestorFindsPlausible)
{
    OpenedSample sample(files, files.Day());
    EXPECT_GT(sample.account.AccountBalance, Currency("80000"));
    EXPECT_LT(sample.account.AccountBalance, Currency("150000"));
    for (const char *sign : {"> 0", "< 0"}) {
        EXPECT_NE(
            files.Value(
                Sample,
                (std::string("SELECT COUNT(*) FROM DailyTracker WHERE Basis ") + sign).c_str()),
            "0")
            << sign;
        EXPECT_NE(files.Value(Sample, (std::string("SELECT COUNT(*) FROM DailyProfitLoss WHERE "
                                                   "ProfitLoss ") +
                                       sign)
                                          .c_str()),
                  "0")
            << sign;
    }
}

TEST_P(SampleOnADay, KnowsNoPriceThatTheRowsDoNotShow)
{
    const QTime time = ValuationTime(weekday, files.Day());
    OpenedSample sample(files, files.Day());
    for (int i = 0; i < sample.rows.RecordCount(); ++i) {
        const TrackerRow &row = sample.rows.At(i);
        EXPECT_EQ(row.CurrPrice, PracticePriceAt(row.Symbol, QDateTime(weekday, time)))
            << qPrintable(row.Symbol);
        EXPECT_EQ(row.Time, time) << qPrintable(row.Symbol);
    }
}

TEST(SampleAccount, OpensWithoutABoxOnLaterDaysToo)
{
    const MadeFiles files(QDate(2026, 11, 20));
    EXPECT_NO_THROW(OpenedSample(files, QDate(2026, 11, 23)));
    EXPECT_NO_THROW(OpenedSample(files, QDate(2027, 3, 1)));
}

TEST(SampleAccount, HasEveryTypeOfSecurityItShows)
{
    const Texts types = MadeOn(Friday).Rows(
        "ApplControl.mdb",
        "SELECT DISTINCT SecurityType FROM SecurityDetail ORDER BY SecurityType");
    EXPECT_EQ(types, (Texts{"Bond", "Commodity", "Index", "Mutual Fund", "Option", "Stock"}));
    EXPECT_EQ(MadeOn(Friday).Rows(Sample, "SELECT Symbol, Name FROM DailyTracker ORDER BY Symbol"),
              MadeOn(Friday).Rows("ApplControl.mdb",
                                  "SELECT Symbol, Name FROM SecurityDetail ORDER BY Symbol"));
}

TEST(SampleAccount, HoldsAShortPositionAnOptionAndAFundAndAnIndexOfNothing)
{
    OpenedSample sample(MadeOn(Friday), QDate(2026, 11, 20));
    EXPECT_TRUE(sample.Of("VSTA").Shares.IsNegative());
    EXPECT_TRUE(sample.Of("ARLNC90").Shares.IsPositive());
    EXPECT_TRUE(sample.Of("GRNVX").Shares.IsPositive());
    EXPECT_TRUE(sample.Of("TARN45").Shares.IsPositive());
    EXPECT_TRUE(sample.Of("CPRQ").Shares.IsPositive());
    EXPECT_TRUE(sample.Of(".PRX").Shares.IsZero());
    EXPECT_FALSE(sample.Of(".PRX").CurrPrice.IsZero());
    EXPECT_EQ(MadeOn(Friday).Value(Sample, "SELECT COUNT(*) FROM History WHERE Symbol = '.PRX'"),
              "0");
}

TEST(SampleAccount, HasEveryKindOfLedgerRow)
{
    EXPECT_EQ(MadeOn(Friday).Rows(Sample, "SELECT DISTINCT Description FROM History "
                                          "ORDER BY Description"),
              (Texts{" Short  Sale", " Short Cover", "Bought", "Deposit", "Dividend",
                     "Reinvestment", "Sold", "Withdrawal"}));
}

TEST(SampleAccount, HasPositionsThatWereClosed)
{
    const Texts flat =
        MadeOn(Friday).Rows(Sample, "SELECT Symbol FROM DailyTracker WHERE Shares = 0 "
                                    "AND NumberTransToDate > 0 ORDER BY Symbol");
    EXPECT_EQ(flat, (Texts{"OMRA", "QRTZ"}));
}

TEST(SampleAccount, ChargesEachTradeButThoseOfFunds)
{
    EXPECT_EQ(MadeOn(Friday).Rows(Sample, "SELECT DISTINCT TransactionCost, Symbol IN ('GRNVX', "
                                          "'NPTHX') FROM History WHERE Symbol <> ' ' ORDER BY 1"),
              (Texts{"-99500|0", "0|1"}));
}

TEST(SampleAccount, ShowsTheTradesOfTheDayOnAWeekday)
{
    OpenedSample sample(MadeOn(Friday), QDate(2026, 11, 20));
    EXPECT_EQ(sample.totals.TransCostTodayTotal, Currency("-19.9"));
    EXPECT_EQ(sample.Of("LMNT").NumberTransToday, Integer::FromWide(1));
    OpenedSample weekend(MadeOn("2026-11-21"), QDate(2026, 11, 21));
    EXPECT_EQ(weekend.totals.TransCostTodayTotal, Currency());
}

TEST(SampleAccount, RestatesWhatWasBoughtBeforeTheSplit)
{
    // Bought at twice the practice price, then split 2 for 1: the ledger shows the practice price
    // and twice the shares, the cash that was paid is unchanged.
    const MadeFiles &files = MadeOn(Friday);
    const QDate bought = WeekdaysBefore(files.Day(), 509);
    const Currency price = PracticePriceAt("FSKR", QDateTime(bought, QTime(14, 30)));
    EXPECT_EQ(files.Rows(Sample, "SELECT TransDate, Shares, Price, Amount FROM History WHERE "
                                 "Symbol = 'FSKR' ORDER BY TransDate LIMIT 1"),
              Texts{bought.toString(Qt::ISODate).toStdString() + "|80.0|" +
                    std::to_string(price.Units()) + "|" +
                    std::to_string(-80 * price.Units() - 99500)});
}

TEST(SampleAccount, HasTheControlRowsOfANewAccount)
{
    OpenedSample sample(MadeOn(Friday), QDate(2026, 11, 20));
    EXPECT_EQ(sample.account.CommissionStyle, "Style1");
    EXPECT_EQ(sample.account.CommissionCost, Currency("9.95"));
    EXPECT_EQ(sample.account.CommissionPerShare, Currency());
    EXPECT_EQ(sample.account.CurrentWebSiteName, "Practice quotes (simulated by this program)");
    EXPECT_EQ(sample.account.WebUpdateMinutes, Integer::FromWide(1));
    EXPECT_EQ(sample.account.PasswordProtected, 0);
    EXPECT_EQ(sample.account.LogoffEnabled, 0);
    EXPECT_EQ(MadeOn(Friday).Rows(Sample, "SELECT TableName FROM DescriptiveTable ORDER BY rowid"),
              (Texts{"Balance", "Style1", "WebSite", "Security"}));
    EXPECT_EQ(MadeOn(Friday).Value(Sample, "SELECT Field06 FROM DescriptiveTable WHERE TableName = "
                                           "'Balance'"),
              ProgramVersion().Text().toStdString());
}

TEST(SampleAccount, KeepsEachTransactionApartBySymbolDateAndTime)
{
    EXPECT_EQ(MadeOn(Friday).Rows(Sample, "SELECT Symbol, TransDate, Time FROM History "
                                          "GROUP BY 1, 2, 3 HAVING COUNT(*) > 1"),
              Texts());
}

TEST(PostSampleAccount, RefusesASaleOfNothing)
{
    EXPECT_NE(PostPlan({Trade(5, Action::Sell, "10")}).find("asks for another action: Sell short"),
              std::string::npos);
}

TEST(PostSampleAccount, RefusesWhatTheEngineRejects)
{
    EXPECT_NE(PostPlan({Trade(5, Action::SellShort, "10"), Trade(4, Action::BuyToCover, "11")})
                  .find("You're trying to cover more shares than you sold short!"),
              std::string::npos);
    EXPECT_EQ(PostPlan({Trade(5, Action::Buy, "10")}, "Index"),
              "Sample portfolio: Buy ACME was rejected");
}

TEST(PostSampleAccount, RefusesATradeBehindTheValuationOfItsDay)
{
    EXPECT_EQ(PostPlan({Trade(1, Action::Buy, "10", QTime(15, 59))}), "");
    EXPECT_EQ(PostPlan({Trade(1, Action::Buy, "10", QTime(16, 1))}),
              "Sample portfolio: a transaction later than 16:00:00");
    EXPECT_EQ(PostPlan({Trade(0, Action::Buy, "10", QTime(10, 1))}),
              "Sample portfolio: a transaction later than 10:00:00");
}

TEST(PostSampleAccount, MakesAnAccountOfOneDayWithoutTransactions)
{
    EXPECT_EQ(PostPlan({}), "");
}

TEST(WeekdaysBefore, LeavesOutSaturdaysAndSundays)
{
    const QDate friday(2026, 11, 20);
    EXPECT_EQ(WeekdaysBefore(friday, 0), friday);
    EXPECT_EQ(WeekdaysBefore(friday, 4), friday.addDays(-4));
    EXPECT_EQ(WeekdaysBefore(friday, 5), friday.addDays(-7));
    EXPECT_EQ(WeekdaysBefore(friday.addDays(2), 0), friday);
    EXPECT_EQ(WeekdaysBefore(friday.addDays(3), 1), friday);
    EXPECT_EQ(WeekdaysBefore(QDate(2028, 3, 1), 1), QDate(2028, 2, 29));
}

TEST(WeekdaysBefore, GivesEachWeekdayOnceInOrder)
{
    for (int from = 0; from < 7; ++from) {
        QDate expected = LatestWeekday(QDate(2027, 1, 1).addDays(from));
        for (int count = 0; count < 300; ++count) {
            ASSERT_EQ(WeekdaysBefore(QDate(2027, 1, 1).addDays(from), count), expected) << count;
            expected = LatestWeekday(expected.addDays(-1));
        }
    }
}
