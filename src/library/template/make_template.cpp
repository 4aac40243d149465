// Makes the empty score library from its SQL texts: make_template OUT SQL...
// It runs while the program is built, so it needs nothing of ours but the list of indexes.
#include <sqlite3.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "library/template/Indexes.h"

namespace {

bool run(sqlite3* db, const char* from, const char* sql)
{
    char* message = nullptr;
    if (sqlite3_exec(db, sql, nullptr, nullptr, &message) == SQLITE_OK)
        return true;
    std::fprintf(stderr, "%s: %s\n", from, message);
    sqlite3_free(message);
    return false;
}

bool runFile(sqlite3* db, const char* path)
{
    const std::ifstream in(path);
    std::ostringstream text;
    text << in.rdbuf();
    if (!in)
        std::fprintf(stderr, "%s: cannot be read\n", path);
    return in && run(db, path, text.str().c_str());
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: make_template OUT SQL...\n");
        return 2;
    }
    std::remove(argv[1]);
    sqlite3* db = nullptr;
    bool good = sqlite3_open(argv[1], &db) == SQLITE_OK;
    for (int i = 2; good && i < argc; ++i)
        good = runFile(db, argv[i]);
    for (const char* index : library::indexes)
        good = good && run(db, "index", index);
    good = sqlite3_close(db) == SQLITE_OK && good;
    if (!good)
        std::remove(argv[1]);
    return good ? 0 : 1;
}
