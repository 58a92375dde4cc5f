// Many random sequences of postings, each compared with the plainest possible book of lots.

#include "test_account.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <random>

namespace
{

/// Lots of one symbol, oldest first. Counts are quarters and prices quarters, so that all sums are
/// exact in a double, a Single and money alike.
struct PlainBook
{
    struct PlainLot
    {
        double shares, price;
    };
    std::deque<PlainLot> lots;
    double profitLossToday = 0;

    double Shares() const
    {
        double sum = 0;
        for (const PlainLot &lot : lots)
            sum += lot.shares;
        return sum;
    }
    /// Takes `count` from the front; the gain is positive when sold higher, or covered lower.
    void Close(double count, double price)
    {
        const double side = Shares() < 0 ? -1 : 1;
        while (count > 0) {
            PlainLot &lot = lots.front();
            const double taken = std::min(count, lot.shares * side);
            profitLossToday += (price - lot.price) * taken * side;
            lot.shares -= taken * side;
            count -= taken;
            if (lot.shares == 0)
                lots.pop_front();
        }
    }
};

class RandomSequence
{
public:
    explicit RandomSequence(unsigned seed) : m_random(seed)
    {
        m_account.AnswerRest(Answer::Yes);
        for (const char *symbol : Symbols)
            m_account.Row(symbol);
        m_account.Commission("1.25");
    }

    void Run(int actions)
    {
        for (int i = 0; i < actions && !testing::Test::HasFailure(); ++i) {
            m_account.Clock().Advance(std::chrono::minutes(Pick(0, 90)));
            Act(Symbols[Pick(0, 2)]);
            for (const char *symbol : Symbols)
                Compare(symbol);
        }
        m_account.Commit();
        for (const char *symbol : Symbols) {
            const std::string shown = m_account.Lots(symbol);
            m_account.gRsLots().Reload();
            EXPECT_EQ(m_account.Lots(symbol), shown) << "after the commit";
        }
    }

private:
    static constexpr const char *Symbols[] = {"ACME", "O'NEIL", "acme"};

    int Pick(int from, int to) { return std::uniform_int_distribution(from, to)(m_random); }

    void Act(const QString &symbol)
    {
        PlainBook &book = m_books[symbol];
        const double held = book.Shares();
        const double count = Pick(1, 400) / 4.0;
        const double price = Pick(4, 160) / 4.0;
        const auto text = [](double value) { return QString::number(value, 'f', 2); };
        const TrackerRow before = m_account.Of(symbol);
        const std::vector<Lot> lotsBefore = m_account.gRsLots().LotsOf(symbol);
        const PlainBook bookBefore = book;
        const size_t historyBefore = m_account.History().size();
        bool undoable = true;

        switch (Pick(0, 6)) {
        case 0:
        case 1:
            if (held < 0) {
                m_account.SellShort(symbol, text(count), text(price));
                book.lots.push_back({-count, price});
            } else {
                m_account.Buy(symbol, text(count), text(price));
                book.lots.push_back({count, price});
            }
            book.profitLossToday -= 1.25;
            break;
        case 2:
            if (held != 0) {
                Reject(symbol, held);
                return;
            }
            m_account.SellShort(symbol, text(count), text(price));
            book.lots.push_back({-count, price});
            book.profitLossToday -= 1.25;
            break;
        case 3:
        case 4: {
            if (held == 0)
                return;
            const double closed =
                Pick(0, 3) == 0 ? std::abs(held) : std::min(std::abs(held), count);
            if (held > 0)
                m_account.Sell(symbol, text(closed), text(price));
            else
                m_account.Cover(symbol, text(closed), text(price));
            book.Close(closed, price);
            book.profitLossToday -= 1.25;
            break;
        }
        case 5:
            m_account.Cash(Pick(0, 1) ? Action::Deposit : Action::CashWithdrawal, text(price));
            undoable = false; // it would bring back the row of another posting
            break;
        default:
            Reject(symbol, held);
            return;
        }
        EXPECT_EQ(m_account.History().size(), historyBefore + 1);

        if (undoable && Pick(0, 2) == 0) {
            m_account.Undo();
            book = bookBefore;
            EXPECT_EQ(m_account.Of(symbol), before);
            const std::vector<Lot> &lots = m_account.gRsLots().LotsOf(symbol);
            ASSERT_EQ(lots.size(), lotsBefore.size());
            for (size_t i = 0; i < lots.size(); ++i)
                EXPECT_EQ(WithoutNewId(lots[i], lotsBefore[i]), lotsBefore[i]);
            EXPECT_EQ(m_account.History().size(), historyBefore);
        }
    }

    /// A lot that the posting before left pending got its ID by the commit meanwhile.
    static Lot WithoutNewId(Lot lot, const Lot &before)
    {
        if (before.ID == 0)
            lot.ID = 0;
        return lot;
    }

    /// An entry that a check refuses: of the future, or of the wrong side.
    void Reject(const QString &symbol, double held)
    {
        m_account.Commit();
        const std::string before = m_account.FileText();
        const PostingOutcome outcome = held == 0  ? m_account.Buy(symbol, "1", "10", "2099-01-01")
                                       : held > 0 ? m_account.SellShort(symbol, "1", "10")
                                                  : m_account.Buy(symbol, "1", "10");
        EXPECT_EQ(outcome, PostingOutcome::Rejected);
        EXPECT_EQ(m_account.FileText(), before);
    }

    void Compare(const QString &symbol)
    {
        const PlainBook &book = m_books[symbol];
        std::string lots;
        for (const PlainBook::PlainLot &lot : book.lots)
            lots += (lots.empty() ? "" : "; ") + QString::number(lot.shares).toStdString() + " @ " +
                    QString::number(lot.price, 'f', 4).toStdString();
        const TrackerRow &row = m_account.Of(symbol);
        EXPECT_EQ(m_account.Lots(symbol), lots);
        EXPECT_EQ(row.Shares.ToDouble(), book.Shares());
        EXPECT_EQ(m_account.gRsLots().SharesOf(symbol), row.Shares);
        EXPECT_EQ(row.ProfitLossToday, Currency::FromDouble(book.profitLossToday));
    }

    std::mt19937 m_random;
    TestAccount m_account;
    std::map<QString, PlainBook> m_books;
};

} // namespace

TEST(PostingProperty, RandomSequencesAgreeWithAPlainBookOfLots)
{
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomSequence(seed).Run(12);
        if (HasFailure())
            break;
    }
}

TEST(PostingProperty, ALongSequenceAgreesWithAPlainBookOfLots)
{
    RandomSequence(20260302).Run(400);
}
