#include "aids/system_facts.h"

#include "platform/services.h"
#include "store/settings.h"

#include <QFile>
#include <QSysInfo>
#include <QThread>

#include <sqlite3.h>
#include <sys/utsname.h>

#include <algorithm>
#include <filesystem>

namespace
{

void Add(QList<SystemFact> &facts, const char *name, const QString &value)
{
    if (!value.isEmpty() && value != QLatin1String("unknown"))
        facts.append({QString::fromUtf8(name), value});
}

QByteArray Content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What stands behind the colon of the first line with this name: "MemTotal:  16303428 kB".
QByteArray ValueOf(const QByteArray &text, const QByteArray &name)
{
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray &line : lines) {
        const qsizetype colon = line.indexOf(':');
        if (colon >= 0 && line.left(colon).trimmed() == name)
            return line.mid(colon + 1).trimmed();
    }
    return QByteArray();
}

/// "15.5 GiB"; one decimal tells enough.
QString Gibibytes(double bytes)
{
    return QString::number(bytes / (1024.0 * 1024.0 * 1024.0), 'f', 1) + QStringLiteral(" GiB");
}

QString SizeText(double total, double free)
{
    return QStringLiteral("%1, %2 of it free").arg(Gibibytes(total), Gibibytes(free));
}

QString KernelText()
{
    utsname kernel;
    if (uname(&kernel) != 0)
        return QString();
    return QStringLiteral("%1 %2, %3")
        .arg(QString::fromLocal8Bit(kernel.sysname), QString::fromLocal8Bit(kernel.release),
             QString::fromLocal8Bit(kernel.version));
}

QString ProcessorText(const QByteArray &cpuinfo)
{
    const QString model = QString::fromUtf8(ValueOf(cpuinfo, "model name"));
    const int count = QThread::idealThreadCount();
    const QString cores = count > 0 ? QString::number(count) + QStringLiteral(" x ") : QString();
    return cores + (model.isEmpty() ? QSysInfo::currentCpuArchitecture() : model);
}

QString DiskText(const QString &folder)
{
    std::error_code error;
    const auto disk = std::filesystem::space(folder.toStdString(), error);
    return error ? QString() : SizeText(double(disk.capacity), double(disk.available));
}

} // namespace

QString MemoryText(const QByteArray &meminfo)
{
    const auto bytes = [&](const char *name) {
        return ValueOf(meminfo, name).split(' ').constFirst().toDouble() * 1024;
    };
    const double total = bytes("MemTotal");
    return total > 0 ? SizeText(total, bytes("MemAvailable")) : QString();
}

QList<SystemFact> ReadSystemFacts(const QString &appPath, const QString &proc)
{
    QList<SystemFact> facts;
    Add(facts, "Operating system", QSysInfo::prettyProductName());
    Add(facts, "Kernel", KernelText());
    Add(facts, "Architecture", QSysInfo::currentCpuArchitecture());
    Add(facts, "Processor", ProcessorText(Content(proc + QStringLiteral("/cpuinfo"))));
    Add(facts, "Memory", MemoryText(Content(proc + QStringLiteral("/meminfo"))));
    Add(facts, "Disk", DiskText(appPath));
    return facts;
}

QList<SystemFact> ReadProgramFacts(const QString &appPath)
{
    QList<SystemFact> facts;
    Add(facts, "Program", ApplicationTitle() + QLatin1Char(' ') + ProgramVersion().Dotted());
    Add(facts, "Application folder", appPath);
    Add(facts, "Qt",
        QStringLiteral("%1, built with %2")
            .arg(QString::fromLatin1(qVersion()), QStringLiteral(QT_VERSION_STR)));
    Add(facts, "SQLite", QString::fromLatin1(sqlite3_libversion()));
    return facts;
}

QString FactsText(const QList<SystemFact> &facts)
{
    qsizetype width = 0;
    for (const SystemFact &fact : facts)
        width = std::max(width, fact.name.size());
    QString text;
    for (const SystemFact &fact : facts)
        text += fact.name.leftJustified(width + 2) + fact.value + QLatin1Char('\n');
    return text;
}
