#include "read_back.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QProcess>

namespace
{

/// A number as a cell of this format shows it.
QString Shown(double value, const QString &format)
{
    const QDateTime moment =
        QDateTime(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC).addMSecs(qRound64(value * 86400000.0));
    if (format.contains(QLatin1String("yy")))
        return QLatin1Char('@') + moment.date().toString(Qt::ISODate);
    if (format.contains(QLatin1Char('h')))
        return QLatin1Char('@') + moment.time().toString(Qt::ISODate);
    return QLatin1Char('=') + QString::number(value, 'g', 15);
}

} // namespace

ReadBack::ReadBack(const QString &path) : ReadBack(All({path}, "xlrd").front()) {}

std::vector<ReadBack> ReadBack::All(const QStringList &paths, const char *reader)
{
    QProcess process;
    process.start(QStringLiteral("/usr/bin/python3"), // which has the package of the reader
                  QStringList{QStringLiteral(WORKBOOK_READERS "/read_workbook.py"),
                              QString::fromUtf8(reader)} +
                      paths);
    process.waitForFinished(300000);
    EXPECT_EQ(process.exitCode(), 0) << reader;
    EXPECT_EQ(process.readAllStandardError().toStdString(), "");
    std::vector<ReadBack> books;
    for (const QByteArray &line : process.readAllStandardOutput().split('\n')) {
        if (line.startsWith("file "))
            books.push_back(ReadBack());
        else if (!line.isEmpty())
            books.back().AddCell(QString::fromUtf8(line).split(QLatin1Char('\t')));
    }
    EXPECT_EQ(books.size(), size_t(paths.size()));
    while (books.size() < size_t(paths.size()))
        books.push_back(ReadBack());
    return books;
}

/// Sheet, row, column, "text" or "number", value, format.
void ReadBack::AddCell(const QStringList &parts)
{
    constexpr size_t sheetRows = 65536;
    if (parts[0] != m_sheet) {
        m_sheet = parts[0];
        ++m_sheets;
    }
    const size_t row = size_t(m_sheets - 1) * sheetRows + parts[1].toUInt();
    const size_t column = parts[2].toUInt();
    if (m_rows.size() < row)
        m_rows.resize(row);
    std::vector<Cell> &cells = m_rows[row - 1];
    if (cells.size() < column)
        cells.resize(column);
    cells[column - 1] = parts[3] == QLatin1String("text")
                            ? Cell{parts[4], QString()}
                            : Cell{Shown(parts[4].toDouble(), parts[5]), parts[5]};
}

std::vector<std::string> ReadBack::Rows() const
{
    std::vector<std::string> rows;
    for (const std::vector<Cell> &row : m_rows) {
        QStringList cells;
        for (const Cell &cell : row)
            cells << cell.shown;
        rows.push_back(cells.join(QLatin1Char('|')).toStdString());
    }
    return rows;
}

std::string ReadBack::Format(int row, int column) const
{
    if (row < 1 || size_t(row) > m_rows.size())
        return {};
    const std::vector<Cell> &cells = m_rows[size_t(row) - 1];
    if (column < 1 || size_t(column) > cells.size())
        return {};
    return cells[size_t(column) - 1].format.toStdString();
}
