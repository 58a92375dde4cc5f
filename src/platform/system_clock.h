#pragma once

/// The clock of the machine, with the event loop's timers.

#include "platform/clock.h"

class SystemClock : public Clock
{
public:
    QDateTime Now() const override;
    std::unique_ptr<ClockTimer> CreateTimer(std::function<void()> tick) override;
    void Wait(std::chrono::milliseconds duration) override;
    bool WaitUntil(const std::function<bool()> &done, std::chrono::milliseconds limit) override;
    void Yield() override;
};
