/// Where a run finds its files, and the user's folder as first and later starts leave it.

#include "shell/application_folder.h"

#include "shell/app_lifetime.h"
#include "shell/shell_run.h"
#include "support/full_disk.h"
#include "support/print_qt.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <thread>

namespace
{

const QString ToShare = QStringLiteral("../../share/quillon");
const QByteArray Drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'>"
                           "<path d='M0 0h8v8H0'/></svg>";

void Write(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    file.write(content);
}

QByteArray Content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

/// What the owner, the group and the others may do: 0700.
int Mode(const QString &path)
{
    const QFile::Permissions may = QFile::permissions(path);
    int mode = 0;
    for (const auto &[permission, bit] : {std::pair{QFile::ReadOwner, 0400},
                                          {QFile::WriteOwner, 0200},
                                          {QFile::ExeOwner, 0100},
                                          {QFile::ReadGroup, 0040},
                                          {QFile::WriteGroup, 0020},
                                          {QFile::ExeGroup, 0010},
                                          {QFile::ReadOther, 0004},
                                          {QFile::WriteOther, 0002},
                                          {QFile::ExeOther, 0001}})
        mode |= may & permission ? bit : 0;
    return mode;
}

/// An installation below a folder with a blank and an accent in its name, and a user's home.
class Installed : public testing::Test
{
protected:
    Installed()
    {
        Write(Share("Template.xxx"), "template");
        Write(Share("ApplControl.xxx"), "control template");
        Write(Share("HistPrices.mdb"), "prices");
        Write(Share("Sample Portfolio.mdb"), "sample");
        Write(Share("WebSites.mdb"), "sites");
        Write(Share("TIPOFDAY.TXT"), "a tip");
        Write(Share("icons/New.svg"), Drawing);
        Write(Share("help/AboutQuillon.htm"), "topic");
        QDir().mkpath(root.filePath("Prog été/lib/quillon"));
    }

    QString Share(const QString &name) const
    {
        return root.filePath("Prog été/share/quillon/") + name;
    }
    QString Own(const QString &name = {}) const
    {
        return root.filePath("home/an ä/.local/share/Quillon") +
               (name.isEmpty() ? name : '/' + name);
    }
    ApplicationFolder Find() const
    {
        return ApplicationFolder::Find(root.filePath("Prog été/lib/quillon"), ToShare,
                                       root.filePath("home/an ä/.local/share"));
    }
    void Start() const { Find().Complete(); }

    QTemporaryDir root;
};

using ApplicationFolderTest = Installed;

} // namespace

TEST_F(ApplicationFolderTest, IsTheUsersForAnInstalledProgram)
{
    const ApplicationFolder folder = Find();
    EXPECT_TRUE(folder.isPerUser);
    EXPECT_EQ(folder.appPath, Own());
    EXPECT_EQ(folder.programPath, root.filePath("Prog été/share/quillon"));
    EXPECT_EQ(QFileInfo(folder.appPath).fileName(), "Quillon"); // the name that a restore looks for
    EXPECT_FALSE(QFileInfo::exists(Own()));                     // nothing is made by looking
}

TEST_F(ApplicationFolderTest, IsThatOfTheExecutableOnAStickOrInTheTree)
{
    Write(root.filePath("stick/Template.xxx"), "template");
    // An installation that could be found from there does not count.
    const ApplicationFolder folder = ApplicationFolder::Find(
        root.filePath("stick/"), "../Prog été/share/quillon", root.filePath("home"));
    EXPECT_FALSE(folder.isPerUser);
    EXPECT_EQ(folder.appPath, root.filePath("stick"));
    EXPECT_EQ(folder.programPath, root.filePath("stick"));
    folder.Complete();
    EXPECT_EQ(QDir(root.filePath("stick")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"Template.xxx"});
    EXPECT_FALSE(QFileInfo::exists(root.filePath("home")));
}

TEST_F(ApplicationFolderTest, IsThatOfTheExecutableWhenNothingIsDeliveredAnywhere)
{
    QFile::remove(Share("Template.xxx"));
    EXPECT_FALSE(Find().isPerUser);
    EXPECT_EQ(Find().appPath, root.filePath("Prog été/lib/quillon"));
}

TEST_F(ApplicationFolderTest, IsMadeAtTheFirstStartForTheUserAlone)
{
    Start();
    const QDir own(Own());
    EXPECT_EQ(own.entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
              QStringList({"ApplControl.xxx", "HistPrices.mdb", "Sample Portfolio.mdb",
                           "TIPOFDAY.TXT", "Template.xxx", "WebSites.mdb"}));
    for (const QString &name : own.entryList(QDir::Files)) {
        EXPECT_EQ(Content(Own(name)), Content(Share(name))) << qPrintable(name);
        EXPECT_EQ(Mode(Own(name)), 0600) << qPrintable(name);
    }
    EXPECT_EQ(Mode(Own()), 0700);
    EXPECT_EQ(Mode(root.filePath("home/an ä/.local")), 0700);
}

TEST_F(ApplicationFolderTest, CanBeWrittenToWhenTheInstalledFilesCannot)
{
    QFile::setPermissions(Share("WebSites.mdb"), QFile::ReadOwner | QFile::ReadOther);
    Start();
    EXPECT_EQ(Mode(Own("WebSites.mdb")), 0600);
}

TEST_F(ApplicationFolderTest, KeepsWhatIsThereWhateverAnUpdateDelivers)
{
    Start();
    Write(Own("Sample Portfolio.mdb"), "a year of trades");
    Write(Own("My Broker.mdb"), "more trades");
    QFile::setPermissions(Own("TIPOFDAY.TXT"), QFile::ReadOwner | QFile::ReadGroup);
    for (const char *name : {"Sample Portfolio.mdb", "TIPOFDAY.TXT", "Template.xxx"})
        Write(Share(name), "the update's");
    Start();
    EXPECT_EQ(Content(Own("Sample Portfolio.mdb")), "a year of trades");
    EXPECT_EQ(Content(Own("My Broker.mdb")), "more trades");
    EXPECT_EQ(Content(Own("TIPOFDAY.TXT")), "a tip");
    EXPECT_EQ(Mode(Own("TIPOFDAY.TXT")), 0440);
    EXPECT_EQ(Content(Own("Template.xxx")), "template");
}

TEST_F(ApplicationFolderTest, GetsWhatAnUpdateAddsAndWhatWasLost)
{
    Start();
    Write(Share("Addresses.json"), "new");
    for (const char *name : {"TIPOFDAY.TXT", "WebSites.mdb", "ApplControl.xxx"})
        QFile::remove(Own(name));
    Start();
    EXPECT_EQ(Content(Own("Addresses.json")), "new");
    EXPECT_EQ(Content(Own("TIPOFDAY.TXT")), "a tip");
    EXPECT_EQ(Content(Own("WebSites.mdb")), "sites");
    EXPECT_EQ(Content(Own("ApplControl.xxx")), "control template");
}

TEST_F(ApplicationFolderTest, GetsNoAccountAndNoPricesBackThatTheUserDeleted)
{
    Start();
    QFile::remove(Own("Sample Portfolio.mdb"));
    QFile::remove(Own("HistPrices.mdb"));
    Start();
    EXPECT_FALSE(QFileInfo::exists(Own("Sample Portfolio.mdb")));
    EXPECT_FALSE(QFileInfo::exists(Own("HistPrices.mdb")));
}

TEST_F(ApplicationFolderTest, MayBeMadeByTheUserBeforeTheFirstStart)
{
    Write(Own("My Broker.mdb"), "trades");
    Start();
    EXPECT_EQ(Content(Own("My Broker.mdb")), "trades");
    EXPECT_EQ(Content(Own("Sample Portfolio.mdb")), "sample");
}

TEST_F(ApplicationFolderTest, KeepsALinkEvenIntoADriveThatIsNotThere)
{
    Start();
    QFile::remove(Own("WebSites.mdb"));
    ASSERT_TRUE(QFile::link(root.filePath("gone/WebSites.mdb"), Own("WebSites.mdb")));
    Start();
    EXPECT_TRUE(QFileInfo(Own("WebSites.mdb")).isSymLink());
    EXPECT_FALSE(QFileInfo::exists(root.filePath("gone")));
}

TEST_F(ApplicationFolderTest, MayBeALinkToAnotherDrive)
{
    QDir().mkpath(root.filePath("drive"));
    QDir().mkpath(QFileInfo(Own()).absolutePath());
    ASSERT_TRUE(QFile::link(root.filePath("drive"), Own()));
    Start();
    EXPECT_EQ(Content(root.filePath("drive/Template.xxx")), "template");
}

TEST_F(ApplicationFolderTest, LeavesIconsAndHelpWhereTheyWereInstalled)
{
    Write(Share("icons/quillon.svg"), Drawing);
    TestAppFolder folder; // without icons and help of its own
    SimulatedClock clock(QDateTime(QDate(2026, 3, 2), QTime(10, 15)));
    ScriptedBoxes boxes;
    ProcessLifetime lifetime;
    Application application(clock, boxes, lifetime, folder.SettingsFile(),
                            ApplicationFolder{folder.Path(), Find().programPath, true},
                            QLocale(QLocale::English));
    EXPECT_FALSE(application.MainWindow().windowIcon().isNull());
    application.Host().ShowHelp("AboutQuillon.htm");
    EXPECT_EQ(application.MainWindow().Status().PanelText(1), ""); // not "... was not found"
}

TEST_F(ApplicationFolderTest, TellsThatItCannotBeMade)
{
    Write(root.filePath("home/an ä/.local"), "a file where a folder belongs");
    try {
        Start();
        FAIL();
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), RuntimeError::PathAccessNumber);
        EXPECT_TRUE(error.Description().contains(root.filePath("home/an ä/.local")));
    }
}

TEST_F(ApplicationFolderTest, HoldsWholeFilesOnlyAfterADiskFilledUpAndIsCompletedLater)
{
    Write(Share("Sample Portfolio.mdb"), QByteArray(40000, 's'));
    {
        const FullDisk full(20000);
        EXPECT_THROW(Start(), RuntimeError);
    }
    EXPECT_EQ(QDir(Own()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
              QStringList({"ApplControl.xxx", "HistPrices.mdb"})); // in order, up to the large one
    Start();
    EXPECT_EQ(QFileInfo(Own("Sample Portfolio.mdb")).size(), 40000);
    EXPECT_EQ(Content(Own("Template.xxx")), "template");
}

TEST_F(ApplicationFolderTest, IsMadeOnceByTwoProgramsThatStartAtTheSameTime)
{
    Write(Share("Sample Portfolio.mdb"), QByteArray(3 << 20, 's'));
    std::thread other([this] { Start(); });
    Start();
    EXPECT_EQ(QFileInfo(Own("Sample Portfolio.mdb")).size(), 3 << 20);
    other.join();
    EXPECT_EQ(QFileInfo(Own("Sample Portfolio.mdb")).size(), 3 << 20);
    EXPECT_EQ(QDir(Own()).entryList({"*.new"}), QStringList());
}
