#include "marketdata/frm_quote_site_trial.h"

#include "marketdata/practice_site.h"
#include "marketdata/price_cycle.h"
#include "platform/widgets/colors.h"
#include "transactions/securities.h"

#include <QEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopeGuard>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int ShownCharacters = 40'000; ///< prices stand in the first 32,767

/// Shows a text to be read and copied, broken anywhere, since addresses have no blanks.
QPlainTextEdit *ReadOnlyText(const char *name, const QString &accessibleName, int lines,
                             QWidget *parent)
{
    auto *text = new QPlainTextEdit(parent);
    text->setObjectName(QString::fromUtf8(name));
    text->setAccessibleName(accessibleName);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setMinimumHeight(text->fontMetrics().lineSpacing() * lines + 12);
    return text;
}

/// Character for character what came, so that positions hold; what cannot be shown is a mark.
QString Shown(const QString &page)
{
    QString shown = page.left(ShownCharacters);
    for (QChar &character : shown) {
        const bool breaksLine = character == QChar::ParagraphSeparator ||
                                character == QChar::LineSeparator || character == u'\r';
        if (breaksLine)
            character = u' ';
        else if (character != u'\n' && character != u'\t' &&
                 (character < u' ' || character == QChar(0xfdd0) || character == QChar(0xfdd1)))
            character = QChar::ReplacementCharacter;
    }
    return shown;
}

struct MarkLook
{
    const char *words;
    QColor added; ///< mixed into the ground of the text
};
const MarkLook &LookOf(PageMark::Kind kind)
{
    static const MarkLook looks[] = {{"symbol", QColor(40, 120, 255)},
                                     {"price begin", QColor(255, 170, 0)},
                                     {"price", QColor(0, 180, 60)},
                                     {"price end", QColor(255, 90, 60)}};
    return looks[kind];
}

QColor GroundOf(PageMark::Kind kind, const QPalette &palette)
{
    return Mixed(palette.color(QPalette::Base), LookOf(kind).added, 0.35);
}

} // namespace

frmQuoteSiteTrial::frmQuoteSiteTrial(Program &program)
    : Form(program, QStringLiteral("frmQuoteSiteTrial"), QStringLiteral("Quote Site Test"),
           Placement::Dialog),
      m_inet(program.services.clock)
{
    BuildControls();
}

void frmQuoteSiteTrial::BuildControls()
{
    lblSite = new QLabel(this);
    lblSite->setObjectName(QStringLiteral("lblSite"));
    lblSite->setTextFormat(Qt::PlainText);
    QFont bold = lblSite->font();
    bold.setBold(true);
    lblSite->setFont(bold);

    txtSymbol = new QLineEdit(this);
    txtSymbol->setObjectName(QStringLiteral("txtSymbol"));
    txtSymbol->setAccessibleName(QStringLiteral("Symbol"));
    txtSymbol->setMaximumWidth(fontMetrics().averageCharWidth() * 24);
    cmdTest = MakeButton("cmdTest", "&Test");
    cmdTest->setDefault(true);
    txtPrice = new QLineEdit(this);
    txtPrice->setObjectName(QStringLiteral("txtPrice"));
    txtPrice->setAccessibleName(QStringLiteral("Price taken"));
    txtPrice->setReadOnly(true);
    txtPrice->setMaximumWidth(fontMetrics().averageCharWidth() * 24);
    txtAddress = ReadOnlyText("txtAddress", QStringLiteral("Address asked for"), 2, this);
    txtAddress->setWordWrapMode(QTextOption::WrapAnywhere);
    txtAddress->setMaximumHeight(txtAddress->minimumHeight());
    txtFindings = ReadOnlyText("txtFindings", QStringLiteral("What was found"), 6, this);
    txtFindings->setMaximumHeight(fontMetrics().lineSpacing() * 9);

    const auto label = [this](const char *caption, QWidget *buddy) {
        auto *text = new QLabel(QString::fromUtf8(caption), this);
        text->setBuddy(buddy);
        return text;
    };
    auto *fields = new QGridLayout;
    auto *asked = new QHBoxLayout;
    asked->addWidget(txtSymbol);
    asked->addWidget(cmdTest);
    asked->addStretch();
    asked->addWidget(label("&Price", txtPrice));
    asked->addWidget(txtPrice);
    fields->addWidget(label("&Symbol", txtSymbol), 0, 0);
    fields->addLayout(asked, 0, 1);
    fields->addWidget(label("&Address", txtAddress), 1, 0, Qt::AlignTop);
    fields->addWidget(txtAddress, 1, 1);
    fields->addWidget(label("&Findings", txtFindings), 2, 0, Qt::AlignTop);
    fields->addWidget(txtFindings, 2, 1);
    fields->setColumnStretch(1, 1);

    cmdClose = MakeButton("cmdClose", "&Close");
    cmdHelp = MakeButton("cmdHelp", "&Help");
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdClose);
    buttons->addStretch();
    buttons->addWidget(cmdHelp);

    auto *all = new QVBoxLayout(this);
    all->addWidget(lblSite);
    all->addLayout(fields);
    BuildReply();
    all->addLayout(buttons);

    OnClick(cmdTest, [this] { cmdTest_Click(); });
    OnClick(cmdClose, [this] { UnloadMe(); });
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QStringLiteral("QSQuoteServerUpdate.html")); });
    QWidget *order[] = {txtSymbol,   cmdTest,  txtPrice, txtAddress,
                        txtFindings, txtReply, cmdClose, cmdHelp};
    for (size_t at = 1; at < std::size(order); ++at)
        setTabOrder(order[at - 1], order[at]);
}

void frmQuoteSiteTrial::BuildReply()
{
    txtReply = ReadOnlyText("txtReply", QStringLiteral("Reply of the site"), 10, this);
    txtReply->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    txtReply->setWordWrapMode(QTextOption::WrapAnywhere);
    const int wanted = fontMetrics().averageCharWidth() * 130;
    const int screenWidth = m_program.run.ScreenWidth;
    txtReply->setMinimumWidth(screenWidth > 0 ? std::min(wanted, screenWidth * 9 / 10) : wanted);
    auto *lblReply = new QLabel(QStringLiteral("&Reply"), this);
    lblReply->setBuddy(txtReply);
    lblLegend = new QLabel(this);
    lblLegend->setTextFormat(Qt::RichText);
    lblMore = new QLabel(QStringLiteral("The first %1 characters of the reply are shown.")
                             .arg(m_program.services.formats.Format(ShownCharacters, u"#,##0")),
                         this);
    auto *heading = new QHBoxLayout;
    heading->addWidget(lblReply);
    heading->addStretch();
    heading->addWidget(lblLegend);
    auto *all = static_cast<QVBoxLayout *>(layout());
    all->addLayout(heading);
    all->addWidget(txtReply, 1);
    all->addWidget(lblMore);
}

// --- load and unload ----------------------------------------------------------------------------

void frmQuoteSiteTrial::Load()
{
    Recordset &sites = m_program.databases.gRsWebParameters;
    ServePracticeSite(m_program.practiceServer, sites);
    m_site = CurrentSite(sites);
    lblSite->setText(m_site.WebSiteName);
    txtSymbol->setText(m_program.selection.CurrentSymbol);
    ShowPage(QString(), {});
}

void frmQuoteSiteTrial::showEvent(QShowEvent *event)
{
    Form::showEvent(event);
    txtSymbol->setFocus();
    txtSymbol->selectAll();
}

bool frmQuoteSiteTrial::QueryUnload()
{
    if (!m_isFetching)
        return true;
    m_closesAfterFetch = true;
    m_inet.Cancel();
    return false;
}

// --- test ---------------------------------------------------------------------------------------

void frmQuoteSiteTrial::cmdTest_Click()
{
    if (m_isFetching)
        return;
    const auto [symbol, second] = SymbolsToAskFor();
    if (symbol.isEmpty()) {
        MsgBox(QStringLiteral("Please enter the symbol to ask for."), Box::Exclamation,
               CaptionEditor());
        txtSymbol->setFocus();
        return;
    }
    const auto typeOf = [this](const QString &name) {
        return GetSecurityType(m_program.databases.gConnApplControl, name).value_or(QString());
    };
    const TrialRequest request =
        RequestOfTrial(m_site, symbol, typeOf(symbol), second, typeOf(second));
    ShowPage(QString(), {});
    txtAddress->setPlainText(request.address);
    if (request.address.isEmpty()) {
        txtFindings->setPlainText(
            QStringLiteral("This site has no way to quote an option: Option Prefix and Option "
                           "Suffix are both empty."));
        return;
    }
    txtFindings->setPlainText(QStringLiteral("Asking the site…"));
    const QString page = Fetch(request.address);
    if (m_closesAfterFetch) {
        UnloadMe();
        return;
    }
    TrialReading reading;
    QStringList findings = QStringList(m_transfer) + RowFindings(m_site);
    const auto read = [&](const QString &name) {
        return ReadReply(m_site, name, page, m_program.services.formats, m_inet.EndIsCertain());
    };
    if (!page.isEmpty()) {
        reading = read(request.symbol);
        findings += reading.findings;
    }
    if (!page.isEmpty() && !request.second.isEmpty())
        findings +=
            QStringList(QStringLiteral("Second symbol of the request, %1:").arg(request.second)) +
            read(request.second).findings;
    txtFindings->setPlainText(findings.join(u'\n'));
    if (reading.price)
        txtPrice->setText(m_program.services.formats.ToText(*reading.price));
    ShowPage(page, reading.marks);
}

/// What was typed, one symbol or two. Where the row asks for several at once and one was typed, the
/// second is another one of the portfolio.
std::pair<QString, QString> frmQuoteSiteTrial::SymbolsToAskFor() const
{
    const QString typed = txtSymbol->text().trimmed();
    const qsizetype comma = typed.indexOf(u',');
    if (!AsksForSeveral(m_site))
        return {typed, QString()};
    if (comma > 0)
        return {typed.left(comma).trimmed(), typed.mid(comma + 1).trimmed()};
    const TrackerRecordset &rows = m_program.AdodcStockHistory;
    for (int row = 0; row < rows.RecordCount(); ++row)
        if (rows.At(row).Symbol.compare(typed, Qt::CaseInsensitive) != 0 &&
            !rows.At(row).Symbol.trimmed().isEmpty())
            return {typed, rows.At(row).Symbol};
    return {typed, QString()};
}

/// The page; empty, and m_transfer says why, when none came.
QString frmQuoteSiteTrial::Fetch(const QString &address)
{
    m_isFetching = true;
    const auto done = qScopeGuard([this] { m_isFetching = false; });
    m_inet.AccessType = InetAccess(m_program.settings.AccessType);
    QString page;
    try {
        page = HasLogin() ? FetchWithLogin(address) : m_inet.OpenURL(address);
        m_transfer = TransferInWords(m_inet, page, m_program.services.formats);
    } catch (const RuntimeError &error) {
        if (error.Number() != Inet::TimeOutError)
            throw;
        m_transfer =
            QStringLiteral("No reply came within %1 seconds.")
                .arg(std::chrono::duration_cast<std::chrono::seconds>(m_inet.RequestTimeout)
                         .count());
    }
    if (!m_site.SignUpURL.isEmpty() && !HasLogin())
        m_transfer += QStringLiteral("\nThis site needs a login, and was asked without one: logins "
                                     "are known of the site in use alone.");
    return page;
}

/// The login that the program holds is that of the site in use.
bool frmQuoteSiteTrial::HasLogin() const
{
    return !m_site.SignUpURL.isEmpty() && !m_program.priceUpdate.WebLoginId.isEmpty() &&
           m_site.WebSiteName.trimmed() == m_program.account.CurrentWebSiteName.trimmed();
}

QString frmQuoteSiteTrial::FetchWithLogin(const QString &address)
{
    m_inet.URL = address;
    m_inet.UserName = m_program.priceUpdate.WebLoginId;
    m_inet.Password = m_program.priceUpdate.WebPassword;
    const QString page = m_inet.OpenURL();
    m_inet.Execute(QStringLiteral("QUIT"));
    return page;
}

// --- reply --------------------------------------------------------------------------------------

void frmQuoteSiteTrial::ShowPage(const QString &page, const std::vector<PageMark> &marks)
{
    if (page.isEmpty())
        txtPrice->clear();
    m_marks = marks;
    txtReply->setPlainText(Shown(page));
    lblMore->setVisible(page.size() > ShownCharacters);
    ShowMarks();
    if (marks.empty())
        return;
    QTextCursor first(txtReply->document());
    first.setPosition(std::min(marks.front().position - 1, ShownCharacters - 1));
    txtReply->setTextCursor(first);
    txtReply->centerCursor();
}

void frmQuoteSiteTrial::ShowMarks()
{
    QList<QTextEdit::ExtraSelection> shown;
    const int size = txtReply->document()->characterCount() - 1;
    for (const PageMark &mark : m_marks) {
        QTextEdit::ExtraSelection selection;
        const QColor ground = GroundOf(mark.kind, palette());
        selection.format.setBackground(ground);
        selection.format.setForeground(ReadableOn(ground, palette()));
        selection.format.setFontUnderline(mark.kind == PageMark::Price);
        selection.cursor = QTextCursor(txtReply->document());
        selection.cursor.setPosition(std::min(mark.position - 1, size));
        selection.cursor.setPosition(std::min(mark.position - 1 + mark.length, size),
                                     QTextCursor::KeepAnchor);
        shown << selection;
    }
    txtReply->setExtraSelections(shown);

    QString legend;
    for (const PageMark::Kind kind :
         {PageMark::Symbol, PageMark::Begin, PageMark::Price, PageMark::End}) {
        const QColor ground = GroundOf(kind, palette());
        legend += QStringLiteral("<span style=\"background:%1;color:%2\">&nbsp;%3&nbsp;</span>  ")
                      .arg(ground.name(), ReadableOn(ground, palette()).name(),
                           QString::fromUtf8(LookOf(kind).words));
    }
    lblLegend->setText(legend);
}

void frmQuoteSiteTrial::changeEvent(QEvent *event)
{
    Form::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && txtReply)
        ShowMarks();
}
