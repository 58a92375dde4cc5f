/// From the start of the process to a window that can be used, beside a bare window with a grid of 500
/// rows. The splash is taken out: the program runs on a clock whose waits take no time. Each start is
/// a process of its own; the median of several is printed.
///
///     bench_startup              (with the application folder beside the build)

#include "program_folder.h"
#include "shell/application.h"

#include <QApplication>
#include <QProcess>
#include <QStandardItemModel>
#include <QTableView>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace
{

/// The first thing a user can do is when the events behind the first painting are handled.
void SettleAndLeave()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    std::fflush(stdout);
    std::_Exit(0);
}

int BareWindow(QApplication &)
{
    QStandardItemModel model(500, 19);
    for (int row = 0; row < 500; ++row)
        for (int column = 0; column < 19; ++column)
            model.setItem(row, column, new QStandardItem(QString::number(row * column)));
    QTableView view;
    view.setModel(&model);
    view.resize(1280, 800);
    view.show();
    SettleAndLeave();
    return 0;
}

int WholeProgram(QApplication &, const QString &appFolder)
{
    SimulatedClock clock{QDateTime::currentDateTime()};
    AgreeingDialogs dialogs;
    ThrowingLifetime lifetime;
    Application application(clock, dialogs, lifetime, appFolder + QStringLiteral("/settings.ini"),
                            appFolder, QLocale(QLocale::English, QLocale::UnitedStates));
    application.Launch();
    application.State().databases.accountLock.Release(); // or the next start checks the account
    SettleAndLeave();
    return 0;
}

double MedianSeconds(const QStringList &arguments)
{
    std::vector<double> times;
    for (int run = 0; run < 11; ++run) {
        const auto start = std::chrono::steady_clock::now();
        QProcess::execute(QCoreApplication::applicationFilePath(), arguments);
        times.push_back(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("bare"))
        return BareWindow(application);
    if (arguments.value(1) == QLatin1String("program"))
        return WholeProgram(application, arguments.value(2));

    QTemporaryDir folder;
    MakeFolder(DeliveredFolder(), folder.filePath(QStringLiteral("sample")), 0);
    MakeFolder(DeliveredFolder(), folder.filePath(QStringLiteral("large")), 500);
    for (const char *name : {"sample", "large"}) { // the tip of the day would wait for somebody
        SettingsStore settings(folder.filePath(QLatin1String(name)) +
                               QStringLiteral("/settings.ini"));
        settings.SaveSetting(QStringLiteral("Options"), QStringLiteral("ShowTipOfDay"),
                             QStringLiteral("0"));
        settings.Flush();
    }
    const double bare = MedianSeconds({QStringLiteral("bare")});
    const double sample =
        MedianSeconds({QStringLiteral("program"), folder.filePath(QStringLiteral("sample"))});
    const double large =
        MedianSeconds({QStringLiteral("program"), folder.filePath(QStringLiteral("large"))});
    std::printf("bare window, 500 rows       %6.3f s\n", bare);
    std::printf("Quillon, sample portfolio   %6.3f s  %5.2f times\n", sample, sample / bare);
    std::printf("Quillon, 515 positions      %6.3f s  %5.2f times\n", large, large / bare);
    return 0;
}
