#pragma once

/// An application folder of its own for a test: templates, shared databases, an empty sample
/// account.
///
///     TestAppFolder folder;
///     Connection account;
///     account.Open(folder.SampleAccount());

#include <QString>
#include <QTemporaryDir>

class TestAppFolder
{
public:
    TestAppFolder();

    QString Path() const { return m_folder.path(); }
    QString File(const QString &name) const { return m_folder.filePath(name); }
    QString SampleAccount() const { return File(QStringLiteral("Sample Portfolio.mdb")); }
    QString SettingsFile() const { return File(QStringLiteral("settings.ini")); }

    /// An empty account file of this name ("Broker.mdb", "sub/Broker.mdb"); its path.
    QString AddAccount(const QString &name) const;
    /// A file with this content; its path.
    QString AddFile(const QString &name, const QByteArray &content) const;
    /// Runs statements on a database of the folder, or on any path.
    void Execute(const QString &path, const QString &sql) const;
    /// The first column of the first row as a text; empty without a row.
    QString Value(const QString &path, const QString &sql) const;

private:
    QTemporaryDir m_folder;
};
