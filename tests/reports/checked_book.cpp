#include "checked_book.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>

#include <cstdio>
#include <cstring>

namespace
{

struct ScriptOutput
{
    int Status = -1;
    QByteArray Lines;
    QByteArray Complaints;
};

/// Runs a script of tests/readers.
ScriptOutput RunScript(const char *script, QStringList arguments)
{
    constexpr int Minute = 60 * 1000;
    // The system's own, to which the package of the library belongs.
    const QString python = QStringLiteral("/usr/bin/python3");
    arguments.prepend(QStringLiteral(WORKBOOK_READERS "/") + QString::fromLatin1(script));
    QProcess process;
    process.start(python, arguments);
    if (!process.waitForFinished(5 * Minute)) {
        ADD_FAILURE() << script << " did not run: " << process.errorString().toStdString();
        return ScriptOutput();
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

void ExpectNoComplaints(const ScriptOutput &output)
{
    EXPECT_EQ(output.Complaints.toStdString(), "");
    EXPECT_EQ(output.Status, 0);
}

QStringList PathsOf(const std::vector<const CheckedBook *> &books)
{
    QStringList paths;
    for (const CheckedBook *book : books)
        paths.append(book->Path());
    return paths;
}

} // namespace

CheckedBook::CheckedBook(const char *name, const Formats &formats) : m_name(name), m_book(formats)
{}

void CheckedBook::Text(int row, int column, const QString &text)
{
    m_book.SetText(row, column, text);
    ExpectText(row, column, text);
}

void CheckedBook::TypedText(int row, int column, const QString &text)
{
    m_book.SetTyped(row, column, text);
    ExpectText(row, column, text);
}

void CheckedBook::Typed(int row, int column, const QString &text, double value, const char *code)
{
    m_book.SetTyped(row, column, text);
    Expect(row, column, {false, value, QString(), code});
}

void CheckedBook::Empty(int row, int column)
{
    m_book.SetText(row, column, QString());
    m_cells.erase({row, column});
}

void CheckedBook::ExpectText(int row, int column, const QString &text)
{
    Expect(row, column, {true, 0, text, "General"});
}

void CheckedBook::Save(const QString &folder)
{
    m_path = folder + u'/' + QString::fromLatin1(m_name) + QStringLiteral(".xls");
    m_book.Save(m_path);
}

std::vector<QByteArray> CheckedBook::Lines(int digits) const
{
    constexpr int SheetRows = 65536;
    std::vector<QByteArray> lines;
    lines.reserve(m_cells.size() + 1);
    lines.push_back("file " + m_name + ".xls");
    for (const auto &[place, cell] : m_cells) {
        const auto [row, column] = place;
        QByteArray value;
        if (cell.IsText) {
            value = cell.Text.toUtf8();
            value.replace('\\', "\\\\").replace('\t', "\\t");
            value.replace('\n', "\\n").replace('\r', "\\r");
        } else {
            char buffer[64];
            std::snprintf(buffer, sizeof buffer, "%.*g", digits, cell.Number);
            value = buffer;
        }
        lines.push_back("Sheet" + QByteArray::number((row - 1) / SheetRows + 1) + '\t' +
                        QByteArray::number((row - 1) % SheetRows + 1) + '\t' +
                        QByteArray::number(column) + (cell.IsText ? "\ttext\t" : "\tnumber\t") +
                        value + '\t' + cell.Code);
    }
    return lines;
}

bool ReaderIsInstalled(const char *reader)
{
    const bool isLibreOffice = std::strcmp(reader, "libreoffice") == 0;
    const char *program = isLibreOffice ? "soffice" : "ssconvert";
    return !QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty();
}

void ExpectCells(const char *reader, const std::vector<const CheckedBook *> &books)
{
    SCOPED_TRACE(reader);
    const ScriptOutput output =
        RunScript("read_workbook.py", QStringList(QString::fromLatin1(reader)) + PathsOf(books));
    ExpectNoComplaints(output);
    QList<QByteArray> found = output.Lines.split('\n');
    found.removeLast(); // behind the last line's end
    std::vector<QByteArray> expected;
    for (const CheckedBook *book : books) {
        const auto lines = book->Lines(std::strcmp(reader, "libreoffice") == 0 ? 15 : 17);
        expected.insert(expected.end(), lines.begin(), lines.end());
    }
    constexpr int MostShown = 10;
    int shown = 0;
    const auto line = [](const auto &lines, std::size_t at) {
        return at < std::size_t(lines.size()) ? lines[decltype(lines.size())(at)]
                                              : QByteArray("(nothing)");
    };
    const std::size_t count = std::max(expected.size(), std::size_t(found.size()));
    for (std::size_t at = 0; at < count && shown < MostShown; ++at) {
        if (line(found, at) == line(expected, at))
            continue;
        ++shown;
        ADD_FAILURE() << "line " << at << ": " << line(found, at).left(200).toStdString()
                      << "\n   instead of " << line(expected, at).left(200).toStdString();
    }
}

void ExpectSoundRecords(const std::vector<const CheckedBook *> &books)
{
    ExpectNoComplaints(RunScript("check_workbook.py", PathsOf(books)));
}

QByteArray FaultsOf(const QString &path)
{
    const ScriptOutput output = RunScript("check_workbook.py", {path});
    EXPECT_EQ(output.Status, output.Complaints.isEmpty() ? 0 : 1);
    return output.Complaints;
}
