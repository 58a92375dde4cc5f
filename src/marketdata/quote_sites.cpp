#include "marketdata/quote_sites.h"

#include "store/control_rows.h"

#include <algorithm>

namespace
{

constexpr QLatin1Char Blank(' ');

int NameColumn(const Recordset &sites)
{
    return sites.Column(QStringLiteral("WebSiteName"));
}

QStringView WithoutTrailingBlanks(QStringView text)
{
    while (text.endsWith(Blank))
        text.chop(1);
    return text;
}

bool IsSameName(QStringView left, QStringView right)
{
    return WithoutTrailingBlanks(left) == WithoutTrailingBlanks(right);
}

/// Stands on the fallback site and makes it the choice of the account. False, at the end, without
/// one.
bool TakeFallbackSite(Databases &databases, AccountState &account, Services &services)
{
    constexpr qint64 FallbackId = 1;
    Recordset &sites = databases.gRsWebParameters;
    const int id = sites.Column(QStringLiteral("ID"));
    for (sites.MoveFirst(); !sites.AtEnd(); sites.MoveNext()) {
        if (sites.Number(id) != FallbackId)
            continue;
        account.CurrentWebSiteId = FallbackId;
        account.CurrentWebSiteName = sites.Text(NameColumn(sites));
        InsertWebSiteRow(databases.gConnAccount, account, services);
        return true;
    }
    return false;
}

void FillUpdateCount(Recordset &sites)
{
    constexpr int UsualCount = 5;
    const int column = sites.Column(QStringLiteral("UpdateCount"));
    if (!sites.IsFieldNull(column))
        return;
    sites.Set(column, Integer::FromWide(UsualCount));
    sites.Update();
}

} // namespace

bool TakesOptionsBare(const QString &optionPrefix)
{
    return WithoutBlanks(optionPrefix) == QLatin1String("None");
}

QString WithoutBlanks(const QString &text)
{
    QStringView rest = WithoutTrailingBlanks(text);
    while (rest.startsWith(Blank))
        rest = rest.mid(1);
    return rest.toString();
}

QuoteSite CurrentSite(const Recordset &gRsWebParameters)
{
    const auto text = [&](const char *column) {
        return gRsWebParameters.Text(QString::fromLatin1(column));
    };
    const auto number = [&](const char *column) {
        return int(gRsWebParameters.Number(gRsWebParameters.Column(QString::fromLatin1(column))));
    };
    const auto flag = [&](const char *column) {
        return gRsWebParameters.Flag(gRsWebParameters.Column(QString::fromLatin1(column)));
    };
    QuoteSite site;
    site.ID = gRsWebParameters.Number(gRsWebParameters.Column(QStringLiteral("ID")));
    site.WebSiteName = text("WebSiteName");
    site.BegWebAddress = text("BegWebAddress");
    site.EndWebAddress = text("EndWebAddress");
    site.AddressBuildCharacters = text("AddressBuildCharacters");
    site.SymbolBegText = text("SymbolBegText");
    site.SymbolEndText = text("SymbolEndText");
    site.CharToPrice = number("CharToPrice");
    site.PriceBegText = text("PriceBegText");
    site.PriceEndText = text("PriceEndText");
    site.DelayTime = number("DelayTime");
    site.UpdateCount = number("UpdateCount");
    site.ServiceFlag = flag("ServiceFlag");
    site.SignUpURL = text("SignUpURL");
    site.OptionPrefix = text("OptionPrefix");
    site.OptionSuffix = text("OptionSuffix");
    site.SimilarSite = number("SimilarSite");
    site.DeselectFlagTemp = flag("DeselectFlagTemp");
    site.DeselectFlagPerm = flag("DeselectFlagPerm");
    return site;
}

QString ShortSiteName(const QString &webSiteName)
{
    return webSiteName.section(QLatin1Char('('), 0, 0);
}

bool FindSite(Recordset &gRsWebParameters, const QString &webSiteName)
{
    const int name = NameColumn(gRsWebParameters);
    gRsWebParameters.MoveFirst();
    while (!gRsWebParameters.AtEnd() && !IsSameName(gRsWebParameters.Text(name), webSiteName))
        gRsWebParameters.MoveNext();
    return !gRsWebParameters.AtEnd();
}

bool SelectSiteInUse(Databases &databases, AccountState &account, const QString &webLoginId,
                     Services &services)
{
    Recordset &sites = databases.gRsWebParameters;
    if (FindSite(sites, account.CurrentWebSiteName)) {
        // The first row is expected to be complete: neither its ID nor anything else is looked at.
        if (sites.Position() == 0)
            return false;
        account.CurrentWebSiteId = sites.Number(sites.Column(QStringLiteral("ID")));
    } else {
        TakeFallbackSite(databases, account, services);
    }
    FillUpdateCount(sites); // throws 3021 when the fallback was missing as well
    return !sites.Text(QStringLiteral("SignUpURL")).isEmpty() && webLoginId.isEmpty();
}

std::optional<QuoteSite> PickSite(Recordset &gRsWebParameters, const QString &webSiteName,
                                  PriceUpdateState &state)
{
    if (!FindSite(gRsWebParameters, webSiteName))
        return std::nullopt;
    gRsWebParameters.Set(QStringLiteral("DeselectFlagPerm"), false);
    gRsWebParameters.Update();
    state.NotFoundList.clear();
    return CurrentSite(gRsWebParameters);
}
