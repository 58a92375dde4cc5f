#include "platform/simulated_clock.h"

#include "platform/clock_wait.h"

#include <QCoreApplication>

#include <algorithm>

class SimulatedClock::Timer : public ClockTimer
{
public:
    Timer(SimulatedClock &clock, std::function<void()> tick)
        : m_clock(clock), m_tick(std::make_shared<std::function<void()>>(std::move(tick)))
    {
        m_clock.m_timers.push_back(this);
    }
    ~Timer() override { m_clock.m_timers.remove(this); }

    void SetInterval(std::chrono::milliseconds interval) override
    {
        m_interval = interval;
        Restart();
    }
    void SetEnabled(bool enabled) override
    {
        if (enabled && !m_enabled) {
            m_enabled = true;
            Restart();
        }
        m_enabled = enabled;
    }
    bool Enabled() const override { return m_enabled; }

    bool Running() const { return m_enabled && m_interval.count() > 0; }
    const QDateTime &Due() const { return m_due; }
    void Restart() { m_due = m_clock.m_now.addMSecs(m_interval.count()); }
    /// The tick may destroy this timer, so it runs on a copy.
    void Fire()
    {
        Restart();
        const auto tick = m_tick;
        (*tick)();
    }

private:
    SimulatedClock &m_clock;
    std::shared_ptr<std::function<void()>> m_tick;
    std::chrono::milliseconds m_interval{0};
    bool m_enabled = false;
    QDateTime m_due;
};

SimulatedClock::SimulatedClock(const QDateTime &start) : m_now(start) {}

SimulatedClock::~SimulatedClock() = default;

void SimulatedClock::Set(const QDateTime &now)
{
    m_now = now;
    for (Timer *timer : m_timers)
        timer->Restart();
}

void SimulatedClock::Advance(std::chrono::milliseconds duration)
{
    const QDateTime end = m_now.addMSecs(duration.count());
    for (;;) {
        Timer *next = nullptr;
        for (Timer *timer : m_timers)
            if (timer->Running() && timer->Due() <= end && (!next || timer->Due() < next->Due()))
                next = timer;
        if (!next)
            break;
        // A tick that waited itself may have moved the clock past the due time of the others.
        m_now = std::max(m_now, next->Due());
        next->Fire();
    }
    m_now = std::max(m_now, end);
}

std::unique_ptr<ClockTimer> SimulatedClock::CreateTimer(std::function<void()> tick)
{
    return std::make_unique<Timer>(*this, std::move(tick));
}

void SimulatedClock::Wait(std::chrono::milliseconds duration)
{
    AsWait([&] {
        Advance(duration);
        HandleEvents();
    });
}

void SimulatedClock::AsWait(const std::function<void()> &wait)
{
    ++m_waits;
    try {
        wait();
    } catch (...) {
        --m_waits;
        throw;
    }
    if (--m_waits == 0 && OnWaitEnd)
        OnWaitEnd();
}

bool SimulatedClock::WaitUntil(const std::function<bool()> &done, std::chrono::milliseconds limit)
{
    bool isDone = false;
    AsWait([&] {
        isDone = HandleEventsUntil(done, limit);
        if (!isDone)
            Advance(limit);
    });
    return isDone;
}

void SimulatedClock::Yield()
{
    Wait(std::chrono::milliseconds(0));
}

void SimulatedClock::HandleEvents()
{
    if (QCoreApplication::instance())
        QCoreApplication::processEvents();
}
