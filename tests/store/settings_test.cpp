/// The settings in every locale, and texts in the file that are no values.

#include "base/character_shift.h"
#include "store/settings.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace
{

const QDate Today(2026, 3, 2);
const QDate Late(2026, 12, 31);

class SettingsInFile : public testing::Test
{
protected:
    Settings Load(const Formats &formats) const
    {
        SettingsStore store(Path());
        return LoadSettings(store, formats, QStringLiteral("/app"), Today);
    }
    void Save(const Settings &settings, const Formats &formats) const
    {
        SettingsStore store(Path());
        SaveSettings(store, formats, settings);
    }
    void Put(const char *section, const char *key, const QString &value) const
    {
        SettingsStore store(Path());
        store.SaveSetting(QString::fromUtf8(section), QString::fromUtf8(key), value);
        store.Flush();
    }
    QString Path() const { return m_folder.filePath("settings.ini"); }

    QTemporaryDir m_folder;
};

struct BadValue
{
    const char *name;
    const char *section;
    const char *key;
    const char *text;
};
const BadValue BadValues[] = {
    {"AWordForANumber", "Options", "NotifyDays", "often"},
    {"ANumberBeyond16Bits", "Options", "AverageTrans", "40000"},
    {"AWordForAFlag", "Options", "ArgCascade", "perhaps"},
    {"AWordForADate", "Options", "LastBackup", "yesterday"},
    {"ADayThatNoCalendarHas", "Options", "ResetDate", "2/29/2027"},
    {"APlainDateWhereAShiftedOneStands", "Options", "VerChkDt", "3/2/2026"},
    {"AWordForAColour", "Colors", "DTDataGridColor", "red"},
    {"AColourOfTooManyBits", "Colors", "DTDataGridColor", "1E300"},
    {"AWordForAComponent", "Colors", "ChartBackRed", "red"},
    {"AComponentBeyond255", "Colors", "ChartBackRed", "256"},
};
class BadSetting : public SettingsInFile, public testing::WithParamInterface<BadValue>
{};

const Formats UsFormats{QLocale(QLocale::English, QLocale::UnitedStates)};

} // namespace

TEST_P(BadSetting, YieldsItsDefaultIsNamedAndIsReplacedByTheNextSave)
{
    const BadValue &bad = GetParam();
    Put("Options", "CompactDays", "17");
    Put(bad.section, bad.key, QString::fromUtf8(bad.text));
    SettingsStore store(Path());
    QStringList unreadable;
    const Settings read =
        LoadSettings(store, UsFormats, QStringLiteral("/app"), Today, &unreadable);
    EXPECT_EQ(unreadable, QStringList(bad.key));
    EXPECT_EQ(read.CompactDays, 17); // the others are read
    SaveSettings(store, UsFormats, read);

    SettingsStore later(Path());
    LoadSettings(later, UsFormats, QStringLiteral("/app"), Today, &unreadable);
    EXPECT_EQ(unreadable, QStringList());
    QFile::remove(Path());
    SettingsStore fresh(Path());
    SaveSettings(fresh, UsFormats, LoadSettings(fresh, UsFormats, QStringLiteral("/app"), Today));
    EXPECT_EQ(later.GetSetting(bad.section, bad.key, ""),
              fresh.GetSetting(bad.section, bad.key, ""));
}

INSTANTIATE_TEST_SUITE_P(Settings, BadSetting, testing::ValuesIn(BadValues),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(SettingsInFile, ComeBackInEveryLocaleThatWroteThem)
{
    // The writing of dates differs by language and country; one of each is enough.
    QSet<QString> seen;
    for (const QLocale &locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        if (seen.contains(locale.dateFormat(QLocale::ShortFormat) + locale.zeroDigit()))
            continue;
        seen.insert(locale.dateFormat(QLocale::ShortFormat) + locale.zeroDigit());
        const Formats formats{locale};
        Settings settings = Load(Formats{QLocale::c()});
        settings.LastBackup = settings.VerChkDt = Late;
        settings.LastRunDate = QDate(1900, 1, 1);
        settings.DTBalanceColColor = 0xFFFFFF;
        try {
            Save(settings, formats);
            const Settings read = Load(formats);
            EXPECT_EQ(read.LastBackup, Late) << qPrintable(locale.name());
            EXPECT_EQ(read.VerChkDt, Late) << qPrintable(locale.name());
            EXPECT_EQ(read.LastRunDate, QDate(1900, 1, 1)) << qPrintable(locale.name());
            EXPECT_EQ(read.DTBalanceColColor, 0xFFFFFF) << qPrintable(locale.name());
        } catch (const RuntimeError &error) {
            ADD_FAILURE() << qPrintable(locale.name()) << ": " << error.what();
        }
        QFile::remove(Path());
    }
    EXPECT_GT(seen.size(), 50);
}

TEST_F(SettingsInFile, WriteDatesInTheShortFormOfTheLocale)
{
    Settings settings = Load(Formats{QLocale::c()});
    settings.LastBackup = settings.VerChkDt = Late;
    Save(settings, Formats{QLocale(QLocale::German, QLocale::Germany)});
    SettingsStore store(Path());
    EXPECT_EQ(store.GetSetting("Options", "LastBackup", ""), "31.12.2026");
    EXPECT_EQ(store.GetSetting("Options", "VerChkDt", ""), ShiftUp("31.12.2026"));
}

TEST_F(SettingsInFile, ReadFlagsAsWordsOrNumbers)
{
    const Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    struct
    {
        const char *text;
        bool value;
    } const flags[] = {{"True", true}, {"TRUE", true},   {" true ", true}, {"-1", true},
                       {"1", true},    {"False", false}, {"0", false}};
    for (const auto &flag : flags) {
        Put("Options", "ArgNormal", flag.text);
        EXPECT_EQ(Load(formats).ArgNormal, flag.value) << flag.text;
    }
}

TEST_F(SettingsInFile, ThatAreBrokenAreAnError)
{
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Options\nno key here\n");
    file.close();
    EXPECT_THROW(Load(Formats{QLocale::c()}), RuntimeError);
}

TEST_F(SettingsInFile, ThatCannotBeWrittenAreAnError)
{
    const Settings settings = Load(Formats{QLocale::c()});
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("settings.ini"));
    EXPECT_THROW(Save(settings, Formats{QLocale::c()}), RuntimeError);
}

TEST(ProgramVersion, IsWrittenInOnePieceAndWithPoints)
{
    EXPECT_EQ((Version{6, 0, 18}.Text()), "6018");
    EXPECT_EQ((Version{6, 0, 18}.Dotted()), "6.0.18");
    EXPECT_EQ(ProgramVersion().Text(), "6018");
}

TEST(StoredColour, HasBlueInItsHighestByte)
{
    EXPECT_EQ(RgbFromStored(0x80C0FF), Rgb(0xFFC080));
    EXPECT_EQ(StoredFromRgb(0xFFC080), 0x80C0FF);
    EXPECT_EQ(RgbFromStored(0), Rgb(0));
    for (const Rgb color : {0x000000u, 0x010203u, 0xFFFFFFu, 0xFF0000u})
        EXPECT_EQ(RgbFromStored(StoredFromRgb(color)), color);
}

TEST_F(SettingsInFile, ChangedByTwoProgramsHaveTheChangesOfBoth)
{
    SettingsStore first(Path()), second(Path());
    Settings ours = LoadSettings(first, UsFormats, QStringLiteral("/app"), Today);
    Settings theirs = LoadSettings(second, UsFormats, QStringLiteral("/app"), Today);
    theirs.CompactDays = 17;
    theirs.THDataGridColor = 255;
    SaveSettings(second, UsFormats, theirs);
    ours.NotifyDays = 9;
    SaveSettings(first, UsFormats, ours);
    theirs.LastRunDate = Today;
    SaveSettings(second, UsFormats, theirs);

    const Settings found = Load(UsFormats);
    EXPECT_EQ(found.CompactDays, 17);
    EXPECT_EQ(found.THDataGridColor, 255);
    EXPECT_EQ(found.NotifyDays, 9);
    EXPECT_EQ(found.LastRunDate, Today);
}

TEST_F(SettingsInFile, SetBackToAnEarlierValueAreWritten)
{
    SettingsStore store(Path());
    Settings settings = LoadSettings(store, UsFormats, QStringLiteral("/app"), Today);
    settings.NotifyDays = 9;
    SaveSettings(store, UsFormats, settings);
    settings.NotifyDays = 3;
    SaveSettings(store, UsFormats, settings);
    EXPECT_EQ(Load(UsFormats).NotifyDays, 3);
}

TEST_F(SettingsInFile, WithALineThatIsNoneKeepTheOthers)
{
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "[Options]\nNotifyDays=9\nno key here\nCompactDays=17\n[Colors\nDTDataGridColor=255\n");
    file.close();
    SettingsStore store(Path());
    const Settings read = LoadSettings(store, UsFormats, QStringLiteral("/app"), Today);
    EXPECT_TRUE(store.HasUnreadableLines());
    EXPECT_EQ(read.NotifyDays, 9);
    EXPECT_EQ(read.CompactDays, 17);
    EXPECT_EQ(read.DTDataGridColor, 255);
    SaveSettings(store, UsFormats, read);
    SettingsStore later(Path());
    EXPECT_EQ(LoadSettings(later, UsFormats, QStringLiteral("/app"), Today).CompactDays, 17);
    EXPECT_FALSE(later.HasUnreadableLines());
}
