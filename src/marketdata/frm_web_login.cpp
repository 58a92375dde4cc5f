#include "marketdata/frm_web_login.h"

#include "marketdata/quote_sites.h"
#include "marketdata/site_login.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>

#include <utility>

namespace
{

/// A field whose whole content is selected when it gets the focus, by mouse too.
class LoginField : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;

protected:
    void focusInEvent(QFocusEvent *event) override
    {
        QLineEdit::focusInEvent(event);
        selectAll();
        m_isEntered = event->reason() == Qt::MouseFocusReason;
    }
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        QLineEdit::mouseReleaseEvent(event);
        if (std::exchange(m_isEntered, false))
            selectAll();
    }

private:
    bool m_isEntered = false; ///< by the press of the mouse that is still to be released
};

} // namespace

frmWebLogin::frmWebLogin(Program &program)
    : Form(program, QStringLiteral("frmWebLogin"), QStringLiteral("Website Login"),
           Placement::Dialog),
      txtLoginID(new LoginField(this)), txtPassword(new LoginField(this)),
      chkStoreLogin(new QCheckBox(QStringLiteral("&Store login ID and password"), this))
{
    BuildControls();
}

void frmWebLogin::BuildControls()
{
    txtLoginID->setObjectName(QStringLiteral("txtLoginID"));
    txtLoginID->setMinimumWidth(fontMetrics().averageCharWidth() * 32); // for a mail address
    txtLoginID->setAccessibleName(QStringLiteral("Login ID"));
    txtPassword->setObjectName(QStringLiteral("txtPassword"));
    txtPassword->setAccessibleName(QStringLiteral("Password"));
    txtPassword->setEchoMode(QLineEdit::Password);
    chkStoreLogin->setObjectName(QStringLiteral("chkStoreLogin"));

    auto *site = new QLabel(this);
    site->setObjectName(QStringLiteral("lblWebSite"));
    site->setTextFormat(Qt::PlainText);
    site->setText(QStringLiteral("Website: ") +
                  ShortSiteName(m_program.account.CurrentWebSiteName).trimmed());
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
    layout->addRow(site);
    layout->addRow(QStringLiteral("Login &ID:"), txtLoginID);
    layout->addRow(QStringLiteral("&Password:"), txtPassword);
    layout->addRow(chkStoreLogin);
    layout->addRow(buttons);

    OnClick(cmdLogin, [this] { cmdLogin_Click(); });
    OnClick(cmdCancel, [this] { UnloadMe(); });
    OnClick(chkStoreLogin, [this] { chkStoreLogin_Click(); });
}

void frmWebLogin::Load()
{
    m_program.priceUpdate.LoginCancelled = false;
    const bool stores = m_program.settings.StoreWebLogin == 1;
    chkStoreLogin->setChecked(stores);
    Status(stores && ReadStoredLogin()
               ? QStringLiteral("Click to login")
               : QStringLiteral("Please enter your website login ID and password"));
}

/// Fills the fields, and the login in use; false when none is stored.
bool frmWebLogin::ReadStoredLogin()
{
    const std::optional<SiteLogin> stored =
        StoredSiteLogin(m_program.databases.gRsApplication, m_program.account.CurrentWebSiteId);
    if (!stored)
        return false;
    txtLoginID->setText(stored->LoginID);
    txtPassword->setText(stored->Password);
    m_program.priceUpdate.WebLoginId = stored->LoginID;
    m_program.priceUpdate.WebPassword = stored->Password;
    return true;
}

void frmWebLogin::chkStoreLogin_Click()
{
    m_program.settings.StoreWebLogin = chkStoreLogin->isChecked() ? 1 : 0;
}

void frmWebLogin::cmdLogin_Click()
{
    PriceUpdateState &state = m_program.priceUpdate;
    const SiteLogin login{txtLoginID->text(), txtPassword->text()};
    if (login.LoginID != state.WebLoginId || login.Password != state.WebPassword) {
        bool known = false;
        try {
            known = StoreSiteLogin(m_program.databases.gRsApplication,
                                   m_program.account.CurrentWebSiteId, login,
                                   m_program.services.clock.Today());
        } catch (const RuntimeError &error) {
            if (error.Number() != RuntimeError::InvalidArgumentNumber)
                throw;
            MsgBox(QStringLiteral("The password has a character that cannot be stored.\n"
                                  "Please enter another one."),
                   Box::Exclamation, CaptionEditor());
            return;
        }
        // A first login is read back when the site refuses the empty one and asks again.
        if (known) {
            state.WebLoginId = login.LoginID;
            state.WebPassword = login.Password;
        }
    }
    m_isLogin = true;
    UnloadMe();
}

void frmWebLogin::OnUnload()
{
    if (!m_isLogin)
        m_program.priceUpdate.LoginCancelled = true;
    m_program.UserActed();
}

void frmWebLogin::ShowHelp()
{
    m_program.screens.ShowHelp(QStringLiteral("PUPriceUpdate.html"));
}
