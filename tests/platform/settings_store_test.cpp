/// The file behind the settings: texts as they are, sections, files that are none.

#include "platform/settings_store.h"

#include "base/runtime_error.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

namespace
{

class SettingsFileStore : public testing::Test
{
protected:
    QString Path() const { return m_folder.filePath("config/settings.ini"); }
    QString Stored(const QString &key, const QString &section = "Options") const
    {
        SettingsStore store(Path());
        store.Load();
        return store.GetSetting(section, key, "(none)");
    }
    void Write(const QByteArray &content)
    {
        QDir(m_folder.path()).mkdir("config");
        QFile file(Path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(SettingsFileStore, YieldsTheCallersDefaultForAMissingKey)
{
    EXPECT_EQ(Stored("AccountName"), "(none)");
    EXPECT_FALSE(QFile::exists(Path())); // reading makes no file
}

TEST_F(SettingsFileStore, BringsEveryTextBackAsItWas)
{
    const QStringList texts = {
        "",
        " ",
        "  two blanks before and behind  ",
        "a, b;c",
        "\"quoted\"",
        "O'Neil",
        "c:\\new\\x",
        "100 %",
        "@Invalid()",
        "[Colors]",
        "a=b",
        "line\nline\tend",
        "True",
        "0042",
        QString::fromUtf8("Zürich 日本"),
        QString::fromUtf8("\x01\x02ÿ"),
    };
    for (const QString &text : texts) {
        SettingsStore store(Path());
        store.SaveSetting("Options", "AccountName", text);
        store.Flush();
        EXPECT_EQ(Stored("AccountName"), text);
    }
}

TEST_F(SettingsFileStore, KeepsTheSectionsApart)
{
    SettingsStore store(Path());
    store.SaveSetting("Options", "DailyTracker", "1");
    store.SaveSetting("Colors", "DailyTracker", "2");
    store.Flush();
    EXPECT_EQ(Stored("DailyTracker", "Options"), "1");
    EXPECT_EQ(Stored("DailyTracker", "Colors"), "2");
    store.DeleteSetting("Options", "DailyTracker");
    store.Flush();
    EXPECT_EQ(Stored("DailyTracker", "Options"), "(none)");
    EXPECT_EQ(Stored("DailyTracker", "Colors"), "2");
}

TEST_F(SettingsFileStore, ReadsWhatAPersonWroteByHand)
{
    Write("[Options]\nAccountName=Smith, Jones\nNotifyDays=3\n");
    EXPECT_EQ(Stored("AccountName"), "Smith, Jones");
    EXPECT_EQ(Stored("NotifyDays"), "3");
}

TEST_F(SettingsFileStore, RefusesAFileThatIsNone)
{
    Write("[Options\nno key\n");
    SettingsStore store(Path());
    EXPECT_THROW(store.Load(), RuntimeError);
}

TEST_F(SettingsFileStore, TellsWhenItCannotWrite)
{
    QFile file(m_folder.filePath("config")); // where the folder should be
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    SettingsStore store(Path());
    store.SaveSetting("Options", "AccountName", "Broker");
    EXPECT_THROW(store.Flush(), RuntimeError);
}

TEST_F(SettingsFileStore, WaitsForNoLockOfAProgramThatDied)
{
    Write("[Options]\nNotifyDays=3\n");
    QFile lock(Path() + ".lock");
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.close();
    QElapsedTimer timer;
    timer.start();
    SettingsStore store(Path());
    store.Load();
    store.SaveSetting("Options", "NotifyDays", "7");
    store.Flush();
    EXPECT_LT(timer.elapsed(), 10000); // Qt waits for half a minute
    EXPECT_EQ(Stored("NotifyDays"), "7");
    EXPECT_FALSE(QFile::exists(lock.fileName()));
}

TEST_F(SettingsFileStore, RemovesWhatAKilledWriterLeftAndNothingElse)
{
    Write("[Options]\nNotifyDays=3\n");
    const QDir folder(m_folder.filePath("config"));
    const QStringList kept = {"other.ini.QwErTy",   "settings.ini",         "settings.ini.Backup",
                              "settings.ini.QwErT", "settings.ini.QwErTyU", "settings.ini.before"};
    for (const QString &name : kept + QStringList{"settings.ini.QwErTy", "settings.ini.aBcdef"}) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write("NotifyDays=5\n");
    }
    QFile empty(folder.filePath("settings.ini.qwerty"));
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.close();
    SettingsStore(Path()).Load();
    QStringList found = folder.entryList(QDir::Files);
    found.sort();
    EXPECT_EQ(found, kept);
}

TEST(SettingsStore, BelongsToTheUser)
{
    EXPECT_TRUE(SettingsStore::DefaultFileName().endsWith("/Quillon/Quillon.ini"));
    EXPECT_TRUE(SettingsStore::DefaultFileName().startsWith('/'));
}
