#pragma once

/// An account for a test: a real database file in a folder of its own, with the real recordsets,
/// posting and undo on it, a clock that stands still and boxes that are answered by the test.
///
///     TestAccount account = TestAccount().Row("ACME", "100", "10")
///                                        .Lot("ACME", "100", "10", "2026-01-05");
///     account.Commission("5");
///     account.Sell("ACME", "40", "12");                posts on the day of the clock
///     account.Of("ACME").ProfitLossToday               75: (12-10)*40 - 5
///     account.Lots("ACME")                             "60 @ 10.0000"
///     account.History()                                {"ACME|ACME Inc.|Sold|-40|-5|12|475|..."}
///
/// It begins on Monday 2026-03-02 at 10:15:00, with a balance of zero, no commission and securities
/// of type Stock. A copy is the same account. When a routine ends the program, its databases are
/// closed as they stand and ProgramEnded travels on to the test; what the file then holds is read
/// through connections of their own, as is everything named "Stored".

#include "test_dialogs.h"

#include "platform/simulated_clock.h"
#include "transactions/entry.h"
#include "transactions/posting.h"

#include <QTemporaryDir>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

class TestAccount
{
public:
    TestAccount();

    // The world before the test.

    /// A position; its price is its average when none is given. The balance already holds its gain.
    TestAccount &Row(const QString &symbol, const char *shares = "0", const char *avrgPrice = "0",
                     const char *currPrice = nullptr);
    TestAccount &Lot(const QString &symbol, const char *shares, const char *price, const char *date,
                     const char *time = "09:30:00");
    TestAccount &Commission(const char *amount);
    TestAccount &Balance(const char *amount);
    TestAccount &SecurityType(const QString &type);
    TestAccount &At(const char *moment); ///< "2026-03-02 10:15:00"
    TestAccount &Queue(Answer answer);
    TestAccount &AnswerRest(Answer answer);

    // What the user does. Dates are those of the clock unless given.

    PostingOutcome Post(const TransactionEntry &entry);
    PostingOutcome Post(Action action, const QString &symbol, const QString &count,
                        const QString &price, const char *date = nullptr);
    PostingOutcome Buy(const QString &symbol, const QString &count, const QString &price,
                       const char *date = nullptr);
    PostingOutcome Sell(const QString &symbol, const QString &count, const QString &price,
                        const char *date = nullptr);
    PostingOutcome SellShort(const QString &symbol, const QString &count, const QString &price,
                             const char *date = nullptr);
    PostingOutcome Cover(const QString &symbol, const QString &count, const QString &price,
                         const char *date = nullptr);
    PostingOutcome Split(const QString &symbol, const QString &newShares, const QString &oldShares);
    PostingOutcome Cash(Action action, const QString &amount);
    /// Answered Yes; the rows are not valued anew. False when it was not taken back.
    bool Undo();
    /// As a commit point between two postings.
    void Commit();

    // What the program then shows. Of throws std::logic_error for a symbol without a row.

    const TrackerRow &Of(const QString &symbol) const;
    /// "50 @ 20.0000; 10 @ 5.0000" in the order of consumption; empty without lots.
    std::string Lots(const QString &symbol) const;
    std::vector<std::string> Boxes() { return m_world->dialogs.TakeBoxes(); }
    const std::string &Status() const { return m_world->status.last; }
    /// Fields and actions that the posting asked for: "focus PurchasePrice", "select Sell short".
    std::vector<std::string> Asked() { return std::exchange(m_world->filler.asked, {}); }
    const TransactionEntry &LastEntry() const { return m_world->lastEntry; }
    bool UndoEnabled() const;

    // What the file holds, as another program would read it.

    /// As Lots, with the IDs: "#1 50 @ 20.0000".
    std::string StoredLots(const QString &symbol) const;
    /// "Symbol|Name|Description|Shares|TransactionCost|Price|Amount|date" by ID.
    std::vector<std::string> History() const;
    /// "Symbol|Name|ProfitLoss|date|time" by Symbol and date.
    std::vector<std::string> ProfitLoss() const;
    /// Every row of the four tables that a posting writes.
    std::string FileText() const;
    /// Runs statements on the file through a connection of its own.
    void ExecuteElsewhere(const QString &sql) const;

    // The parts, for tests of a single routine.

    PostingWork Work();
    PurchaseLots &gRsLots() { return m_world->lots; }
    TrackerRecordset &Rows() { return m_world->rows; }
    PortfolioTotals &Totals() { return m_world->totals; }
    AccountState &State() { return m_world->account; }
    EntryState &Entry() { return m_world->entry; }
    UndoState &UndoRecords() { return m_world->undo; }
    Connection &gConnAccount() { return m_world->gConnAccount; }
    SimulatedClock &Clock() { return m_world->clock; }
    EntryFiller &Filler() { return m_world->filler; }
    Services &MachineServices() { return m_world->services; }
    TransactionEntry EntryOf(Action action, const QString &symbol, const QString &count,
                             const QString &price, const char *date = nullptr) const;

private:
    struct RecordedStatus : StatusLine
    {
        void Post(const QString &text) override { last = text.toStdString(); }
        std::string last;
    };
    struct ThrowingLifetime : Lifetime
    {
        [[noreturn]] void End() override { throw ProgramEnded(); }
    };
    struct RecordedFiller : EntryFiller
    {
        void Focus(EntryField field) override;
        void SelectAction(Action action) override;
        std::vector<std::string> asked;
    };
    struct World
    {
        World();

        QTemporaryDir folder;
        QString path = folder.filePath(QStringLiteral("Broker.mdb"));
        SimulatedClock clock{QDateTime(QDate(2026, 3, 2), QTime(10, 15))};
        TestDialogs dialogs;
        RecordedStatus status;
        CommandStates commands;
        ThrowingLifetime lifetime;
        SettingsStore settingsStore{folder.filePath(QStringLiteral("settings.ini"))};
        Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
        Services services{clock,    dialogs,       status,  commands,
                          lifetime, settingsStore, formats, folder.path()};
        RecordedFiller filler;

        Connection gConnAccount;
        Connection gConnUndo;
        TrackerRecordset rows;
        PurchaseLots lots;
        PortfolioTotals totals;
        AccountState account;
        UndoState undo;
        EntryState entry;
        TransactionEntry lastEntry;
    };
    /// Runs `routine`; when it ends the program, closes the databases as they stand.
    template <class Routine>
    auto Guarded(Routine routine);
    std::shared_ptr<World> m_world;
};

/// What GoogleTest prints for our values.
void PrintTo(Currency value, std::ostream *out);
void PrintTo(Single value, std::ostream *out);
void PrintTo(const Lot &lot, std::ostream *out);
void PrintTo(const TrackerRow &row, std::ostream *out);
