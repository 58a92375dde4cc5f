#pragma once

/// A workbook with a list of what readers are to find in it, and those readers: programs and a library
/// that others wrote (tests/readers/read_workbook.py), and a check of what they pass over
/// (tests/readers/check_workbook.py).
///
///     CheckedBook book("prices");
///     book.Typed(1, 1, "1,234.50", 1234.5, "#,##0.00");
///     book.Save(folder);
///     ExpectCells("xlrd", {&book});

#include "reports/workbook.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <vector>

inline Formats FormatsOf(const char *locale)
{
    return Formats(QLocale(QString::fromLatin1(locale)));
}

class CheckedBook
{
public:
    explicit CheckedBook(const char *name, const Formats &formats = FormatsOf("en_US"));

    void Text(int row, int column, const QString &text);
    /// Set as typed, and stays a text.
    void TypedText(int row, int column, const QString &text);
    void Typed(int row, int column, const QString &text, double value, const char *code);
    template <class Number>
    void Value(int row, int column, Number value, double expected)
    {
        m_book.SetNumber(row, column, value);
        Expect(row, column, {false, expected, QString(), "General"});
    }
    void Empty(int row, int column);
    /// The text that the cell shows is another one than was set.
    void ExpectText(int row, int column, const QString &text);

    /// As "<name>.xls".
    void Save(const QString &folder);
    const QString &Path() const { return m_path; }
    Workbook &Book() { return m_book; }

    /// What a reader that tells so many digits of numbers prints.
    std::vector<QByteArray> Lines(int digits) const;

private:
    struct Cell
    {
        bool IsText;
        double Number;
        QString Text;
        QByteArray Code;
    };
    void Expect(int row, int column, const Cell &cell) { m_cells[{row, column}] = cell; }

    QByteArray m_name;
    Workbook m_book;
    QString m_path;
    std::map<std::pair<int, int>, Cell> m_cells;
};

/// False where "libreoffice" or "gnumeric" is not installed: an ordinary user may be unable to.
bool ReaderIsInstalled(const char *reader);

/// Reads the saved books with "xlrd", "libreoffice" or "gnumeric"; fails the test for every cell that
/// is not as expected, and for whatever the reader complains of.
void ExpectCells(const char *reader, const std::vector<const CheckedBook *> &books);
/// Fails the test for what readers pass over.
void ExpectSoundRecords(const std::vector<const CheckedBook *> &books);
/// What that check says of a file; nothing of one that is as it should be.
QByteArray FaultsOf(const QString &path);
