#include "test_account.h"

#include "transactions/entry_validation.h"

#include <gtest/gtest.h>

namespace
{

using Lines = std::vector<std::string>;

/// The box of a hard error.
Lines Error(const std::string &text)
{
    return {"Quillon Editor|48|" + text};
}

Lines Question(const std::string &text)
{
    return {"Quillon Editor|36|" + text};
}

/// Expects that the posting stops, with these boxes and this request, and leaves the file alone
/// (but for the posting before it, which is final then).
void ExpectRejected(TestAccount &account, const TransactionEntry &entry, const Lines &boxes,
                    const Lines &asked)
{
    account.Commit();
    const std::string before = account.FileText();
    EXPECT_EQ(account.Post(entry), PostingOutcome::Rejected);
    EXPECT_EQ(account.Boxes(), boxes);
    EXPECT_EQ(account.Asked(), asked);
    EXPECT_EQ(account.Status(), "Correct errors found!");
    EXPECT_EQ(account.FileText(), before);
}

TestAccount LongAcme()
{
    return TestAccount().Row("ACME", "100", "10").Lot("ACME", "100", "10", "2026-01-05");
}

TestAccount ShortAcme()
{
    return TestAccount().Row("ACME", "-100", "10").Lot("ACME", "-100", "10", "2026-01-05");
}

} // namespace

TEST(ActionFitsType, FollowsTheTable)
{
    struct Row
    {
        Action action;
        bool stock, anyTrade, fund, index;
    };
    const Row rows[] = {
        {Action::Deposit, true, true, true, true},
        {Action::CashWithdrawal, true, true, true, true},
        {Action::BalanceAdjustment, true, true, true, true},
        {Action::DividendReceived, true, true, true, true},
        {Action::Buy, true, true, true, false},
        {Action::Sell, true, true, true, false},
        {Action::SellShort, true, true, false, false},
        {Action::BuyToCover, true, true, false, false},
        {Action::DividendReinvestment, false, true, true, false},
        {Action::Split, true, true, true, false},
    };
    for (const Row &row : rows) {
        const std::string name = ActionText(row.action).toStdString();
        EXPECT_EQ(ActionFitsType(row.action, "Stock"), row.stock) << name;
        for (const char *type : {"Bond", "Future", "Commodity", "Option"})
            EXPECT_EQ(ActionFitsType(row.action, type), row.anyTrade) << name << type;
        EXPECT_EQ(ActionFitsType(row.action, "Mutual Fund"), row.fund) << name;
        EXPECT_EQ(ActionFitsType(row.action, "Index"), row.index) << name;
        EXPECT_EQ(ActionFitsType(row.action, ""), row.index) << name;
    }
}

TEST(ValidateActionForType, RefusesAReinvestmentOnAStockAndNamesTheType)
{
    TestAccount account = LongAcme();
    ExpectRejected(account, account.EntryOf(Action::DividendReinvestment, "ACME", "1", "10"),
                   {"Quillon Editor|64|Selected transaction type is invalid for this security "
                    "type: Stock"},
                   {});
}

TEST(RefreshEntryFields, OffersTheWholePositionToASaleOrACover)
{
    TestAccount account = LongAcme().Row("ZORG", "-2.5", "10").Row("FLAT");
    PostingWork work = account.Work();
    TransactionEntry entry = account.EntryOf(Action::Sell, "ACME", "", "");
    EXPECT_FALSE(RefreshEntryFields(work, entry));
    EXPECT_EQ(entry.NumberOfShares, QStringLiteral("100"));
    EXPECT_EQ(account.Entry().AverageCost, Currency("10"));

    entry = account.EntryOf(Action::BuyToCover, "ZORG", "", "");
    RefreshEntryFields(work, entry);
    EXPECT_EQ(entry.NumberOfShares, QStringLiteral("2.5"));

    entry = account.EntryOf(Action::Sell, "FLAT", "", "");
    RefreshEntryFields(work, entry);
    EXPECT_EQ(entry.NumberOfShares, QString());

    entry = account.EntryOf(Action::Sell, "ACME", "7", "");
    RefreshEntryFields(work, entry);
    EXPECT_EQ(entry.NumberOfShares, QStringLiteral("7")); // what is typed stays

    entry = account.EntryOf(Action::Sell, "NONE", "", "");
    RefreshEntryFields(work, entry);
    EXPECT_EQ(account.Entry().AverageCost, Currency());
}

TEST(RefreshEntryFields, OffersTwoForOneToASplit)
{
    TestAccount account = LongAcme();
    PostingWork work = account.Work();
    TransactionEntry entry = account.EntryOf(Action::Split, "ACME", "", "");
    RefreshEntryFields(work, entry);
    EXPECT_EQ(entry.NumberOfShares, QStringLiteral("2"));
    EXPECT_EQ(entry.PurchasePrice, QStringLiteral("1"));
}

TEST(ValidateEntry, AsksForAnAction)
{
    TestAccount account = LongAcme();
    TransactionEntry entry = account.EntryOf(Action::Buy, "ACME", "1", "1");
    entry.action.reset();
    ExpectRejected(account, entry, Error("Please select transaction type"),
                   {"focus NumberOfShares"});
}

TEST(ValidateEntry, AsksForTheAmountOfACashAction)
{
    TestAccount account = LongAcme();
    const std::pair<Action, std::string> rows[] = {
        {Action::Deposit, "Please enter deposit amount"},
        {Action::CashWithdrawal, "Please enter withdrawal amount"},
        {Action::BalanceAdjustment,
         "Please enter new balance amount. The adjustment \nis computed automatically"},
        {Action::DividendReceived, "Please enter dividend received"},
    };
    for (const auto &[action, text] : rows)
        ExpectRejected(account, account.EntryOf(action, "", "", ""), Error(text),
                       {"focus NumberOfShares"});
}

TEST(ValidateEntry, AsksForCountAndPriceOfATrade)
{
    TestAccount account = LongAcme();
    ExpectRejected(account, account.EntryOf(Action::Buy, "ACME", "", "10"),
                   Error("Please enter number of shares purchased or sold"),
                   {"focus NumberOfShares"});
    ExpectRejected(account, account.EntryOf(Action::Buy, "ACME", "10", ""),
                   Error("Price not entered!"), {"focus PurchasePrice"});
}

TEST(ValidateEntry, RefusesWhatIsNoPrice)
{
    TestAccount account = LongAcme();
    for (const char *price : {"abc", "12 3/0", "1.2.3", "99999999999999999999999"})
        ExpectRejected(account, account.EntryOf(Action::Buy, "ACME", "10", price),
                       Error("Please provide a valid stock price!"), {"focus PurchasePrice"});
}

TEST(ValidateEntry, BlanksAPriceOfZeroAndAsksForOne)
{
    for (const char *price : {"0", "0.00001", "0/8"}) {
        TestAccount account = LongAcme();
        ExpectRejected(account, account.EntryOf(Action::Buy, "ACME", "10", price),
                       Error("Price not entered!"), {"focus PurchasePrice"});
        EXPECT_EQ(account.LastEntry().PurchasePrice, QString());
    }
}

TEST(ValidateEntry, AsksFromFiveHundredOn)
{
    const std::string question = "Purchase price is greater than 500! Is this OK?";
    TestAccount account = TestAccount().Row("ACME");
    EXPECT_EQ(account.Buy("ACME", "1", "499.9999"), PostingOutcome::Posted);
    EXPECT_TRUE(account.Boxes().empty());
    account.Queue(Answer::Yes);
    EXPECT_EQ(account.Buy("ACME", "1", "500"), PostingOutcome::Posted);
    EXPECT_EQ(account.Boxes(), Question(question));
    account.Queue(Answer::No);
    ExpectRejected(account, account.EntryOf(Action::Buy, "ACME", "1", "500"), Question(question),
                   {"focus PurchasePrice"});
}

TEST(ValidateEntry, RefusesATradeOfTheFutureButNoCashAction)
{
    TestAccount account = LongAcme();
    ExpectRejected(account, account.EntryOf(Action::Buy, "ACME", "1", "10", "2026-03-03"),
                   Error("Transaction date can not be greater than today's date!"),
                   {"focus TransDate"});
    EXPECT_EQ(account.Post(Action::Deposit, "", "5", "", "2026-03-03"), PostingOutcome::Posted);
}

TEST(ValidateEntry, StopsNoDepositOfZero)
{
    TestAccount account;
    EXPECT_EQ(account.Cash(Action::Deposit, "0"), PostingOutcome::Posted);
    EXPECT_EQ(account.History(), Lines{" |Account Deposit|Deposit|0|0|0|0|2026-03-02"});
}

TEST(ValidateEntry, ShowsAPriceTypedAsAFraction)
{
    TestAccount account = TestAccount().Row("ACME");
    account.Buy("ACME", "8", "12 1/2");
    EXPECT_EQ(account.LastEntry().PurchasePrice, QStringLiteral("12.50000"));
    EXPECT_EQ(account.Lots("ACME"), "8 @ 12.5000");
}

TEST(ValidatePriceText, ShowsFiveDecimalsBlanksZeroAndRefusesTheRest)
{
    const Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    const std::pair<const char *, const char *> rows[] = {
        {"12 3/8", "12.37500"},
        {"3/8", "0.37500"},
        {"1,234.56", "1,234.56010"},
        // the 32-bit float nearest to it is 260.54998779; the price is money
        {"260.55", "260.55000"},
        {"", ""},
        {"0", ""},
        {"0.00001", ""},
        {"12.5", "12.50000"},
        {"1/3", "0.33330"},
        {"0.0001", "0.00010"},
        {"5000000", "5,000,000.00000"},
    };
    for (const auto &[text, shown] : rows)
        EXPECT_EQ(ValidatePriceText(text, formats), QString::fromLatin1(shown)) << text;
    for (const char *text : {"12 3/0", "abc", "-5", "1.2.3", " ", "1e30", "99999999999999999999"})
        EXPECT_EQ(ValidatePriceText(text, formats), std::nullopt) << text;
}

TEST(ValidatePriceText, ChangesNothingTheSecondTime)
{
    const Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    for (const char *text : {"1234.56", "12 3/8", "0.3333", "99999.99", "123456.789"}) {
        const QString once = *ValidatePriceText(text, formats);
        EXPECT_EQ(ValidatePriceText(once, formats), once) << text;
    }
}

TEST(ValidateSecurityEntry, AsksBeyondOneAndAHalfTimesTheAverage)
{
    const std::string question = "Price is over 50% greater than your average price for this "
                                 "security! Is this OK?";
    TestAccount account = LongAcme();
    EXPECT_EQ(account.Sell("ACME", "1", "15"), PostingOutcome::Posted);
    EXPECT_TRUE(account.Boxes().empty());
    account.Queue(Answer::No);
    ExpectRejected(account, account.EntryOf(Action::Sell, "ACME", "1", "15.0001"),
                   Question(question), {"focus PurchasePrice"});
    account.Queue(Answer::Yes);
    EXPECT_EQ(account.Buy("ACME", "1", "15.0001"), PostingOutcome::Posted); // buying more as well
    EXPECT_EQ(account.Boxes(), Question(question));
}

TEST(ValidateSecurityEntry, AsksNothingOnTheFirstPurchaseOfAFlatRow)
{
    TestAccount account = TestAccount().Row("ACME");
    EXPECT_EQ(account.Buy("ACME", "1", "400"), PostingOutcome::Posted);
    EXPECT_TRUE(account.Boxes().empty());
}

TEST(ValidateSecurityEntry, KeepsLongAndShortApart)
{
    TestAccount shorted = ShortAcme();
    for (const Action action : {Action::Sell, Action::Buy})
        ExpectRejected(shorted, shorted.EntryOf(action, "ACME", "1", "10"),
                       Error("You have existing short positions for this security!"),
                       {"focus Action"});
    TestAccount held = LongAcme();
    for (const Action action : {Action::SellShort, Action::BuyToCover})
        ExpectRejected(held, held.EntryOf(action, "ACME", "1", "10"),
                       Error("You have existing long positions for this security!"),
                       {"focus Action"});
}

TEST(ValidateSecurityEntry, RefusesToCoverMoreThanWasSoldShort)
{
    TestAccount account = ShortAcme();
    ExpectRejected(account, account.EntryOf(Action::BuyToCover, "ACME", "150", "10"),
                   Error("You're trying to cover more shares than you sold short!"),
                   {"focus NumberOfShares"});
    EXPECT_EQ(account.Cover("ACME", "100", "10"), PostingOutcome::Posted);
}

TEST(ValidateSecurityEntry, ACoverOfAFlatRowMayBeMeantAsAPurchase)
{
    const std::string question = "No shares to cover for this security. Do you mean Buy long?";
    TestAccount account = TestAccount().Row("ACME").Queue(Answer::No);
    ExpectRejected(account, account.EntryOf(Action::BuyToCover, "ACME", "10", "10"),
                   Question(question), {"select Sell short"});
    account.Queue(Answer::Yes);
    EXPECT_EQ(account.Cover("ACME", "10", "10"), PostingOutcome::Posted);
    EXPECT_EQ(account.Asked(), Lines{"select Buy"});
    EXPECT_EQ(account.Lots("ACME"), "10 @ 10.0000");
    EXPECT_EQ(account.History(), Lines{"ACME|ACME Inc.|Bought|10|0|10|-100|2026-03-02"});
}

TEST(ValidateSecurityEntry, ASaleOfAFlatRowMayBeMeantAsAShortSale)
{
    const std::string question = "No shares to sell long for this security. Do you mean Short?";
    TestAccount account = TestAccount().Row("ACME").Queue(Answer::No);
    ExpectRejected(account, account.EntryOf(Action::Sell, "ACME", "10", "10"), Question(question),
                   {"select Buy"});
    account.Queue(Answer::Yes);
    EXPECT_EQ(account.Sell("ACME", "10", "10"), PostingOutcome::Posted);
    EXPECT_EQ(account.Asked(), Lines{"select Sell short"});
    EXPECT_EQ(account.Lots("ACME"), "-10 @ 10.0000");
    EXPECT_EQ(account.History(), Lines{"ACME|ACME Inc.| Short  Sale|-10|0|10|100|2026-03-02"});
}

TEST(ValidateSecurityEntry, ASaleOfTheDayOfItsLotPassesAndOneOfTheDayBeforeFails)
{
    TestAccount account = LongAcme();
    ExpectRejected(account, account.EntryOf(Action::Sell, "ACME", "1", "10", "2026-01-04"),
                   Error("The sell transaction entered preceeds the earliest purchase made\nfor "
                         "this security on 1/5/2026"),
                   {"focus TransDate"});
    EXPECT_EQ(account.Sell("ACME", "1", "10", "2026-01-05"), PostingOutcome::Posted);
}

TEST(ValidateSecurityEntry, AnyLaterLotStopsASaleNotOnlyTheEarliest)
{
    TestAccount account = LongAcme().Lot("ACME", "50", "10", "2026-02-02");
    ExpectRejected(account, account.EntryOf(Action::Sell, "ACME", "1", "10", "2026-01-20"),
                   Error("The sell transaction entered preceeds the earliest purchase made\nfor "
                         "this security on 2/2/2026"),
                   {"focus TransDate"});
}

TEST(ValidateSecurityEntry, ACoverBeforeItsShortSaleFailsToo)
{
    TestAccount account = ShortAcme();
    ExpectRejected(account, account.EntryOf(Action::BuyToCover, "ACME", "1", "10", "2026-01-04"),
                   Error("The sell transaction entered preceeds the earliest purchase made\nfor "
                         "this security on 1/5/2026"),
                   {"focus TransDate"});
}

TEST(ValidateSecurityEntry, RefusesToSplitAFlatPositionWhenItIsAsked)
{
    TestAccount account = TestAccount().Row("ACME");
    account.Rows().Find("ACME");
    PostingWork work = account.Work();
    TransactionEntry entry = account.EntryOf(Action::Split, "ACME", "2", "1");
    EXPECT_TRUE(
        ValidateSecurityEntry(work, entry, Single::FromDouble(2), Currency("1"), account.Filler()));
    EXPECT_EQ(account.Boxes(), Error("Selected security has no shares to split."));
}

TEST(Validation, ChecksNothingInAReplay)
{
    TestAccount account = ShortAcme();
    account.Entry().RebuildMode = true;
    account.Rows().Find("ACME");
    PostingWork work = account.Work();
    TransactionEntry entry = account.EntryOf(Action::Buy, "ACME", "", "", "2030-01-01");
    EXPECT_FALSE(ValidateEntry(work, entry, account.Filler()));
    EXPECT_FALSE(ValidateActionForType(work, Action::DividendReinvestment));
    EXPECT_FALSE(ValidateSecurityEntry(work, entry, Single::FromDouble(1), Currency("999"),
                                       account.Filler()));
    EXPECT_TRUE(account.Boxes().empty());
}
