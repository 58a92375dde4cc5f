#include "test_account.h"

#include "store/create_database.h"
#include "transactions/undo.h"

#include <QFile>

#include <stdexcept>

namespace
{

const Formats &English()
{
    static const Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    return formats;
}

std::string Text(Single shares)
{
    return English().ToText(shares).toStdString();
}

std::string Text(Currency money)
{
    return English().ToText(money).toStdString();
}

std::string PriceText(Currency price)
{
    return English().Format(price, u"0.0000").toStdString();
}

std::string Text(QDate date)
{
    return date.toString(Qt::ISODate).toStdString();
}

Single ShareCount(const char *text)
{
    return Single::FromDouble(QByteArray(text).toDouble());
}

QTime TimeOf(const char *text)
{
    return QTime::fromString(QString::fromLatin1(text), QStringLiteral("HH:mm:ss"));
}

/// The schema is run once; each account begins as a copy of that file.
const QString &EmptyAccount()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        const QString file = folder.filePath(QStringLiteral("Empty.mdb"));
        CreateDatabase(file, ReadSchema(QStringLiteral(QUILLON_DATA "/schema/account.sql")));
        return file;
    }();
    return path;
}

/// A test file need not outlive the machine.
void OpenFast(Connection &connection, const QString &path)
{
    connection.Open(path);
    connection.ExecuteScript(QStringLiteral("PRAGMA synchronous=OFF"));
}

/// All values of all rows of a query, a row a line.
std::vector<std::string> ReadLines(const QString &path, const QString &sql)
{
    Connection elsewhere;
    OpenFast(elsewhere, path);
    std::vector<std::string> lines;
    {
        Statement rows = elsewhere.Prepare(sql);
        while (rows.Step()) {
            std::string line;
            for (int column = 0; column < rows.ColumnCount(); ++column) {
                line += column > 0 ? "|" : "";
                switch (rows.ColumnType(column)) {
                case FieldType::Currency:
                    line += Text(rows.Money(column));
                    break;
                case FieldType::Single:
                    line += Text(rows.ShareCount(column));
                    break;
                default:
                    line += rows.Text(column).toStdString();
                }
            }
            lines.push_back(line);
        }
    }
    return lines;
}

} // namespace

TestAccount::World::World()
{
    if (!QFile::copy(EmptyAccount(), path))
        throw std::runtime_error("the account file was not made");
    OpenFast(gConnAccount, path);
    OpenFast(gConnUndo, path);
    rows.Open(gConnAccount, QStringLiteral("ORDER BY Symbol"));
    lots.Open(gConnUndo);
    account.TrackerDay = clock.Today();
    entry.CurrentSecurityType = QStringLiteral("Stock");
}

TestAccount::TestAccount() : m_world(std::make_shared<World>()) {}

PostingWork TestAccount::Work()
{
    World &world = *m_world;
    return {world.rows, world.lots,  world.totals,       world.account,
            world.undo, world.entry, world.gConnAccount, world.services};
}

TestAccount &TestAccount::Row(const QString &symbol, const char *shares, const char *avrgPrice,
                              const char *currPrice)
{
    World &world = *m_world;
    world.rows.AddNew(symbol, symbol + QStringLiteral(" Inc."), world.clock.Today(), QTime(9, 30));
    TrackerRow &row = world.rows.Edit();
    row.Shares = ShareCount(shares);
    row.AvrgPrice = ::Currency(avrgPrice);
    row.CurrPrice = ::Currency(currPrice ? currPrice : avrgPrice);
    row.Basis =
        ::Currency::FromDouble((row.CurrPrice - row.AvrgPrice).ToDouble() * row.Shares.ToDouble());
    world.rows.Requery();
    Single basisTotal;
    for (int i = 0; i < world.rows.RecordCount(); ++i)
        basisTotal = Single::FromDouble(basisTotal.ToDouble() + world.rows.At(i).Basis.ToDouble());
    world.totals.BasisTotal = world.totals.PriorBasisTotal = basisTotal;
    return *this;
}

TestAccount &TestAccount::Lot(const QString &symbol, const char *shares, const char *price,
                              const char *date, const char *time)
{
    m_world->gConnAccount.Execute(
        QStringLiteral("INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) "
                       "VALUES (?, ?, ?, ?, ?)"),
        symbol, ShareCount(shares), ::Currency(price),
        QDate::fromString(QString::fromLatin1(date), Qt::ISODate), TimeOf(time));
    m_world->lots.Reload();
    return *this;
}

TestAccount &TestAccount::Commission(const char *amount)
{
    m_world->entry.Commission = ::Currency(amount);
    return *this;
}

TestAccount &TestAccount::Balance(const char *amount)
{
    m_world->account.AccountBalance = ::Currency(amount);
    return *this;
}

TestAccount &TestAccount::SecurityType(const QString &type)
{
    m_world->entry.CurrentSecurityType = type;
    return *this;
}

TestAccount &TestAccount::At(const char *moment)
{
    m_world->clock.Set(
        QDateTime::fromString(QString::fromLatin1(moment), QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    return *this;
}

TestAccount &TestAccount::Queue(Answer answer)
{
    m_world->dialogs.Queue(answer);
    return *this;
}

TestAccount &TestAccount::AnswerRest(Answer answer)
{
    m_world->dialogs.AnswerRest(answer);
    return *this;
}

template <class Routine>
auto TestAccount::Guarded(Routine routine)
{
    try {
        return routine();
    } catch (const ProgramEnded &) {
        m_world->rows.Close();
        m_world->lots.Close();
        m_world->gConnUndo.Close();
        m_world->gConnAccount.Close();
        throw;
    }
}

TransactionEntry TestAccount::EntryOf(Action action, const QString &symbol, const QString &count,
                                      const QString &price, const char *date) const
{
    TransactionEntry entry;
    entry.action = action;
    entry.Symbol = symbol;
    entry.Name = symbol + QStringLiteral(" Inc.");
    entry.NumberOfShares = count;
    entry.PurchasePrice = price;
    entry.TransDate =
        date ? QDate::fromString(QString::fromLatin1(date), Qt::ISODate) : m_world->clock.Today();
    return entry;
}

PostingOutcome TestAccount::Post(const TransactionEntry &entry)
{
    return Guarded([&] {
        PostingWork work = Work();
        m_world->lastEntry = entry;
        const PostingOutcome outcome = PostTransaction(work, m_world->lastEntry, m_world->filler);
        if (outcome != PostingOutcome::Rejected)
            FinishPosting(work, outcome);
        return outcome;
    });
}

PostingOutcome TestAccount::Post(Action action, const QString &symbol, const QString &count,
                                 const QString &price, const char *date)
{
    return Post(EntryOf(action, symbol, count, price, date));
}

PostingOutcome TestAccount::Buy(const QString &symbol, const QString &count, const QString &price,
                                const char *date)
{
    return Post(Action::Buy, symbol, count, price, date);
}

PostingOutcome TestAccount::Sell(const QString &symbol, const QString &count, const QString &price,
                                 const char *date)
{
    return Post(Action::Sell, symbol, count, price, date);
}

PostingOutcome TestAccount::SellShort(const QString &symbol, const QString &count,
                                      const QString &price, const char *date)
{
    return Post(Action::SellShort, symbol, count, price, date);
}

PostingOutcome TestAccount::Cover(const QString &symbol, const QString &count, const QString &price,
                                  const char *date)
{
    return Post(Action::BuyToCover, symbol, count, price, date);
}

PostingOutcome TestAccount::Split(const QString &symbol, const QString &newShares,
                                  const QString &oldShares)
{
    return Post(Action::Split, symbol, newShares, oldShares);
}

PostingOutcome TestAccount::Cash(Action action, const QString &amount)
{
    return Post(action, QString(), amount, QString());
}

bool TestAccount::Undo()
{
    m_world->dialogs.Queue(Answer::Yes);
    return Guarded([this] {
        PostingWork work = Work();
        return UndoLastTransaction(work, [] {}) == UndoOutcome::TakenBack;
    });
}

void TestAccount::Commit()
{
    PostingWork work = Work();
    CommitUndoTransaction(work);
}

const TrackerRow &TestAccount::Of(const QString &symbol) const
{
    for (int i = 0; i < m_world->rows.RecordCount(); ++i)
        if (m_world->rows.At(i).Symbol == symbol)
            return m_world->rows.At(i);
    throw std::logic_error("no row of " + symbol.toStdString());
}

std::string TestAccount::Lots(const QString &symbol) const
{
    std::string text;
    for (const ::Lot &lot : m_world->lots.LotsOf(symbol))
        text +=
            (text.empty() ? "" : "; ") + Text(lot.Shares) + " @ " + PriceText(lot.PurchasePrice);
    return text;
}

bool TestAccount::UndoEnabled() const
{
    return m_world->commands.Enabled(QStringLiteral("UndoLast")) &&
           m_world->commands.Enabled(QStringLiteral("popDTUndoLast"));
}

std::string TestAccount::StoredLots(const QString &symbol) const
{
    Connection elsewhere;
    OpenFast(elsewhere, m_world->path);
    std::string text;
    {
        Statement lots = elsewhere.Prepare(
            QStringLiteral("SELECT ID, Shares, PurchasePrice FROM PriceHistory WHERE Symbol = ? "
                           "ORDER BY TransDate, Time, ID"));
        lots.BindAll(symbol);
        while (lots.Step())
            text += (text.empty() ? "#" : "; #") + std::to_string(lots.Int64(0)) + " " +
                    Text(lots.ShareCount(1)) + " @ " + PriceText(lots.Money(2));
    }
    return text;
}

std::vector<std::string> TestAccount::History() const
{
    return ReadLines(m_world->path,
                     QStringLiteral("SELECT Symbol, Name, Description, Shares, TransactionCost, "
                                    "Price, Amount, TransDate FROM History ORDER BY ID"));
}

std::vector<std::string> TestAccount::ProfitLoss() const
{
    return ReadLines(m_world->path,
                     QStringLiteral("SELECT Symbol, Name, ProfitLoss, TransDate, Time "
                                    "FROM DailyProfitLoss ORDER BY Symbol, TransDate"));
}

std::string TestAccount::FileText() const
{
    std::string text;
    for (const char *table : {"DailyTracker", "PriceHistory", "History", "DailyProfitLoss"}) {
        text += std::string(table) + "\n";
        for (const std::string &line :
             ReadLines(m_world->path, QStringLiteral("SELECT rowid, * FROM %1 ORDER BY rowid")
                                          .arg(QLatin1String(table))))
            text += line + "\n";
    }
    return text;
}

void TestAccount::ExecuteElsewhere(const QString &sql) const
{
    Connection elsewhere;
    OpenFast(elsewhere, m_world->path);
    elsewhere.ExecuteScript(sql);
}

void TestAccount::RecordedFiller::Focus(EntryField field)
{
    switch (field) {
    case EntryField::Action:
        asked.push_back("focus Action");
        return;
    case EntryField::NumberOfShares:
        asked.push_back("focus NumberOfShares");
        return;
    case EntryField::PurchasePrice:
        asked.push_back("focus PurchasePrice");
        return;
    case EntryField::TransDate:
        asked.push_back("focus TransDate");
        return;
    }
    throw std::logic_error("a field without a name");
}

void TestAccount::RecordedFiller::SelectAction(Action action)
{
    asked.push_back("select " + ActionText(action).toStdString());
}

void PrintTo(Currency value, std::ostream *out)
{
    *out << PriceText(value);
}

void PrintTo(Single value, std::ostream *out)
{
    *out << Text(value);
}

void PrintTo(const Lot &lot, std::ostream *out)
{
    *out << "#" << lot.ID << " " << Text(lot.Shares) << " @ " << PriceText(lot.PurchasePrice) << " "
         << Text(lot.TransDate) << " " << lot.Time.toString().toStdString();
}

void PrintTo(const TrackerRow &row, std::ostream *out)
{
    *out << row.Symbol.toStdString() << " shares " << Text(row.Shares) << " average "
         << Text(row.AvrgPrice) << " price " << Text(row.CurrPrice) << " basis " << Text(row.Basis)
         << " gain% " << Text(row.PerCentGainToday) << " P&L " << Text(row.ProfitLossToday) << "/"
         << Text(row.ProfitLossToDate) << " cost " << Text(row.TransCostToday) << "/"
         << Text(row.TransCostToDate) << " count " << row.NumberTransToday.Value() << "/"
         << row.NumberTransToDate.Value() << " invested " << Text(row.InvestedValue) << "/"
         << Text(row.InvestedToDate) << " " << Text(row.TransDate);
}
