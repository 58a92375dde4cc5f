#pragma once

/// The plan of the sample portfolio, as data/sample_portfolio.json tells it: what is traded, when
/// and how much. Days are counted back from the day of the build, prices come from the practice
/// market.
///
///     {"daysBack": 3, "time": "15:25", "action": "Sell", "symbol": "CPRQ", "shares": "20"}
///     {"daysBack": 0, "time": "09:40", "action": "Deposit", "amount": "2,500.00"}
///     {"daysBack": 9, "time": "09:20", "action": "Split", "symbol": "FSKR",
///                                                  "newShares": 2, "oldShares": 1}

#include "base/currency.h"
#include "transactions/action.h"

#include <QDate>
#include <QMap>
#include <QString>

#include <vector>

class QJsonDocument;

struct SampleSecurity
{
    QString Symbol;
    QString Name;
    QString SecurityType;
    QMap<QString, double> Classes; ///< share of each asset class; 1 is all of it
};

struct SampleTransaction
{
    int DaysBack = 0; ///< weekdays before the latest weekday of the build
    QTime Time;
    Action Kind = Action::Buy;
    QString Symbol;    ///< empty for a cash action
    QString Count;     ///< shares, or the amount of a cash action, as typed
    int NewShares = 0; ///< of a split
    int OldShares = 0;
};

struct SamplePlan
{
    Currency Balance; ///< of the new account
    QString CommissionStyle;
    Currency CommissionCost;
    Currency CommissionPerShare;
    QString QuoteSite;
    std::vector<SampleSecurity> Securities;
    std::vector<SampleTransaction> Transactions; ///< in order of time
};

/// A JSON file of the data folder. Throws RuntimeError when it is missing or no JSON.
QJsonDocument ReadJson(const QString &path);

/// Throws RuntimeError that names what is wrong: an unknown action, symbol or type, a time that is
/// none, transactions that are out of order.
SamplePlan ReadSamplePlan(const QString &path);

/// `count` weekdays before the day, or before the Friday when the day is a Saturday or Sunday.
QDate WeekdaysBefore(QDate day, int count);
