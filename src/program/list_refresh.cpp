#include "program/list_refresh.h"

#include "program/form.h"

#include <vector>

namespace
{

ListScreen *OpenList(const Screens &screens, const char *form)
{
    return dynamic_cast<ListScreen *>(screens.Find(QString::fromUtf8(form)));
}

/// Those of the account's ledgers.
std::vector<ListScreen *> OpenLists(const Screens &screens)
{
    std::vector<ListScreen *> open;
    for (const char *form : {"frmHistoryList", "frmPurchaseList", "frmDailyProfitLoss"})
        if (ListScreen *list = OpenList(screens, form))
            open.push_back(list);
    return open;
}

} // namespace

void RefreshListsAfterPosting(Program &program)
{
    using namespace std::chrono_literals;
    if (program.entry.RebuildMode || OpenLists(program.screens).empty())
        return;
    program.services.clock.Wait(2500ms);
    RefreshOpenLists(program); // some may have been closed meanwhile
}

void RefreshOpenLists(Program &program)
{
    for (ListScreen *list : OpenLists(program.screens))
        list->RefreshList();
}

void RefreshPriceList(Program &program)
{
    if (ListScreen *list = OpenList(program.screens, "frmHistoricalPriceList"))
        list->RefreshList();
}
