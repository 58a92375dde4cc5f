#pragma once

/// The wait that both clocks share: for something outside the program, in real time.

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <functional>

/// Handles events until `done` holds; false when `limit` ran out before. `done` is looked at whenever
/// no event is left, and must not throw.
inline bool HandleEventsUntil(const std::function<bool()> &done, std::chrono::milliseconds limit)
{
    if (done())
        return true;
    QEventLoop loop;
    bool isDone = false;
    const auto look = [&] {
        if (!isDone && (isDone = done()))
            loop.quit();
    };
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     &loop, look);
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    loop.exec();
    return isDone || done(); // at the limit it may have come while a box was open
}
