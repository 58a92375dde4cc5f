#include "shell/frm_user_setup.h"

#include "marketdata/quote_sites.h"
#include "platform/widgets/date_field.h"
#include "platform/widgets/field_edit.h"
#include "program/external_browser.h"
#include "program/preferences.h"
#include "store/control_rows.h"

#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>

#include <utility>

namespace
{

const QString PriceCycle = QStringLiteral("frmInternetTran");
constexpr int PortfolioPage = 1;

} // namespace

frmUserSetup::frmUserSetup(Program &program)
    : Form(program, QStringLiteral("frmUserSetup"), QStringLiteral("Quillon Preferences"),
           Placement::Dialog)
{
    BuildControls();
    ConnectControls();
}

void frmUserSetup::ConnectControls()
{
    txtBalance->OnLostFocus = [this] { Guarded([this] { txtBalance_LostFocus(); }); };
    OnClick(chkPSWProtected, [this] { chkPSWProtected_Click(); });
    On(combCurrentWebSite, &QComboBox::activated, [this] {
        m_program.UserActed();
        combCurrentWebSite_Click();
    });
    OnClick(cmdSubscribe, [this] { cmdSubscribe_Click(); });
    OnClick(cmdOK, [this] { cmdOK_Click(); });
    OnClick(cmdApply, [this] { cmdApply_Click(); });
    OnClick(cmdClose, [this] { UnloadMe(); });
    OnClick(cmdHelp, [this] { m_program.screens.ShowHelp(QStringLiteral("USUserSetup.html")); });
}

// --- coming and going ---------------------------------------------------------------------------

void frmUserSetup::Load()
{
    setWindowTitle(ApplicationTitle() + QStringLiteral(" Setup"));
    Databases &databases = m_program.databases;
    if (!databases.gConnAccount.IsOpen()) {
        OpenDatabases(databases, m_program.settings, m_program.account, m_program.services);
        if (databases.accountError)
            throw RuntimeError(*databases.accountError);
    }
    const SetupChoices choices = CurrentChoices(); // while it still shows whether prices come
    m_priceCyclePause.Suspend(m_program);
    LoadSites();
    ShowChoices(choices);
    m_appliedStyle = m_program.account.CommissionStyle;
    SSTabCommission->setCurrentIndex(StyleIndex(m_appliedStyle).value_or(0));
    if (m_program.run.NewAccount)
        SSTab->setCurrentIndex(PortfolioPage);
}

SetupChoices frmUserSetup::CurrentChoices() const
{
    SetupChoices choices = ChoicesOf(m_program.settings, m_program.account,
                                     m_program.databases.gConnAccount, m_program.services.formats);
    const PriceUpdateState &prices = m_program.priceUpdate;
    // Suspended by another screen they are on: they go on when that screen closes.
    const bool isOffForNow =
        !prices.PriceUpdateActive && !prices.Pause && !m_program.run.NewAccount;
    if (choices.PriceUpdate == PriceUpdateOption::Enabled && isOffForNow)
        choices.PriceUpdate = PriceUpdateOption::DisabledTemp;
    return choices;
}

void frmUserSetup::LoadSites()
{
    Recordset &sites = m_program.databases.gRsWebParameters;
    const int name = sites.Column(QStringLiteral("WebSiteName"));
    combCurrentWebSite->clear();
    for (sites.MoveFirst(); !sites.AtEnd(); sites.MoveNext())
        combCurrentWebSite->addItem(sites.Text(name));
    combCurrentWebSite->setCurrentIndex(-1);
    if (FindSite(sites, m_program.account.CurrentWebSiteName)) {
        combCurrentWebSite->setCurrentIndex(sites.Position());
        ShowSignUpLine(CurrentSite(sites));
    }
}

void frmUserSetup::showEvent(QShowEvent *event)
{
    Form::showEvent(event);
    ShowWholePages();
    if (std::exchange(m_welcomed, true) || !m_program.run.NewAccount)
        return;
    txtBalance->setFocus();
    // Once, as soon as the screen stands there.
    QMetaObject::invokeMethod(
        this, [this] { Guarded([this] { Timer1_Timer(); }); }, Qt::QueuedConnection);
}

/// A window comes up on two thirds of the desktop at most; this one takes what there is.
void frmUserSetup::ShowWholePages()
{
    const QSize frame = frameGeometry().size() - size();
    resize(size().expandedTo(sizeHint().boundedTo(screen()->availableSize() - frame)));
}

void frmUserSetup::Timer1_Timer()
{
    MsgBox(QStringLiteral("Please enter the current account balance and commission \n"
                          "style for this new account. These options can be changed \n"
                          "later at anytime."),
           Box::Information, QStringLiteral("User Setup Edit"));
}

bool frmUserSetup::QueryUnload()
{
    const RunState &run = m_program.run;
    if (m_reopening)
        return false;
    if (!run.NewAccount || run.OpeningExisting || run.ProgramClosing)
        return true;
    const std::optional<SetupFinding> finding =
        CheckNewAccount(combCurrentWebSite->currentText(), m_program.settings, m_program.account,
                        m_program.services.clock.Today());
    if (!finding)
        return true;
    GoTo(finding->Field);
    MsgBox(finding->Text, Box::Exclamation, CaptionEditor());
    MsgBox(QStringLiteral("Please correct errors encountered before proceeding."), Box::Exclamation,
           CaptionEditor());
    return false;
}

void frmUserSetup::OnUnload()
{
    m_unloading = true;
    m_program.account.CommissionStyle = m_appliedStyle;
    const RunState &run = m_program.run;
    if (std::exchange(m_program.run.NewAccount, false) && !run.OpeningExisting &&
        !run.ProgramClosing) {
        m_program.accountRoutines->OpenAccount();
        if (m_shown.PriceUpdate != PriceUpdateOption::Enabled)
            SwitchPricesOff(m_program);
    }
    m_priceCyclePause.Resume(m_program); // says so, or clears the status
}

// --- what happens at once -----------------------------------------------------------------------

void frmUserSetup::txtBalance_LostFocus()
{
    const Formats &formats = m_program.services.formats;
    const std::optional<Currency> balance = MoneyFromText(txtBalance->text(), formats);
    // Not touched, it keeps the decimals that are not shown; a text that is no amount stays, too.
    if (m_unloading || !balance || txtBalance->text() == m_shown.AccountBalance)
        return;
    InsertBalanceRow(m_program.databases.gConnAccount, *balance, m_program.services);
    AccountState &account = m_program.account;
    // The balance that an undo of the last posting goes back to is corrected as well.
    m_program.undo.UndoLast.Balance += *balance - account.AccountBalance;
    account.AccountBalance = account.DayBalance = *balance;
    m_shown.AccountBalance = formats.Format(*balance, u"###,##0.00");
    txtBalance->setText(m_shown.AccountBalance);
    if (m_program.UpdatePortfolioTotals)
        m_program.UpdatePortfolioTotals();
}

void frmUserSetup::chkPSWProtected_Click()
{
    if (chkPSWProtected->isChecked())
        return;
    for (FieldEdit *field : {txtLoginID, txtPassword, txtVerifyPassword})
        field->clear();
    AccountState &account = m_program.account;
    if (account.LoginID.isEmpty() && account.LoginPassword.isEmpty())
        return;
    account.LoginID.clear();
    account.LoginPassword.clear();
    account.PasswordProtected = 0; // nobody could sign on with an empty password
    InsertSecurityRow(m_program.databases.gConnAccount, account, m_program.services);
}

void frmUserSetup::combCurrentWebSite_Click()
{
    m_priceCyclePause.Suspend(m_program); // Apply may have started it, and it reads the same rows
    const std::optional<QuoteSite> site =
        PickSite(m_program.databases.gRsWebParameters, combCurrentWebSite->currentText(),
                 m_program.priceUpdate);
    if (!site)
        return;
    txtWebTimeUpdate->setText(QString::number(site->DelayTime));
    ShowSignUpLine(*site);
}

void frmUserSetup::ShowSignUpLine(const QuoteSite &site)
{
    m_signUpURL = site.SignUpURL.trimmed();
    lblServiceMsg->setText(
        site.ServiceFlag
            ? QStringLiteral("Website requires a Login ID (pay for service), click to apply:")
            : QStringLiteral("Website requires a Login ID (free service), click to apply:"));
    lblServiceMsg->setVisible(!m_signUpURL.isEmpty());
    cmdSubscribe->setVisible(!m_signUpURL.isEmpty());
}

void frmUserSetup::cmdSubscribe_Click()
{
    OpenInternetExplorer(m_program, ResolveAddress(m_signUpURL, m_program.practiceServer));
}

bool frmUserSetup::eventFilter(QObject *watched, QEvent *event)
{
    // Each site that the keys or the wheel passed would be picked, and so be enabled again.
    if (watched == combCurrentWebSite && event->type() == QEvent::Wheel)
        return true;
    if (watched == combCurrentWebSite && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            combCurrentWebSite->showPopup();
            return true;
        }
    }
    return Form::eventFilter(watched, event);
}

// --- buttons ------------------------------------------------------------------------------------

void frmUserSetup::cmdOK_Click()
{
    cmdOK->setFocus(); // the balance is left first, by Alt keys too
    if (!Validate())
        return;
    Apply();
    UnloadMe();
}

void frmUserSetup::cmdApply_Click()
{
    cmdApply->setFocus();
    if (!Validate())
        return;
    Apply();
    Status(QString());
}

bool frmUserSetup::Validate()
{
    const std::vector<SetupFinding> findings =
        CheckSetup(ReadChoices(), m_program.account, m_program.services.formats);
    for (const SetupFinding &finding : findings) {
        if (finding.IsQuestion &&
            MsgBox(finding.Text, Box::YesNo + Box::Question, CaptionEditor()) == Answer::Yes)
            continue;
        GoTo(finding.Field);
        Status(QStringLiteral("Errors found, please correct them..."));
        if (!finding.IsQuestion)
            MsgBox(finding.Text, Box::Exclamation, CaptionEditor());
        return false;
    }
    return true;
}

/// The focus goes to this control, whatever page it is on.
void frmUserSetup::GoTo(const QString &field)
{
    auto *control = findChild<QWidget *>(field);
    for (QTabWidget *tabs : {SSTab, SSTabCommission})
        for (int page = 0; page < tabs->count(); ++page)
            if (tabs->widget(page)->isAncestorOf(control))
                tabs->setCurrentIndex(page);
    for (auto *page : SSTab->findChildren<QScrollArea *>())
        if (page->isAncestorOf(control))
            page->ensureWidgetVisible(control);
    control->setFocus();
    if (auto *text = qobject_cast<QLineEdit *>(control))
        text->selectAll();
}

// --- apply --------------------------------------------------------------------------------------

void frmUserSetup::Apply()
{
    const Formats &formats = m_program.services.formats;
    SetupChoices choices = ReadChoices();
    AccountState account = m_program.account;
    TakeAccount(account, choices, formats);
    WriteControlRows(m_program.databases.gConnAccount, account, m_program.services);

    if (choices.HistPriceMonths.toInt() != m_program.settings.HistPriceMonths)
        m_program.priceUpdate.HistoricalRetryNeeded = true;
    if (account.CurrentWebSiteName != m_program.account.CurrentWebSiteName) {
        m_program.priceUpdate.WebLoginId.clear();
        m_program.priceUpdate.WebPassword.clear();
    }
    m_program.account = account;
    TakeSettings(m_program.settings, choices);
    SaveSettings(m_program);
    m_program.priceUpdate.MinutesSinceUpdate = Integer();

    m_appliedStyle = account.CommissionStyle;
    if (const std::optional<int> index = StyleIndex(m_appliedStyle))
        choices.Styles[size_t(*index)] =
            ShowStyle(*index,
                      {account.CommissionCost, account.CommissionPerShare, account.CommissionShares,
                       account.CommissionShares2},
                      formats);
    ShowChoices(choices);

    ReopenForReset();
    if (m_unloading)
        return;
    SwitchPriceUpdate(choices.PriceUpdate);
    m_program.tmrLogoff->SetEnabled(choices.LogoffEnabled);
}

/// A reset of the ToDate amounts that is due takes place as the account is opened. The screen stays
/// meanwhile; a new account is opened when it goes.
void frmUserSetup::ReopenForReset()
{
    const Settings &settings = m_program.settings;
    if (m_program.run.NewAccount || settings.NeverReset == 1 ||
        settings.ResetDate > m_program.services.clock.Today())
        return;
    const QString path = settings.CurrentFilePath;
    m_reopening = true;
    const bool isClosed = m_program.accountRoutines->CloseAllScreens();
    if (isClosed) {
        OpenDatabases(m_program.databases, m_program.settings, m_program.account,
                      m_program.services);
        m_program.accountRoutines->OpenAccount();
    }
    m_reopening = false;
    if (!isClosed)
        return;
    if (m_program.run.SignOnCancelled || settings.CurrentFilePath != path) {
        UnloadMe(); // what it shows is not open any more
        return;
    }
    dtpResetDate->setDate(settings.ResetDate); // the reset has moved it on
    raise();
    activateWindow();
}

void frmUserSetup::SwitchPriceUpdate(PriceUpdateOption option)
{
    if (option != PriceUpdateOption::Enabled) {
        SwitchPricesOff(m_program);
    } else if (!m_program.priceUpdate.PriceUpdateActive && !m_program.run.NewAccount) {
        m_program.screens.Load(PriceCycle);
    }
}
