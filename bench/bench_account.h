#pragma once

/// An account file of a chosen size in a folder of its own, and the posting work on it.

#include "platform/simulated_clock.h"
#include "store/create_database.h"
#include "transactions/posting.h"

#include <QLocale>
#include <QTemporaryDir>

/// Agrees to everything.
class AgreeingDialogs : public Dialogs
{
public:
    Answer MsgBox(const QString &, int buttonsValue, const QString &) override
    {
        return (buttonsValue & Box::ButtonsMask) == Box::Ok ? Answer::Ok : Answer::Yes;
    }
    std::optional<QString> PickFile(const FileRequest &) override { return {}; }
    std::optional<QString> PickFolder(const QString &, const QString &) override { return {}; }
    std::optional<Rgb> PickColor(Rgb) override { return {}; }
};

class SilentStatus : public StatusLine
{
public:
    void Post(const QString &) override {}
};

class ThrowingLifetime : public Lifetime
{
public:
    void End() override { throw ProgramEnded(); }
};

class BenchAccount
{
public:
    BenchAccount()
    {
        CreateDatabase(Path(), ReadSchema(QStringLiteral(QUILLON_DATA "/schema/account.sql")));
    }

    QString Path() const { return m_folder.filePath(QStringLiteral("Bench.mdb")); }

    /// Opens rows and lots as the Daily Tracker does.
    void Open()
    {
        gConnAccount.Open(Path());
        gConnUndo.Open(Path(), Durability::WithNextSync);
        rows.Open(gConnAccount, QStringLiteral("ORDER BY Shares DESC, Symbol"));
        lots.Open(gConnUndo);
    }

    PostingWork Work()
    {
        return {rows, lots, totals, account, undo, entry, gConnAccount, services};
    }

    static QString Symbol(int number)
    {
        return QStringLiteral("S%1").arg(number, 4, 10, QLatin1Char('0'));
    }

    QTemporaryDir m_folder;
    SimulatedClock clock{QDateTime(QDate(2026, 3, 2), QTime(10, 15))};
    AgreeingDialogs dialogs;
    SilentStatus status;
    CommandStates commands;
    ThrowingLifetime lifetime;
    SettingsStore settingsStore{m_folder.filePath(QStringLiteral("settings.ini"))};
    Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    Services services{clock,    dialogs,       status,  commands,
                      lifetime, settingsStore, formats, m_folder.path()};

    Connection gConnAccount;
    Connection gConnUndo;
    TrackerRecordset rows;
    PurchaseLots lots;
    PortfolioTotals totals;
    AccountState account;
    UndoState undo;
    EntryState entry;
};

class NobodyFills : public EntryFiller
{
public:
    void Focus(EntryField) override {}
    void SelectAction(Action) override {}
};
