#include "datamaker/shared_files.h"

#include "marketdata/practice_walk.h"
#include "marketdata/quote_site_rows.h"
#include "store/connection.h"

#include <QFile>

QStringList ReadAssetClasses(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(RuntimeError::FileNotFoundNumber,
                           QStringLiteral("File not found: ") + path);
    QStringList classes;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')))
        if (!line.trimmed().isEmpty())
            classes.append(line.trimmed());
    return classes;
}

void AddAssetClasses(const QString &applControlPath, const QStringList &classes, QDate today)
{
    Connection control;
    control.Open(applControlPath);
    WriteGuard guard(control);
    for (const QString &name : classes)
        control.Execute(QStringLiteral("INSERT INTO ApplicationTable "
                                       "(TableName, Field04, Field05, Field08) "
                                       "VALUES ('AssetClass', ?, ?, ?)"),
                        today, today, name);
    guard.Commit();
}

void AddSampleSecurities(const QString &applControlPath, const SamplePlan &plan,
                         const QStringList &classes)
{
    Connection control;
    control.Open(applControlPath);
    WriteGuard guard(control);
    for (const SampleSecurity &security : plan.Securities) {
        control.Execute(QStringLiteral("INSERT INTO SecurityDetail VALUES (?, ?, ?)"),
                        security.Symbol, security.Name, security.SecurityType);
        for (auto entry = security.Classes.begin(); entry != security.Classes.end(); ++entry) {
            if (!classes.contains(entry.key()))
                throw RuntimeError(
                    RuntimeError::InvalidArgumentNumber,
                    QStringLiteral("Sample portfolio: unknown asset class '%1'").arg(entry.key()));
            control.Execute(QStringLiteral("INSERT INTO SecurityAssetClass VALUES (?, ?, ?)"),
                            security.Symbol, entry.key(), Single::FromDouble(entry.value()));
        }
    }
    guard.Commit();
}

void AddQuoteSites(const QString &webSitesPath, const QString &jsonPath)
{
    Connection sites;
    sites.Open(webSitesPath);
    LoadQuoteSiteRows(sites, jsonPath);
}

int DelayTimeOf(const QString &webSitesPath, const QString &siteName)
{
    Connection sites;
    sites.Open(webSitesPath);
    Statement select =
        sites.Prepare(QStringLiteral("SELECT DelayTime FROM WebParameters WHERE WebSiteName = ?"));
    select.BindAll(siteName);
    if (!select.Step())
        throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                           QStringLiteral("Sample portfolio: no quote site '%1'").arg(siteName));
    return int(select.Int64(0));
}

void AddPracticePrices(const QString &histPricesPath, const SamplePlan &plan, QDate today)
{
    Connection prices;
    prices.Open(histPricesPath);
    WriteGuard guard(prices);
    Statement insert = prices.Prepare(QStringLiteral(
        "INSERT INTO HistoricalPrices (Symbol, PriceDate, PriceOpen, DayHigh, DayLow, PriceClose, "
        "Volume, AdjClose) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"));
    for (const SampleSecurity &security : plan.Securities) {
        for (QDate date = today.addYears(-2); date < today; date = date.addDays(1)) {
            const std::optional<PracticeDay> day = PracticePricesOf(security.Symbol, date);
            if (!day)
                continue;
            insert.BindAll(security.Symbol, date, day->Open, day->High, day->Low, day->Close,
                           day->Volume, day->Close);
            insert.Step();
            insert.Reset();
        }
    }
    guard.Commit();
}
