/// What stands behind the program's name.

#include "shell/command_line.h"

#include "support/print_qt.h"

#include <gtest/gtest.h>

#include <QDir>

namespace
{

CommandLine Read(const QStringList &arguments)
{
    return CommandLine::Read(QStringList{"quillon"} + arguments, "6.0.18");
}

} // namespace

TEST(CommandLine, IsEmptyAsARule)
{
    EXPECT_EQ(Read({}).account, "");
    EXPECT_EQ(Read({}).exitStatus, std::nullopt);
    EXPECT_EQ(Read({""}).account, ""); // a launcher without a file
}

TEST(CommandLine, TellsTheVersion)
{
    for (const char *option : {"-v", "--version"}) {
        EXPECT_EQ(Read({option}).exitStatus, 0);
        EXPECT_EQ(Read({option}).output, "Quillon 6.0.18\n");
    }
}

TEST(CommandLine, TellsItsOptions)
{
    for (const char *option : {"-h", "--help"}) {
        EXPECT_EQ(Read({option}).exitStatus, 0);
        const QString help = Read({option}).output;
        for (const char *word : {"--help", "--version", "account"})
            EXPECT_TRUE(help.contains(word)) << word;
    }
}

TEST(CommandLine, RefusesWhatItDoesNotKnow)
{
    const struct
    {
        QStringList arguments;
        QString reason;
    } wrong[] = {{{"--colour"}, "unknown option \"colour\""},
                 {{"-x", "Broker.mdb"}, "unknown option \"x\""},
                 {{"--style"}, "Missing value after '--style'."},
                 {{"A.mdb", "B.mdb"}, "only one account can be open at a time"}};
    for (const auto &[arguments, reason] : wrong) {
        const CommandLine line = Read(arguments);
        EXPECT_EQ(line.exitStatus, 2) << qPrintable(reason);
        EXPECT_EQ(line.output, "quillon: " + reason + "\nTry \"quillon --help\".\n");
        EXPECT_EQ(line.account, "");
    }
}

TEST(CommandLine, LetsTheDesktopsOwnOptionsPass)
{
    const CommandLine line = Read({"-platform", "xcb", "--style=fusion", "-reverse", "A.mdb"});
    EXPECT_EQ(line.exitStatus, std::nullopt);
    EXPECT_TRUE(line.account.endsWith("/A.mdb"));
}

TEST(CommandLine, TakesAnAccountByAnyPath)
{
    EXPECT_EQ(Read({"/home/ann/Broker X12 é.mdb"}).account, "/home/ann/Broker X12 é.mdb");
    EXPECT_EQ(Read({"sub/Broker.mdb"}).account, QDir::currentPath() + "/sub/Broker.mdb");
    EXPECT_EQ(Read({"--", "-odd name.mdb"}).account, QDir::currentPath() + "/-odd name.mdb");
}
