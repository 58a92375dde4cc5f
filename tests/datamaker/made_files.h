#pragma once

/// The delivered files as of a day, made once for all tests of the program, and what lies in them.
///
///     const MadeFiles &files = MadeOn("2026-11-20");
///     files.Rows("Sample Portfolio.mdb", "SELECT Symbol, Shares FROM DailyTracker")
///                                          {"ARLN|170.0", ...}

#include "datamaker/delivery.h"
#include "store/connection.h"

#include <QTemporaryDir>

#include <map>
#include <string>
#include <vector>

class MadeFiles
{
public:
    explicit MadeFiles(QDate day);

    QDate Day() const { return m_day; }
    QString Path(const char *name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    /// The columns of each row as the file holds them, with bars between.
    std::vector<std::string> Rows(const char *file, const char *sql) const;
    /// The one value that the statement yields.
    std::string Value(const char *file, const char *sql) const;
    /// Tables, columns and rows of all files.
    std::string Dump() const;

private:
    QDate m_day;
    QTemporaryDir m_folder;
    /// Stay open: each first opening and last closing syncs the disk.
    mutable std::map<std::string, Connection> m_connections;
};

const MadeFiles &MadeOn(const char *isoDay);

/// The folder with the text files.
QString DataFolder();
