#pragma once

/// The driver as a process of its own, on an application folder of its own.
///
///     DriverRun run;
///     const DriverResult result = run.Run("launch\nexpect loaded frmMDIMain = \"yes\"\n");
///     EXPECT_EQ(result.status, 0) << result.errors;

#include "base/character_shift.h"
#include "support/test_app_folder.h"

#include <QFileInfo>
#include <QProcess>

#include <string>

struct DriverResult
{
    int status = -1; ///< -1: it crashed, or did not end within half a minute
    std::string output;
    std::string errors;
};

class DriverRun
{
public:
    static constexpr int patience = 30000;

    const TestAppFolder folder;

    /// `script` on standard input, behind settings that open no screen but the main window.
    DriverResult Run(const QByteArray &script) const
    {
        return Call({"--app", folder.Path(), "--settings", folder.SettingsFile()},
                    "clock \"2026-03-02 10:15:00\"\n"
                    "set Options ShowTipOfDay 0\n"
                    "set Options DailyTracker 0\n"
                    "set Options WebPriceUpdate 0\n" +
                        script);
    }

    DriverResult Call(const QStringList &arguments, const QByteArray &input = {}) const
    {
        QProcess driver;
        driver.start(QStringLiteral(QUILLON_DRIVE), arguments);
        driver.write(input);
        driver.closeWriteChannel();
        DriverResult result;
        if (driver.waitForFinished(patience) && driver.exitStatus() == QProcess::NormalExit)
            result.status = driver.exitCode();
        result.output = driver.readAllStandardOutput().toStdString();
        result.errors = driver.readAllStandardError().toStdString();
        return result;
    }

    /// The sample account asks for this sign-on, and leaves the program after so many minutes of 65
    /// seconds; 0: never.
    void Protect(const QString &loginID, const QString &password, int logoffMinutes = 0) const
    {
        WriteSecurityRow(loginID, password, true, logoffMinutes);
    }
    void LogOffAfter(int logoffMinutes) const
    {
        WriteSecurityRow(QString(), QString(), false, logoffMinutes);
    }

private:
    void WriteSecurityRow(const QString &loginID, const QString &password, bool isProtected,
                          int logoffMinutes) const
    {
        folder.Execute(
            folder.SampleAccount(),
            QStringLiteral("INSERT INTO DescriptiveTable VALUES ('Security', 0, 0, 0, "
                           "'2026-03-02', '2026-03-02', '%1', 0, '%2', '%3', %4, %5, '0')")
                .arg(logoffMinutes)
                .arg(loginID, ShiftUp(password))
                .arg(isProtected)
                .arg(logoffMinutes > 0));
    }
};
