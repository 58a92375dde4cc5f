#pragma once

/// Writes the report that the user asked for, from the options to the finished workbook.
///
///     account "/home/ann/Broker.mdb", Summary      "/home/ann/Summary.xls"
///     Daily Tracker                                a new file in `unsavedFolder` each time
///
/// The workbook is written beside and renamed: when it cannot be written, the one of the report
/// before stays as it was. It is for the user's eyes alone, as the account is. Nothing in the account
/// is changed.

#include "platform/services.h"
#include "reports/report_options.h"
#include "reports/tracker_report.h"
#include "store/databases.h"

/// What a report draws from.
struct ReportWork
{
    Databases &databases;
    const Settings &settings; ///< where the account lies
    Services &services;
    const TrackerContent &tracker; ///< used by the Daily Tracker report alone
    QString unsavedFolder;         ///< for a workbook that the user saves himself, or does not
    bool &ExcelServerFound;        ///< a program took the workbook of the last report to show it
};

/// Posts "Working on report....", writes the workbook and opens it in the user's spreadsheet program,
/// if there is one. False when it could not be written: a box has named the file and the reason.
bool RunReport(ReportWork &work, const ReportChoice &choice);
