#pragma once

/// Time as the program sees it: today, now, timers, and waits that let events be handled.
///
/// Everything that asks for a date, a time of day, a timer or a pause goes through one Clock: the
/// system's in the application, one that stands still until it is moved in the driver and the
/// tests.

#include <QDateTime>

#include <chrono>
#include <functional>
#include <memory>

/// A repeating timer that starts disabled. Owned by whoever created it; destroying it stops it.
class ClockTimer
{
public:
    virtual ~ClockTimer() = default;
    virtual void SetInterval(std::chrono::milliseconds interval) = 0;
    virtual void SetEnabled(bool enabled) = 0;
    virtual bool Enabled() const = 0;
};

class Clock
{
public:
    virtual ~Clock() = default;

    virtual QDateTime Now() const = 0;
    QDate Today() const { return Now().date(); }
    /// To the millisecond.
    QTime TimeOfDay() const { return Now().time(); }

    virtual std::unique_ptr<ClockTimer> CreateTimer(std::function<void()> tick) = 0;

    /// Lets `duration` pass while events are handled and timers fire.
    virtual void Wait(std::chrono::milliseconds duration) = 0;
    /// Handles events until `done` holds, which is looked at whenever none is left and must not throw;
    /// false when that took longer than `limit`. What it waits for lies outside the program (a transfer), so `limit` is
    /// real time under every clock; one that stands still is moved by it when it has run out.
    virtual bool WaitUntil(const std::function<bool()> &done, std::chrono::milliseconds limit) = 0;
    /// Handles the events that are waiting, without time passing.
    virtual void Yield() = 0;
};
