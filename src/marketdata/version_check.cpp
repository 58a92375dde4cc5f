#include "marketdata/version_check.h"

#include "base/runtime_error.h"

#include <utility>

namespace
{

constexpr qsizetype LastPlace = 30; ///< counted from the first character behind the tag
constexpr int DaysBetweenChecks = 7;

/// Takes the handler of a transfer's states away for a while.
class MutedStates
{
public:
    explicit MutedStates(Inet &inet)
        : m_inet(inet), m_handler(std::exchange(inet.StateChanged, nullptr))
    {}
    ~MutedStates() { m_inet.StateChanged = std::move(m_handler); }
    MutedStates(const MutedStates &) = delete;
    MutedStates &operator=(const MutedStates &) = delete;

private:
    Inet &m_inet;
    std::function<void(int)> m_handler;
};

QString FetchQuietly(Inet &inet, const QString &address)
{
    const MutedStates muted(inet);
    return inet.OpenURL(address);
}

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

void LookForVersion(Settings &settings, PriceUpdateState &state, Inet &inet, const QString &address,
                    PriceCycleScreens &screens)
{
    state.WebVersionText.clear();
    const QString file = FetchQuietly(inet, address);
    if (file.isEmpty() || file.contains(QLatin1String("Not Found")))
        return;
    state.WebVersionText = VersionTextOf(file);
    if (state.WebVersionText.isEmpty() || !IsDigit(state.WebVersionText.front()))
        return;
    const bool isNew = state.WebVersionText != ProgramVersion().Dotted();
    if (isNew)
        screens.ShowNewVersion();
    settings.NewVersion = isNew;
}

} // namespace

QString VersionTextOf(const QString &file)
{
    const QLatin1String begin("<Program_Version>");
    const QLatin1String end("</Program_Version>");
    // Without the tag the walk starts as if it stood right before the first character.
    const qsizetype start = file.indexOf(begin) + begin.size();
    QString version;
    for (qsizetype at = start; at <= start + LastPlace && at < file.size(); ++at) {
        if (QStringView(file).mid(at).startsWith(end))
            break;
        if (IsDigit(file[at]) || file[at] == u'.')
            version += file[at];
    }
    return version;
}

bool VersionCheckIsDue(const Settings &settings, const PriceUpdateState &state, QDate today)
{
    return settings.ShowReminderScreen != 0 && !state.VersionCheckedThisRun &&
           (today >= settings.VerChkDt || settings.NewVersion);
}

void CheckForNewVersion(Settings &settings, PriceUpdateState &state, Services &services, Inet &inet,
                        const QString &address, PriceCycleScreens &screens)
{
    const QDate today = services.clock.Today();
    if (address.isEmpty() || !VersionCheckIsDue(settings, state, today))
        return;
    bool timedOut = false;
    try {
        LookForVersion(settings, state, inet, address, screens);
    } catch (const RuntimeError &error) {
        timedOut = error.Number() == Inet::TimeOutError;
    }
    if (!timedOut)
        settings.VerChkDt = today.addDays(DaysBetweenChecks);
    state.VersionCheckedThisRun = true;
}

QString NewVersionMessage(const QString &webVersion, const QString &downloadPage)
{
    return QStringLiteral(
               "A new version of this application is now available. It is recommended that you "
               "download the latest version.\n\nYOUR CURRENT VERSION IS: ") +
           ProgramVersion().Dotted() + QStringLiteral("\nNEW UPDATED VERSION IS.: ") + webVersion +
           QStringLiteral("\n\nTo begin the download, click the 'Download now' button. The "
                          "application will launch internet explorer and take you to the download "
                          "web page at:\n\n") +
           downloadPage +
           QStringLiteral(
               "\n\nDownload the update version. After completing the download, end this "
               "application and follow the latest installation instructions described "
               "on the download page.");
}
