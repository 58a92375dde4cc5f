#include "platform/widgets/date_field.h"
#include "shell/frm_user_setup.h"
#include "shell/setup_rows.h"

#include <QComboBox>
#include <QGridLayout>
#include <QTabWidget>

using namespace SetupRows;

namespace
{

/// A page whose frames stand below each other; what is left of the height stays free.
template <class... Frames>
void StackFrames(QWidget *page, Frames... frames)
{
    auto *rows = new QVBoxLayout(page);
    (rows->addWidget(frames), ...);
    rows->addStretch();
}

} // namespace

void frmUserSetup::BuildControls()
{
    SSTab = Named(new QTabWidget(this), "SSTab", "Settings");
    SSTab->addTab(Scrolled(BuildStartupPage()), QStringLiteral("&Startup"));
    SSTab->addTab(Scrolled(BuildPortfolioPage()), QStringLiteral("&Portfolio"));
    SSTab->addTab(Scrolled(BuildCommissionPage()), QStringLiteral("Co&mmission"));
    SSTab->addTab(Scrolled(BuildDatabasePage()), QStringLiteral("&Database"));
    SSTab->addTab(Scrolled(BuildInternetPage()), QStringLiteral("&Internet"));

    auto *buttons = new QHBoxLayout;
    BuildButtons(buttons);
    auto *all = new QVBoxLayout(this);
    all->addWidget(SSTab, 1);
    all->addLayout(buttons);
    all->addStrut(fontMetrics().averageCharWidth() * 90); // never less than its pages need, though
}

void frmUserSetup::BuildButtons(QBoxLayout *row)
{
    cmdOK = MakeButton("cmdOK", "&OK");
    cmdOK->setToolTip(QStringLiteral("Apply current settings and exit."));
    cmdOK->setDefault(true);
    cmdApply = MakeButton("cmdApply", "&Apply");
    cmdApply->setToolTip(QStringLiteral("Apply current settings."));
    cmdClose = MakeButton("cmdClose", "&Close");
    cmdClose->setToolTip(QStringLiteral("Leave without applying."));
    cmdHelp = MakeButton("cmdHelp", "&Help");
    for (QPushButton *button : {cmdOK, cmdApply, cmdClose, cmdHelp})
        button->setFocusPolicy(Qt::StrongFocus); // the balance is written as its field is left
    row->addWidget(cmdOK);
    row->addWidget(cmdApply);
    row->addWidget(cmdClose);
    row->addStretch();
    row->addWidget(cmdHelp);
}

// --- Startup ------------------------------------------------------------------------------------

QWidget *frmUserSetup::BuildStartupPage()
{
    auto *page = new QWidget(SSTab);

    QGroupBox *backup = Frame(page, "Backup:");
    chkNotify = Check(backup, "chkNotify", "Notify me every",
                      "Be reminded of a backup after this many days");
    txtBackupDays = Number(backup, "txtBackupDays", "Days between backup reminders",
                           "Days between two reminders");
    chkAverage = Check(backup, "chkAverage", "After above average number of transactions:",
                       "Be reminded of a backup after a day with more transactions than usual");
    txtAverageTrans = Number(backup, "txtAverageTrans", "Average number of transactions a day",
                             "Usual number of transactions a day; it follows what you do");
    Row(RowsOf(backup), {chkNotify, txtBackupDays, Arrows(txtBackupDays, "updBackupDays", 0, 999),
                         Words(backup, "days.")});
    Row(RowsOf(backup), {chkAverage, Words(backup, "Current"), txtAverageTrans,
                         Arrows(txtAverageTrans, "updActBkUp", 0, 999)});

    QGroupBox *screens = Frame(page, "Load these screens at startup:");
    const char *tip = "Open this screen when an account is opened";
    chkDailyTracker = Check(screens, "chkDailyTracker", "Daily Tracker", tip);
    chkHistoryList = Check(screens, "chkHistoryList", "Transaction History", tip);
    chkDailyProfitLoss = Check(screens, "chkDailyProfitLoss", "Daily Profit and Loss", tip);
    chkPurchaseList = Check(screens, "chkPurchaseList", "Purchase Price List", tip);
    chkChart = Check(screens, "chkChart", "Chart", tip);
    chkBrowserScreen = Check(screens, "chkBrowserScreen", "Browser", tip);
    chkHistoricalPriceList = Check(screens, "chkHistoricalPriceList", "Historical Price List", tip);
    for (QCheckBox *screen : {chkDailyTracker, chkHistoryList, chkDailyProfitLoss, chkPurchaseList,
                              chkChart, chkBrowserScreen, chkHistoricalPriceList})
        RowsOf(screens)->addWidget(screen);
    RowsOf(screens)->addStretch();

    QGroupBox *arrange = Frame(page, "Arrange screens at startup as:");
    optNormal = Option(arrange, "optNormal", "Normal", "Each screen in its own size");
    optMaximize = Option(arrange, "optMaximize", "Maximized", "Each screen as large as the window");
    optCascade = Option(arrange, "optCascade", "Cascaded", "The screens over each other");
    optHorizontal = Option(arrange, "optHorizontal", "Tiled horizontally", "One below the other");
    optVertical = Option(arrange, "optVertical", "Tiled vertically", "One beside the other");
    for (QRadioButton *way : {optNormal, optMaximize, optCascade, optHorizontal, optVertical})
        RowsOf(arrange)->addWidget(way);
    RowsOf(arrange)->addStretch();

    QGroupBox *defaults = Frame(page, "Defaults:");
    chkShowTips = Check(defaults, "chkShowTips", "Show tip screen", "Show a tip at each start");
    chkVersionReminder = Check(defaults, "chkVersionReminder", "Show new version reminder screen",
                               "Say so when there is a newer version of this program");
    RowsOf(defaults)->addWidget(chkShowTips);
    RowsOf(defaults)->addWidget(chkVersionReminder);

    auto *frames = new QGridLayout(page);
    frames->addWidget(backup, 0, 0, 1, 2);
    frames->addWidget(screens, 1, 0, 2, 1);
    frames->addWidget(arrange, 1, 1);
    frames->addWidget(defaults, 2, 1);
    frames->setRowStretch(3, 1);
    return page;
}

// --- Portfolio ----------------------------------------------------------------------------------

QWidget *frmUserSetup::BuildPortfolioPage()
{
    auto *page = new QWidget(SSTab);

    QGroupBox *balance = Frame(page, "Portfolio Balance:");
    txtBalance =
        Amount(balance, m_program.services.formats, "txtBalance", "Portfolio balance",
               "What the whole account is worth; written as soon as the field is left", 22);
    Row(RowsOf(balance), {Words(balance, "Amount"), txtBalance});

    QGroupBox *reset = Frame(page, "Reset ToDate amounts:");
    chkNeverReset =
        Check(reset, "chkNeverReset", "Never reset.", "Let the ToDate amounts run on for ever");
    txtResetMonths = Number(reset, "txtResetMonths", "Months between resets",
                            "Months between two resets of the ToDate amounts");
    dtpResetDate =
        Named(new DateField(m_program.services, reset), "dtpResetDate", "Next reset date");
    dtpResetDate->setToolTip(QStringLiteral("When the ToDate amounts are set to zero next"));
    RowsOf(reset)->addWidget(chkNeverReset);
    Row(RowsOf(reset),
        {Words(reset, "Every"), txtResetMonths, Arrows(txtResetMonths, "updResetMonths", 1, 999),
         Words(reset, "months, next date is:"), dtpResetDate});

    QGroupBox *logoff = Frame(page, "Logoff Options:");
    chkLogoff = Check(logoff, "chkLogoff", "Select to logoff",
                      "End the program by itself when nobody uses it");
    txtLogoffMinutes = Number(logoff, "txtLogoffMinutes", "Minutes of inactivity before logoff",
                              "Minutes without any action, 5 or more");
    Row(RowsOf(logoff), {chkLogoff, Words(logoff, "After"), txtLogoffMinutes,
                         Arrows(txtLogoffMinutes, "updLogoffMinutes", 5, 999),
                         Words(logoff, "minutes of inactivity.")});

    StackFrames(page, balance, reset, logoff, BuildPasswordFrame());
    return page;
}

QGroupBox *frmUserSetup::BuildPasswordFrame()
{
    QGroupBox *frame = Frame(SSTab, "Password Settings (fields are case sensitive):");
    chkPSWProtected = Check(frame, "chkPSWProtected", "Check to password protect this portfolio.",
                            "Ask for login ID and password when this account is opened");
    RowsOf(frame)->addWidget(chkPSWProtected);

    auto *fields = new QGridLayout;
    const auto add = [&](FieldEdit *&field, const char *name, const char *caption) {
        const int row = fields->rowCount();
        field = Named(new FieldEdit(frame), name, caption);
        field->setFixedWidth(fontMetrics().averageCharWidth() * 30);
        fields->addWidget(Words(frame, caption), row, 0);
        fields->addWidget(field, row, 1);
    };
    add(txtLoginID, "txtLoginID", "Login ID");
    add(txtPassword, "txtPassword", "Password");
    add(txtVerifyPassword, "txtVerifyPassword", "Verify password");
    txtPassword->setEchoMode(QLineEdit::Password);
    txtVerifyPassword->setEchoMode(QLineEdit::Password);
    fields->setColumnStretch(2, 1);
    RowsOf(frame)->addLayout(fields);
    QLabel *note = Note(frame, "The sign-on hides this account from others who use Quillon here. "
                               "It does not encrypt the file.");
    note->setObjectName(QStringLiteral("lblNotEncrypted"));
    RowsOf(frame)->addWidget(note);
    return frame;
}

// --- Database -----------------------------------------------------------------------------------

QWidget *frmUserSetup::BuildDatabasePage()
{
    auto *page = new QWidget(SSTab);
    QGroupBox *frame = Frame(page, "Database Options:");
    chkCompact = Check(frame, "chkCompact", "Compact every",
                       "Make the files small again at the exit after this many days of use");
    txtCompactDays = Number(frame, "txtCompactDays", "Days of use between compactions",
                            "Days of use between two compactions");
    txtElapsedDays = Number(frame, "txtElapsedDays", "Days of use since the last compaction",
                            "Days of use since the last compaction");
    txtElapsedDays->setReadOnly(true);
    txtElapsedDays->SetOn(false);
    txtHistPriceMonths = Number(frame, "txtHistPriceMonths", "Months of historical prices to keep",
                                "Daily prices that are older go with the next compaction");
    txtKeepPortfolioData =
        Number(frame, "txtKeepPortfolioData", "Years of portfolio data to keep",
               "Transactions and balances that are older go with the next compaction");
    Row(RowsOf(frame), {chkCompact, txtCompactDays, Arrows(txtCompactDays, "updDBComp", 1, 999),
                        Words(frame, "days.")});
    Row(RowsOf(frame), {Words(frame, "Compacted"), txtElapsedDays, Words(frame, "days ago.")});
    Row(RowsOf(frame), {Words(frame, "Keep"), txtHistPriceMonths,
                        Arrows(txtHistPriceMonths, "updActPriceHistMonths", 0, 999),
                        Words(frame, "month worth of historical price information.")});
    Row(RowsOf(frame), {Words(frame, "Keep"), txtKeepPortfolioData,
                        Arrows(txtKeepPortfolioData, "updKeepPortfolioData", 1, 99),
                        Words(frame, "years worth of portfolio historical data.")});
    StackFrames(page, frame);
    return page;
}

// --- Internet -----------------------------------------------------------------------------------

QWidget *frmUserSetup::BuildInternetPage()
{
    auto *page = new QWidget(SSTab);
    QGroupBox *connection = Frame(page, "Connection type:");
    optDefault = Option(connection, "optDefault", "Use Default Setting",
                        "Reach the Internet as the desktop is set up to");
    optProxy = Option(connection, "optProxy", "Proxy Server",
                      "Reach the Internet through the proxy server of this computer");
    optDirect = Option(connection, "optDirect", "Direct connection",
                       "Reach the Internet without a proxy server");
    for (QRadioButton *way : {optDefault, optProxy, optDirect})
        RowsOf(connection)->addWidget(way);
    StackFrames(page, connection, BuildSiteFrame());
    return page;
}

QGroupBox *frmUserSetup::BuildSiteFrame()
{
    QGroupBox *frame = Frame(SSTab, "Current prices:");
    combCurrentWebSite = Named(new QComboBox(frame), "combCurrentWebSite", "Selected web site");
    combCurrentWebSite->setToolTip(QStringLiteral("Where current prices come from"));
    combCurrentWebSite->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combCurrentWebSite->setMinimumContentsLength(45);
    combCurrentWebSite->setMaxVisibleItems(20);
    combCurrentWebSite->installEventFilter(this);
    txtWebTimeUpdate = Number(frame, "txtWebTimeUpdate", "Minutes between price updates",
                              "Minutes between two updates of the prices");
    Row(RowsOf(frame), {Words(frame, "Selected web site"), combCurrentWebSite});
    Row(RowsOf(frame),
        {Words(frame, "Update every"), txtWebTimeUpdate,
         Arrows(txtWebTimeUpdate, "updWebTimeUpdate", 1, 999), Words(frame, "minutes.")});

    optPriceUpdEnabled =
        Option(frame, "optPriceUpdEnabled", "Enabled", "Bring the prices up to date");
    optPriceUpdDisabledTemp = Option(frame, "optPriceUpdDisabledTemp", "Disabled - Temp",
                                     "No prices for now; they come back with the next start");
    optPriceUpdDisabledPerm =
        Option(frame, "optPriceUpdDisabledPerm", "Disabled - Perm",
               "No prices until this is set to Enabled, or Connect is pressed");
    Row(RowsOf(frame), {optPriceUpdEnabled, optPriceUpdDisabledTemp, optPriceUpdDisabledPerm});

    lblServiceMsg = Words(frame, "Web site requires a Login ID (free service), click to apply :");
    lblServiceMsg->setObjectName(QStringLiteral("lblServiceMsg"));
    cmdSubscribe = MakeButton("cmdSubscribe", "S&ubscribe");
    cmdSubscribe->setToolTip(QStringLiteral("Open the site's own page in your browser"));
    // Their place stays free while they are hidden, so that the page does not jump.
    for (QWidget *control :
         {static_cast<QWidget *>(lblServiceMsg), static_cast<QWidget *>(cmdSubscribe)}) {
        QSizePolicy policy = control->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        control->setSizePolicy(policy);
        control->hide();
    }
    Row(RowsOf(frame), {lblServiceMsg, cmdSubscribe});
    return frame;
}
