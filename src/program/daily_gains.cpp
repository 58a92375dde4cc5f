#include "program/daily_gains.h"

#include "tracking/daily_balances.h"

void RecordTodaysGains(Program &program)
{
    if (program.AdodcStockHistory.IsOpen())
        UpdateDailySecurityBalance(program.databases.gConnAccount, program.AdodcStockHistory,
                                   program.services.clock.Today(), program.services,
                                   EditorTitle(QStringLiteral("Daily Tracker")));
}
