#include "reports/report_sheet.h"

void Report::WriteHeader(std::initializer_list<Headings> rows)
{
    ReportRow = 0;
    for (const Headings &headings : rows) {
        NextRow();
        int column = 0;
        for (const char *heading : headings)
            SetRaw(++column, heading);
    }
}

void Report::SetDate(int column, QDate date, QStringView pattern)
{
    if (date.isValid())
        ReportSheet.SetTyped(ReportRow, column, formats.FormatDate(date, pattern));
}
