#pragma once

/// The login of a quote site that asks for one. Left without a login, it leaves
/// PriceUpdateState::LoginCancelled behind.

#include "program/form.h"

class QCheckBox;
class QLineEdit;

class frmWebLogin : public Form
{
public:
    explicit frmWebLogin(Program &program);

    void Load() override;
    void OnUnload() override;
    void ShowHelp() override;

private:
    void BuildControls();
    bool ReadStoredLogin();
    void cmdLogin_Click();
    void chkStoreLogin_Click();

    QLineEdit *txtLoginID;
    QLineEdit *txtPassword;
    QCheckBox *chkStoreLogin;
    bool m_isLogin = false; ///< left by the Login button
};
