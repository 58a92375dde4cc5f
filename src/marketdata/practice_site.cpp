#include "marketdata/practice_site.h"

#include <QNetworkProxy>
#include <QRegularExpression>
#include <QTcpServer>

#include <optional>

namespace
{

QString AddressOnPort(int port)
{
    return QStringLiteral("http://127.0.0.1:%1/quotes?s=").arg(port);
}

std::optional<quint16> PortOf(const QString &begWebAddress)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\Ahttp://127\\.0\\.0\\.1:([1-9][0-9]{0,4})/quotes\\?s=\\z"));
    const QRegularExpressionMatch match = pattern.match(begWebAddress.trimmed());
    bool fits = false;
    const quint16 port = match.captured(1).toUShort(&fits);
    return fits ? std::optional(port) : std::nullopt;
}

bool IsFree(quint16 port)
{
    QTcpServer probe;
    probe.setProxy(QNetworkProxy::NoProxy);
    return probe.listen(QHostAddress::LocalHost, port);
}

} // namespace

bool IsPracticeAddress(const QString &begWebAddress)
{
    return PortOf(begWebAddress).has_value();
}

void ServePracticeSite(PracticeServer &server, Recordset &gRsWebParameters)
{
    const int column = gRsWebParameters.Column(QStringLiteral("BegWebAddress"));
    const std::optional<quint16> port = PortOf(gRsWebParameters.Text(column));
    if (!port || (server.IsListening() && server.Port() == *port))
        return;
    if (*port != PracticeServer::DeliveredPort && !IsFree(*port))
        return;
    server.Listen(*port);
    if (server.Port() == *port)
        return;
    gRsWebParameters.Set(column, AddressOnPort(server.Port()));
    try {
        gRsWebParameters.Update();
    } catch (const RuntimeError &) {
        gRsWebParameters.CancelUpdate();
        throw;
    }
}
