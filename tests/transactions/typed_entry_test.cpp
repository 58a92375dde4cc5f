/// What a user types is what is posted: amounts, counts and dates, key by key, in several languages.

#include "entry_screen.h"

#include <QClipboard>
#include <QGuiApplication>

class TypedEntry : public EntryScreen
{
protected:
    explicit TypedEntry(const QLocale &locale = QLocale(QLocale::English, QLocale::UnitedStates))
        : EntryScreen(locale)
    {
        QLocale::setDefault(locale);
    }
    ~TypedEntry() override { QLocale::setDefault(QLocale::c()); }

    /// From the list of actions on, as a person without a mouse: Tab count Tab price Tab Tab date Enter.
    void TypeEntry(const QString &count, const QString &price, const QString &date)
    {
        List()->setFocus();
        Press("Tab");
        WidgetActions::TypeToFocus(count);
        Press("Tab");
        WidgetActions::TypeToFocus(price);
        Press("Tab");
        Press("Tab");
        Date()->selectAll();
        WidgetActions::TypeToFocus(date);
        Press("Return");
    }
    void Paste(const QString &field, const QString &text)
    {
        Type(field, QString());
        QGuiApplication::clipboard()->setText(text);
        Press("Ctrl+V");
    }
    QString LastLot() const
    {
        return Stored("SELECT TransDate || ' ' || Shares || ' @ ' || Price FROM History "
                      "ORDER BY ID DESC LIMIT 1");
    }
};

class TypedEntryIn : public TypedEntry, public testing::WithParamInterface<const char *>
{
protected:
    TypedEntryIn() : TypedEntry(QLocale(QString::fromLatin1(GetParam()))) {}
};

// --- dates --------------------------------------------------------------------------------------

TEST_P(TypedEntryIn, PostsOnTheDayThatWasTyped)
{
    const QLocale locale(QString::fromLatin1(GetParam()));
    const QDate day(2026, 2, 1);
    int rows = 0;
    for (const QString &date :
         {locale.toString(day, QLocale::ShortFormat), Formats(locale).ShortDate(day),
          locale.toString(day, QLocale::LongFormat), day.toString(Qt::ISODate)}) {
        Open("ACME");
        Date()->setDate(QDate(2026, 3, 2));
        TypeEntry("1", "10", date);
        EXPECT_EQ(Boxes(), QStringList()) << qPrintable(date);
        EXPECT_EQ(HistoryRows(), ++rows) << qPrintable(date);
        EXPECT_EQ(LastLot(), "2026-02-01 1.0 @ 100000") << qPrintable(date);
    }
}

TEST_P(TypedEntryIn, PostsNothingOnADayThatNoCalendarHas)
{
    Open("ACME");
    TypeEntry("1", "10", QStringLiteral("2026-02-31"));
    EXPECT_EQ(HistoryRows(), 0);
    EXPECT_EQ(Boxes().size(), 1);
    EXPECT_EQ(Focused(), "dtpTransDate");
    Click("cmdOK");
    EXPECT_EQ(HistoryRows(), 0);
    EXPECT_EQ(Boxes().size(), 1);
    EXPECT_EQ(Text("txtNumberOfShares"), "1");
    Date()->selectAll();
    WidgetActions::TypeToFocus(QStringLiteral("2026-02-28"));
    Press("Return");
    EXPECT_EQ(LastLot(), "2026-02-28 1.0 @ 100000");
}

// --- decimal signs ------------------------------------------------------------------------------

TEST_P(TypedEntryIn, PostsACountAndAPriceTypedWithAPoint)
{
    Open("ACME");
    Post("Buy", "1.5", "2.50");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(LastLot(), "2026-03-02 1.5 @ 25000");
    const Currency before = State().account.AccountBalance;
    Post("Deposit", "1234.5");
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(State().account.AccountBalance - before, Currency("1234.5"));
}

INSTANTIATE_TEST_SUITE_P(Languages, TypedEntryIn,
                         testing::Values("en_US", "en_GB", "de_DE", "ja_JP", "C", "ar_EG"),
                         [](const auto &info) { return std::string(info.param); });

class GermanEntry : public TypedEntry
{
protected:
    GermanEntry() : TypedEntry(QLocale(QLocale::German, QLocale::Germany)) {}
};

TEST_F(GermanEntry, ReadsThePointBeforeThreeDigitsAsGroups)
{
    Open("ACME");
    Post("Buy", "1.234", "2,50");
    EXPECT_EQ(LastLot(), "2026-03-02 1234.0 @ 25000");
    Post("Buy", "1,234", "2,5");
    EXPECT_EQ(LastLot(), "2026-03-02 1.23399996757507 @ 25000"); // a 32-bit float
}

TEST_F(GermanEntry, RefusesAPriceWithAGroupSignInAWrongPlace)
{
    Open("ACME");
    Type("txtNumberOfShares", "1");
    Type("txtPurchasePrice", "1.23.456");
    Press("Return");
    EXPECT_EQ(Boxes(), QStringList("Please provide a valid stock price!"));
    EXPECT_EQ(Focused(), "txtPurchasePrice");
    EXPECT_EQ(HistoryRows(), 0);
}

class EgyptianEntry : public TypedEntry
{
protected:
    EgyptianEntry() : TypedEntry(QLocale(QStringLiteral("ar_EG"))) {}
};

TEST_F(EgyptianEntry, TakesTheDigitsOfTheLanguageAndThePlainOnes)
{
    Open("ACME");
    Post("Buy", QString::fromUtf16(u"\u0661\u0662\u066b\u0665"), QStringLiteral("2.50"));
    EXPECT_EQ(Boxes(), QStringList());
    EXPECT_EQ(LastLot(), "2026-03-02 12.5 @ 25000");
}

// --- no numbers ---------------------------------------------------------------------------------

TEST_F(TypedEntry, TakesOneDecimalSignInACount)
{
    Open("ACME");
    Edit("txtNumberOfShares")->OnRefused = [] {};
    Type("txtNumberOfShares", "1.2.3");
    EXPECT_EQ(Text("txtNumberOfShares"), "1.23");
}

TEST_F(TypedEntry, CountsASignAloneAsEmpty)
{
    Open("ACME");
    Post("Buy", ".", "10");
    EXPECT_EQ(Boxes(), QStringList("Please enter number of shares purchased or sold"));
    Post("Buy", "5", ".");
    EXPECT_EQ(Boxes(), QStringList("Please provide a valid stock price!"));
    Type("txtPurchasePrice", "10"); // the field is not left before
    Post("Deposit", ".");
    EXPECT_EQ(Boxes(), QStringList("Please enter deposit amount"));
    EXPECT_EQ(HistoryRows(), 0);
    EXPECT_EQ(run.timesEnded, 0);
}

TEST_F(TypedEntry, RefusesAPastedTextThatIsNoNumber)
{
    Open("ACME");
    for (const char *text : {"1.2.3", "12 shares", "1,23,456", "-"}) {
        Choose("Buy");
        Type("txtPurchasePrice", "10");
        Paste("txtNumberOfShares", text);
        Click("cmdOK");
        EXPECT_EQ(Boxes(), QStringList("Please enter number of shares purchased or sold")) << text;
        EXPECT_EQ(Focused(), "txtNumberOfShares");
        Choose("Cash Withdrawal");
        Paste("txtNumberOfShares", text);
        Click("cmdOK");
        EXPECT_EQ(Boxes(), QStringList("Please enter withdrawal amount")) << text;
    }
    EXPECT_EQ(HistoryRows(), 0);
    EXPECT_EQ(State().account.AccountBalance, Currency("1000"));
    EXPECT_EQ(run.timesEnded, 0);
}

TEST_F(TypedEntry, RefusesWhatIsTooLargeWithASentenceAndGoesOn)
{
    Open("ACME");
    const QString nines(29, QLatin1Char('9'));
    const QString tooManyShares =
        QStringLiteral("These shares at this price are too large for the account.");
    const QString tooMuchMoney = QStringLiteral("This amount is too large for the account.");
    for (const char *action : {"Buy", "Sell", "Split"}) {
        Post(action, nines, "10");
        EXPECT_EQ(Boxes(), QStringList(tooManyShares)) << action;
        EXPECT_EQ(Focused(), "txtNumberOfShares");
    }
    Post("Split", "2", nines);
    EXPECT_EQ(Boxes(), QStringList(tooManyShares));
    Post("Buy", QString(60, QLatin1Char('9')), "10"); // not even a count of shares
    EXPECT_EQ(Boxes(), QStringList(tooManyShares));
    Post("Buy", "1000000", "900000000000");
    EXPECT_EQ(Boxes(), QStringList(tooManyShares));
    Post("Buy", "10", nines);
    EXPECT_EQ(Boxes().value(0), "Please provide a valid stock price!");
    Type("txtPurchasePrice", "10");
    for (const char *action : {"Deposit", "Cash Withdrawal", "Dividend Received"}) {
        Post(action, nines);
        EXPECT_EQ(Boxes(), QStringList(tooMuchMoney)) << action;
    }
    Answer("Balance adjustments", ::Answer::Yes);
    Post("Balance Adjustment", nines);
    EXPECT_EQ(Boxes().mid(1), QStringList(tooMuchMoney));
    EXPECT_EQ(HistoryRows(), 0);
    EXPECT_EQ(State().account.AccountBalance, Currency("1000"));
    EXPECT_EQ(run.timesEnded, 0);

    Post("Buy", "1", "10"); // the program goes on
    EXPECT_EQ(HistoryRows(), 1);
    EXPECT_EQ(Row("ACME").Shares.Value(), 101.0f);
}
