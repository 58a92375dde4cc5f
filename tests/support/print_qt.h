#pragma once

/// Qt's texts as a failed expectation shows them.

#include <QString>
#include <QStringList>

#include <ostream>

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList &texts, std::ostream *out)
{
    *out << '"' << texts.join(QStringLiteral("\", \"")).toStdString() << '"';
}
