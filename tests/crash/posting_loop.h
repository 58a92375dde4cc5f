#pragma once

/// The same trades, one after the other, on an account file: what a program does that is killed,
/// and what a second one repeats to know how the file should look.
///
///     PostingLoop loop(path);
///     loop.PostNext();             1: Buy 11 of S1 @ 20.5, and so on
///
/// Trades, their prices and the clock follow from their number alone.

#include "test_services.h"

#include "transactions/posting.h"

class PostingLoop
{
public:
    explicit PostingLoop(const QString &path)
    {
        m_gConnAccount.Open(path);
        m_gConnUndo.Open(path, Durability::WithNextSync);
        m_rows.Open(m_gConnAccount, "ORDER BY Symbol");
        for (int i = 0; i < SymbolCount; ++i)
            if (!m_rows.Find(Symbol(i)))
                m_rows.AddNew(Symbol(i), Symbol(i) + " Inc.", m_machine.clock.Today(),
                              m_machine.clock.TimeOfDay());
        m_rows.UpdateBatch();
        m_lots.Open(m_gConnUndo);
        m_entry.CurrentSecurityType = "Stock";
        m_entry.Commission = Currency("4.95");
        m_machine.dialogs.AnswerRest(Answer::Yes);
    }

    void PostNext()
    {
        const int number = ++m_posted;
        m_machine.clock.Advance(std::chrono::milliseconds(61007)); // past midnight now and then
        TransactionEntry entry;
        const int symbol = number * 7 % SymbolCount;
        entry.Symbol = Symbol(symbol);
        entry.Name = entry.Symbol + " Inc.";
        entry.TransDate = m_machine.clock.Today();
        entry.PurchasePrice = QString::number(20 + number * 13 % 17 + 0.25);
        // Every third trade of a symbol sells most of it, over more than one lot.
        const bool sells = (number - 1) / SymbolCount % 3 == 2;
        entry.action = sells ? Action::Sell : Action::Buy;
        entry.NumberOfShares = QString::number(sells ? 15 + number % 3 : 10 + number % 5);
        PostingWork work{m_rows, m_lots,  m_totals,       m_account,
                         m_undo, m_entry, m_gConnAccount, m_machine.services};
        const PostingOutcome outcome = PostTransaction(work, entry, m_filler);
        if (outcome != PostingOutcome::Posted)
            throw std::logic_error("not posted: " + m_machine.dialogs.TakeBoxes().back());
        FinishPosting(work, outcome);
    }

    static constexpr int SymbolCount = 5;

private:
    struct NoFiller : EntryFiller
    {
        void Focus(EntryField) override {}
        void SelectAction(Action) override {}
    };
    static QString Symbol(int number) { return QString("S%1").arg(number); }

    TestServices m_machine;
    Connection m_gConnAccount;
    Connection m_gConnUndo;
    TrackerRecordset m_rows;
    PurchaseLots m_lots;
    PortfolioTotals m_totals;
    AccountState m_account;
    UndoState m_undo;
    EntryState m_entry;
    NoFiller m_filler;
    int m_posted = 0;
};
