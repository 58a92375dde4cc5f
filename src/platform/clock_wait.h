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
    QTimer end; // ends with the wait: one for each page would stay until its limit otherwise
    end.setSingleShot(true);
    QObject::connect(&end, &QTimer::timeout, &loop, &QEventLoop::quit);
    end.start(limit);
    loop.exec();
    return isDone || done(); // at the limit it may have come while a box was open
}
