#pragma once

/// A clock that stands still until it is moved: the driver's and the tests'.
///
///     clock.Set(QDateTime(...));   jumps; no timer fires for it
///     clock.Advance(65s);          fires every timer that falls due, each at its own time
///     clock.Wait(2500ms);          advances, and lets events be handled
///
/// A running timer that a jump leaves behind starts its interval anew from the time it is set to.

#include "platform/clock.h"

#include <list>

class SimulatedClock : public Clock
{
public:
    explicit SimulatedClock(const QDateTime &start);
    ~SimulatedClock() override;

    void Set(const QDateTime &now);
    void Advance(std::chrono::milliseconds duration);

    QDateTime Now() const override { return m_now; }
    std::unique_ptr<ClockTimer> CreateTimer(std::function<void()> tick) override;
    void Wait(std::chrono::milliseconds duration) override;
    bool WaitUntil(const std::function<bool()> &done, std::chrono::milliseconds limit) override;
    void Yield() override;

    /// True while the program waits or yields: what drives it from outside holds still meanwhile.
    bool Waiting() const { return m_waits > 0; }
    /// Called when the last wait or yield has ended.
    std::function<void()> OnWaitEnd;

private:
    class Timer;
    void AsWait(const std::function<void()> &wait);
    void HandleEvents();

    QDateTime m_now;
    std::list<Timer *> m_timers; ///< in order of creation, which breaks ties of the due time
    int m_waits = 0;
};
