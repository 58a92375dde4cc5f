/// The clock that stands still: jumps, ticks in order, timers made and dropped inside ticks, waits.

#include "platform/simulated_clock.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QStringList>

using namespace std::chrono_literals;

namespace
{

const QDateTime Start(QDate(2026, 3, 2), QTime(10, 15));

class StandingClock : public testing::Test
{
protected:
    /// A running timer that notes its name and the time of each tick: "a 10:16:05".
    std::unique_ptr<ClockTimer> Timer(const QString &name, std::chrono::milliseconds interval,
                                      std::function<void()> more = {})
    {
        std::unique_ptr<ClockTimer> timer = m_clock.CreateTimer([this, name, more] {
            m_log << name + " " + m_clock.TimeOfDay().toString("HH:mm:ss");
            if (more)
                more();
        });
        timer->SetInterval(interval);
        timer->SetEnabled(true);
        return timer;
    }
    QStringList Log() { return std::exchange(m_log, {}); }

    SimulatedClock m_clock{Start};
    QStringList m_log;
};

} // namespace

TEST_F(StandingClock, StandsStill)
{
    EXPECT_EQ(m_clock.Now(), Start);
    EXPECT_EQ(m_clock.Today(), QDate(2026, 3, 2));
    EXPECT_EQ(m_clock.TimeOfDay(), QTime(10, 15));
    m_clock.Yield();
    EXPECT_EQ(m_clock.Now(), Start);
}

TEST_F(StandingClock, FiresNothingForAJump)
{
    const auto timer = Timer("a", 65s);
    m_clock.Set(Start.addDays(1));
    EXPECT_TRUE(Log().isEmpty());
    EXPECT_EQ(m_clock.Now(), Start.addDays(1));
    m_clock.Advance(64s);
    EXPECT_TRUE(Log().isEmpty());
    m_clock.Advance(1s);
    EXPECT_EQ(Log(), QStringList("a 10:16:05"));
}

TEST_F(StandingClock, GoesOnTickingAfterAJumpBack)
{
    const auto timer = Timer("a", 65s);
    m_clock.Set(Start.addDays(-1));
    m_clock.Advance(65s);
    EXPECT_EQ(Log(), QStringList("a 10:16:05"));
}

TEST_F(StandingClock, FiresEachTickAtItsOwnTimeInOrder)
{
    const auto slow = Timer("slow", 50s);
    const auto quick = Timer("quick", 20s);
    m_clock.Advance(60s);
    EXPECT_EQ(Log(),
              QStringList({"quick 10:15:20", "quick 10:15:40", "slow 10:15:50", "quick 10:16:00"}));
    EXPECT_EQ(m_clock.TimeOfDay(), QTime(10, 16));
}

TEST_F(StandingClock, BreaksTiesByTheOrderOfCreation)
{
    const auto first = Timer("first", 65s);
    const auto second = Timer("second", 65s);
    m_clock.Advance(130s);
    EXPECT_EQ(Log(), QStringList({"first 10:16:05", "second 10:16:05", "first 10:17:10",
                                  "second 10:17:10"}));
}

TEST_F(StandingClock, TicksOnTheSecondItIsMovedToNotBefore)
{
    const auto timer = Timer("a", 65s);
    m_clock.Advance(64999ms);
    EXPECT_TRUE(Log().isEmpty());
    m_clock.Advance(1ms);
    EXPECT_EQ(Log().size(), 1);
}

TEST_F(StandingClock, FiresOverMidnightOnTheNewDay)
{
    m_clock.Set(QDateTime(QDate(2028, 2, 28), QTime(23, 59, 30)));
    QDate day;
    const auto timer = Timer("a", 30s, [this, &day] { day = m_clock.Today(); });
    m_clock.Advance(30s);
    EXPECT_EQ(day, QDate(2028, 2, 29));
    EXPECT_EQ(Log(), QStringList("a 00:00:00"));
}

TEST_F(StandingClock, KeepsADisabledTimerAndOneWithoutIntervalQuiet)
{
    const auto disabled = Timer("disabled", 10s);
    disabled->SetEnabled(false);
    EXPECT_FALSE(disabled->Enabled());
    const auto without = Timer("without", 0s);
    EXPECT_TRUE(without->Enabled());
    m_clock.Advance(60s);
    EXPECT_TRUE(Log().isEmpty());
}

TEST_F(StandingClock, BeginsTheIntervalWhenATimerIsEnabledNotWhenItIsEnabledAgain)
{
    const auto timer = Timer("a", 10s);
    timer->SetEnabled(false);
    m_clock.Advance(5s);
    timer->SetEnabled(true); // due at :15
    m_clock.Advance(5s);
    timer->SetEnabled(true); // runs already
    m_clock.Advance(5s);
    EXPECT_EQ(Log(), QStringList("a 10:15:15"));
}

TEST_F(StandingClock, BeginsANewIntervalAtOnce)
{
    const auto timer = Timer("a", 60s);
    m_clock.Advance(30s);
    timer->SetInterval(5s);
    m_clock.Advance(5s);
    EXPECT_EQ(Log(), QStringList("a 10:15:35"));
}

TEST_F(StandingClock, FiresATimerThatATickHasMade)
{
    std::unique_ptr<ClockTimer> made;
    const auto maker = Timer("maker", 30s, [&] {
        if (!made)
            made = Timer("made", 10s);
    });
    m_clock.Advance(60s);
    EXPECT_EQ(Log(), QStringList({"maker 10:15:30", "made 10:15:40", "made 10:15:50",
                                  "maker 10:16:00", "made 10:16:00"}));
}

TEST_F(StandingClock, LetsATickDropItsOwnTimer)
{
    std::unique_ptr<ClockTimer> timer;
    timer = Timer("once", 10s, [&] { timer.reset(); });
    m_clock.Advance(60s);
    EXPECT_EQ(Log(), QStringList("once 10:15:10"));
}

TEST_F(StandingClock, LetsATickDropAnotherTimerThatIsDue)
{
    std::unique_ptr<ClockTimer> victim;
    const auto timer = Timer("a", 10s, [&] { victim.reset(); });
    victim = Timer("victim", 10s);
    m_clock.Advance(10s);
    EXPECT_EQ(Log(), QStringList("a 10:15:10"));
}

TEST_F(StandingClock, LetsATickDisableItself)
{
    std::unique_ptr<ClockTimer> timer;
    timer = Timer("a", 10s, [&] { timer->SetEnabled(false); });
    m_clock.Advance(60s);
    EXPECT_EQ(Log(), QStringList("a 10:15:10"));
}

TEST_F(StandingClock, FiresTheOthersWhileATickWaits)
{
    std::unique_ptr<ClockTimer> waiting;
    waiting = Timer("waiting", 10s, [&] {
        waiting->SetEnabled(false);
        m_clock.Wait(25s);
        m_log << "waited";
    });
    const auto other = Timer("other", 15s);
    m_clock.Advance(20s);
    EXPECT_EQ(Log(),
              QStringList({"waiting 10:15:10", "other 10:15:15", "other 10:15:30", "waited"}));
    EXPECT_EQ(m_clock.TimeOfDay(), QTime(10, 15, 35)); // the wait went beyond the 20 seconds
}

TEST_F(StandingClock, WaitsByMovingAtOnceAndHandlesEvents)
{
    bool handled = false;
    QMetaObject::invokeMethod(
        qApp, [&handled] { handled = true; }, Qt::QueuedConnection);
    const auto timer = Timer("a", 2s);
    m_clock.Wait(2500ms);
    EXPECT_TRUE(handled);
    EXPECT_EQ(m_clock.Now(), Start.addMSecs(2500));
    EXPECT_EQ(Log(), QStringList("a 10:15:02"));
}

TEST_F(StandingClock, TellsThatTheProgramWaitsUntilTheOutermostWaitHasEnded)
{
    int ends = 0;
    bool inside = false;
    m_clock.OnWaitEnd = [&ends] { ++ends; };
    std::unique_ptr<ClockTimer> timer;
    timer = Timer("a", 1s, [&] {
        timer->SetEnabled(false);
        m_clock.Wait(5s);
        inside = m_clock.Waiting();
        EXPECT_EQ(ends, 0);
    });
    EXPECT_FALSE(m_clock.Waiting());
    m_clock.Wait(2s);
    EXPECT_TRUE(inside);
    EXPECT_FALSE(m_clock.Waiting());
    EXPECT_EQ(ends, 1);
}

TEST_F(StandingClock, WaitsNoLongerAfterATickHasThrown)
{
    const auto timer = Timer("a", 1s, [] { throw std::runtime_error("ended"); });
    EXPECT_THROW(m_clock.Wait(2s), std::runtime_error);
    EXPECT_FALSE(m_clock.Waiting());
}

TEST_F(StandingClock, WaitsForWhatHappensOutsideWithoutMoving)
{
    bool done = false;
    QMetaObject::invokeMethod(
        qApp, [&done] { done = true; }, Qt::QueuedConnection);
    const auto timer = Timer("a", 1s);
    EXPECT_TRUE(m_clock.WaitUntil([&done] { return done; }, 60s));
    EXPECT_EQ(m_clock.Now(), Start);
    EXPECT_TRUE(Log().isEmpty());
}

TEST_F(StandingClock, WaitsForNothingThatHoldsAlready)
{
    bool handled = false;
    QMetaObject::invokeMethod(
        qApp, [&handled] { handled = true; }, Qt::QueuedConnection);
    EXPECT_TRUE(m_clock.WaitUntil([] { return true; }, 0s));
    EXPECT_FALSE(handled);
    m_clock.Yield();
}

TEST_F(StandingClock, MovesByTheLimitOfAWaitThatWasInVain)
{
    const auto timer = Timer("a", 20ms);
    QElapsedTimer real;
    real.start();
    EXPECT_FALSE(m_clock.WaitUntil([] { return false; }, 50ms));
    EXPECT_GE(real.elapsed(), 45); // in real time: what it waits for does not stand still
    EXPECT_EQ(m_clock.Now(), Start.addMSecs(50));
    EXPECT_EQ(Log(), QStringList({"a 10:15:00", "a 10:15:00"}));
}

TEST_F(StandingClock, TellsThatTheProgramWaitsForWhatHappensOutside)
{
    int ends = 0;
    m_clock.OnWaitEnd = [&ends] { ++ends; };
    bool inside = false;
    EXPECT_TRUE(m_clock.WaitUntil([&] { return inside = m_clock.Waiting(); }, 60s));
    EXPECT_TRUE(inside);
    EXPECT_FALSE(m_clock.Waiting());
    EXPECT_EQ(ends, 1);
}
