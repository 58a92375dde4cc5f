#pragma once

/// The commands of the program - menu and popup entries, toolbar buttons, by name - as state:
/// enabled or not, checked or not. The main window shows it; engines and screens change it.
///
/// A name that was never set is enabled, unchecked and has the empty caption.

#include <QHash>
#include <QString>

#include <functional>

class CommandStates
{
public:
    bool Enabled(const QString &name) const { return m_states.value(name).enabled; }
    bool Checked(const QString &name) const { return m_states.value(name).checked; }
    QString Caption(const QString &name) const { return m_states.value(name).caption; }

    void SetEnabled(const QString &name, bool enabled);
    void SetChecked(const QString &name, bool checked);
    void SetCaption(const QString &name, const QString &caption);
    /// Clears the mark of every command whose name begins with `prefix`.
    void UncheckGroup(const QString &prefix);
    /// Enables every menu and popup entry ("mnu…", "pop…"); toolbar buttons stay as they are.
    void EnableAllMenuEntries();

    /// Called with the name after each change of its state.
    std::function<void(const QString &)> OnChange;

private:
    struct State
    {
        bool enabled = true;
        bool checked = false;
        QString caption;
    };
    template <class Value>
    void Change(const QString &name, Value State::*member, Value value);

    QHash<QString, State> m_states;
};
