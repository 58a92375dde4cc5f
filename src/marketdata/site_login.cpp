#include "marketdata/site_login.h"

#include "base/character_shift.h"

namespace
{

const QString LoginField = QStringLiteral("Field08");
const QString PasswordField = QStringLiteral("Field09");

bool FindLogin(Recordset &gRsApplication, qint64 webSiteId)
{
    const int tableName = gRsApplication.Column(QStringLiteral("TableName"));
    const QString id = QString::number(webSiteId);
    for (gRsApplication.MoveFirst(); !gRsApplication.AtEnd(); gRsApplication.MoveNext())
        if (gRsApplication.Text(tableName) == id)
            return true;
    return false;
}

void SetTo(Recordset &row, std::initializer_list<const char *> fields, const FieldValue &value)
{
    for (const char *field : fields)
        row.Set(QString::fromUtf8(field), value);
}

} // namespace

std::optional<SiteLogin> StoredSiteLogin(Recordset &gRsApplication, qint64 webSiteId)
{
    if (!FindLogin(gRsApplication, webSiteId))
        return std::nullopt;
    return SiteLogin{gRsApplication.Text(LoginField),
                     ShiftDown(gRsApplication.Text(PasswordField))};
}

bool StoreSiteLogin(Recordset &gRsApplication, qint64 webSiteId, const SiteLogin &login,
                    QDate today)
{
    const QString shifted = ShiftUp(login.Password);
    const bool known = FindLogin(gRsApplication, webSiteId);
    if (!known) {
        gRsApplication.AddNew();
        gRsApplication.Set(QStringLiteral("TableName"), QString::number(webSiteId));
        SetTo(gRsApplication, {"Field01", "Field02"}, Currency());
        SetTo(gRsApplication, {"Field03"}, qint64{0});
        SetTo(gRsApplication, {"Field04", "Field05"}, today);
        SetTo(gRsApplication, {"Field06"}, QStringLiteral("0"));
        SetTo(gRsApplication, {"Field07"}, Single());
        SetTo(gRsApplication, {"Field10", "Field11"}, false);
    }
    gRsApplication.Set(LoginField, login.LoginID);
    gRsApplication.Set(PasswordField, shifted);
    gRsApplication.Update();
    return known;
}
