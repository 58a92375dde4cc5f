#pragma once

/// An empty account file in a folder of its own, for tests of the store alone.
///
///     AccountFile file;
///     Connection account;
///     account.Open(file.Path());

#include "test_app_folder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

class AccountFile
{
public:
    AccountFile() { Write(Path(), EmptyAccount()); }

    QString Path() const { return In("Broker.mdb"); }
    QString Folder() const { return m_folder.path(); }
    QString In(const char *name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    /// The files of the folder by name: "Broker.mdb".
    std::string Listing() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files).join(QLatin1Char(' ')).toStdString();
    }

    static QByteArray Bytes(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
    }
    static void Write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            throw std::runtime_error("cannot write " + path.toStdString());
    }
    /// The bytes of an account without rows.
    static const QByteArray &EmptyAccount()
    {
        static const QByteArray bytes = Bytes(TestAppFolder().SampleAccount());
        return bytes;
    }

private:
    QTemporaryDir m_folder;
};
