/// prepare_account ACCOUNT SCRIPT.sql: puts an account into the state that an acceptance test begins
/// with. A further account is a copy of it: VACUUM INTO 'Other.mdb', in the working folder.

#include <sqlite3.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::fputs("usage: prepare_account ACCOUNT SCRIPT.sql\n", stderr);
        return 2;
    }
    std::ifstream script(argv[2]);
    const std::string statements{std::istreambuf_iterator<char>(script), {}};
    sqlite3 *account = nullptr;
    int result = sqlite3_open_v2(argv[1], &account, SQLITE_OPEN_READWRITE, nullptr);
    if (result == SQLITE_OK)
        result = sqlite3_exec(account, statements.c_str(), nullptr, nullptr, nullptr);
    if (result != SQLITE_OK || statements.empty())
        std::fprintf(stderr, "%s: %s\n", argv[2], sqlite3_errmsg(account));
    sqlite3_close(account);
    return result == SQLITE_OK && !statements.empty() ? 0 : 1;
}
