#include "platform/system_clock.h"

#include "platform/clock_wait.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

namespace
{

class EventLoopTimer : public ClockTimer
{
public:
    explicit EventLoopTimer(std::function<void()> tick)
    {
        QObject::connect(&m_timer, &QTimer::timeout, std::move(tick));
    }
    void SetInterval(std::chrono::milliseconds interval) override
    {
        m_timer.setInterval(interval);
        Run();
    }
    void SetEnabled(bool enabled) override
    {
        m_enabled = enabled;
        Run();
    }
    bool Enabled() const override { return m_enabled; }

private:
    /// Without an interval an enabled timer does not fire; enabling a running one lets it run on.
    void Run()
    {
        const bool runs = m_enabled && m_timer.interval() > 0;
        if (runs && !m_timer.isActive())
            m_timer.start();
        else if (!runs)
            m_timer.stop();
    }

    QTimer m_timer;
    bool m_enabled = false;
};

} // namespace

QDateTime SystemClock::Now() const
{
    return QDateTime::currentDateTime();
}

std::unique_ptr<ClockTimer> SystemClock::CreateTimer(std::function<void()> tick)
{
    return std::make_unique<EventLoopTimer>(std::move(tick));
}

void SystemClock::Wait(std::chrono::milliseconds duration)
{
    QEventLoop loop;
    QTimer::singleShot(duration, &loop, &QEventLoop::quit);
    loop.exec();
}

bool SystemClock::WaitUntil(const std::function<bool()> &done, std::chrono::milliseconds limit)
{
    return HandleEventsUntil(done, limit);
}

void SystemClock::Yield()
{
    QCoreApplication::processEvents();
}
