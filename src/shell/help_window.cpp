#include "shell/help_window.h"

#include "platform/widgets/focus_frame.h"
#include "shell/help_page.h"

#include <QApplication>
#include <QEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBlock>
#include <QUrl>
#include <QWindow>

namespace
{

constexpr int LinkRole = Qt::UserRole;

void Fill(QListWidget *list, const QList<HelpTopic> &topics)
{
    list->clear();
    for (const HelpTopic &topic : topics) {
        auto *item = new QListWidgetItem(topic.Title, list);
        item->setData(LinkRole, topic.Link);
    }
}

QListWidgetItem *ItemOf(const QListWidget *list, const QString &link)
{
    for (int row = 0; row < list->count(); ++row)
        if (list->item(row)->data(LinkRole).toString() == link)
            return list->item(row);
    return nullptr;
}

} // namespace

HelpWindow::HelpWindow(const QString &folder) : m_folder(folder), m_index(folder)
{
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(QStringLiteral("Quillon Help"));
    setAccessibleName(windowTitle());
    setAttribute(Qt::WA_QuitOnClose, false);
    BuildControls();
    PlaceControls();
    ConnectControls();
    FrameFocusIn(*this);
    Fill(lstHelpContents, m_index.Contents());
    Search();
    resize(QSize(1110, 720).boundedTo(screen()->availableSize())); // a picture fits the page
}

void HelpWindow::BuildControls()
{
    cmdBack = MakeButton("cmdBack", QStringLiteral("&Back"), Qt::ALT | Qt::Key_Left);
    cmdForward = MakeButton("cmdForward", QStringLiteral("&Forward"), Qt::ALT | Qt::Key_Right);
    cmdHome = MakeButton("cmdHome", QStringLiteral("&Home"), Qt::ALT | Qt::Key_Home);
    tabHelp = new QTabWidget(this);
    tabHelp->setObjectName(QStringLiteral("tabHelp"));
    tabHelp->setAccessibleName(QStringLiteral("Contents and search"));
    lstHelpContents = MakeTopicList("lstHelpContents", QStringLiteral("Contents"));
    txtHelpSearch = new QLineEdit(this);
    txtHelpSearch->setObjectName(QStringLiteral("txtHelpSearch"));
    txtHelpSearch->setAccessibleName(QStringLiteral("Words to find"));
    txtHelpSearch->setPlaceholderText(txtHelpSearch->accessibleName());
    txtHelpSearch->setClearButtonEnabled(true);
    lblHelpFound = new QLabel(this);
    lblHelpFound->setObjectName(QStringLiteral("lblHelpFound"));
    lblHelpFound->setWordWrap(true);
    lstHelpFound = MakeTopicList("lstHelpFound", QStringLiteral("Topics found"));
    m_page = new HelpPage(this);
    m_page->setObjectName(QStringLiteral("txtHelpPage"));
    m_page->setAccessibleName(QStringLiteral("Topic"));
}

QPushButton *HelpWindow::MakeButton(const char *name, const QString &caption,
                                    const QKeySequence &key)
{
    auto *button = new QPushButton(caption, this);
    button->setObjectName(QLatin1String(name));
    button->setAccessibleName(QString(caption).remove(QLatin1Char('&')));
    button->setToolTip(key.toString(QKeySequence::NativeText));
    connect(new QShortcut(key, this), &QShortcut::activated, button, &QPushButton::click);
    return button;
}

QListWidget *HelpWindow::MakeTopicList(const char *name, const QString &accessibleName)
{
    auto *list = new QListWidget(this);
    list->setObjectName(QLatin1String(name));
    list->setAccessibleName(accessibleName);
    list->setWordWrap(true); // a long title takes two lines, no scrolling sideways
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setResizeMode(QListView::Adjust);
    return list;
}

void HelpWindow::PlaceControls()
{
    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {cmdBack, cmdForward, cmdHome})
        buttons->addWidget(button);
    buttons->addStretch();

    auto *search = new QWidget(this);
    auto *searchLayout = new QVBoxLayout(search);
    searchLayout->addWidget(txtHelpSearch);
    searchLayout->addWidget(lblHelpFound);
    searchLayout->addWidget(lstHelpFound, 1);
    tabHelp->addTab(lstHelpContents, QStringLiteral("&Contents"));
    tabHelp->addTab(search, QStringLiteral("&Search"));

    auto *panes = new QSplitter(this);
    panes->addWidget(tabHelp);
    panes->addWidget(m_page);
    panes->setChildrenCollapsible(false);
    panes->setStretchFactor(1, 1); // a wider window is a wider page
    panes->setSizes({260, 850});
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(panes, 1);
}

void HelpWindow::ConnectControls()
{
    connect(cmdBack, &QPushButton::clicked, m_page, &QTextBrowser::backward);
    connect(cmdForward, &QPushButton::clicked, m_page, &QTextBrowser::forward);
    connect(cmdHome, &QPushButton::clicked, this, [this] { ShowLink(HelpStartPage); });
    cmdBack->setEnabled(false);
    cmdForward->setEnabled(false);
    connect(m_page, &QTextBrowser::backwardAvailable, cmdBack, &QWidget::setEnabled);
    connect(m_page, &QTextBrowser::forwardAvailable, cmdForward, &QWidget::setEnabled);
    connect(m_page, &QTextBrowser::sourceChanged, this, [this](const QUrl &source) {
        MarkTopic(source); // the page's own source() is still the one before
        MarkWords();
    });
    // By mouse and by Enter; the arrow keys alone only look for a topic.
    const auto showContents = [this](const QListWidgetItem *item) {
        ShowLink(item->data(LinkRole).toString());
    };
    connect(lstHelpContents, &QListWidget::itemClicked, this, showContents);
    connect(lstHelpContents, &QListWidget::itemActivated, this, showContents);
    const auto showFound = [this](const QListWidgetItem *item) {
        ShowLink(item->data(LinkRole).toString());
        ShowFirstMark();
    };
    connect(lstHelpFound, &QListWidget::itemClicked, this, showFound);
    connect(lstHelpFound, &QListWidget::itemActivated, this, showFound);
    connect(txtHelpSearch, &QLineEdit::textChanged, this, [this] { Search(); });
    connect(txtHelpSearch, &QLineEdit::returnPressed, this, [this, showFound] {
        lstHelpFound->setCurrentRow(0);
        if (const QListWidgetItem *best = lstHelpFound->currentItem())
            showFound(best);
    });
    connect(new QShortcut(Qt::CTRL | Qt::Key_F, this), &QShortcut::activated, this, [this] {
        tabHelp->setCurrentIndex(1);
        txtHelpSearch->setFocus(Qt::ShortcutFocusReason);
        txtHelpSearch->selectAll();
    });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::hide);
}

bool HelpWindow::ShowTopic(const QString &topic)
{
    if (!QFileInfo(m_folder + QLatin1Char('/') + topic).isFile())
        return false;
    txtHelpSearch->clear();
    tabHelp->setCurrentIndex(0);
    ShowLink(topic);
    m_page->setFocus();
    BelongToTheModalWindow();
    show();
    raise();
    activateWindow();
    return true;
}

/// A modal window shuts all others out, and keeps them behind it, but those that belong to it.
void HelpWindow::BelongToTheModalWindow()
{
    winId(); // makes the handle
    const QWidget *modal = QApplication::activeModalWidget();
    QWindow *owner = modal ? modal->windowHandle() : nullptr;
    if (windowHandle()->transientParent() == owner)
        return;
    hide(); // the desktop takes it when the window comes up
    setWindowFlag(Qt::WindowStaysOnTopHint,
                  modal && modal->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    winId();
    windowHandle()->setTransientParent(owner);
}

void HelpWindow::ShowLink(const QString &link)
{
    const QUrl folder = QUrl::fromLocalFile(m_folder + QLatin1Char('/'));
    m_page->setSource(folder.resolved(QUrl(link)));
}

void HelpWindow::ShowFirstMark()
{
    const QList<QTextEdit::ExtraSelection> marks = m_page->extraSelections();
    if (marks.isEmpty())
        return;
    QTextCursor start = marks.first().cursor;
    start.clearSelection();
    m_page->setTextCursor(start); // scrolls to it
}

/// The topic that is shown stands out in the contents: bold, and the current row.
void HelpWindow::MarkTopic(const QUrl &source)
{
    QListWidgetItem *shown =
        ItemOf(lstHelpContents, source.fileName() + QLatin1Char('#') + source.fragment());
    if (!shown)
        shown = ItemOf(lstHelpContents, source.fileName());
    for (int row = 0; row < lstHelpContents->count(); ++row) {
        QListWidgetItem *item = lstHelpContents->item(row);
        QFont font = lstHelpContents->font();
        font.setBold(item == shown);
        item->setFont(font);
    }
    lstHelpContents->setCurrentItem(shown);
}

/// Marks the words searched for in the page, in the colours of a selection.
void HelpWindow::MarkWords()
{
    const QStringList words = SearchWords(txtHelpSearch->text());
    QTextCharFormat format;
    format.setBackground(palette().highlight());
    format.setForeground(palette().highlightedText());
    QList<QTextEdit::ExtraSelection> marks;
    const QTextDocument *document = m_page->document();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
        for (const WordPlace &place : PlacesOf(words, block.text())) {
            QTextCursor word(block);
            word.setPosition(block.position() + place.Start);
            word.setPosition(word.position() + place.Length, QTextCursor::KeepAnchor);
            marks << QTextEdit::ExtraSelection{word, format};
        }
    m_page->setExtraSelections(marks);
}

void HelpWindow::Search()
{
    const bool isEmpty = SearchWords(txtHelpSearch->text()).isEmpty();
    const QList<HelpTopic> found = m_index.Search(txtHelpSearch->text());
    Fill(lstHelpFound, found);
    lblHelpFound->setVisible(!isEmpty);
    lblHelpFound->setText(found.isEmpty()     ? QStringLiteral("No topic holds these words.")
                          : found.size() == 1 ? QStringLiteral("1 topic")
                                              : QStringLiteral("%1 topics").arg(found.size()));
    MarkWords();
}

void HelpWindow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_page)
        MarkWords();
}
