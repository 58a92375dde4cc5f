#pragma once

/// The drop-down of the Open button: the accounts that were open last, the open one checked, those
/// whose files are gone greyed. It is made anew each time it comes up.

#include <QMenu>

#include <functional>

struct Program;

class RecentMenu : public QMenu
{
public:
    explicit RecentMenu(Program &program, QWidget *parent);

    /// The user chose another account than the open one.
    std::function<void(const QString &path)> OnAccount;

private:
    void Fill();

    Program &m_program;
};
