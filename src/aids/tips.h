#pragma once

/// The tips: a text file with one tip a line, shown one at each start, in the order of the file.
///
///     LoadTips("/app/TIPOFDAY.TXT")    "One", "Two", "Three"
///     NextTip(0, 3) is 1, NextTip(3, 3) is 1 again
///     TipText(tips, 2)                 "Two"

#include <QStringList>

#include <optional>

/// "<appPath>/TIPOFDAY.TXT"
QString TipFile(const QString &appPath);

/// Each line of the file, empty ones too; what ends a line is "\n", "\r\n" or "\r". UTF-8, what an
/// editor marks as UTF-16, or else Latin-1. A line is cut off after 50,000 characters. Nothing when
/// there is no such file or it can't be read.
std::optional<QStringList> LoadTips(const QString &path);

/// The number, from 1, of the tip that follows `currentTip`: the first one after the last, and when
/// the file has shrunk.
int NextTip(int currentTip, int count);

/// The tip with this number; empty when there is none.
QString TipText(const QStringList &tips, int number);

/// Stands in the place of a tip when LoadTips gave nothing.
QString TipsNotFoundText();
