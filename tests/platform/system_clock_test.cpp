/// The machine's clock keeps the same rules as the one that stands still.

#include "platform/system_clock.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(SystemClock, TicksWhileItWaits)
{
    SystemClock clock;
    int ticks = 0;
    const auto timer = clock.CreateTimer([&ticks] { ++ticks; });
    timer->SetInterval(5ms);
    clock.Wait(30ms);
    EXPECT_EQ(ticks, 0); // timers start disabled
    timer->SetEnabled(true);
    EXPECT_TRUE(timer->Enabled());
    clock.Wait(200ms);
    EXPECT_GE(ticks, 2);
    timer->SetEnabled(false);
    ticks = 0;
    clock.Wait(30ms);
    EXPECT_EQ(ticks, 0);
}

TEST(SystemClock, WaitsAtLeastAsLongAsItIsAsked)
{
    SystemClock clock;
    const QDateTime before = clock.Now();
    clock.Wait(60ms);
    EXPECT_GE(before.msecsTo(clock.Now()), 50);
}

TEST(SystemClock, KeepsATimerWithoutIntervalQuiet)
{
    SystemClock clock;
    int ticks = 0;
    const auto timer = clock.CreateTimer([&ticks] { ++ticks; });
    timer->SetEnabled(true);
    clock.Wait(20ms);
    EXPECT_EQ(ticks, 0);
    timer->SetInterval(1ms);
    clock.Wait(100ms);
    EXPECT_GE(ticks, 1);
}

TEST(SystemClock, LetsARunningTimerRunOnWhenItIsEnabledAgain)
{
    SystemClock clock;
    int ticks = 0;
    const auto timer = clock.CreateTimer([&ticks] { ++ticks; });
    timer->SetInterval(100ms);
    timer->SetEnabled(true);
    for (int i = 0; i < 10 && ticks == 0; ++i) {
        clock.Wait(30ms);
        timer->SetEnabled(true);
    }
    EXPECT_GE(ticks, 1);
}

TEST(SystemClock, LetsATickDropItsOwnTimer)
{
    SystemClock clock;
    int ticks = 0;
    std::unique_ptr<ClockTimer> timer = clock.CreateTimer([&] {
        ++ticks;
        timer.reset();
    });
    timer->SetInterval(1ms);
    timer->SetEnabled(true);
    clock.Wait(50ms);
    EXPECT_EQ(ticks, 1);
}

TEST(SystemClock, WaitsUntilWhatItWaitsForHasHappened)
{
    SystemClock clock;
    int ticks = 0;
    const auto timer = clock.CreateTimer([&ticks] { ++ticks; });
    timer->SetInterval(5ms);
    timer->SetEnabled(true);
    EXPECT_TRUE(clock.WaitUntil([&ticks] { return ticks == 3; }, 60s));
    EXPECT_EQ(ticks, 3); // looked at after each of them
}

TEST(SystemClock, WaitsForNothingThatHoldsAlready)
{
    SystemClock clock;
    EXPECT_TRUE(clock.WaitUntil([] { return true; }, 0ms));
    EXPECT_FALSE(clock.WaitUntil([] { return false; }, 0ms));
}

TEST(SystemClock, GivesUpAWaitAtItsLimit)
{
    SystemClock clock;
    int ticks = 0;
    const auto timer = clock.CreateTimer([&ticks] { ++ticks; });
    timer->SetInterval(5ms);
    timer->SetEnabled(true);
    const QDateTime before = clock.Now();
    EXPECT_FALSE(clock.WaitUntil([] { return false; }, 100ms));
    EXPECT_GE(before.msecsTo(clock.Now()), 90);
    EXPECT_GE(ticks, 2); // events were handled, and did not put the end off
}

TEST(SystemClock, FindsWhatHappenedWhileABoxWasOpenBeyondTheLimit)
{
    SystemClock clock;
    bool done = false;
    std::unique_ptr<ClockTimer> box = clock.CreateTimer([&] {
        box->SetEnabled(false);
        clock.Wait(60ms);
        done = true;
    });
    box->SetInterval(1ms);
    box->SetEnabled(true);
    EXPECT_TRUE(clock.WaitUntil([&done] { return done; }, 20ms));
}
