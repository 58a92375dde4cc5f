#include "made_files.h"

#include <memory>
#include <stdexcept>

QString DataFolder()
{
    return QStringLiteral(QUILLON_DATA);
}

MadeFiles::MadeFiles(QDate day) : m_day(day)
{
    MakeDeliveredFiles(DataFolder(), m_folder.path(), day);
}

std::vector<std::string> MadeFiles::Rows(const char *file, const char *sql) const
{
    Connection &connection = m_connections[file];
    if (!connection.IsOpen())
        connection.Open(Path(file));
    std::vector<std::string> rows;
    Statement statement = connection.Prepare(QString::fromUtf8(sql));
    while (statement.Step()) {
        std::string row;
        for (int column = 0; column < statement.ColumnCount(); ++column)
            row += (column > 0 ? "|" : "") + statement.Text(column).toStdString();
        rows.push_back(row);
    }
    return rows;
}

std::string MadeFiles::Value(const char *file, const char *sql) const
{
    const std::vector<std::string> rows = Rows(file, sql);
    if (rows.size() != 1)
        throw std::logic_error(std::to_string(rows.size()) + " rows: " + sql);
    return rows.front();
}

std::string MadeFiles::Dump() const
{
    std::string dump;
    for (const QString &name : DeliveredFiles()) {
        const std::string file = name.toStdString();
        dump += file + "\n";
        for (const std::string &sql :
             Rows(file.c_str(), "SELECT sql FROM sqlite_master WHERE sql <> '' ORDER BY name"))
            dump += sql + "\n";
        for (const std::string &table : Rows(
                 file.c_str(), "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"))
            for (const std::string &row :
                 Rows(file.c_str(), ("SELECT rowid, * FROM " + table + " ORDER BY rowid").c_str()))
                dump += table + ": " + row + "\n";
    }
    return dump;
}

const MadeFiles &MadeOn(const char *isoDay)
{
    static std::map<std::string, std::unique_ptr<MadeFiles>> made;
    std::unique_ptr<MadeFiles> &files = made[isoDay];
    if (!files)
        files =
            std::make_unique<MadeFiles>(QDate::fromString(QString::fromUtf8(isoDay), Qt::ISODate));
    return *files;
}
