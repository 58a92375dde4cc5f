#include "platform/system_clock.h"

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
    void SetInterval(std::chrono::milliseconds interval) override { m_timer.setInterval(interval); }
    void SetEnabled(bool enabled) override
    {
        if (enabled)
            m_timer.start();
        else
            m_timer.stop();
    }
    bool Enabled() const override { return m_timer.isActive(); }

private:
    QTimer m_timer;
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

void SystemClock::Yield()
{
    QCoreApplication::processEvents();
}
