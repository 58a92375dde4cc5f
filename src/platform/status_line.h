#pragma once

/// The status bar as the engines see it: one line that says what the program is doing. A new text
/// replaces the old at once, the empty text clears it, and any call brings all panels up to date.

#include <QString>

class StatusLine
{
public:
    virtual ~StatusLine() = default;
    virtual void Post(const QString &text) = 0;
};
