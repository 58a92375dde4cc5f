#include "marketdata/frm_web_browser.h"

#include "program/browser_view.h"
#include "program/external_browser.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace std::chrono_literals;

namespace
{

const QString IntradayEntry = QStringLiteral("popDTChartIntraday");
const QString MapEntry = QStringLiteral("popDTChartMapOfMarket");

} // namespace

/// In place of the page: where it is to be seen. Its property "text" is the address.
class frmWebBrowser::PageOutside : public BrowserView
{
public:
    explicit PageOutside(QWidget *parent)
        : BrowserView(parent), m_note(new QLabel(this)), m_address(new QLabel(this))
    {
        m_note->setObjectName(QStringLiteral("lblNote"));
        m_note->setAlignment(Qt::AlignCenter);
        m_note->setWordWrap(true);
        m_address->setObjectName(QStringLiteral("lblAddress"));
        m_address->setAccessibleName(QStringLiteral("Address of the page"));
        m_address->setAlignment(Qt::AlignCenter);
        m_address->setWordWrap(true);
        m_address->setTextFormat(Qt::PlainText);
        m_address->setTextInteractionFlags(Qt::TextSelectableByMouse |
                                           Qt::TextSelectableByKeyboard);
        auto *layout = new QVBoxLayout(this);
        layout->addStretch();
        layout->addWidget(m_note);
        layout->addWidget(m_address);
        layout->addStretch();
    }

    void Navigate(const QUrl &page) override
    {
        m_address->setText(page.toString());
        setProperty("text", page.toString());
    }
    void Refresh() override {} // what the user's browser shows is his
    /// Says what became of the page.
    void SetNote(const QString &text) { m_note->setText(text); }

private:
    QLabel *m_note;
    QLabel *m_address;
};

frmWebBrowser::frmWebBrowser(Program &program)
    : Form(program, QStringLiteral("frmWebBrowser"), QStringLiteral("Web Browser"),
           Placement::Child),
      tmrWebBrowser(program.services.clock.CreateTimer([this] { tmrWebBrowser_Timer(); }))
{
    tmrWebBrowser->SetInterval(65000ms); // as the timer of the prices
    BuildView();

    QPushButton *cmdRefresh = MakeButton("cmdRefresh", "&Refresh");
    QPushButton *cmdClose = MakeButton("cmdClose", "C&lose"); // Alt+C and Alt+H are the main menu's
    QPushButton *cmdHelp = MakeButton("cmdHelp", "Hel&p");
    OnClick(cmdRefresh, [this] { cmdRefresh_Click(); });
    OnClick(cmdHelp, [this] { cmdHelp_Click(); });
    OnClick(cmdClose, [this] { UnloadMe(); });

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdRefresh);
    buttons->addWidget(cmdClose);
    buttons->addStretch();
    buttons->addWidget(cmdHelp);
    auto *all = new QVBoxLayout(this);
    all->addWidget(wbBrowser, 1);
    all->addLayout(buttons);
}

void frmWebBrowser::BuildView()
{
    if (m_program.CreateBrowserView)
        wbBrowser = m_program.CreateBrowserView(this);
    if (!wbBrowser)
        wbBrowser = m_pageOutside = new PageOutside(this);
    wbBrowser->setObjectName(QStringLiteral("wbBrowser"));
    wbBrowser->setAccessibleName(QStringLiteral("Web page"));
    wbBrowser->OnNewWindow = [this](const QUrl &page) {
        ByUser([&] { OpenInternetExplorer(m_program, page.toString(QUrl::FullyEncoded)); });
    };
}

void frmWebBrowser::showEvent(QShowEvent *event)
{
    Form::showEvent(event);
    if (m_pageOutside && !m_wasShown) // a caret behind the address looks like a field to write in
        findChild<QPushButton *>(QStringLiteral("cmdRefresh"))->setFocus();
    m_wasShown = true;
}

QSize frmWebBrowser::sizeHint() const
{
    return TenthsOfMainWindow(9, 8);
}

void frmWebBrowser::Load()
{
    Status(QStringLiteral("Browser navigation started..."));
    if (m_program.WebAddress.isEmpty())
        m_program.WebAddress = BuildIntradayChartAddress(m_program);
    Navigate(m_program.WebAddress);
    m_program.run.BrowserScreenOpen = true;
    m_program.UserActed();
    tmrWebBrowser->SetEnabled(true);
    CommandStates &commands = m_program.services.commands;
    if (!commands.Checked(MapEntry) && !commands.Checked(IntradayEntry))
        commands.SetChecked(IntradayEntry, true);
    Status(QStringLiteral("Browser navigation complete"));
}

void frmWebBrowser::Activate()
{
    m_program.WebAddress = BuildIntradayChartAddress(m_program);
}

void frmWebBrowser::OnUnload()
{
    m_program.run.BrowserScreenOpen = false;
    tmrWebBrowser->SetEnabled(false);
}

// --- pages ---------------------------------------------------------------------------------------

void frmWebBrowser::Navigate(const QString &address)
{
    ShowPage(address, Asked::ByUser);
}

void frmWebBrowser::ShowPage(const QString &address, Asked asked)
{
    m_address = address;
    wbBrowser->Navigate(QUrl(address));
    if (m_pageOutside && asked == Asked::ByUser)
        OpenOutside();
}

/// What went wrong stands on the screen, which may come up with each start of the program: no box.
void frmWebBrowser::OpenOutside()
{
    if (m_address.isEmpty())
        m_pageOutside->SetNote(QStringLiteral("No web address is set for this page."));
    else if (TryInternetExplorer(m_program, m_address))
        m_pageOutside->SetNote(QStringLiteral("Web pages are shown in your web browser.\n"
                                              "Refresh opens this one there again:"));
    else
        m_pageOutside->SetNote(
            QStringLiteral("This page could not be opened in your web browser.\n"
                           "You can type its address into the browser yourself:"));
}

void frmWebBrowser::RefreshPage(Asked asked)
{
    if (!m_pageOutside)
        wbBrowser->Refresh();
    else
        ShowPage(m_address, asked);
}

void frmWebBrowser::CountTick(Asked asked)
{
    ++RefreshTicks;
    if (RefreshTicks < m_program.account.WebUpdateMinutes.Value())
        return;
    Status(QStringLiteral("Browser refresh started..."));
    if (m_program.services.commands.Checked(IntradayEntry))
        ShowPage(BuildIntradayChartAddress(m_program), asked);
    else
        RefreshPage(asked);

    Program &program = m_program;
    program.services.clock.Wait(750ms);
    if (program.screens.Find(QStringLiteral("frmWebBrowser")) != this)
        return; // closed meanwhile
    Status(QStringLiteral("Refresh complete"));
    RefreshTicks = 0;
}

void frmWebBrowser::cmdRefresh_Click()
{
    RefreshTicks = m_program.account.WebUpdateMinutes.Value();
    CountTick(Asked::ByUser);
}

void frmWebBrowser::cmdHelp_Click()
{
    const bool showsMap = m_program.services.commands.Checked(MapEntry);
    m_program.screens.ShowHelp(showsMap ? QStringLiteral("WBMapOfMarket.html")
                                        : QStringLiteral("WBIntraDayChart.html"));
}
