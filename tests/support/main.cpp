/// The main of every test program: one application on the offscreen platform, English formats,
/// a home folder of its own, and a failed test for every warning of Qt.

#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>
#include <QTemporaryDir>

#include <cstdio>

namespace
{

/// Warnings that came while no test was running; they fail the run as a whole.
int g_warningsBetweenTests = 0;

/// The offscreen platform has no window manager and says so; that tells nothing about us.
bool IsAboutThePlatformOnly(const QString &text)
{
    return text.startsWith(QLatin1String("This plugin does not support"));
}

void FailOnWarning(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (IsAboutThePlatformOnly(text))
        return;
    const QByteArray line = qFormatLogMessage(type, context, text).toLocal8Bit();
    std::fprintf(stderr, "%s\n", line.constData());
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    if (testing::UnitTest::GetInstance()->current_test_info() != nullptr)
        ADD_FAILURE() << "Qt warned: " << line.constData();
    else
        ++g_warningsBetweenTests;
}

} // namespace

int main(int argc, char *argv[])
{
    testing::InitGoogleTest(&argc, argv);

    // Nothing of the user's may reach a test, and no test may reach the user's files.
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", home.filePath("config").toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
    qputenv("LC_ALL", "C.UTF-8");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    qInstallMessageHandler(FailOnWarning);
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));

    const int failed = RUN_ALL_TESTS();
    if (g_warningsBetweenTests > 0) {
        std::fprintf(stderr, "%d Qt warning(s) outside of a test\n", g_warningsBetweenTests);
        return 1;
    }
    return failed;
}
