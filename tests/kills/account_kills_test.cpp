/// The whole program, killed at any instant of a session at the Daily Tracker: the next opening finds
/// the account as the last finished operation left it - rows, ledger, profit, balance and lots.
///
///     test_kills                                   160 kills, as in every test run
///     QUILLON_KILLS=2000 test_kills                as many as that, from seed 1 on
///     QUILLON_KILLS=100 QUILLON_KILL_SEED=7 test_kills
///
/// A session is a list of operations that follows from its seed alone. It runs once to its end and
/// tells the state after each operation; then again and again on the same files, and is killed: at one
/// of its changes of the disk, or from outside. Each third time the program that opens the account next
/// is killed as well.

#include "crash/dying_writes.h"
#include "shell/shell_run.h"
#include "support/test_services.h"

#include "lists/delete_rows.h"
#include "program/command_target.h"
#include "program/rebuild_wizard.h"
#include "store/control_rows.h"
#include "transactions/posting.h"
#include "transactions/security_master.h"
#include "transactions/undo.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>

#include <map>
#include <random>

#include <sys/wait.h>

namespace
{

// --- what the account holds ----------------------------------------------------------------------

/// All values of all rows, a row a line.
std::string Dump(const Connection &account, const char *query)
{
    std::string text;
    for (Statement row = account.Prepare(QString::fromLatin1(query)); row.Step(); text += '\n')
        for (int i = 0; i < row.ColumnCount(); ++i)
            text += row.Text(i).toStdString() + '|';
    return text;
}

/// Not what each opening works out again from price, average and shares.
const char *const Rows =
    "SELECT Symbol, Name, Shares, CurrPrice, AvrgPrice, ProfitLossToday, ProfitLossToDate, "
    "TransCostToday, TransCostToDate, NumberTransToday, NumberTransToDate, InvestedToDate, "
    "TransDate, Time FROM DailyTracker ORDER BY Symbol";
const char *const Ledgers[] = {
    "SELECT Symbol, Name, Description, Shares, TransactionCost, Price, Amount, TransDate, Time "
    "FROM History ORDER BY ID",
    "SELECT Symbol, Name, ProfitLoss, TransDate FROM DailyProfitLoss ORDER BY Symbol, TransDate"};
const char *const Lots = "SELECT Symbol, Shares, PurchasePrice, TransDate, Time FROM PriceHistory "
                         "ORDER BY Symbol, TransDate, Time, Shares, PurchasePrice";

/// As a program finds it that opens it.
std::string StateOfFile(const TestAppFolder &folder)
{
    TestServices machine(folder.Path());
    Databases databases;
    Settings settings;
    AccountState account;
    settings.CurrentFilePath = folder.SampleAccount();
    settings.AccountName = "Sample Portfolio";
    OpenDatabases(databases, settings, account, machine.services);
    if (databases.accountError)
        return databases.accountError->Description().toStdString();
    const Connection &file = databases.gConnAccount;
    std::string state = Dump(file, "PRAGMA integrity_check") + Dump(file, Rows);
    for (const char *ledger : Ledgers)
        state += Dump(file, ledger);
    state += "lots\n" + Dump(file, Lots) + "balance\n" +
             Dump(file, "SELECT Field01 FROM DescriptiveTable WHERE TableName = 'Balance'");
    CloseDatabases(databases);
    return state;
}

/// As the program shows it: what it holds back from the file comes from its memory.
std::string StateOfProgram(Program &program)
{
    const Connection &file = program.databases.gConnAccount;
    std::string state = "ok|\n" + Dump(file, Rows);
    for (const char *ledger : Ledgers)
        state += Dump(file, ledger);
    state += "lots\n";
    if (program.gRsLots.IsOpen()) {
        Connection memory; // sorts and prints them as the file does
        const QString path = program.services.appPath + "/lots.tmp";
        QFile::copy(program.services.appPath + "/Template.xxx", path);
        memory.Open(path);
        Statement names = file.Prepare("SELECT Symbol FROM DailyTracker UNION "
                                       "SELECT Symbol FROM PriceHistory");
        while (names.Step())
            for (const Lot &lot : program.gRsLots.LotsOf(names.Text(0)))
                memory.Execute(
                    "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, "
                    "Time) VALUES (?, ?, ?, ?, ?)",
                    names.Text(0), lot.Shares, lot.PurchasePrice, lot.TransDate, lot.Time);
        state += Dump(memory, Lots);
        memory.Close();
        QFile::remove(path);
    } else {
        state += Dump(file, Lots);
    }
    return state + "balance\n" + std::to_string(qlonglong(program.account.AccountBalance.Units())) +
           "|\n";
}

// --- what the user does --------------------------------------------------------------------------

class Session
{
public:
    Session(ShellRun &run, unsigned seed) : m_run(run), m_random(seed)
    {
        run.boxes.OnBox = [&run](const ScriptedBoxes::ShownBox &box) {
            if ((box.buttonsValue & Box::ButtonsMask) == Box::YesNo)
                run.boxes.Prepare(box.text, box.text.contains("Message number: 100") ? Answer::No
                                                                                     : Answer::Yes);
        };
        EXPECT_TRUE(run.App().Launch());
        State().run.BackupOffered = true;
    }

    Program &State() { return m_run.State(); }

    /// One operation; the name of what was done.
    const char *Step()
    {
        m_run.clock.Advance(std::chrono::milliseconds(61007));
        State().entry.CurrentSecurityType = "Stock";
        State().entry.Commission = Currency("4.95");
        if (!m_run.App().Host().Loaded("frmDailyTracker")) {
            m_run.App().Host().Show("frmDailyTracker");
            return "show the tracker";
        }
        struct Kind
        {
            const char *name;
            int weight;
            void (Session::*act)();
        };
        static const Kind kinds[] = {{"post", 11, &Session::Post},
                                     {"cash", 4, &Session::Cash},
                                     {"undo", 5, &Session::Undo},
                                     {"rename", 2, &Session::Rename},
                                     {"name", 1, &Session::ChangeTheName},
                                     {"edit history", 1, &Session::EditHistory},
                                     {"delete history", 1, &Session::DeleteHistory},
                                     {"clear", 1, &Session::Clear},
                                     {"delete", 1, &Session::Delete},
                                     {"rebuild", 1, &Session::Rebuild},
                                     {"prices", 3, &Session::Prices},
                                     {"day", 1, &Session::NextDay},
                                     {"settings", 1, &Session::Balance},
                                     {"close the tracker", 1, &Session::CloseTracker},
                                     {"reopen", 1, &Session::Reopen}};
        int sum = 0;
        for (const Kind &kind : kinds)
            sum += kind.weight;
        int chosen = Below(sum);
        for (const Kind &kind : kinds)
            if ((chosen -= kind.weight) < 0) {
                (this->*kind.act)();
                return kind.name;
            }
        return nullptr;
    }

private:
    struct NoFiller : EntryFiller
    {
        void Focus(EntryField) override {}
        void SelectAction(Action) override {}
    };

    int Below(int limit) { return int(m_random() % unsigned(limit)); }
    QString SomeSymbol()
    {
        const TrackerRecordset &rows = State().AdodcStockHistory;
        return rows.IsEmpty() ? QString() : rows.At(Below(rows.RecordCount())).Symbol;
    }
    void Post(Action action, const QString &symbol, const QString &count, const QString &price)
    {
        TransactionEntry entry;
        entry.action = action;
        entry.Symbol = symbol;
        entry.Name = symbol + " Inc.";
        entry.TransDate = m_run.clock.Today();
        entry.NumberOfShares = count;
        entry.PurchasePrice = price;
        NoFiller filler;
        PostingWork work = State().Posting();
        FinishPosting(work, PostTransaction(work, entry, filler));
        State().UpdatePortfolioTotals();
    }
    void Post()
    {
        static const Action actions[] = {
            Action::Buy,       Action::Buy,        Action::Sell,  Action::Sell,
            Action::SellShort, Action::BuyToCover, Action::Split, Action::DividendReinvestment};
        const Action action = actions[Below(int(std::size(actions)))];
        const QString symbol = SomeSymbol();
        if (action == Action::Split)
            Post(action, symbol, QString::number(1 + Below(3)), QString::number(1 + Below(2)));
        else
            Post(action, symbol, QString::number(1 + Below(60)),
                 QString::number(5 + Below(400) / 8.0));
    }
    void Cash()
    {
        static const Action actions[] = {Action::Deposit, Action::CashWithdrawal,
                                         Action::DividendReceived, Action::BalanceAdjustment};
        Post(actions[Below(4)], {}, QString::number(1 + Below(5000)) + ".25", {});
    }
    void Run(const char *command)
    {
        dynamic_cast<CommandTarget *>(m_run.App().Host().Find("frmDailyTracker"))
            ->RunCommand(QString::fromLatin1(command));
    }
    void Select() { State().selection.CurrentSymbol = SomeSymbol(); }
    void Undo()
    {
        if (m_run.Commands().Enabled("UndoLast"))
            Run("popDTUndoLast");
        else
            Post();
    }
    void Clear()
    {
        Select();
        Run("popDTClear");
    }
    void Delete()
    {
        if (State().AdodcStockHistory.RecordCount() < 3)
            return Clear();
        Select();
        Run("popDTDeleteRow");
    }
    SecurityWork Security()
    {
        PostingWork work = State().Posting();
        CommitUndoTransaction(work); // as the security screen does when it opens
        EnableUndoCommands(m_run.Commands(), false);
        return {State().AdodcStockHistory, State().gRsLots, State().databases.gConnAccount,
                State().databases.gConnApplControl, State().services.clock};
    }
    void Rename()
    {
        SecurityWork work = Security();
        // Under a name of its own, or one that the ledger may know from before.
        const QString to = QString(Below(2) ? "N%1" : "OLD%1").arg(Below(3));
        if (!IsInPortfolio(work.rows, to, QString()))
            RenameSymbol(work, SomeSymbol(), to);
    }
    void ChangeTheName()
    {
        SecurityWork work = Security();
        ChangeName(work, SomeSymbol(), QString("Name %1").arg(Below(1000)));
    }
    void EditHistory()
    {
        Recordset rows;
        rows.Open(State().databases.gConnAccount, {"*", "History", "ORDER BY ID"});
        if (rows.IsEmpty())
            return;
        rows.MoveTo(Below(rows.RecordCount()));
        rows.Set("Name", QString("Edited %1").arg(Below(1000)));
        rows.Update();
    }
    void DeleteHistory()
    {
        const QDate upTo = m_run.clock.Today().addDays(-Below(3));
        DeleteRows(State().databases.gConnAccount,
                   {DeleteTable::History, DeleteOption::SymbolDate, SomeSymbol(), 0, upTo});
    }
    void Rebuild()
    {
        StartRebuildFromHistory(State());
        m_run.App().Host().Unload("frmTransactionUpdate");
    }
    void Prices()
    {
        TrackerRecordset &rows = State().AdodcStockHistory;
        for (rows.MoveFirst(); !rows.AtEnd(); rows.MoveNext()) {
            rows.Edit().CurrPrice = Currency::FromDouble(5 + Below(400) / 8.0);
            rows.Edit().Time = m_run.clock.TimeOfDay();
        }
        State().ReloadDataGrid();
    }
    void NextDay()
    {
        m_run.clock.Set(QDateTime(m_run.clock.Today().addDays(1), QTime(9, 30)));
        State().ReloadDataGrid();
    }
    void Balance()
    {
        const Currency balance = Currency::FromWhole(1000 + Below(9000));
        InsertBalanceRow(State().databases.gConnAccount, balance, State().services);
        State().account.AccountBalance = State().account.DayBalance = balance;
    }
    void CloseTracker() { EXPECT_TRUE(m_run.App().Host().Unload("frmDailyTracker")); }
    void Reopen()
    {
        EXPECT_TRUE(m_run.App().Routines().CloseAllScreens());
        OpenDatabases(State().databases, State().settings, State().account, State().services);
        m_run.App().Routines().OpenAccount();
    }

    ShellRun &m_run;
    std::mt19937 m_random;
};

// --- the kills -----------------------------------------------------------------------------------

constexpr int Operations = 24;
constexpr int KillsOfASeed = 40;

/// How a session goes that nobody kills.
struct Reference
{
    std::vector<std::string> states; ///< at the start, and after each operation
    std::vector<std::string> names;
    long changes = 0;
};

class AccountKills : public testing::Test
{
protected:
    AccountKills()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("WebPriceUpdate", "0");
        run.SetOption("DailyTracker", "1").SetOption("CheckCompact", "0");
        run.SetOption("ResetDate", "3/2/2099").SetOption("CheckNotify", "0");
        folder.Execute(folder.SampleAccount(),
                       "INSERT INTO DescriptiveTable VALUES ('Balance', 100000000, 0, 0, "
                       "'2026-03-02', '2026-03-02', '6018', 1, 'n/a', 'n/a', 0, 0, '0');"
                       "INSERT INTO History (Symbol, Description, Shares, Price, TransDate, Time) "
                       "VALUES ('OLD1', 'Bought', 5, 100000, '2026-02-02', '10:00:00.000');"
                       "INSERT INTO DailyProfitLoss (Symbol, ProfitLoss, TransDate) VALUES "
                       "('OLD1', 70000, '2026-03-02'), ('OLD2', -30000, '2026-03-02')");
        for (const char *symbol : {"AAA", "BBB", "CCC", "DDD", "EEE"}) {
            const QString name = symbol;
            folder.Execute(
                folder.SampleAccount(),
                QString("INSERT INTO DailyTracker (Symbol, Name, Shares, CurrPrice, "
                        "AvrgPrice, TransDate, Time) VALUES ('%1', '%1 Inc.', 90, 120000, "
                        "100000, '2026-02-27', '10:00:00.000');"
                        "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, "
                        "TransDate, Time) VALUES ('%1', 60, 90000, '2026-01-05', "
                        "'10:00:00.000'), ('%1', 30, 120000, '2026-02-05', "
                        "'10:00:00.000');"
                        "INSERT INTO History (Symbol, Name, Description, Shares, Price, "
                        "Amount, TransDate, Time) VALUES ('%1', '%1 Inc.', 'Bought', 90, "
                        "100000, -9000000, '2026-02-05', '10:00:00.000')")
                    .arg(name));
            folder.Execute(
                folder.File("ApplControl.xxx"),
                QString("INSERT INTO SecurityDetail VALUES ('%1', '%1 Inc.', 'Stock')").arg(name));
        }
        QDirIterator files(folder.Path(), QDir::Files);
        while (files.hasNext())
            m_files[files.next()] = {};
        for (auto &[path, content] : m_files) {
            QFile file(path);
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            content = file.readAll();
        }
    }

    /// The folder as at the beginning.
    void Restore() const
    {
        QDir place(folder.Path());
        for (const QFileInfo &entry :
             place.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
            entry.isDir() ? QDir(entry.filePath()).removeRecursively()
                          : QFile::remove(entry.filePath());
        for (const auto &[path, content] : m_files) {
            QFile file(path);
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(content);
        }
    }

    /// Runs `act` in a process of its own, which writes to the pipe it is given.
    template <class Act>
    pid_t Start(int &told, Act act)
    {
        int ends[2];
        if (pipe(ends) != 0)
            throw std::runtime_error("no pipe");
        std::fflush(nullptr);
        const pid_t process = fork();
        if (process == 0) {
            close(ends[0]);
            alarm(120);
            act(ends[1]);
            std::fflush(nullptr);
            _exit(HasFailure() ? 2 : 0);
        }
        close(ends[1]);
        told = ends[0];
        return process;
    }
    static void Tell(int pipe, const std::string &text)
    {
        const std::string message = text + '\0';
        if (syscall(SYS_write, pipe, message.data(), message.size()) != ssize_t(message.size()))
            _exit(3);
    }
    /// What the process told so far, until it ends or has told `count` messages.
    static std::vector<std::string> Listen(int told, size_t count = SIZE_MAX)
    {
        std::vector<std::string> messages(1);
        char part;
        while (messages.size() <= count && read(told, &part, 1) == 1) {
            if (part != '\0')
                messages.back() += part;
            else
                messages.emplace_back();
        }
        messages.pop_back();
        return messages;
    }
    static bool WasKilled(pid_t process)
    {
        int status = 0;
        waitpid(process, &status, 0);
        EXPECT_TRUE((WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) ||
                    (WIFEXITED(status) && WEXITSTATUS(status) == 0))
            << "it ended with " << status;
        return WIFSIGNALED(status);
    }

    Reference Learn(unsigned seed)
    {
        Restore();
        int told = -1;
        const pid_t process = Start(told, [&](int pipe) {
            Session session(run, seed);
            Tell(pipe, "start");
            Tell(pipe, StateOfProgram(session.State()));
            for (int i = 0; i < Operations; ++i) {
                Tell(pipe, session.Step());
                const long changes = DyingWrites::done;
                Tell(pipe, StateOfProgram(session.State()));
                DyingWrites::done = changes; // a kill finds no such writes
            }
            Tell(pipe, std::to_string(DyingWrites::done));
        });
        const std::vector<std::string> messages = Listen(told);
        close(told);
        EXPECT_FALSE(WasKilled(process));
        Reference reference;
        for (size_t i = 0; i + 1 < messages.size(); i += 2) {
            reference.names.push_back(messages[i]);
            reference.states.push_back(messages[i + 1]);
        }
        EXPECT_EQ(reference.states.size(), size_t(Operations) + 1);
        if (!messages.empty())
            reference.changes = std::stol(messages.back());
        return reference;
    }

    /// The number of operations that the killed session told.
    size_t Kill(unsigned seed, const Reference &reference, std::mt19937 &random)
    {
        Restore();
        const bool fromOutside = random() % 4 == 0;
        const long change = 1 + long(random() % unsigned(reference.changes));
        const size_t after = random() % Operations;
        const useconds_t delay = useconds_t(random() % 4000);
        int told = -1;
        const pid_t process = Start(told, [&](int pipe) {
            if (!fromOutside)
                DyingWrites::left = change;
            Session session(run, seed);
            Tell(pipe, "start");
            for (int i = 0; i < Operations; ++i) {
                session.Step();
                Tell(pipe, "done");
            }
            raise(SIGKILL);
        });
        std::vector<std::string> messages;
        if (fromOutside) {
            messages = Listen(told, after + 1);
            usleep(delay);
            kill(process, SIGKILL);
        }
        const std::vector<std::string> rest = Listen(told);
        close(told);
        EXPECT_TRUE(WasKilled(process));
        return messages.size() + rest.size();
    }

    /// Another program that opens the account and is killed at one of its first changes of the disk.
    void KillTheNext(long change)
    {
        int told = -1;
        const pid_t process = Start(told, [&](int) {
            DyingWrites::left = change;
            StateOfFile(folder);
        });
        Listen(told);
        close(told);
        WasKilled(process);
    }

    TestAppFolder folder;
    ShellRun run{folder};

private:
    std::map<QString, QByteArray> m_files;
};

unsigned Number(const char *variable, unsigned otherwise)
{
    bool isNumber = false;
    const uint number = qEnvironmentVariable(variable).toUInt(&isNumber);
    return isNumber ? number : otherwise;
}

} // namespace

TEST_F(AccountKills, LeaveTheAccountAsTheLastFinishedOperationDid)
{
    const unsigned kills = Number("QUILLON_KILLS", 160);
    unsigned seed = Number("QUILLON_KILL_SEED", 1);
    Reference reference;
    std::map<std::string, int> operations; // in which a kill fell
    for (unsigned done = 0; done < kills && !HasFailure(); ++done) {
        if (done % KillsOfASeed == 0)
            reference = Learn(done == 0 ? seed : ++seed);
        if (HasFailure())
            break;
        std::mt19937 random(seed * 1000 + done);
        const size_t told = Kill(seed, reference, random);
        const bool again = random() % 3 == 0;
        if (again)
            KillTheNext(1 + long(random() % 12));
        const size_t last = told == 0 ? 0 : told - 1; // the first message is that of the start
        const size_t next = std::min(last + 1, reference.states.size() - 1);
        const std::string found = StateOfFile(folder);
        operations[reference.names[next]]++;
        if (found == reference.states[last] || found == reference.states[next])
            continue;
        ADD_FAILURE() << "seed " << seed << ", kill " << done << (again ? ", and the next one" : "")
                      << ", in \"" << reference.names[next] << "\" (operation " << next
                      << "). It left:\n"
                      << found << "\nbefore:\n"
                      << reference.states[last] << "\nafter:\n"
                      << reference.states[next];
    }
    for (const auto &[name, count] : operations)
        std::printf("%5d  %s\n", count, name.c_str());
}
