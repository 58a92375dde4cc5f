#pragma once

/// The sign-on of an account that asks for one. It sets RunState::SignOnCancelled when it is closed
/// in any way but a correct login.

#include "program/form.h"

class QLineEdit;

class frmPassword : public Form
{
public:
    explicit frmPassword(Program &program);
    void Load() override;
    void ShowHelp() override;
    void OnUnload() override;

private:
    void cmdLogin_Click();

    QLineEdit *txtLoginID;
    QLineEdit *txtPassword;
    bool m_loggedIn = false;
};
