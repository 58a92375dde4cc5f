#pragma once

/// An account for the tests of reports: a real file, filled row by row, and the workbook of a report
/// read back from the disk.
///
///     ReportAccount account;
///     account.History("ACME", "Bought", "100", "10", "-1005", "2026-01-05", "-5");
///     account.History("ACME", "Sold", "-100", "12", "1195", "2026-03-02", "-5");
///     account.Rows(WriteSummary, ReportChoice())

#include "read_back.h"

#include "reports/report_options.h"
#include "reports/report_sheet.h"
#include "store/connection.h"
#include "support/account_file.h"

#include <gtest/gtest.h>

inline QLocale English()
{
    return QLocale(QLocale::English, QLocale::UnitedStates);
}

class ReportAccount
{
public:
    ReportAccount() { account.Open(m_file.Path()); }

    /// `name` is the symbol and " Inc." unless given; rows of a day have one time.
    ReportAccount &History(const QString &symbol, const QString &description, const char *shares,
                           const char *price, const char *amount, const char *date,
                           const char *cost = "0", const char *time = "10:00:00",
                           const QString &name = {})
    {
        account.Execute(
            QStringLiteral("INSERT INTO History (Symbol, Name, Description, Shares, "
                           "TransactionCost, Price, Amount, TransDate, Time) VALUES (?, ?, ?, ?, "
                           "?, ?, ?, ?, ?)"),
            symbol, name.isEmpty() ? symbol + QStringLiteral(" Inc.") : name, description,
            Single::FromDouble(QByteArray(shares).toDouble()), Currency(cost), Currency(price),
            Currency(amount), Day(date),
            QTime::fromString(QString::fromUtf8(time), QStringLiteral("hh:mm:ss")));
        return *this;
    }
    ReportAccount &ProfitLoss(const QString &symbol, const char *amount, const char *date,
                              const char *time = "10:00:00")
    {
        account.Execute(
            QStringLiteral("INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, "
                           "Time) VALUES (?, ?, ?, ?, ?)"),
            symbol, symbol + QStringLiteral(" Inc."), Currency(amount), Day(date),
            QTime::fromString(QString::fromUtf8(time), QStringLiteral("hh:mm:ss")));
        return *this;
    }
    ReportAccount &Balance(const QString &track, const char *amount, const char *date)
    {
        account.Execute(QStringLiteral("INSERT INTO PortfolioDailyBalance VALUES (?, ?, ?, ?)"),
                        Currency(amount), Day(date), QTime(16, 0), track);
        return *this;
    }

    static QDate Day(const char *date)
    {
        return QDate::fromString(QString::fromUtf8(date), Qt::ISODate);
    }
    static ReportChoice Of(ReportKind kind)
    {
        ReportChoice choice;
        choice.kind = kind;
        return choice;
    }

    /// Writes the report and reads its workbook back.
    template <class Writer>
    ReadBack Read(const Writer &write, const QLocale &locale = English()) const
    {
        const Formats formats(locale);
        Report report(formats);
        write(report);
        const QString path = m_file.In("Report.xls");
        report.ReportSheet.Save(path);
        return ReadBack(path);
    }
    template <class Writer>
    std::vector<std::string> Rows(Writer write, const ReportChoice &choice) const
    {
        return Read([&](Report &report) { write(report, account, choice); }).Rows();
    }

    const AccountFile &File() const { return m_file; }

private:
    AccountFile m_file;

public:
    Connection account;
};

using Lines = std::vector<std::string>;
