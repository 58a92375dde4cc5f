#pragma once

/// Which proxy a transfer takes.

#include <QNetworkProxyFactory>

/// Follows `accessType`, one of Inet::Access, as it stands when a request goes out: the caller keeps
/// it alive. A request to this machine itself goes without a proxy in any case.
class InetProxies : public QNetworkProxyFactory
{
public:
    explicit InetProxies(const int &accessType) : m_accessType(accessType) {}
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override;

private:
    const int &m_accessType;
};
