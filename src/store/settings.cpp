#include "store/settings.h"

#include "base/character_shift.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <functional>

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

/// Reads each key; the value the struct has is the default of one that is missing or cannot be read.
class Reader
{
public:
    Reader(SettingsStore &store, const Formats &formats, QStringList &unreadable)
        : m_store(store), m_formats(formats), m_unreadable(unreadable)
    {}

    void Text(const char *key, QString &value)
    {
        value = m_store.GetSetting(Options, QLatin1String(key), value);
    }
    void Drive(const char *key, QString &value)
    {
        Text(key, value);
        value = value.left(2);
    }
    void Number(const char *key, int &value)
    {
        Read(Options, key, value, [this](const QString &text) { return WholeNumber(text); });
    }
    void Component(const char *key, int &value)
    {
        Read(Colors, key, value, [this](const QString &text) {
            const int component = WholeNumber(text);
            if (component < 0 || component > 255)
                throw RuntimeError::Overflow();
            return component;
        });
    }
    void Color(const char *key, double &value)
    {
        Read(Colors, key, value, [this](const QString &text) {
            const double color = m_formats.NumberFromText(text);
            if (!(std::fabs(color) <= 0xFFFFFFFF)) // nor what is no number at all
                throw RuntimeError::Overflow();
            return color;
        });
    }
    void Flag(const char *key, bool &value)
    {
        Read(Options, key, value, [this](const QString &text) {
            if (text.trimmed().compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
                return true;
            if (text.trimmed().compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
                return false;
            return m_formats.NumberFromText(text) != 0;
        });
    }
    void Date(const char *key, QDate &value)
    {
        Read(Options, key, value, [this](const QString &text) { return DateOf(text); });
    }
    void ShiftedDate(const char *key, QDate &value)
    {
        Read(Options, key, value, [this](const QString &text) { return DateOf(ShiftDown(text)); });
    }

private:
    template <class Value, class Conversion>
    void Read(const QString &section, const char *key, Value &value, Conversion convert)
    {
        const QString text = m_store.GetSetting(section, QLatin1String(key), QString());
        if (text.trimmed().isEmpty())
            return;
        try {
            value = convert(text);
        } catch (const RuntimeError &) {
            m_unreadable << QLatin1String(key);
        }
    }
    int WholeNumber(const QString &text) const { return m_formats.IntegerFromText(text).Value(); }
    QDate DateOf(const QString &text) const
    {
        std::optional<QDate> date = m_formats.DateFromText(text);
        // The user's locale may be another one than when the date was written.
        for (const QLocale::Territory written : {QLocale::UnitedStates, QLocale::UnitedKingdom})
            if (!date)
                date = Formats(QLocale(QLocale::English, written)).DateFromText(text);
        if (!date)
            throw RuntimeError::TypeMismatch();
        return *date;
    }

    SettingsStore &m_store;
    const Formats &m_formats;
    QStringList &m_unreadable;
};

/// Hands on each key with the text that the file has for its value.
class Writer
{
public:
    using Target =
        std::function<void(const QString &section, const QString &key, const QString &value)>;
    Writer(const Formats &formats, Target target) : m_formats(formats), m_target(std::move(target))
    {}

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
        m_target(section, QLatin1String(key), value);
    }

    const Formats &m_formats;
    const Target m_target;
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
                      QDate today, QStringList *unreadable)
{
    store.Load();
    Settings settings;
    settings.LastBackup = settings.LastNotify = settings.ResetDate = settings.VerChkDt = today;
    settings.CurrentFilePath = appPath + QStringLiteral("/Sample Portfolio.mdb");
    settings.AccountName = QStringLiteral("Sample Portfolio");
    QStringList keys;
    Reader reader(store, formats, keys);
    VisitAll(reader, settings);
    Writer expected(formats, [&](const QString &section, const QString &key, const QString &value) {
        if (!keys.contains(key)) // the default takes the place of one that cannot be read
            store.Expect(section, key, value);
    });
    VisitAll(expected, settings);
    settings.ApplVersion = ProgramVersion().Text().toInt(); // stamped anew at each start
    if (unreadable)
        *unreadable = keys;
    return settings;
}

void SaveSettings(SettingsStore &store, const Formats &formats, const Settings &settings)
{
    store.Load(); // what another program has written meanwhile
    Settings written = settings;
    Writer writer(formats, [&](const QString &section, const QString &key, const QString &value) {
        store.SaveSetting(section, key, value);
    });
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
