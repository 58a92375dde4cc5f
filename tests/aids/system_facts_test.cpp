/// What is told of the system.

#include "aids/system_facts.h"
#include "support/print_qt.h"
#include "support/test_app_folder.h"

#include <gtest/gtest.h>

#include <QDir>

#include <sqlite3.h>
#include <sys/utsname.h>

namespace
{

QString ValueOf(const QList<SystemFact> &facts, const QString &name)
{
    for (const SystemFact &fact : facts)
        if (fact.name == name)
            return fact.value;
    return QStringLiteral("(none)");
}

} // namespace

TEST(SystemFacts, TellTheMemoryAsTheKernelCountsIt)
{
    // 16303428 kB / 1024 / 1024 = 15.548 GiB; 9646899 kB = 9.2 GiB
    EXPECT_EQ(MemoryText("MemTotal:       16303428 kB\nMemFree:  1 kB\nMemAvailable: 9646899 kB\n"),
              "15.5 GiB, 9.2 GiB of it free");
}

TEST(SystemFacts, TellNoMemoryThatTheKernelDoesNotTell)
{
    EXPECT_EQ(MemoryText(""), "");
    EXPECT_EQ(MemoryText("MemTotal: much\n"), "");
}

TEST(SystemFacts, TellTheKernelAndTheProcessor)
{
    const TestAppFolder folder;
    QDir(folder.Path()).mkdir("proc");
    folder.AddFile("proc/cpuinfo",
                   "processor\t: 0\nmodel name\t: Swift 9000\nmodel name\t: Other\n");
    folder.AddFile("proc/meminfo", "MemTotal: 2097152 kB\nMemAvailable: 1048576 kB\n");
    const QList<SystemFact> facts = ReadSystemFacts(folder.Path(), folder.File("proc"));
    utsname kernel;
    ASSERT_EQ(uname(&kernel), 0);
    EXPECT_TRUE(ValueOf(facts, "Kernel").contains(kernel.release));
    EXPECT_TRUE(ValueOf(facts, "Processor").endsWith("Swift 9000"));
    EXPECT_EQ(ValueOf(facts, "Memory"), "2.0 GiB, 1.0 GiB of it free");
    EXPECT_NE(ValueOf(facts, "Operating system"), "(none)");
    EXPECT_TRUE(ValueOf(facts, "Disk").contains("GiB"));
}

TEST(SystemFacts, LeaveOutWhatCannotBeRead)
{
    const TestAppFolder folder;
    const QList<SystemFact> facts = ReadSystemFacts(folder.File("gone"), folder.File("gone"));
    EXPECT_EQ(ValueOf(facts, "Memory"), "(none)");
    EXPECT_EQ(ValueOf(facts, "Disk"), "(none)");
    for (const SystemFact &fact : facts)
        EXPECT_FALSE(fact.value.isEmpty()) << qPrintable(fact.name);
}

TEST(SystemFacts, DoNotNameTheMachine)
{
    utsname kernel;
    ASSERT_EQ(uname(&kernel), 0);
    const QString name = QString::fromLocal8Bit(kernel.nodename);
    for (const SystemFact &fact : ReadSystemFacts("/"))
        EXPECT_FALSE(!name.isEmpty() && fact.value.split(' ').contains(name))
            << qPrintable(fact.value);
}

TEST(ProgramFacts, TellTheVersionsAndTheApplicationFolder)
{
    const QList<SystemFact> facts = ReadProgramFacts("/opt/quillon");
    EXPECT_EQ(ValueOf(facts, "Program"), "Quillon " QUILLON_VERSION);
    EXPECT_EQ(ValueOf(facts, "Application folder"), "/opt/quillon");
    EXPECT_TRUE(ValueOf(facts, "Qt").startsWith(qVersion()));
    EXPECT_EQ(ValueOf(facts, "SQLite"), sqlite3_libversion());
}

TEST(FactsText, SetsTheValuesOneBelowTheOther)
{
    EXPECT_EQ(FactsText({{"Kernel", "Linux"}, {"Qt", "6.4"}}), "Kernel  Linux\nQt      6.4\n");
    EXPECT_EQ(FactsText({}), "");
}
