#include "shell/frm_password.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

frmPassword::frmPassword(Program &program)
    : Form(program, QStringLiteral("frmPassword"), QStringLiteral("Quillon Sign-on"),
           Placement::Dialog),
      txtLoginID(new QLineEdit(this)), txtPassword(new QLineEdit(this))
{
    txtLoginID->setObjectName(QStringLiteral("txtLoginID"));
    txtLoginID->setAccessibleName(QStringLiteral("Login ID"));
    txtPassword->setObjectName(QStringLiteral("txtPassword"));
    txtPassword->setAccessibleName(QStringLiteral("Password"));
    txtPassword->setEchoMode(QLineEdit::Password);

    auto *hint = new QLabel(QStringLiteral("(Login ID and password are case sensitive)"), this);
    hint->setObjectName(QStringLiteral("lblCaseSensitive"));
    auto *cmdLogin = new QPushButton(QStringLiteral("&Login"), this);
    cmdLogin->setObjectName(QStringLiteral("cmdLogin"));
    cmdLogin->setDefault(true);
    auto *cmdCancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdLogin);
    buttons->addWidget(cmdCancel);
    auto *layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("Login &ID:"), txtLoginID);
    layout->addRow(QStringLiteral("&Password:"), txtPassword);
    layout->addRow(hint);
    layout->addRow(buttons);

    OnClick(cmdLogin, [this] { cmdLogin_Click(); });
    OnClick(cmdCancel, [this] { UnloadMe(); });
}

void frmPassword::Load()
{
    m_program.run.SignOnCancelled = false;
    Status(QStringLiteral("Please enter your Signon ID and password"));
}

void frmPassword::ShowHelp()
{
    m_program.screens.ShowHelp(QStringLiteral("SignOn.html"));
}

void frmPassword::cmdLogin_Click()
{
    const QString login = txtLoginID->text();
    const QString password = txtPassword->text();
    if (login.isEmpty() || password.isEmpty())
        return;
    m_loggedIn = password == m_program.account.LoginPassword && login == m_program.account.LoginID;
    if (m_loggedIn) {
        UnloadMe();
        return;
    }
    MsgBox(QStringLiteral("Invalid Sigon ID and/or invalid password"), Box::Exclamation,
           EditorTitle());
    txtPassword->selectAll();
    txtLoginID->selectAll();
    txtLoginID->setFocus();
}

void frmPassword::OnUnload()
{
    if (!m_loggedIn)
        m_program.run.SignOnCancelled = true;
    m_program.UserActed();
}
