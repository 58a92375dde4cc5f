#include "store/settings.h"

#include "base/character_shift.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace
{

const QString Options = QStringLiteral("Options");
const QString Colors = QStringLiteral("Colors");

/// One walk over all keys serves reading and writing, so that neither can miss one.
template <class Visitor>
void VisitAll(Visitor &visit, Settings &s)
{
    visit.Drive("BackupDir", s.BackupDir);
    visit.Number("AverageTrans", s.AverageTrans);
    visit.Date("LastBackup", s.LastBackup);
    visit.Date("LastNotify", s.LastNotify);
    visit.Number("CheckNotify", s.CheckNotify);
    visit.Number("CheckAverage", s.CheckAverage);
    visit.Number("NotifyDays", s.NotifyDays);
    visit.Number("CheckCompact", s.CheckCompact);
    visit.Number("CompactDays", s.CompactDays);
    visit.Number("DailyTracker", s.DailyTracker);
    visit.Number("DailyProfitLoss", s.DailyProfitLoss);
    visit.Number("HistoryList", s.HistoryList);
    visit.Number("PurchaseList", s.PurchaseList);
    visit.Number("ChartScreen", s.ChartScreen);
    visit.Number("BrowserScreen", s.BrowserScreen);
    visit.Number("HistoricalPriceList", s.HistoricalPriceList);
    visit.Flag("ArgCascade", s.ArgCascade);
    visit.Flag("ArgHorizontal", s.ArgHorizontal);
    visit.Flag("ArgVertical", s.ArgVertical);
    visit.Flag("ArgMaximize", s.ArgMaximize);
    visit.Flag("ArgNormal", s.ArgNormal);
    visit.Text("CurrentFilePath", s.CurrentFilePath);
    visit.Text("AccountName", s.AccountName);
    visit.Number("ShowTipOfDay", s.ShowTipOfDay);
    visit.Number("ShowReminderScreen", s.ShowReminderScreen);
    visit.Number("CurrentTip", s.CurrentTip);
    visit.Number("ResetMonths", s.ResetMonths);
    visit.Date("ResetDate", s.ResetDate);
    visit.Number("NeverReset", s.NeverReset);
    visit.Number("ApplVersion", s.ApplVersion);
    visit.Flag("NewVersion", s.NewVersion);
    visit.Flag("WebPriceUpdate", s.WebPriceUpdate);
    visit.Number("AccessType", s.AccessType);
    visit.Date("LastRunDate", s.LastRunDate);
    visit.ShiftedDate("VerChkDt", s.VerChkDt);
    visit.Number("StoreWebLogin", s.StoreWebLogin);
    visit.Number("HistPriceMonths", s.HistPriceMonths);
    visit.Number("KeepPortfolioData", s.KeepPortfolioData);

    visit.Component("ChartBackRed", s.ChartBack.Red);
    visit.Component("ChartBackGreen", s.ChartBack.Green);
    visit.Component("ChartBackBlue", s.ChartBack.Blue);
    visit.Component("ChartWallRed", s.ChartWall.Red);
    visit.Component("ChartWallGreen", s.ChartWall.Green);
    visit.Component("ChartWallBlue", s.ChartWall.Blue);
    visit.Component("ChartBaseRed", s.ChartBase.Red);
    visit.Component("ChartBaseGreen", s.ChartBase.Green);
    visit.Component("ChartBaseBlue", s.ChartBase.Blue);
    visit.Component("ChartSeriesRed", s.ChartSeries.Red);
    visit.Component("ChartSeriesGreen", s.ChartSeries.Green);
    visit.Component("ChartSeriesBlue", s.ChartSeries.Blue);
    visit.Color("DTDataGridColor", s.DTDataGridColor);
    visit.Color("DTTotalGridColor", s.DTTotalGridColor);
    visit.Color("DTBalanceColColor", s.DTBalanceColColor);
    visit.Color("DPAllRowColor", s.DPAllRowColor);
    visit.Color("DPTotalRowColor", s.DPTotalRowColor);
    visit.Color("THDataGridColor", s.THDataGridColor);
    visit.Color("HPDataGridColor", s.HPDataGridColor);
    visit.Color("PPDataGridColor", s.PPDataGridColor);
    visit.Color("QSDataGridColor", s.QSDataGridColor);
}

/// Reads each key; the value the struct has is the default of a missing one.
class Reader
{
public:
    Reader(SettingsStore &store, const Formats &formats) : m_store(store), m_formats(formats) {}

    void Text(const char *key, QString &value)
    {
        value = m_store.GetSetting(Options, QLatin1String(key), value);
    }
    void Drive(const char *key, QString &value)
    {
        Text(key, value);
        value = value.left(2);
    }
    void Number(const char *key, int &value) { ReadNumber(Options, key, value); }
    void Component(const char *key, int &value) { ReadNumber(Colors, key, value); }
    void Color(const char *key, double &value)
    {
        const QString text = m_store.GetSetting(Colors, QLatin1String(key), QString());
        if (!text.isEmpty())
            value = m_formats.NumberFromText(text);
    }
    void Flag(const char *key, bool &value)
    {
        const QString text = m_store.GetSetting(Options, QLatin1String(key), QString()).trimmed();
        if (text.isEmpty())
            return;
        if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
            value = true;
        else if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
            value = false;
        else
            value = m_formats.NumberFromText(text) != 0;
    }
    void Date(const char *key, QDate &value)
    {
        ReadDate(m_store.GetSetting(Options, QLatin1String(key), QString()), value);
    }
    void ShiftedDate(const char *key, QDate &value)
    {
        const QString text = m_store.GetSetting(Options, QLatin1String(key), QString());
        ReadDate(ShiftDown(text), value);
    }

private:
    void ReadNumber(const QString &section, const char *key, int &value)
    {
        const QString text = m_store.GetSetting(section, QLatin1String(key), QString());
        if (!text.isEmpty())
            value = m_formats.IntegerFromText(text).Value();
    }
    void ReadDate(const QString &text, QDate &value)
    {
        if (text.isEmpty())
            return;
        std::optional<QDate> date = m_formats.DateFromText(text);
        // The user's locale may be another one than when the date was written.
        for (const QLocale::Territory written : {QLocale::UnitedStates, QLocale::UnitedKingdom})
            if (!date)
                date = Formats(QLocale(QLocale::English, written)).DateFromText(text);
        if (!date)
            throw RuntimeError::TypeMismatch();
        value = *date;
    }

    SettingsStore &m_store;
    const Formats &m_formats;
};

class Writer
{
public:
    Writer(SettingsStore &store, const Formats &formats) : m_store(store), m_formats(formats) {}

    void Text(const char *key, const QString &value) { Save(Options, key, value); }
    void Drive(const char *key, const QString &value) { Save(Options, key, value.left(2)); }
    void Number(const char *key, int value) { Save(Options, key, QString::number(value)); }
    void Component(const char *key, int value) { Save(Colors, key, QString::number(value)); }
    void Color(const char *key, double value) { Save(Colors, key, m_formats.ToText(value)); }
    void Flag(const char *key, bool value)
    {
        Save(Options, key, value ? QStringLiteral("True") : QStringLiteral("False"));
    }
    void Date(const char *key, QDate value) { Save(Options, key, m_formats.ToText(value)); }
    void ShiftedDate(const char *key, QDate value)
    {
        // The shift knows the Western code page alone, and some locales write a letter of their
        // own into a date; year first it is read in all of them.
        const QString text = m_formats.ToText(value);
        const bool western = std::all_of(text.begin(), text.end(),
                                         [](QChar letter) { return letter.unicode() < 253; });
        Save(Options, key, ShiftUp(western ? text : value.toString(Qt::ISODate)));
    }

private:
    void Save(const QString &section, const char *key, const QString &value)
    {
        m_store.SaveSetting(section, QLatin1String(key), value);
    }

    SettingsStore &m_store;
    const Formats &m_formats;
};

} // namespace

QString Version::Text() const
{
    return QStringLiteral("%1%2%3").arg(major).arg(minor).arg(revision);
}

QString Version::Dotted() const
{
    return QStringLiteral("%1.%2.%3").arg(major).arg(minor).arg(revision);
}

Version ProgramVersion()
{
    const QStringList parts = QStringLiteral(QUILLON_VERSION).split(QLatin1Char('.'));
    return {parts.value(0).toInt(), parts.value(1).toInt(), parts.value(2).toInt()};
}

Settings LoadSettings(SettingsStore &store, const Formats &formats, const QString &appPath,
                      QDate today)
{
    store.Load();
    Settings settings;
    settings.LastBackup = settings.LastNotify = settings.ResetDate = settings.VerChkDt = today;
    settings.CurrentFilePath = appPath + QStringLiteral("/Sample Portfolio.mdb");
    settings.AccountName = QStringLiteral("Sample Portfolio");
    Reader reader(store, formats);
    VisitAll(reader, settings);
    settings.ApplVersion = ProgramVersion().Text().toInt(); // stamped anew at each start
    return settings;
}

void SaveSettings(SettingsStore &store, const Formats &formats, const Settings &settings)
{
    Settings written = settings;
    Writer writer(store, formats);
    VisitAll(writer, written);
    store.Flush();
}

Rgb RgbFromStored(double stored)
{
    const auto value = static_cast<std::uint32_t>(std::fabs(stored));
    return (value & 0xFF) << 16 | (value & 0xFF00) | (value >> 16 & 0xFF);
}

double StoredFromRgb(Rgb color)
{
    return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}
