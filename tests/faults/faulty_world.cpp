#include "faults/faulty_world.h"

#include "crash/dying_writes.h"
#include "faults/lock_watch.h"
#include "support/full_disk.h"
#include "support/old_account.h"

#include "store/account_care.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QRegularExpression>

#include <filesystem>

#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/statvfs.h>
#include <sys/wait.h>

namespace
{

constexpr uid_t Nobody = 65534;

/// Trades of ten years, half of them older than what is kept.
const QString Trades = QStringLiteral(R"sql(
    INSERT INTO DailyTracker (Symbol, Name, Shares, AvrgPrice, TransDate, Time) VALUES
        ('ACME', 'Acme', 100, 200000, '2026-02-27', '10:00:00.000'),
        ('O''NEIL', 'O''Neil & Café', -7.5, 99900, '2026-02-27', '11:00:00.000');
    WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 1199)
        INSERT INTO History (Symbol, Name, Description, Shares, Price, Amount, TransDate, Time)
        SELECT 'S' || (i % 20), 'Name of a company', CASE i % 4 WHEN 0 THEN 'Deposit'
               WHEN 3 THEN 'Sold' ELSE 'Bought' END, CASE i % 4 WHEN 0 THEN 0 WHEN 3 THEN -10
               ELSE 10 END, 100000, 1000000, date('2016-01-04', (i * 3) || ' days'),
               '10:00:00.000' FROM n;
    INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time)
        SELECT Symbol, Shares, Price, TransDate, Time FROM History WHERE ID % 40 = 2;
    INSERT INTO DailyProfitLoss (Symbol, ProfitLoss, TransDate)
        SELECT Symbol, ID, TransDate FROM History WHERE ID % 10 = 4;
    INSERT INTO PortfolioDailyBalance (DailyBalance, TransDate, Time, TrackName)
        SELECT 10000 * ID, TransDate, Time, 'Portfolio' FROM History WHERE ID % 10 = 5;
    INSERT INTO DescriptiveTable VALUES ('Balance', 0, 0, 0, '2026-03-02', '2026-03-02', '6018', 4,
                                         'n/a', 'n/a', 0, 0, '0');
)sql");
const QString LaterTrade =
    QStringLiteral("INSERT INTO History (Symbol, Description, Shares, Amount, TransDate, Time) "
                   "VALUES ('ACME', 'Bought', 1, 10000, '2026-03-02', '10:00:00.000')");

/// The rows of an account, ledger by ledger, whatever its layout and the numbers of its rows.
const char *const Ledgers[] = {
    "SELECT Symbol, Name, Shares, AvrgPrice FROM DailyTracker ORDER BY 1",
    "SELECT Symbol, Description, Shares, Amount, TransDate, Time FROM History "
    "ORDER BY 5, 6, 1, 2, 3, 4",
    "SELECT Symbol, Shares, PurchasePrice, TransDate FROM PriceHistory ORDER BY 1, 4, 2, 3",
    "SELECT Symbol, ProfitLoss, TransDate FROM DailyProfitLoss ORDER BY 3, 1, 2",
    "SELECT DailyBalance, TransDate FROM PortfolioDailyBalance ORDER BY 2, 1"};

bool IsShared(const QString &path)
{
    return path.endsWith(QLatin1String("/ApplControl.mdb")) ||
           path.endsWith(QLatin1String("/WebSites.mdb")) ||
           path.endsWith(QLatin1String("/HistPrices.mdb"));
}

/// "ok 2 1200 30 120 120 3f2a90c1": the rows of each ledger, and a sum over all that is in them.
std::string StateOf(const QString &path)
{
    try {
        Connection file;
        file.Open(path);
        if (!IsInOrder(file))
            return "damaged";
        std::string state = "ok";
        if (IsShared(path))
            return state;
        QCryptographicHash sum(QCryptographicHash::Sha1);
        for (const char *ledger : Ledgers) {
            int rows = 0;
            for (Statement row = file.Prepare(QString::fromLatin1(ledger)); row.Step(); ++rows)
                for (int i = 0; i < row.ColumnCount(); ++i)
                    sum.addData(row.Text(i).toUtf8() + '|');
            state += ' ' + std::to_string(rows);
        }
        return state + ' ' + sum.result().toHex().left(8).toStdString();
    } catch (const RuntimeError &error) {
        return error.Description().toStdString();
    }
}

void CopyContent(const QString &from, const QString &to)
{
    namespace fs = std::filesystem;
    fs::copy(from.toStdString(), to.toStdString(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
}

void GiveTo(uid_t user, const QString &folder)
{
    EXPECT_EQ(chown(folder.toUtf8(), user, user), 0);
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder.toStdString()))
        EXPECT_EQ(chown(entry.path().c_str(), user, user), 0);
}

/// A line for the process that waits for this one.
void Tell(int told, QString text)
{
    const QByteArray line = text.replace('\n', ' ').toUtf8() + '\n';
    if (write(told, line.constData(), size_t(line.size())) != line.size())
        _exit(3);
}

[[noreturn]] void EndProcess()
{
    EXPECT_EQ(LockWatch::TakeDropped(), QStringList());
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure() ? 2 : 0);
}

} // namespace

// The store's two seconds of patience with another program take no time.
extern "C" int usleep(useconds_t)
{
    return 0;
}

// --- the world -----------------------------------------------------------------------------------

FaultyWorld::FaultyWorld()
{
    folder.Execute(folder.File("WebSites.mdb"),
                   "DELETE FROM WebParameters; INSERT INTO WebParameters (ID, WebSiteName, "
                   "DelayTime) VALUES (1, 'Yahoo Finance (late)', 5)");
    const QString other = folder.AddAccount("Other.mdb");
    AddOldAccount(folder, "accounts/Old.mdb");
    MakeControlFileOld(folder);
    QFile::copy(folder.File("HistPrices.xxx"), folder.File("HistPrices.mdb"));
    for (const QString &account : {folder.SampleAccount(), other})
        folder.Execute(account, Trades);
    const QString backup = home.filePath("Quillon Backup/Quillon");
    QDir().mkpath(backup);
    CopyContent(folder.Path(), backup);
    for (const QString &account : {folder.SampleAccount(), other})
        folder.Execute(account, LaterTrade);
}

RunEnd FaultyWorld::Run(const Operation &operation, const std::function<void()> &fault)
{
    return RunAs(geteuid(), operation, fault);
}

RunEnd FaultyWorld::RunAsNobody(const Operation &operation, const std::function<void()> &fault)
{
    if (geteuid() != 0)
        return RunAs(geteuid(), operation, fault);
    for (const QString &place : {folder.Path(), home.path()})
        GiveTo(Nobody, place);
    return RunAs(Nobody, operation, fault);
}

RunEnd FaultyWorld::RunAs(uid_t user, const Operation &operation,
                          const std::function<void()> &fault)
{
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    std::fflush(nullptr);
    const pid_t process = fork();
    if (process == 0) {
        close(ends[0]);
        if (user != geteuid() && (setgid(user) != 0 || setuid(user) != 0))
            _exit(4);
        RunProgram(operation, fault, ends[1]);
    }
    close(ends[1]);
    QByteArray said;
    char part[4096];
    for (ssize_t size = 0; (size = read(ends[0], part, sizeof part)) > 0;)
        said.append(part, qsizetype(size));
    close(ends[0]);
    int status = 0;
    waitpid(process, &status, 0);
    RunEnd end;
    end.wasKilled = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    EXPECT_TRUE(end.wasKilled || (WIFEXITED(status) && WEXITSTATUS(status) == 0))
        << operation.name << " ended with " << status;
    for (const QString &line : QString::fromUtf8(said).split('\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(QLatin1String("changes: ")))
            end.changes = line.mid(9).toLong();
        else
            end.told << line;
    }
    return end;
}

void FaultyWorld::RunProgram(const Operation &operation, const std::function<void()> &fault,
                             int told)
{
    alarm(60); // a program that hangs fails the test
    qputenv("HOME", home.path().toUtf8());
    ShellRun run(folder);
    run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
    run.SetOption("WebPriceUpdate", "0").SetOption("LastBackup", "3/2/2026");
    run.boxes.OnBox = [told](const ScriptedBoxes::ShownBox &box) {
        Tell(told, box.text);
        if (box.text.contains(QLatin1String("is trying to open is invalid")))
            EndProcess(); // where it would be asked for another account, the user leaves it
    };
    for (int file = 0; file < 3; ++file) // no other one in the place of a shared file
        run.boxes.Prepare(QStringLiteral("Quillon cannot open the file"), Answer::Cancel);
    EXPECT_TRUE(run.App().Launch());
    if (fault)
        fault();
    const long before = DyingWrites::done;
    operation.act(run, *this);
    Tell(told, run.Panel(1));
    if (!run.App().Ended())
        run.App().Exit();
    Tell(told, QStringLiteral("changes: %1").arg(DyingWrites::done - before));
    EndProcess();
}

QStringList FaultyWorld::Files() const
{
    QStringList names;
    const auto add = [&names](const QString &place, const QString &prefix) {
        QDirIterator files(place, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext())
            names << prefix + files.next().mid(place.size());
    };
    add(folder.Path(), QStringLiteral("app"));
    add(home.path(), QStringLiteral("home"));
    names.sort();
    return names;
}

QString FaultyWorld::PathOf(const QString &name) const
{
    return name.startsWith(QLatin1String("app")) ? folder.Path() + name.mid(3)
                                                 : home.path() + name.mid(4);
}

FaultyWorld::Databases FaultyWorld::State() const
{
    // The backup bears the name of the application folder, which is another one each time.
    const QString own = QStringLiteral("Backup/") + QDir(folder.Path()).dirName();
    const QStringList leftOvers = LeftOvers();
    Databases state;
    for (QString name : Files())
        if (name.endsWith(QLatin1String(".mdb")) && !leftOvers.contains(name)) {
            const std::string found = StateOf(PathOf(name));
            state[name.replace(own, QStringLiteral("Backup/app"))] = found;
        }
    return state;
}

QStringList FaultyWorld::LeftOvers() const
{
    // The last is what the file classes put behind a name while they write. Not the lock: it is the
    // mark of an unclean end, and goes with the next opening of its account.
    static const QRegularExpression ofAProgramAtWork(QStringLiteral(
        "/Temp( \\d+)?\\.mdb|TempHistPrices|ApplTemp|-wal$|-shm$|-journal$|\\.new$|\\.\\w{6}$"));
    QStringList found = Files().filter(ofAProgramAtWork);
    found.removeIf(
        [](const QString &name) { return name.contains(QLatin1String("settings.ini")); });
    return found;
}

// --- faults --------------------------------------------------------------------------------------

SmallDisk::SmallDisk(const QString &folder) : m_folder(folder.toUtf8())
{
    const QTemporaryDir aside;
    CopyContent(folder, aside.path());
    m_isMounted = mount("tmpfs", m_folder, "tmpfs", 0, "mode=755") == 0;
    if (m_isMounted)
        CopyContent(aside.path(), folder);
}

SmallDisk::~SmallDisk()
{
    if (m_isMounted)
        umount2(m_folder, MNT_DETACH);
}

void SmallDisk::Resize(const QByteArray &size) const
{
    if (mount(nullptr, m_folder, nullptr, MS_REMOUNT, QByteArray("size=" + size).constData()) != 0)
        throw std::runtime_error("the disk keeps its size");
}

void SmallDisk::Fill(qint64 left) const
{
    if (!m_isMounted) {
        new FullDisk(left); // until the process ends
        return;
    }
    struct statvfs disk;
    statvfs(m_folder, &disk);
    const auto used = qint64((disk.f_blocks - disk.f_bfree) * disk.f_frsize);
    Resize(QByteArray::number(used + left));
}

void SmallDisk::MakeRoom() const
{
    if (m_isMounted)
        Resize("100m");
}

void DieAtChange(long change)
{
    DyingWrites::left = change;
}

namespace
{

[[noreturn]] void WorkOn(const QString &path, OtherProgram::Way way, int begin, int begun)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    char go;
    if (read(begin, &go, 1) != 1)
        _exit(0);
    AccountLock lock;
    Connection file;
    std::optional<Statement> list;
    if (way == OtherProgram::Way::Guards) {
        lock.Acquire(path);
    } else {
        file.Open(path);
        if (way == OtherProgram::Way::Writes)
            file.BeginTrans();
        list.emplace(file.Prepare("SELECT name FROM sqlite_schema"));
        list->Step();
    }
    Tell(begun, "begun");
    for (;;)
        pause();
}

} // namespace

OtherProgram::OtherProgram(const QString &path, Way way)
{
    // Now, and not at the beginning: what the program has open it must not share with this one.
    if (pipe(m_begin) != 0 || pipe(m_begun) != 0)
        throw std::runtime_error("no pipe");
    m_process = fork();
    if (m_process == 0)
        WorkOn(path, way, m_begin[0], m_begun[1]);
}

void OtherProgram::Begin() const
{
    char begun = 0;
    EXPECT_EQ(write(m_begin[1], "b", 1), 1);
    EXPECT_EQ(read(m_begun[0], &begun, 1), 1);
}

OtherProgram::~OtherProgram()
{
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
    for (const int end : {m_begin[0], m_begin[1], m_begun[0], m_begun[1]})
        close(end);
}
