#pragma once

/// The one screen for all settings: the user's preferences, and what belongs to the open account.
///
/// OK applies and closes, Apply applies and stays, Close leaves everything as it was last applied.
/// Some things happen at once: the balance is written when its field is left, a quote site that is
/// picked is no longer disabled, switching the password protection off clears the stored login.
///
/// For a new account it opens the databases when it loads, and cannot be left before there is a
/// quote site, a balance, a reset date and a commission style; then it opens the account.
///
/// The price cycle stands still while the screen is open.

#include "program/form.h"
#include "program/price_cycle_pause.h"
#include "store/setup_choices.h"

#include <array>

class DateField;
class FieldEdit;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QRadioButton;
class QTabWidget;
struct QuoteSite;

class frmUserSetup : public Form
{
public:
    explicit frmUserSetup(Program &program);

    void Load() override;
    bool QueryUnload() override;
    void OnUnload() override;

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// The controls of one commission style.
    struct StylePage
    {
        QCheckBox *chkStyle = nullptr;
        FieldEdit *txtCost = nullptr;
        FieldEdit *txtPerShare = nullptr;
        FieldEdit *txtShares = nullptr; ///< Style2 to Style4
        FieldEdit *txtShares2 = nullptr;
    };

    // frm_user_setup_layout.cpp: the pages
    void BuildControls();
    QWidget *BuildStartupPage();
    QWidget *BuildPortfolioPage();
    QWidget *BuildDatabasePage();
    QWidget *BuildInternetPage();
    QGroupBox *BuildPasswordFrame();
    QGroupBox *BuildSiteFrame();
    void BuildButtons(QBoxLayout *row);
    void ConnectControls();

    // frm_user_setup_commission.cpp
    QWidget *BuildCommissionPage();
    void BuildStyleRows(int index, QWidget *page, QBoxLayout *rows);
    void chkStyle_Click(int index);
    void ShowStyleInForce();

    // frm_user_setup_values.cpp: controls from choices, and back
    void ShowChoices(const SetupChoices &choices);
    SetupChoices ReadChoices() const;

    SetupChoices CurrentChoices() const;
    void LoadSites();
    void ShowSignUpLine(const QuoteSite &site);
    void ShowWholePages();
    void Timer1_Timer();

    void txtBalance_LostFocus();
    void chkPSWProtected_Click();
    void combCurrentWebSite_Click();
    void cmdSubscribe_Click();
    void cmdOK_Click();
    void cmdApply_Click();

    /// False when something has to be corrected; the focus is there then.
    bool Validate();
    void GoTo(const QString &field);
    void Apply();
    void ReopenForReset();
    void SwitchPriceUpdate(PriceUpdateOption option);

    QTabWidget *SSTab = nullptr;
    QTabWidget *SSTabCommission = nullptr;

    QCheckBox *chkNotify = nullptr;
    FieldEdit *txtBackupDays = nullptr;
    QCheckBox *chkAverage = nullptr;
    FieldEdit *txtAverageTrans = nullptr;
    QCheckBox *chkDailyTracker = nullptr;
    QCheckBox *chkHistoryList = nullptr;
    QCheckBox *chkDailyProfitLoss = nullptr;
    QCheckBox *chkPurchaseList = nullptr;
    QCheckBox *chkChart = nullptr;
    QCheckBox *chkBrowserScreen = nullptr;
    QCheckBox *chkHistoricalPriceList = nullptr;
    QRadioButton *optNormal = nullptr;
    QRadioButton *optMaximize = nullptr;
    QRadioButton *optCascade = nullptr;
    QRadioButton *optHorizontal = nullptr;
    QRadioButton *optVertical = nullptr;
    QCheckBox *chkShowTips = nullptr;
    QCheckBox *chkVersionReminder = nullptr;

    FieldEdit *txtBalance = nullptr;
    QCheckBox *chkNeverReset = nullptr;
    FieldEdit *txtResetMonths = nullptr;
    DateField *dtpResetDate = nullptr;
    QCheckBox *chkLogoff = nullptr;
    FieldEdit *txtLogoffMinutes = nullptr;
    QCheckBox *chkPSWProtected = nullptr;
    FieldEdit *txtLoginID = nullptr;
    FieldEdit *txtPassword = nullptr;
    FieldEdit *txtVerifyPassword = nullptr;

    QCheckBox *chkCompact = nullptr;
    FieldEdit *txtCompactDays = nullptr;
    FieldEdit *txtElapsedDays = nullptr;
    FieldEdit *txtHistPriceMonths = nullptr;
    FieldEdit *txtKeepPortfolioData = nullptr;

    QRadioButton *optDefault = nullptr;
    QRadioButton *optProxy = nullptr;
    QRadioButton *optDirect = nullptr;
    QComboBox *combCurrentWebSite = nullptr;
    FieldEdit *txtWebTimeUpdate = nullptr;
    QRadioButton *optPriceUpdEnabled = nullptr;
    QRadioButton *optPriceUpdDisabledTemp = nullptr;
    QRadioButton *optPriceUpdDisabledPerm = nullptr;
    QLabel *lblServiceMsg = nullptr;
    QPushButton *cmdSubscribe = nullptr;

    std::array<StylePage, 5> m_styles;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdApply = nullptr;
    QPushButton *cmdClose = nullptr;
    QPushButton *cmdHelp = nullptr;

    PriceCyclePause m_priceCyclePause;
    SetupChoices m_shown;   ///< as the controls were last filled
    QString m_appliedStyle; ///< style in force without what is not applied yet
    QString m_signUpURL;    ///< of the site on the screen
    bool m_welcomed = false;
    bool m_unloading = false;
    bool m_reopening = false; ///< the account is being closed and opened behind the screen
};
