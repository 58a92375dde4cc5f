#pragma once

/// What the machine, its system and the libraries tell of themselves, for a user who asks for help.
///
///     Program              Quillon 6.0.18
///     Operating system     Debian GNU/Linux 12 (bookworm)
///     Kernel               Linux 6.1.0-13-amd64
///     Memory               15.5 GiB, 9.2 GiB of it free
///
/// Neither the machine nor the account is named, so that the text can be sent to others.

#include <QList>
#include <QString>

struct SystemFact
{
    QString name;
    QString value;
};

/// Of the system, its processor and its memory; what can't be read is left out. `proc` is the
/// folder in which the kernel tells of itself.
QList<SystemFact> ReadSystemFacts(const QString &appPath,
                                  const QString &proc = QStringLiteral("/proc"));
/// Of the program and its libraries, and where it stands.
QList<SystemFact> ReadProgramFacts(const QString &appPath);

/// "15.5 GiB, 9.2 GiB of it free" of the text of the kernel's file meminfo; empty when the text
/// does not tell.
QString MemoryText(const QByteArray &meminfo);

/// A line a fact, the values one below the other.
QString FactsText(const QList<SystemFact> &facts);
