#include "tracker_screen_run.h"

#include "program/list_refresh.h"

namespace
{

class CountingList : public Form, public ListScreen
{
public:
    CountingList(Program &program, int &count)
        : Form(program, "frmHistoryList", "Transaction History", Placement::Child), m_count(count)
    {}
    void RefreshList() override { ++m_count; }

private:
    int &m_count;
};

} // namespace

using RefreshLists = TrackerScreenRun;

TEST_F(RefreshLists, WaitsForNothingWithoutAnOpenList)
{
    Open();
    const QDateTime before = run.clock.Now();
    RefreshListsAfterPosting(State());
    EXPECT_EQ(run.clock.Now(), before);
}

TEST_F(RefreshLists, RefreshesAnOpenListAfterTwoAndAHalfSeconds)
{
    int count = 0;
    run.App().Host().Register("frmHistoryList", [&](Program &program) {
        return std::make_unique<CountingList>(program, count);
    });
    Open();
    State().screens.Show("frmHistoryList");
    const QDateTime before = run.clock.Now();
    RefreshListsAfterPosting(State());
    EXPECT_EQ(count, 1);
    EXPECT_EQ(before.msecsTo(run.clock.Now()), 2500);

    State().entry.RebuildMode = true;
    RefreshListsAfterPosting(State());
    EXPECT_EQ(count, 1);
}
