#pragma once

/// Compound files: files with streams inside, as spreadsheet programs keep their workbooks.

#include <QByteArray>
#include <QString>

/// Writes a file with one stream of that name, as Files::WriteFile does: beside, and renamed. It is
/// marked as a workbook.
void WriteCompoundFile(const QString &path, const char *streamName, const QByteArray &content);
