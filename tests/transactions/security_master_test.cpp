#include "transactions/security_master.h"

#include "platform/simulated_clock.h"
#include "store/failed_write.h"
#include "support/print_qt.h"
#include "support/test_app_folder.h"

#include <gtest/gtest.h>

namespace
{

const Formats English{QLocale(QLocale::English, QLocale::UnitedStates)};

/// An account and the shared file beside it. It is Monday 2026-03-02, 10:15.
class SecurityMaster : public testing::Test
{
protected:
    SecurityMaster()
    {
        account.Open(AccountFile());
        undo.Open(AccountFile());
        control.Open(ControlFile());
        rows.Open(account, QStringLiteral("ORDER BY Symbol"));
        lots.Open(undo);
    }
    QString AccountFile() const { return folder.SampleAccount(); }
    QString ControlFile() const { return folder.File(QStringLiteral("ApplControl.xxx")); }
    SecurityWork Work() { return {rows, lots, account, control, clock}; }

    QString InAccount(const QString &sql) const { return folder.Value(AccountFile(), sql); }
    QString InControl(const QString &sql) const { return folder.Value(ControlFile(), sql); }

    /// A security with a row in each table that repeats its symbol.
    void Everywhere(const QString &symbol, const QString &name)
    {
        account.Execute("INSERT INTO History (Symbol, Name) VALUES (?, ?)", symbol, name);
        account.Execute("INSERT INTO DailyProfitLoss (Symbol, Name, TransDate) VALUES (?, ?, "
                        "'2026-02-27')",
                        symbol, name);
        account.Execute("INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) "
                        "VALUES (?, 100, 100000, '2026-01-05', '10:00:00.000')",
                        symbol);
        control.Execute("INSERT INTO SecurityDetail VALUES (?, ?, 'Stock')", symbol, name);
        control.Execute("INSERT INTO SecurityAssetClass VALUES (?, 'Energy', 1)", symbol);
        rows.AddNew(symbol, name, clock.Today(), clock.TimeOfDay());
        rows.UpdateBatch();
        lots.Reload();
    }
    /// How many of the five tables hold the symbol.
    int Tables(const QString &symbol)
    {
        int count = 0;
        for (const char *table : {"History", "DailyProfitLoss", "PriceHistory"})
            count += Holds(account, table, symbol);
        for (const char *table : {"SecurityDetail", "SecurityAssetClass"})
            count += Holds(control, table, symbol);
        return count;
    }
    static bool Holds(Connection &connection, const char *table, const QString &symbol)
    {
        Statement statement = connection.Prepare(
            QStringLiteral("SELECT 1 FROM %1 WHERE Symbol = ?").arg(QString::fromUtf8(table)));
        statement.BindAll(symbol);
        return statement.Step();
    }

    TestAppFolder folder;
    SimulatedClock clock{QDateTime(QDate(2026, 3, 2), QTime(10, 15))};
    Connection account, undo, control;
    TrackerRecordset rows;
    PurchaseLots lots;
};

/// The classes of a security called ACME.
class Allocation : public SecurityMaster
{
public:
    Allocation() { classes.Open(control, "ACME"); }
    Allocation &Class(const QString &name, double share)
    {
        classes.Add({name, Single::FromDouble(share)});
        return *this;
    }
    SecurityError Validate() { return ValidateSecurity({"ACME", "Acme Inc.", "Stock"}, classes); }
    /// "Energy 0.5; Water 0.5"
    QString Rows() const
    {
        QStringList texts;
        for (int row = 0; row < classes.RecordCount(); ++row)
            texts << classes.At(row).AssetClass + QLatin1Char(' ') +
                         English.ToText(classes.At(row).PerCentAllocated);
        return texts.join(QStringLiteral("; "));
    }
    QString StoredRows() const
    {
        return InControl("SELECT group_concat(AssetClass || ' ' || round(PerCentAllocated, 4), "
                         "'; ') FROM (SELECT * FROM SecurityAssetClass WHERE Symbol = 'ACME' "
                         "ORDER BY rowid)");
    }

    SecurityClasses classes;
};

} // namespace

// --- checks -------------------------------------------------------------------------------------

TEST_F(Allocation, NamesTheFirstFieldThatIsMissing)
{
    struct Case
    {
        SecurityFields fields;
        SecurityError error;
        const char *text;
    } cases[] = {
        {{"", "", ""}, SecurityError::Symbol, "Please enter a valid symbol"},
        {{"ACME", "", ""}, SecurityError::Name, "Enter a valid name for this security"},
        {{"ACME", "Acme", ""},
         SecurityError::SecurityType,
         "Please select the type of security for this symbol"},
        {{"ACME", "Acme", "Stock"}, SecurityError::None, ""},
    };
    for (const Case &c : cases) {
        const SecurityError error = ValidateSecurity(c.fields, classes);
        EXPECT_EQ(error, c.error) << c.text;
        EXPECT_EQ(SecurityErrorText(error), c.text);
    }
}

TEST_F(Allocation, TakesOneClassLeftAtZeroAsTheWhole)
{
    Class("Energy", 0);
    EXPECT_EQ(Validate(), SecurityError::None);
    EXPECT_EQ(Rows(), "Energy 1");
    EXPECT_EQ(classes.PercentTotal, Single::FromFloat(1));
}

TEST_F(Allocation, PassesTwoClassesThatMissOneHundredByHalfAPercent)
{
    Class("Energy", 0.5).Class("Water", 0.495);
    EXPECT_EQ(Validate(), SecurityError::None);
    EXPECT_EQ(English.ToText(classes.PercentTotal), "0.995");
}

TEST_F(Allocation, RefusesTwoClassesThatReachNinetyPercentAndSpreadsThemEvenly)
{
    Class("Energy", 0.5).Class("Water", 0.4);
    EXPECT_EQ(Validate(), SecurityError::Allocation);
    classes.AllocateEvenly();
    EXPECT_EQ(Rows(), "Energy 0.5; Water 0.5");
    EXPECT_EQ(StoredRows(), "Energy 0.5; Water 0.5");
    EXPECT_EQ(Validate(), SecurityError::None);
}

TEST_F(Allocation, SpreadsThreeClassesWithinTheTolerance)
{
    Class("Energy", 0.1).Class("Water", 0.1).Class("Cash", 0.1);
    classes.AllocateEvenly();
    EXPECT_EQ(StoredRows(), "Energy 0.3333; Water 0.3333; Cash 0.3333");
    EXPECT_EQ(Validate(), SecurityError::None);
}

TEST_F(Allocation, CountsARowWithoutAClassAsZero)
{
    Class("Energy", 1).Class("", 0.25);
    EXPECT_EQ(Validate(), SecurityError::None);
    EXPECT_EQ(Rows(), "Energy 1;  0");
}

TEST_F(Allocation, PassesASecurityWithoutClasses)
{
    EXPECT_EQ(Validate(), SecurityError::None);
    EXPECT_TRUE(classes.PercentTotal.IsZero());
    classes.AllocateEvenly();
    EXPECT_EQ(classes.RecordCount(), 0);
}

TEST_F(Allocation, IncludesBothBoundsOfTheTolerance)
{
    struct Case
    {
        double first, second;
        bool passes;
    } cases[] = {{0.5, 0.49, true},  {0.5, 0.489, false},  {0.505, 0.505, true},
                 {0.51, 0.50, true}, {0.51, 0.511, false}, {1.5, -0.5, true},
                 {-0.5, 0.5, true},  {50, 50, false}};
    for (const Case &c : cases) {
        classes.Open(control, "ACME");
        Class("Energy", c.first).Class("Water", c.second);
        EXPECT_EQ(Validate() == SecurityError::None, c.passes) << c.first << " + " << c.second;
    }
}

TEST_F(Allocation, SpreadsSeventeenClassesWithinTheTolerance)
{
    for (int i = 0; i < 17; ++i)
        Class(QString::number(i), 0.7);
    classes.AllocateEvenly();
    EXPECT_EQ(Validate(), SecurityError::None); // 17 Single sums of 0.05882353
}

TEST(AllocationFromText, ReadsFractionsAndPercentages)
{
    struct Case
    {
        const char *text;
        const char *share;
    } cases[] = {{"0.5", "0.5"}, {"50%", "0.5"},    {" 33.33 % ", "0.3333"}, {"1", "1"},
                 {"", "0"},      {"abc", "(none)"}, {"1e99", "(none)"},      {"%", "(none)"}};
    for (const Case &c : cases) {
        const std::optional<Single> share = AllocationFromText(QString::fromUtf8(c.text), English);
        EXPECT_EQ(share ? English.ToText(*share) : QStringLiteral("(none)"), c.share) << c.text;
    }
}

// --- class rows ---------------------------------------------------------------------------------

TEST_F(Allocation, WritesAddedChangedAndDeletedRowsInOneBatch)
{
    Class("Energy", 0.5).Class("Water", 0.25).Class("Cash", 0.25);
    EXPECT_EQ(StoredRows(), "");
    classes.UpdateBatch();
    EXPECT_EQ(StoredRows(), "Energy 0.5; Water 0.25; Cash 0.25");
    classes.Delete(0);
    classes.Set(0, {"Water", Single::FromFloat(0.75F)});
    Class("O'Neil & Söhne", 0);
    EXPECT_EQ(StoredRows(), "Energy 0.5; Water 0.25; Cash 0.25");
    classes.UpdateBatch();
    classes.UpdateBatch(); // nothing is left to write
    EXPECT_EQ(StoredRows(), "Water 0.75; Cash 0.25; O'Neil & Söhne 0.0");
}

TEST_F(Allocation, GivesUpEditsWhenAnotherSecurityIsOpened)
{
    Class("Energy", 1);
    classes.Open(control, "ZETA");
    classes.UpdateBatch();
    EXPECT_EQ(InControl("SELECT COUNT(*) FROM SecurityAssetClass"), "0");
}

TEST_F(Allocation, OffersTheNamesInTheirOrderAndTakesNewOnes)
{
    Recordset gRsApplication;
    gRsApplication.Open(control, {"*", "ApplicationTable", "ORDER BY TableName, Field08"});
    AddAssetClassName(gRsApplication, "Water", clock.Today());
    AddAssetClassName(gRsApplication, "Élan d'or", clock.Today());
    AddAssetClassName(gRsApplication, "Energy", clock.Today());
    EXPECT_EQ(AssetClassNames(control), QStringList({"Energy", "Water", "Élan d'or"}));
    EXPECT_EQ(InControl("SELECT DISTINCT Field04 || ' ' || Field05 FROM ApplicationTable"),
              "2026-03-02 2026-03-02");
    EXPECT_EQ(gRsApplication.RecordCount(), 3);
}

// --- the master list ----------------------------------------------------------------------------

TEST_F(SecurityMaster, AddsADetailRowAndChangesTheOneThatIsThere)
{
    EXPECT_FALSE(LoadSecurityDetail(control, "O'NEIL"));
    SaveSecurityDetail(control, {"O'NEIL", "Crédit d'Écureuil", "Stock"});
    SaveSecurityDetail(control, {"O'NEIL", "O'Neil \"Sons\"", "Bond"});
    EXPECT_EQ(LoadSecurityDetail(control, "O'NEIL"),
              (SecurityFields{"O'NEIL", "O'Neil \"Sons\"", "Bond"}));
    EXPECT_EQ(InControl("SELECT COUNT(*) FROM SecurityDetail"), "1");
}

TEST_F(SecurityMaster, ListsEverySecurityWithASymbol)
{
    SaveSecurityDetail(control, {"ZETA", "Zeta - Holding", "Stock"});
    SaveSecurityDetail(control, {"BRK A", "Berk", "Stock"});
    SaveSecurityDetail(control, {"", "Nameless", "Stock"});
    EXPECT_EQ(SecurityList(control), QStringList({"BRK A - Berk", "ZETA - Zeta - Holding"}));
    EXPECT_EQ(SymbolOfListEntry("ZETA - Zeta - Holding"), "ZETA");
    EXPECT_EQ(SymbolOfListEntry("BRK A - Berk"), "BRK A");
    EXPECT_EQ(SymbolOfListEntry(""), "");
}

// --- symbol and name ----------------------------------------------------------------------------

TEST_F(SecurityMaster, RenamesASymbolInAllTablesAndThePositionRow)
{
    Everywhere("ACME", "Acme Inc.");
    Everywhere("ZETA", "Zeta");
    SecurityWork work = Work();
    RenameSymbol(work, "ACME", "ACM");
    EXPECT_EQ(Tables("ACME"), 0);
    EXPECT_EQ(Tables("ACM"), 5);
    EXPECT_EQ(Tables("ZETA"), 5);
    EXPECT_EQ(InAccount("SELECT group_concat(Symbol) FROM DailyTracker"), "ACM,ZETA");
    EXPECT_EQ(rows.Current().Symbol, "ACM");
    EXPECT_EQ(rows.Current().Name, "Acme Inc.");
}

TEST_F(SecurityMaster, RenamesSymbolsWithApostrophesAndAccents)
{
    Everywhere("O'NEIL", "O'Neil");
    SecurityWork work = Work();
    RenameSymbol(work, "O'NEIL", "Ö''; DROP TABLE History; --");
    EXPECT_EQ(Tables("O'NEIL"), 0);
    EXPECT_EQ(Tables("Ö''; DROP TABLE History; --"), 5);
}

TEST_F(SecurityMaster, LeavesPricesAndBalancesUnderTheirSymbol)
{
    Everywhere("ACME", "Acme Inc.");
    const QString prices = folder.File("HistPrices.xxx");
    folder.Execute(
        prices, "INSERT INTO HistoricalPrices (Symbol, PriceDate) VALUES ('ACME', '2026-02-27')");
    account.Execute("INSERT INTO PortfolioDailyBalance VALUES (0, '2026-02-27', NULL, 'ACME')");
    SecurityWork work = Work();
    RenameSymbol(work, "ACME", "ACM");
    EXPECT_EQ(folder.Value(prices, "SELECT Symbol FROM HistoricalPrices"), "ACME");
    EXPECT_EQ(InAccount("SELECT TrackName FROM PortfolioDailyBalance"), "ACME");
}

TEST_F(SecurityMaster, JoinsASymbolThatIsKnownFromBefore)
{
    Everywhere("ACME", "Acme Inc.");
    // A day's entry of the new symbol is there already, and so is its master row.
    account.Execute("UPDATE DailyProfitLoss SET ProfitLoss = 50000");
    account.Execute("INSERT INTO DailyProfitLoss (Symbol, ProfitLoss, TransDate) VALUES "
                    "('ACM', 20000, '2026-02-27'), ('ACM', 10000, '2026-02-26')");
    control.Execute("INSERT INTO SecurityDetail VALUES ('ACM', 'Another', 'Bond')");
    SecurityWork work = Work();
    RenameSymbol(work, "ACME", "ACM");
    EXPECT_EQ(InAccount("SELECT Symbol FROM History"), "ACM");
    EXPECT_EQ(InAccount("SELECT Symbol FROM PriceHistory"), "ACM");
    EXPECT_EQ(InAccount("SELECT group_concat(Symbol || ProfitLoss, ' ') FROM (SELECT * FROM "
                        "DailyProfitLoss ORDER BY TransDate)"),
              "ACM10000 ACM70000"); // of one day, 5 + 2
    EXPECT_EQ(InControl("SELECT Symbol FROM SecurityAssetClass"), "ACM");
    EXPECT_EQ(InControl("SELECT group_concat(Symbol || SecurityType) FROM SecurityDetail"),
              "ACMEStock,ACMBond");
}

TEST_F(SecurityMaster, KeepsTheOldSymbolEverywhereWhenATableRefuses)
{
    for (const char *table : {"History", "DailyProfitLoss", "PriceHistory", "DailyTracker"}) {
        const QString symbol = QString("S%1").arg(table);
        Everywhere(symbol, "Acme Inc.");
        account.ExecuteScript(QString("CREATE TRIGGER Refuse BEFORE UPDATE ON %1 "
                                      "BEGIN SELECT RAISE(ABORT, 'refused'); END")
                                  .arg(table));
        SecurityWork work = Work();
        try {
            RenameSymbol(work, symbol, "ACM");
            ADD_FAILURE() << table;
        } catch (const FailedWrite &error) {
            EXPECT_EQ(error.Text(),
                      "The new symbol could not be saved: refused. Nothing was changed.");
        }
        if (QLatin1String(table) != QLatin1String("PriceHistory")) { // which has no names
            EXPECT_THROW(ChangeName(work, symbol, "Other"), FailedWrite);
        }
        account.ExecuteScript("DROP TRIGGER Refuse");
        EXPECT_EQ(Tables(symbol), 5) << table;
        EXPECT_EQ(Tables("ACM"), 0) << table;
        EXPECT_EQ(LoadSecurityDetail(control, symbol)->Name, "Acme Inc.");
        ASSERT_TRUE(rows.Find(symbol));
        EXPECT_EQ(rows.Current().Name, "Acme Inc.");
        EXPECT_EQ(lots.SharesOf(symbol), Single::FromFloat(100));
        rows.UpdateBatch(); // and nothing of it is left to be written
        EXPECT_EQ(InAccount("SELECT count(*) FROM DailyTracker WHERE Symbol = 'ACM'"), "0");
    }
}

TEST_F(SecurityMaster, FollowsARenameWithTheLotsInMemory)
{
    Everywhere("ACME", "Acme Inc.");
    SecurityWork work = Work();
    RenameSymbol(work, "ACME", "ACM");
    EXPECT_TRUE(lots.LotsOf("ACME").empty());
    ASSERT_EQ(lots.LotsOf("ACM").size(), 1U);
    EXPECT_EQ(lots.SharesOf("ACM"), Single::FromFloat(100));
}

TEST_F(SecurityMaster, ChangesTheNameInLedgerProfitPositionRowAndMasterList)
{
    Everywhere("ACME", "Acme Inc.");
    Everywhere("ZETA", "Zeta");
    SecurityWork work = Work();
    ChangeName(work, "ACME", "L'Acmé");
    EXPECT_EQ(InAccount("SELECT group_concat(Name) FROM History"), "L'Acmé,Zeta");
    EXPECT_EQ(InAccount("SELECT group_concat(Name) FROM DailyProfitLoss"), "L'Acmé,Zeta");
    EXPECT_EQ(InControl("SELECT group_concat(Name) FROM SecurityDetail"), "L'Acmé,Zeta");
    EXPECT_EQ(InAccount("SELECT group_concat(Name) FROM DailyTracker"), "L'Acmé,Zeta");
}

// --- saving -------------------------------------------------------------------------------------

TEST_F(SecurityMaster, AddsAPositionRowWithoutAmounts)
{
    SecurityWork work = Work();
    SecurityClasses classes;
    classes.Open(control, QString());
    classes.Add({"Energy", Single::FromFloat(1)});
    SaveNewSecurity(work, {"ACME", "Acme Inc.", "Stock"}, classes);
    EXPECT_EQ(InAccount("SELECT Symbol || '|' || Name || '|' || Shares || '|' || CurrPrice || '|' "
                        "|| TransDate || '|' || Time FROM DailyTracker"),
              "ACME|Acme Inc.|0.0|0|2026-03-02|10:15:00.000");
    EXPECT_EQ(InControl("SELECT Symbol || AssetClass FROM SecurityAssetClass"), "ACMEEnergy");
    EXPECT_EQ(LoadSecurityDetail(control, "ACME")->SecurityType, "Stock");
    EXPECT_EQ(rows.Current().Symbol, "ACME");
}

TEST_F(SecurityMaster, SavesNothingOfANewSecurityWhosePositionRowIsRefused)
{
    Everywhere("ACME", "Acme Inc.");
    rows.Open(account, "ORDER BY Symbol LIMIT 0"); // the row is in the file, not in memory
    SecurityWork work = Work();
    SecurityClasses classes;
    classes.Open(control, "ACME");
    classes.Add({"Water", Single::FromFloat(1)});
    EXPECT_THROW(SaveNewSecurity(work, {"ACME", "Another", "Bond"}, classes), RuntimeError);
    EXPECT_EQ(LoadSecurityDetail(control, "ACME"), (SecurityFields{"ACME", "Acme Inc.", "Stock"}));
    EXPECT_EQ(InControl("SELECT group_concat(AssetClass) FROM SecurityAssetClass"), "Energy");
    EXPECT_TRUE(rows.IsEmpty());
}

TEST_F(SecurityMaster, GivesTheEditedPositionRowItsNewSymbolAndName)
{
    Everywhere("ACME", "Acme Inc.");
    Everywhere("ZETA", "Zeta");
    rows.Find("ZETA"); // wherever the cursor stands
    SecurityWork work = Work();
    SecurityClasses classes;
    classes.Open(control, "ACME");
    SaveSecurity(work, {"ACM", "Acme", "Bond"}, classes, "ACME");
    EXPECT_EQ(InAccount("SELECT group_concat(Symbol || Name) FROM DailyTracker"),
              "ACMAcme,ZETAZeta");
    EXPECT_EQ(rows.Current().Symbol, "ACM");
}

TEST_F(SecurityMaster, TouchesNoPositionRowForASecurityOfAnotherAccount)
{
    Everywhere("ZETA", "Zeta");
    SaveSecurityDetail(control, {"ACME", "Acme Inc.", "Stock"});
    SecurityWork work = Work();
    SecurityClasses classes;
    classes.Open(control, "ACME");
    SaveSecurity(work, {"ACME", "Acme Inc.", "Bond"}, classes, "ACME");
    EXPECT_EQ(InAccount("SELECT group_concat(Symbol || Name) FROM DailyTracker"), "ZETAZeta");
    EXPECT_EQ(LoadSecurityDetail(control, "ACME")->SecurityType, "Bond");
}

TEST_F(SecurityMaster, KnowsWhatThePortfolioHasInCapitalsOrNot)
{
    Everywhere("ACME", "Acme Inc.");
    EXPECT_TRUE(IsInPortfolio(rows, "ACME", QString()));
    EXPECT_TRUE(IsInPortfolio(rows, "acme", QString()));
    EXPECT_FALSE(IsInPortfolio(rows, "acme", "ACME"));
    EXPECT_FALSE(IsInPortfolio(rows, "ACM", QString()));
}
