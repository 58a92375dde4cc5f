// Many random accounts, each with all that a user does in a few days: what must always hold.

#include "replay_account.h"

#include "transactions/row_removal.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace
{

/// Shares, price and date of each lot of a symbol, in order; their time is that of the posting.
std::vector<std::string> LotLines(TestAccount &account, const QString &symbol)
{
    std::vector<std::string> lines;
    for (const Lot &lot : account.gRsLots().LotsOf(symbol))
        lines.push_back(QString::number(lot.Shares.ToDouble(), 'g', 9).toStdString() + " @ " +
                        std::to_string(lot.PurchasePrice.Units()) + " " +
                        lot.TransDate.toString(Qt::ISODate).toStdString());
    return lines;
}

/// An undo brings lots that were dated back into the order of their dates.
std::vector<std::string> InAnyOrder(std::vector<std::string> lines)
{
    std::sort(lines.begin(), lines.end());
    return lines;
}

/// All tables that a rebuild makes, without Time and ID.
std::string Rebuilt(TestAccount &account)
{
    std::string text;
    const TrackerRecordset &rows = account.Rows();
    std::map<QString, std::string> bySymbol;
    for (int i = 0; i < rows.RecordCount(); ++i) {
        std::ostringstream line;
        PrintTo(rows.At(i), &line);
        bySymbol[rows.At(i).Symbol] = line.str() + rows.At(i).Name.toStdString();
    }
    for (const auto &[symbol, line] : bySymbol)
        text += line + testing::PrintToString(LotLines(account, symbol)) + "\n";
    for (const std::string &line : account.ProfitLoss())
        text += line.substr(0, line.rfind('|')) + "\n";
    return text;
}

class RandomAccount
{
public:
    /// Every other account knows trades alone.
    explicit RandomAccount(unsigned seed) : m_random(seed), m_onlyTrades(seed % 2 == 0)
    {
        account.AnswerRest(Answer::Yes);
        for (const char *symbol : Symbols)
            account.Row(symbol);
    }

    void Run(int steps)
    {
        for (int i = 0; i < steps && !testing::Test::HasFailure(); ++i) {
            SCOPED_TRACE("step " + std::to_string(i));
            account.Clock().Advance(std::chrono::minutes(Pick(1, 90)));
            if (Pick(0, 9) == 0)
                account.Clock().Advance(std::chrono::hours(Pick(12, 60)));
            Step();
            for (const char *symbol : Symbols)
                EXPECT_EQ(account.gRsLots().SharesOf(symbol), account.Of(symbol).Shares) << symbol;
        }
        account.Commit();
    }

    TestAccount account;
    /// History says all there is to say of the lots: no split or clear came in between, no cash
    /// row, which replays as another trade, and no sale behind a purchase that was dated back.
    bool ledgerIsWhole = true;
    int postings = 0, undone = 0, rejected = 0;

    static constexpr const char *Symbols[] = {"ACME", "O'NEIL", "acme"};

private:
    int Pick(int from, int to) { return std::uniform_int_distribution(from, to)(m_random); }
    static QString Text(double value) { return QString::number(value, 'f', 2); }

    void Step()
    {
        const QString symbol = QString::fromUtf8(Symbols[Pick(0, 2)]);
        const TrackerRow before = account.Of(symbol);
        const std::vector<std::string> lotsBefore = InAnyOrder(LotLines(account, symbol));
        const size_t historyBefore = account.History().size();
        bool undoable = true;
        if (!Act(symbol, before.Shares.ToDouble(), undoable))
            return;
        ++postings;
        if (!undoable || Pick(0, 3) != 0)
            return;
        ++undone;
        account.Undo();
        EXPECT_EQ(account.Of(symbol), before);
        EXPECT_EQ(InAnyOrder(LotLines(account, symbol)), lotsBefore);
        EXPECT_EQ(account.History().size(), historyBefore);
    }

    /// False when nothing was posted.
    bool Act(const QString &symbol, double held, bool &undoable)
    {
        const QString count = Text(Pick(1, 400) / 4.0);
        const QString price = Text(Pick(4, 160) / 4.0);
        account.Commission(Pick(0, 1) ? "0" : "1.25");
        switch (m_onlyTrades ? Pick(0, 6) : Pick(0, 11)) {
        case 0:
        case 1:
            return Posted(held < 0 ? account.SellShort(symbol, count, price, Day())
                                   : account.Buy(symbol, count, price, Day()));
        case 2:
            if (held != 0)
                return Reject(symbol, held);
            return Posted(account.SellShort(symbol, count, price));
        case 3:
        case 4:
        case 5: {
            if (held == 0)
                return Reject(symbol, held);
            const QString closed = Pick(0, 2) == 0
                                       ? Text(std::abs(held))
                                       : Text(std::min(std::abs(held), count.toDouble()));
            m_closed = true;
            if (m_datedBack) // taken behind lots that a replay finds behind it
                ledgerIsWhole = false;
            return Posted(
                account.Post(held > 0 ? Action::Sell : Action::BuyToCover, symbol, closed, price));
        }
        case 6:
            if (held < 0)
                return Reject(symbol, held);
            return Posted(Reinvest(symbol, count, price));
        case 7: {
            static const Action cash[] = {Action::Deposit, Action::CashWithdrawal,
                                          Action::BalanceAdjustment, Action::DividendReceived};
            ledgerIsWhole = undoable = false;
            return Posted(account.Cash(cash[Pick(0, 3)], count));
        }
        case 8: // one for two keeps all counts exact
            ledgerIsWhole = undoable = false;
            return account.Split(symbol, Pick(0, 1) ? "2" : "4", "1") ==
                   PostingOutcome::PostedSplit;
        case 9:
            if (Pick(0, 3) == 0)
                Clear(symbol);
            return false;
        default:
            return Reject(symbol, held);
        }
    }

    /// Only a fund can be reinvested in.
    PostingOutcome Reinvest(const QString &symbol, const QString &count, const QString &price)
    {
        account.SecurityType("Mutual Fund");
        const PostingOutcome outcome =
            account.Post(Action::DividendReinvestment, symbol, count, price);
        account.SecurityType("Stock");
        return outcome;
    }
    bool Posted(PostingOutcome outcome)
    {
        EXPECT_EQ(outcome, PostingOutcome::Posted) << testing::PrintToString(account.Boxes());
        return outcome == PostingOutcome::Posted;
    }

    /// Mostly today; a purchase dated back only where no sale stands that would then find it.
    const char *Day()
    {
        if (m_closed || Pick(0, 3) != 0)
            return nullptr;
        m_datedBack = true;
        return Pick(0, 1) ? "2026-01-05" : "2026-02-03";
    }

    /// Dated in the future, or of the wrong side: refused, and nothing changes.
    bool Reject(const QString &symbol, double held)
    {
        account.Commit();
        const std::string before = account.FileText();
        const PostingOutcome outcome = held == 0  ? account.Buy(symbol, "1", "10", "2099-01-01")
                                       : held > 0 ? account.SellShort(symbol, "1", "10")
                                                  : account.Buy(symbol, "1", "10");
        EXPECT_EQ(outcome, PostingOutcome::Rejected);
        EXPECT_EQ(account.FileText(), before);
        ++rejected;
        return false;
    }

    /// Taken back, or left: then the row and its lots are gone and the ledger still has them.
    void Clear(const QString &symbol)
    {
        account.Commit();
        const std::vector<std::string> lotsBefore = InAnyOrder(LotLines(account, symbol));
        const TrackerRow before = account.Of(symbol);
        account.UndoRecords().UndoLast.HistoryID = 0; // else the undo takes the last posting's row
        ASSERT_TRUE(account.Rows().Find(symbol));
        PostingWork work = account.Work();
        ClearRow(work);
        EXPECT_TRUE(LotLines(account, symbol).empty());
        if (Pick(0, 1)) {
            account.UndoRecords().UndoLast.LotAdded = false;
            account.Undo();
            EXPECT_EQ(InAnyOrder(LotLines(account, symbol)), lotsBefore);
            EXPECT_EQ(account.Of(symbol), before);
        } else {
            ledgerIsWhole = false;
        }
    }

    std::mt19937 m_random;
    bool m_onlyTrades;
    bool m_closed = false;
    bool m_datedBack = false;
};

} // namespace

TEST(LedgerProperty, LotsUndoAndReplayHoldOverAThousandRandomAccounts)
{
    int whole = 0, postings = 0, undone = 0, rejected = 0;
    for (unsigned seed = 1; seed <= 1000 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomAccount random(seed);
        random.Run(8);
        postings += random.postings;
        undone += random.undone;
        rejected += random.rejected;

        random.account.gRsLots().Requery(); // lots dated back stand behind until then
        std::map<std::string, std::vector<std::string>> lots;
        std::map<std::string, Single> shares;
        for (const char *symbol : RandomAccount::Symbols) {
            lots[symbol] = LotLines(random.account, symbol);
            shares[symbol] = random.account.Of(symbol).Shares;
        }
        const std::vector<std::string> ledger = random.account.History();
        const QDate today = random.account.Clock().Today(); // of the rows without a ledger
        random.account.Clock().Set(QDateTime(today, QTime(12, 0)));
        Replay(random.account);
        random.account.gRsLots().Requery();
        if (random.ledgerIsWhole) {
            ++whole;
            for (const char *symbol : RandomAccount::Symbols) {
                EXPECT_EQ(LotLines(random.account, symbol), lots[symbol]) << symbol;
                EXPECT_EQ(random.account.Of(symbol).Shares, shares[symbol]) << symbol;
            }
        }
        const std::string once = Rebuilt(random.account);
        random.account.Clock().Advance(std::chrono::hours(1));
        Replay(random.account);
        random.account.gRsLots().Requery();
        EXPECT_EQ(Rebuilt(random.account), once);
        EXPECT_EQ(random.account.History(), ledger);
    }
    EXPECT_GT(whole, 250);
    EXPECT_GT(postings, 3000);
    EXPECT_GT(undone, 500);
    EXPECT_GT(rejected, 1000);
}
