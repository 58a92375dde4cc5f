#pragma once

/// A workbook file as a reader that others wrote sees it (tests/readers/read_workbook.py).
///
///     const ReadBack book(path);
///     book.Rows()             {"DATE|SECURITY|PRICE", "@2026-03-02|ACME|=1234.57"}
///     book.Format(2, 3)       "#,##0.00"
///
/// A cell of Rows is a text as it is, a number behind "=", a date or a time behind "@"; empty cells at
/// the end of a row are left out, and so are empty rows behind the last one. The rows of all sheets
/// follow each other.

#include <QStringList>

#include <string>
#include <vector>

class ReadBack
{
public:
    /// Fails the test when the reader complains.
    explicit ReadBack(const QString &path);
    /// Several files at once, by "xlrd", "libreoffice" or "gnumeric"; no two bear the same name.
    static std::vector<ReadBack> All(const QStringList &paths, const char *reader);

    std::vector<std::string> Rows() const;
    /// Rows and columns count from 1; empty for a text and for what is not there.
    std::string Format(int row, int column) const;
    int Sheets() const { return m_sheets; }

private:
    ReadBack() = default;
    void AddCell(const QStringList &parts);

    struct Cell
    {
        QString shown;
        QString format;
    };
    std::vector<std::vector<Cell>> m_rows;
    int m_sheets = 0;
    QString m_sheet; ///< the last one
};
