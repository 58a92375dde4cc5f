#pragma once

/// The services of the machine for a test: a clock that stands still on Monday 2026-03-02 at
/// 10:15:00, boxes that the test answers, English formats, settings in memory until they are saved.

#include "test_dialogs.h"

#include "platform/services.h"
#include "platform/simulated_clock.h"

#include <QTemporaryDir>

#include <string>

class TestServices
{
public:
    explicit TestServices(const QString &appPath = {}) { services.appPath = appPath; }
    TestServices(const TestServices &) = delete;
    TestServices &operator=(const TestServices &) = delete;

    const std::string &Status() const { return m_status.last; }

    SimulatedClock clock{QDateTime(QDate(2026, 3, 2), QTime(10, 15))};
    TestDialogs dialogs;
    CommandStates commands;

private:
    struct RecordedStatus : StatusLine
    {
        void Post(const QString &text) override { last = text.toStdString(); }
        std::string last;
    };
    struct ThrowingLifetime : Lifetime
    {
        [[noreturn]] void End() override { throw ProgramEnded(); }
    };

    QTemporaryDir m_folder;
    RecordedStatus m_status;
    ThrowingLifetime m_lifetime;
    SettingsStore m_settingsStore{m_folder.filePath(QStringLiteral("settings.ini"))};
    const Formats m_formats{QLocale(QLocale::English, QLocale::UnitedStates)};

public:
    Services services{clock,      dialogs,         m_status,  commands,
                      m_lifetime, m_settingsStore, m_formats, QString()};
};
