/// A program to be killed: deletes rows of the account it is given, and says "ready" before and
/// "done" behind it.
///
///     crash_deleter <account file> <table> <option> <symbol>        as numbers of delete_rows.h
///     crash_deleter <account file> <table> <option> <symbol> <n>    dies in the middle of its nth
///                                                                   write to a file
///
/// It takes what is not later than June 30, 2020.

#include "dying_writes.h"

#include "lists/delete_rows.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{

void Say(const char *text)
{
    std::printf("%s\n", text);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Connection account;
    account.Open(QString::fromLocal8Bit(argv[1]));
    const DeleteChoice choice{DeleteTable(std::atoi(argv[2])), DeleteOption(std::atoi(argv[3])),
                              QString::fromLocal8Bit(argv[4]), 0, QDate(2020, 6, 30)};
    Say("ready");
    if (argc > 5)
        DyingWrites::left = std::atol(argv[5]);
    DeleteRows(account, choice);
    Say("done");
    raise(SIGSTOP); // with the account open, as the program has it
}
