#include "store/failed_write.h"

FailedWrite::FailedWrite(const QString &what, const RuntimeError &cause)
    : RuntimeError(cause), m_text(QStringLiteral("%1 could not be saved: %2. Nothing was changed.")
                                      .arg(what, ReasonOf(cause)))
{}

QString ReasonOf(const RuntimeError &error)
{
    QString reason = error.Description().trimmed();
    if (error.Number() == RuntimeError::DiskFullNumber ||
        reason == QLatin1String("database or disk is full")) // the store's own words
        return QStringLiteral("the disk is full");
    while (reason.endsWith(QLatin1Char('.')))
        reason.chop(1);
    return reason;
}
