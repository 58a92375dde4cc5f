#include "platform/command_states.h"

template <class Value>
void CommandStates::Change(const QString &name, Value State::*member, Value value)
{
    State &state = m_states[name];
    if (state.*member == value)
        return;
    state.*member = value;
    if (OnChange)
        OnChange(name);
}

void CommandStates::SetEnabled(const QString &name, bool enabled)
{
    Change(name, &State::enabled, enabled);
}

void CommandStates::SetChecked(const QString &name, bool checked)
{
    Change(name, &State::checked, checked);
}

void CommandStates::SetCaption(const QString &name, const QString &caption)
{
    Change(name, &State::caption, caption);
}

void CommandStates::UncheckGroup(const QString &prefix)
{
    const QStringList names = m_states.keys();
    for (const QString &name : names)
        if (name.startsWith(prefix))
            SetChecked(name, false);
}

void CommandStates::EnableAllMenuEntries()
{
    const QStringList names = m_states.keys();
    for (const QString &name : names)
        if (name.startsWith(QStringLiteral("mnu")) || name.startsWith(QStringLiteral("pop")))
            SetEnabled(name, true);
}
