#pragma once

/// A write that the store refused, under the name of what was tried. The handler of events shows it
/// as a sentence, where a bare RuntimeError shows number and description.
///
///     OrFail("The undo", [&] { ... });
///     "The undo could not be saved: the disk is full. Nothing was changed."

#include "base/runtime_error.h"

class FailedWrite : public RuntimeError
{
public:
    FailedWrite(const QString &what, const RuntimeError &cause);
    const QString &Text() const { return m_text; }

private:
    QString m_text;
};

/// "the disk is full"; else the words of the store, without a full stop.
QString ReasonOf(const RuntimeError &error);

/// Runs the writes of one action, which have to be whole or absent.
template <class Write>
void OrFail(const QString &what, Write write)
{
    try {
        write();
    } catch (const FailedWrite &) {
        throw; // names the step that failed
    } catch (const RuntimeError &error) {
        throw FailedWrite(what, error);
    }
}
