#include "platform/widgets/date_field.h"
#include "platform/widgets/field_edit.h"
#include "shell/frm_user_setup.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>

void frmUserSetup::ShowChoices(const SetupChoices &choices)
{
    m_shown = choices;
    chkNotify->setChecked(choices.CheckNotify);
    txtBackupDays->setText(choices.NotifyDays);
    chkAverage->setChecked(choices.CheckAverage);
    txtAverageTrans->setText(choices.AverageTrans);
    chkDailyTracker->setChecked(choices.DailyTracker);
    chkHistoryList->setChecked(choices.HistoryList);
    chkDailyProfitLoss->setChecked(choices.DailyProfitLoss);
    chkPurchaseList->setChecked(choices.PurchaseList);
    chkChart->setChecked(choices.ChartScreen);
    chkBrowserScreen->setChecked(choices.BrowserScreen);
    chkHistoricalPriceList->setChecked(choices.HistoricalPriceList);
    optNormal->setChecked(choices.ArgNormal);
    optMaximize->setChecked(choices.ArgMaximize);
    optCascade->setChecked(choices.ArgCascade);
    optHorizontal->setChecked(choices.ArgHorizontal);
    optVertical->setChecked(choices.ArgVertical);
    chkShowTips->setChecked(choices.ShowTipOfDay);
    chkVersionReminder->setChecked(choices.ShowReminderScreen);

    txtBalance->setText(choices.AccountBalance);
    chkNeverReset->setChecked(choices.NeverReset);
    txtResetMonths->setText(choices.ResetMonths);
    dtpResetDate->setDate(choices.ResetDate);
    chkLogoff->setChecked(choices.LogoffEnabled);
    txtLogoffMinutes->setText(choices.LogoffMinutes);
    chkPSWProtected->setChecked(choices.PasswordProtected);
    txtLoginID->setText(choices.LoginID);
    txtPassword->setText(choices.LoginPassword);
    txtVerifyPassword->setText(choices.VerifyPassword);

    chkCompact->setChecked(choices.CheckCompact);
    txtCompactDays->setText(choices.CompactDays);
    txtElapsedDays->setText(choices.ElapsedDays);
    txtHistPriceMonths->setText(choices.HistPriceMonths);
    txtKeepPortfolioData->setText(choices.KeepPortfolioData);

    optDefault->setChecked(choices.AccessType == 1);
    optProxy->setChecked(choices.AccessType == 2);
    optDirect->setChecked(choices.AccessType == 3);
    txtWebTimeUpdate->setText(choices.WebUpdateMinutes);
    optPriceUpdEnabled->setChecked(choices.PriceUpdate == PriceUpdateOption::Enabled);
    optPriceUpdDisabledTemp->setChecked(choices.PriceUpdate == PriceUpdateOption::DisabledTemp);
    optPriceUpdDisabledPerm->setChecked(choices.PriceUpdate == PriceUpdateOption::DisabledPerm);

    for (size_t index = 0; index < m_styles.size(); ++index) {
        const StylePage &page = m_styles[index];
        const StyleChoice &style = choices.Styles[index];
        page.txtCost->setText(style.Cost);
        page.txtPerShare->setText(style.PerShare);
        if (page.txtShares) {
            page.txtShares->setText(style.Shares);
            page.txtShares2->setText(style.Shares2);
        }
    }
    ShowStyleInForce();
}

SetupChoices frmUserSetup::ReadChoices() const
{
    SetupChoices choices = m_shown; // with what the fields only show rounded
    choices.CheckNotify = chkNotify->isChecked();
    choices.NotifyDays = txtBackupDays->text();
    choices.CheckAverage = chkAverage->isChecked();
    choices.AverageTrans = txtAverageTrans->text();
    choices.DailyTracker = chkDailyTracker->isChecked();
    choices.HistoryList = chkHistoryList->isChecked();
    choices.DailyProfitLoss = chkDailyProfitLoss->isChecked();
    choices.PurchaseList = chkPurchaseList->isChecked();
    choices.ChartScreen = chkChart->isChecked();
    choices.BrowserScreen = chkBrowserScreen->isChecked();
    choices.HistoricalPriceList = chkHistoricalPriceList->isChecked();
    choices.ArgNormal = optNormal->isChecked();
    choices.ArgMaximize = optMaximize->isChecked();
    choices.ArgCascade = optCascade->isChecked();
    choices.ArgHorizontal = optHorizontal->isChecked();
    choices.ArgVertical = optVertical->isChecked();
    choices.ShowTipOfDay = chkShowTips->isChecked();
    choices.ShowReminderScreen = chkVersionReminder->isChecked();

    choices.AccountBalance = txtBalance->text();
    choices.NeverReset = chkNeverReset->isChecked();
    choices.ResetMonths = txtResetMonths->text();
    choices.ResetDate = dtpResetDate->date();
    choices.LogoffEnabled = chkLogoff->isChecked();
    choices.LogoffMinutes = txtLogoffMinutes->text();
    choices.PasswordProtected = chkPSWProtected->isChecked();
    choices.LoginID = txtLoginID->text();
    choices.LoginPassword = txtPassword->text();
    choices.VerifyPassword = txtVerifyPassword->text();

    choices.CheckCompact = chkCompact->isChecked();
    choices.CompactDays = txtCompactDays->text();
    choices.HistPriceMonths = txtHistPriceMonths->text();
    choices.KeepPortfolioData = txtKeepPortfolioData->text();

    choices.AccessType = optDefault->isChecked() ? 1 : optDirect->isChecked() ? 3 : 2;
    choices.WebSiteName = combCurrentWebSite->currentText();
    choices.WebUpdateMinutes = txtWebTimeUpdate->text();
    choices.PriceUpdate = optPriceUpdEnabled->isChecked()        ? PriceUpdateOption::Enabled
                          : optPriceUpdDisabledTemp->isChecked() ? PriceUpdateOption::DisabledTemp
                                                                 : PriceUpdateOption::DisabledPerm;

    for (size_t index = 0; index < m_styles.size(); ++index) {
        const StylePage &page = m_styles[index];
        StyleChoice &style = choices.Styles[index];
        style.Cost = page.txtCost->text();
        style.PerShare = page.txtPerShare->text();
        if (page.txtShares) {
            style.Shares = page.txtShares->text();
            style.Shares2 = page.txtShares2->text();
        }
    }
    return choices;
}
