#include "datamaker/delivery.h"

#include "datamaker/sample_account.h"
#include "datamaker/shared_files.h"
#include "platform/files.h"
#include "store/create_database.h"

#include <QTemporaryDir>

const QStringList &DeliveredFiles()
{
    static const QStringList files = {
        QStringLiteral("Template.xxx"),         QStringLiteral("ApplControl.xxx"),
        QStringLiteral("HistPrices.xxx"),       QStringLiteral("WebSites.mdb"),
        QStringLiteral("ApplControl.mdb"),      QStringLiteral("HistPrices.mdb"),
        QStringLiteral("Sample Portfolio.mdb"), QStringLiteral("WebSites.xxx"),
    };
    return files;
}

void MakeDeliveredFiles(const QString &dataFolder, const QString &targetFolder, QDate today)
{
    const auto source = [&](const char *name) {
        return dataFolder + QLatin1Char('/') + QLatin1String(name);
    };
    const SamplePlan plan = ReadSamplePlan(source("sample_portfolio.json"));
    const QStringList classes = ReadAssetClasses(source("asset_classes.txt"));

    const QTemporaryDir beside(targetFolder + QStringLiteral("/making-XXXXXX"));
    if (!beside.isValid())
        throw RuntimeError(RuntimeError::PathAccessNumber,
                           QStringLiteral("Path/File access error: ") + targetFolder);
    const auto made = [&](const char *name) { return beside.filePath(QLatin1String(name)); };
    const auto create = [&](const char *name, const char *schema) {
        CreateDatabase(made(name), ReadSchema(source(schema)));
    };

    create("Template.xxx", "schema/account.sql");
    create("ApplControl.xxx", "schema/appl_control.sql");
    AddAssetClasses(made("ApplControl.xxx"), classes, today);
    create("HistPrices.xxx", "schema/hist_prices.sql");
    create("WebSites.mdb", "schema/web_sites.sql");
    AddQuoteSites(made("WebSites.mdb"), source("quote_sites.json"));
    Files::CopyFile(made("WebSites.mdb"), made("WebSites.xxx"), false);

    Files::CopyFile(made("ApplControl.xxx"), made("ApplControl.mdb"), false);
    AddSampleSecurities(made("ApplControl.mdb"), plan, classes);
    Files::CopyFile(made("HistPrices.xxx"), made("HistPrices.mdb"), false);
    AddPracticePrices(made("HistPrices.mdb"), plan, today);
    Files::CopyFile(made("Template.xxx"), made("Sample Portfolio.mdb"), false);
    PostSampleAccount(made("Sample Portfolio.mdb"), plan,
                      DelayTimeOf(made("WebSites.mdb"), plan.QuoteSite), today);

    for (const QString &name : DeliveredFiles())
        Files::Name(beside.filePath(name), targetFolder + QLatin1Char('/') + name);
}
