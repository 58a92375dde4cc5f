/// quillon_drive --app DIR [--settings FILE] [SCRIPT]: the whole program, run by a script.
///
/// Exit status: 0 the script ran to its end and every expectation held; 1 one did not, or a
/// question had no answer; 2 the script or the call is wrong.

#include "driver/commands.h"
#include "driver/failure.h"
#include "driver/runner.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>

#include <cstdio>
#include <fstream>
#include <iostream>

namespace
{

/// Windows have a screen to be maximized on; the platform's own is smaller than a person's.
constexpr char screenOfTheScript[] = R"({
    "synchronousWindowSystemEvents": true,
    "windowFrameMargins": false,
    "screens": [{"name": "screen", "x": 0, "y": 0, "width": 1280, "height": 800,
                 "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]
})";

struct Call
{
    QString appPath;
    QString settingsFile; ///< empty: one of its own
    QString scriptFile;   ///< empty: standard input
};

Call ReadCall(const QStringList &arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption app(QStringLiteral("app"), QString(), QStringLiteral("DIR"));
    const QCommandLineOption settings(QStringLiteral("settings"), QString(),
                                      QStringLiteral("FILE"));
    parser.addOptions({app, settings});
    const bool understood = parser.parse(arguments);
    const QStringList scripts = parser.positionalArguments();
    if (!understood || !parser.isSet(app) || scripts.size() > 1)
        throw ScriptWrong(
            QStringLiteral("usage: quillon_drive --app DIR [--settings FILE] [SCRIPT]"));
    Call call;
    call.appPath = QDir(parser.value(app)).absolutePath();
    if (!QDir(call.appPath).exists())
        throw ScriptWrong(QStringLiteral("there is no folder %1").arg(call.appPath));
    if (parser.isSet(settings))
        call.settingsFile = QFileInfo(parser.value(settings)).absoluteFilePath();
    call.scriptFile = scripts.value(0);
    return call;
}

void CreateWhenMissing(const QString &file)
{
    if (!QFile(file).open(QIODevice::Append))
        throw ScriptWrong(QStringLiteral("%1 cannot be written").arg(file));
}

/// The same machine for every script: its platform, locale and event loop.
void PrepareEnvironment(const QTemporaryDir &scratch)
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.isEmpty() || platform == "offscreen") {
        QFile screen(scratch.filePath(QStringLiteral("screen.json")));
        if (screen.open(QIODevice::WriteOnly))
            screen.write(screenOfTheScript);
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(screen.fileName()));
    }
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(scratch.path()));
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");       // the clock of a script has every hour of the day, and has it once
    qputenv("QT_NO_GLIB", "1"); // only the other event loop tells when it is about to sleep
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

/// The offscreen platform tells of each thing that it leaves to a window manager.
void WriteMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (text.startsWith(QLatin1String("This plugin does not support")))
        return;
    std::fprintf(stderr, "%s\n", qFormatLogMessage(type, context, text).toUtf8().constData());
}

int RunScript(const Call &call, QTemporaryDir &scratch, std::istream &input)
{
    Script script(input);
    Session session(call.appPath, call.settingsFile, [&scratch](int) {
        scratch.remove();
        std::fflush(stdout);
        std::fflush(stderr);
    });
    session.OnUnanswered = [&script](const QString &reason) {
        ReportFailure(script.Line(), reason);
    };
    return Runner(script, session).Run();
}

} // namespace

int main(int argc, char *argv[])
{
    qInstallMessageHandler(WriteMessage);
    QTemporaryDir scratch;
    PrepareEnvironment(scratch);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        Call call = ReadCall(QApplication::arguments());
        if (call.settingsFile.isEmpty())
            call.settingsFile = scratch.filePath(QStringLiteral("settings.ini"));
        CreateWhenMissing(call.settingsFile);
        if (call.scriptFile.isEmpty())
            return RunScript(call, scratch, std::cin);
        std::ifstream file(QFile::encodeName(call.scriptFile).toStdString());
        if (!file)
            throw ScriptWrong(QStringLiteral("%1 cannot be read").arg(call.scriptFile));
        return RunScript(call, scratch, file);
    } catch (const Failure &failure) {
        std::fprintf(stderr, "%s\n", failure.Reason().toUtf8().constData());
        return failure.Status();
    }
}
