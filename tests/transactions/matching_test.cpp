#include "replay_account.h"

#include "transactions/matching.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

GainMatching MatchingOf(TestAccount &account)
{
    GainMatching matching;
    matching.OpenMatchingRecordsets(account.gConnAccount());
    return matching;
}

MatchResult Match(GainMatching &matching, int sale)
{
    MatchResult result;
    matching.MatchCurrentSale(sale, result);
    return result;
}

// --- the walk as a person would do it by hand: every purchase row, for every sale ----------------

struct WalkRow
{
    qint64 id;
    QString symbol, description;
    float shares;
    Currency cost, price, amount;
    QDate date;
    QTime time;
};

std::vector<WalkRow> WalkRows(TestAccount &account, const QString &which)
{
    std::vector<WalkRow> rows;
    Statement s = account.gConnAccount().Prepare(
        QStringLiteral("SELECT ID, Symbol, Description, Shares, TransactionCost, Price, Amount, "
                       "TransDate, Time FROM History WHERE %1 ORDER BY Symbol, TransDate, Time, ID")
            .arg(which));
    while (s.Step())
        rows.push_back({s.Int64(0), s.Text(1), s.Text(2), float(s.Double(3)), s.Money(4),
                        s.Money(5), s.Money(6), s.Date(7), s.Time(8)});
    return rows;
}

void WalkLong(WalkRow &s, std::vector<WalkRow> &purchases, MatchResult &r)
{
    for (WalkRow &p : purchases) {
        if (s.shares == 0)
            return;
        if (p.symbol != s.symbol || p.shares == 0)
            continue;
        if (r.DateAcquired == QDate(1900, 1, 1))
            r.DateAcquired = p.date;
        if (!p.cost.IsZero()) {
            r.CostSide = r.CostSide + p.cost;
            p.cost = Currency();
        }
        if (s.shares == p.shares) {
            r.CostSide =
                Currency::FromDouble(-1.0 * s.shares * p.price.ToDouble() + r.CostSide.ToDouble());
            p.shares = 0;
            s.shares = 0;
        }
        if (s.shares < p.shares) {
            r.CostSide =
                Currency::FromDouble(-1.0 * s.shares * p.price.ToDouble() + r.CostSide.ToDouble());
            p.shares = p.shares - s.shares;
            s.shares = 0;
        }
        if (s.shares > p.shares) {
            r.CostSide =
                Currency::FromDouble(-1.0 * p.shares * p.price.ToDouble() + r.CostSide.ToDouble());
            s.shares = s.shares - p.shares;
            p.shares = 0;
        }
    }
}

void WalkShort(WalkRow &s, std::vector<WalkRow> &purchases, MatchResult &r)
{
    for (WalkRow &p : purchases) {
        if (s.shares == 0)
            return;
        if (p.symbol != s.symbol || p.shares == 0)
            continue;
        if (r.DateAcquired == QDate(1900, 1, 1))
            r.DateAcquired = p.date;
        if (!p.cost.IsZero()) {
            r.ProceedsSide = r.ProceedsSide + p.cost;
            p.cost = Currency();
        }
        if (s.shares == p.shares) {
            r.ProceedsSide = Currency::FromDouble(-1.0 * s.shares * p.price.ToDouble() +
                                                  r.ProceedsSide.ToDouble());
            p.shares = 0;
            s.shares = 0;
        }
        if (s.shares > p.shares) {
            r.ProceedsSide = Currency::FromDouble(-1.0 * s.shares * p.price.ToDouble() +
                                                  r.ProceedsSide.ToDouble());
            p.shares = p.shares - s.shares;
            s.shares = 0;
        }
        if (s.shares < p.shares) {
            r.ProceedsSide = Currency::FromDouble(-1.0 * p.shares * p.price.ToDouble() +
                                                  r.ProceedsSide.ToDouble());
            s.shares = s.shares - p.shares;
            p.shares = 0;
        }
    }
}

MatchResult WalkSale(WalkRow &s, std::vector<WalkRow> &purchases)
{
    MatchResult r;
    r.SalePrice = s.price;
    r.DateSold = s.date;
    s.shares = -s.shares;
    r.SoldShares = Single::FromFloat(r.SoldShares.Value() + s.shares);
    if (!s.description.contains(QLatin1String("Short"))) {
        r.ProceedsSide = r.ProceedsSide + s.amount;
        WalkLong(s, purchases, r);
    } else {
        r.CostSide = r.CostSide + s.amount;
        WalkShort(s, purchases, r);
    }
    return r;
}

/// Long and short of the same symbols, fractions, reinvestments, sales before their purchases and
/// beyond them, rows of one instant.
void WriteRandomLedger(TestAccount &account, unsigned seed)
{
    std::mt19937 random(seed);
    const auto pick = [&](int from, int to) {
        return std::uniform_int_distribution(from, to)(random);
    };
    static const char *const descriptions[] = {"Bought",       "Bought",       "Sold",
                                               " Short  Sale", " Short Cover", "Reinvestment",
                                               "Deposit",      "Dividend"};
    WriteGuard guard(account.gConnAccount());
    const int rows = pick(1, 60);
    for (int i = 0; i < rows; ++i) {
        const QString description = QString::fromUtf8(descriptions[pick(0, 7)]);
        const bool negative = description == "Sold" || description.contains("Sale");
        const double count = pick(0, 3) == 0 ? pick(1, 100000) / 997.0 : pick(0, 30) * 5;
        const Single shares = Single::FromDouble(negative ? -count : count);
        const Currency price = Currency::FromDouble(pick(1, 2000000) / 9973.0);
        const Currency cost = Currency::FromDouble(-pick(0, 2) * 4.95);
        account.gConnAccount().Execute(
            "INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, Price, "
            "Amount, TransDate, Time) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
            QStringLiteral("S%1").arg(pick(1, 3)), QStringLiteral("Name %1").arg(i), description,
            shares, cost, price,
            Currency::FromDouble(-1.0 * shares.ToDouble() * price.ToDouble() + cost.ToDouble()),
            QDate(2026, 1, pick(1, 9)), QTime(pick(9, 12), 0));
    }
    guard.Commit();
}

} // namespace

// --- worked figures -----------------------------------------------------------------------------

TEST(GainMatching, ASaleOfAWholePurchaseGains190)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {"ACME", "Sold", "-100", "-5", "12", "1195", "2026-02-05"}});
    GainMatching matching = MatchingOf(account);
    ASSERT_EQ(matching.SaleCount(), 1);
    const MatchResult result = Match(matching, 0);
    EXPECT_EQ(result.ProceedsSide, Currency("1195"));
    EXPECT_EQ(result.CostSide, Currency("-1005")); // -100*10 - 5
    EXPECT_EQ(result.Gain(), Currency("190"));
    EXPECT_EQ(result.DateAcquired, QDate(2026, 1, 5));
    EXPECT_EQ(result.DateSold, QDate(2026, 2, 5));
    EXPECT_EQ(result.SalePrice, Currency("12"));
    EXPECT_EQ(result.SoldShares, Single::FromFloat(100));
    EXPECT_TRUE(matching.PurchasesOf("ACME")[0].Shares.IsZero());
    EXPECT_TRUE(matching.PurchasesOf("ACME")[0].TransactionCost.IsZero());
}

TEST(GainMatching, ASaleOf150OverTwoPurchasesLeaves50WithoutTheirCommission)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {"ACME", "Bought", "100", "-7", "20", "-2007", "2026-01-06"},
                           {"ACME", "Sold", "-150", "-5", "30", "4495", "2026-02-05"},
                           {"ACME", "Sold", "-50", "-5", "30", "1495", "2026-02-06"}});
    GainMatching matching = MatchingOf(account);
    const MatchResult first = Match(matching, 0);
    EXPECT_EQ(first.CostSide, Currency("-2012")); // -100*10 - 5 - 50*20 - 7
    EXPECT_EQ(matching.PurchasesOf("ACME")[1].Shares, Single::FromFloat(50));
    const MatchResult second = Match(matching, 1);
    EXPECT_EQ(second.CostSide, Currency("-1000")); // -50*20, no commission
    EXPECT_EQ(second.DateAcquired, QDate(2026, 1, 6));
}

TEST(GainMatching, AShortSaleCoveredLowerGains990)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", " Short  Sale", "-100", "-5", "50", "4995", "2026-01-05"},
                           {"ACME", " Short Cover", "100", "-5", "40", "-4005", "2026-02-05"}});
    GainMatching matching = MatchingOf(account);
    const MatchResult result = Match(matching, 0);
    EXPECT_EQ(result.CostSide, Currency("-4005"));
    EXPECT_EQ(result.ProceedsSide, Currency("4995")); // 100*50 - 5
    EXPECT_EQ(result.Gain(), Currency("990"));
    EXPECT_EQ(result.SoldShares, Single::FromFloat(-100));
}

TEST(GainMatching, ASaleOfReinvestedSharesFindsNoPurchase)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Reinvestment", "10", "0", "20", "-200", "2026-01-05"},
                           {"ACME", "Sold", "-10", "-5", "30", "295", "2026-02-05"}});
    GainMatching matching = MatchingOf(account);
    const MatchResult result = Match(matching, 0);
    EXPECT_EQ(result.CostSide, Currency());
    EXPECT_EQ(result.DateAcquired, QDate(1900, 1, 1));
    EXPECT_EQ(result.ProceedsSide, Currency("295"));
    EXPECT_EQ(matching.Sale(0).Shares, Single::FromFloat(10)); // all unmatched
}

TEST(GainMatching, SharesBeyondAllPurchasesStayUnmatched)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2026-01-05"},
                           {"ACME", "Sold", "-130", "0", "12", "1560", "2026-02-05"}});
    GainMatching matching = MatchingOf(account);
    EXPECT_EQ(Match(matching, 0).CostSide, Currency("-1000"));
    EXPECT_EQ(matching.Sale(0).Shares, Single::FromFloat(30));
}

TEST(GainMatching, APurchaseLaterThanTheSaleIsTakenAllTheSame)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Sold", "-100", "0", "12", "1200", "2026-01-05"},
                           {"ACME", "Bought", "100", "0", "10", "-1000", "2026-02-05"}});
    GainMatching matching = MatchingOf(account);
    EXPECT_EQ(Match(matching, 0).DateAcquired, QDate(2026, 2, 5));
}

TEST(GainMatching, TheResultAddsUpUntilTheCallerResetsIt)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {"ACME", "Sold", "-40", "0", "12", "480", "2026-02-05"},
                           {"ACME", "Sold", "-60", "0", "13", "780", "2026-02-06"}});
    GainMatching matching = MatchingOf(account);
    MatchResult result;
    matching.MatchCurrentSale(0, result);
    matching.MatchCurrentSale(1, result);
    EXPECT_EQ(result.SoldShares, Single::FromFloat(100));
    EXPECT_EQ(result.Gain(), Currency("255")); // 480 + 780 - 1,005
    EXPECT_EQ(result.DateSold, QDate(2026, 2, 6));
}

TEST(GainMatching, SalesComeBySymbolDateAndTime)
{
    TestAccount account;
    WriteHistory(account, {{"ZETA", "Sold", "-1", "0", "1", "1", "2026-01-05"},
                           {"ACME", "Sold", "-2", "0", "1", "2", "2026-01-07"},
                           {"ACME", "Sold", "-3", "0", "1", "3", "2026-01-06"}});
    account.gConnAccount().Execute("UPDATE History SET Name = 'Other' WHERE Shares = -2");
    const GainMatching matching = MatchingOf(account);
    std::string order;
    for (int i = 0; i < matching.SaleCount(); ++i)
        order += matching.SymbolOf(matching.Sale(i)).toStdString() + " " +
                 matching.NameOf(matching.Sale(i)).toStdString() + "; ";
    EXPECT_EQ(order, "ACME ACME Inc.; ACME Other; ZETA ZETA Inc.; ");
}

TEST(GainMatching, EachSymbolHasItsOwnPurchases)
{
    TestAccount account;
    WriteHistory(account, {{"O'NEIL", "Bought", "10", "0", "10", "-100", "2026-01-05"},
                           {"acme", "Bought", "10", "0", "20", "-200", "2026-01-05"},
                           {"ACME", "Sold", "-10", "0", "30", "300", "2026-01-06"},
                           {"O'NEIL", "Sold", "-10", "0", "30", "300", "2026-01-06"}});
    GainMatching matching = MatchingOf(account);
    EXPECT_EQ(Match(matching, 0).CostSide, Currency());
    EXPECT_EQ(Match(matching, 1).CostSide, Currency("-100"));
}

// --- what reaches the file ----------------------------------------------------------------------

TEST(GainMatching, FiguresOnlyLeaveTheLedgerAsItIs)
{
    TestAccount account;
    WriteRandomLedger(account, 1);
    const std::string before = account.FileText();
    GainMatching matching = MatchingOf(account);
    for (int sale = 0; sale < matching.SaleCount(); ++sale)
        Match(matching, sale);
    EXPECT_EQ(account.FileText(), before);
}

TEST(GainMatching, APurgeKeepsReductionsAndDeletesSalesAndUsedUpPurchases)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2020-01-05"},
                           {"ACME", "Bought", "100", "-7", "20", "-2007", "2020-01-06"},
                           {"ACME", "Bought", "100", "-9", "25", "-2509", "2020-01-07"},
                           {"ACME", "Sold", "-150", "-5", "30", "4495", "2020-02-05"},
                           {"ACME", "Sold", "-10", "-5", "30", "295", "2026-02-05"},
                           {" ", "Deposit", "0", "0", "0", "500", "2019-01-01"}});
    GainMatching matching = MatchingOf(account);
    int deleted = 0;
    for (int sale = 0; sale < matching.SaleCount(); ++sale) {
        if (matching.Sale(sale).TransDate >= QDate(2025, 1, 1))
            continue;
        Match(matching, sale);
        matching.DeleteSale(sale);
        ++deleted;
    }
    matching.WriteBack(account.gConnAccount());
    deleted += account.gConnAccount().Execute(
        "DELETE FROM History WHERE (Description LIKE 'Bought%' OR Description LIKE '%Sale%') "
        "AND Shares = 0");
    EXPECT_EQ(deleted, 2);
    EXPECT_EQ(account.History(),
              (std::vector<std::string>{"ACME|ACME Inc.|Bought|50|0|20|-2007|2020-01-06",
                                        "ACME|ACME Inc.|Bought|100|-9|25|-2509|2020-01-07",
                                        "ACME|ACME Inc.|Sold|-10|-5|30|295|2026-02-05",
                                        " |  Inc.|Deposit|0|0|0|500|2019-01-01"}));
}

TEST(GainMatching, AStoreThatRefusesOneChangeKeepsNone)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2020-01-05"},
                           {"ACME", "Sold", "-50", "-5", "30", "1495", "2020-02-05"}});
    account.ExecuteElsewhere("CREATE TRIGGER Refuse BEFORE DELETE ON History BEGIN "
                             "SELECT RAISE(ABORT, 'no'); END");
    const std::string before = account.FileText();
    GainMatching matching = MatchingOf(account);
    Match(matching, 0);
    matching.DeleteSale(0);
    EXPECT_THROW(matching.WriteBack(account.gConnAccount()), RuntimeError);
    EXPECT_EQ(account.FileText(), before);
}

// --- the same as the walk, without its cost ------------------------------------------------------

TEST(GainMatching, EqualsTheWalkOverAllRowsOn300RandomLedgers)
{
    int sales = 0;
    for (unsigned seed = 1; seed <= 300 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestAccount account;
        WriteRandomLedger(account, seed);
        std::vector<WalkRow> purchases =
            WalkRows(account, "Description LIKE 'Bought%' OR Description LIKE '%Sale%'");
        std::vector<WalkRow> closings =
            WalkRows(account, "Description LIKE 'Sold%' OR Description LIKE '%Cover%'");
        GainMatching matching = MatchingOf(account);
        ASSERT_EQ(matching.SaleCount(), int(closings.size()));
        for (int sale = 0; sale < matching.SaleCount(); ++sale, ++sales) {
            const MatchResult told = WalkSale(closings[size_t(sale)], purchases);
            const MatchResult result = Match(matching, sale);
            EXPECT_EQ(matching.Sale(sale).ID, closings[size_t(sale)].id);
            EXPECT_EQ(matching.Sale(sale).Shares.Value(), closings[size_t(sale)].shares);
            EXPECT_EQ(result.DateAcquired, told.DateAcquired);
            EXPECT_EQ(result.SalePrice, told.SalePrice);
            EXPECT_EQ(result.SoldShares, told.SoldShares);
            EXPECT_EQ(result.DateSold, told.DateSold);
            EXPECT_EQ(result.ProceedsSide, told.ProceedsSide);
            EXPECT_EQ(result.CostSide, told.CostSide);
        }
        matching.WriteBack(account.gConnAccount());
        for (const WalkRow &purchase : purchases) {
            Statement row = account.gConnAccount().Prepare(
                "SELECT Shares, TransactionCost FROM History WHERE ID = ?");
            row.BindAll(purchase.id);
            ASSERT_TRUE(row.Step());
            EXPECT_EQ(float(row.Double(0)), purchase.shares);
            EXPECT_EQ(row.Money(1), purchase.cost);
        }
    }
    EXPECT_GT(sales, 1000);
}

TEST(GainMatching, NeverVisitsAUsedUpPurchaseAgain)
{
    TestAccount account;
    constexpr int trades = 2000; // each purchase is sold at once; then one that sells nothing left
    {
        WriteGuard guard(account.gConnAccount());
        std::vector<LedgerRow> rows;
        for (int i = 0; i < trades; ++i) {
            rows.push_back({"ACME", "Bought", "10", "0", "10", "-100", "2026-01-05"});
            rows.push_back({"ACME", "Sold", "-10", "0", "10", "100", "2026-01-05"});
        }
        for (int i = 0; i < trades; ++i)
            rows.push_back({"ACME", "Sold", "-10", "0", "10", "100", "2026-01-06"});
        WriteHistory(account, rows);
        guard.Commit();
    }
    GainMatching matching = MatchingOf(account);
    for (int sale = 0; sale < matching.SaleCount(); ++sale)
        Match(matching, sale);
    EXPECT_LE(matching.PurchasesVisited(), 2 * trades);
}
