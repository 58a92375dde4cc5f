#pragma once

/// The character shift that keeps stored passwords and dates from casual reading. It hides, it does
/// not encrypt.
///
///     ShiftUp("abc")     "def"
///     ShiftDown("def")   "abc"
///
/// Each character's code in the Western code page (0 to 255) is moved by 3. A code that would leave
/// the range, or a character that the code page does not have, throws RuntimeError 5.

#include <QString>

QString ShiftUp(const QString &text);
QString ShiftDown(const QString &text);
