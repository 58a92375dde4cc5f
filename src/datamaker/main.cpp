/// quillon_make_data DATA FOLDER [YYYY-MM-DD]: makes the delivered databases in FOLDER from the
/// text files in DATA, as of that day or of today.

#include "base/runtime_error.h"
#include "datamaker/delivery.h"
#include "platform/lifetime.h"
#include "platform/system_clock.h"

#include <QFile>

#include <cstdio>

namespace
{

int Fail(const QString &reason)
{
    std::fprintf(stderr, "quillon_make_data: %s\n", qPrintable(reason));
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3 && argc != 4) {
        std::fprintf(stderr, "usage: quillon_make_data DATA FOLDER [YYYY-MM-DD]\n");
        return 2;
    }
    const QDate today = argc == 4 ? QDate::fromString(QString::fromLocal8Bit(argv[3]), Qt::ISODate)
                                  : SystemClock().Today();
    if (!today.isValid())
        return Fail(QStringLiteral("no day: ") + QString::fromLocal8Bit(argv[3]));
    try {
        MakeDeliveredFiles(QFile::decodeName(argv[1]), QFile::decodeName(argv[2]), today);
        return 0;
    } catch (const RuntimeError &error) {
        return Fail(error.Description());
    } catch (const std::exception &error) {
        return Fail(QString::fromLocal8Bit(error.what()));
    }
}
