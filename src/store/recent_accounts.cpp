#include "store/recent_accounts.h"

#include "base/runtime_error.h"

#include <QFileInfo>

namespace
{

constexpr int AccountsKept = 5;

QString Section()
{
    return QStringLiteral("Options");
}

QString Key(qsizetype place)
{
    return QStringLiteral("RecentAccount%1").arg(place + 1);
}

bool AreTheSame(const QString &path, const QString &other)
{
    const QString real = QFileInfo(path).canonicalFilePath();
    return path == other || (!real.isEmpty() && real == QFileInfo(other).canonicalFilePath());
}

} // namespace

QStringList RecentAccounts(const SettingsStore &store)
{
    QStringList paths;
    for (int place = 0; place < AccountsKept; ++place)
        if (const QString path = store.GetSetting(Section(), Key(place), QString());
            !path.isEmpty() && !paths.contains(path))
            paths << path;
    return paths;
}

void RememberAccount(SettingsStore &store, const QString &path)
{
    const QStringList before = RecentAccounts(store);
    QStringList paths = before;
    paths.removeIf([&](const QString &other) { return AreTheSame(path, other); });
    paths.prepend(QFileInfo(path).absoluteFilePath());
    paths = paths.mid(0, AccountsKept);
    if (paths == before)
        return;
    try {
        for (qsizetype place = 0; place < paths.size(); ++place)
            store.SaveSetting(Section(), Key(place), paths.at(place));
        store.Flush();
    } catch (const RuntimeError &) {
    }
}
