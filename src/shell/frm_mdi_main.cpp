#include "shell/frm_mdi_main.h"

#include "platform/widgets/app_icon.h"
#include "program/desktop_colors.h"
#include "shell/command_table.h"
#include "shell/recent_menu.h"
#include "shell/status_bar.h"
#include "shell/toolbar_keys.h"
#include "shell/window_list.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QShortcut>
#include <QToolBar>
#include <QToolButton>

frmMDIMain::frmMDIMain(Program &program, const QString &gStatusMessage)
    : m_program(program), m_statusMessage(gStatusMessage), m_area(new QMdiArea(this)),
      m_toolbar(new QToolBar(QStringLiteral("Toolbar"), this)), m_statusBar(new StatusPanels)
{
    setObjectName(QStringLiteral("frmMDIMain"));
    setWindowIcon(AppIcon(program.services.programPath, QStringLiteral("quillon")));
    m_area->setObjectName(QStringLiteral("MDIArea"));
    m_area->setAccessibleName(QStringLiteral("Screens"));
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(m_area);

    m_toolbar->setObjectName(QStringLiteral("Toolbar"));
    m_toolbar->setAccessibleName(QStringLiteral("Toolbar"));
    m_toolbar->setMovable(false);
    m_toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    addToolBar(m_toolbar);
    setStatusBar(m_statusBar);
    BuildCommands();
    AddRecentAccounts();
    ListWindowsIn(*Popup(QStringLiteral("mnuWindow")), *m_area);
    setAcceptDrops(true);

    // The user's mouse anywhere on the toolbar counts as an action, also between the buttons.
    m_toolbar->setMouseTracking(true);
    m_toolbar->installEventFilter(this);
    const QList<QWidget *> buttons = m_toolbar->findChildren<QWidget *>();
    for (QWidget *button : buttons) {
        button->setMouseTracking(true);
        button->installEventFilter(this);
    }
    AddKeys();
    resize(1180, 740);
}

void frmMDIMain::BuildCommands()
{
    for (const Command &command : CommandTable()) {
        const QString name = command.Name();
        QMenu *parent = m_menus.value(command.Parent());
        if (command.kind == CommandKind::Separator) {
            parent->addSeparator();
            continue;
        }
        if (command.kind == CommandKind::Menu || command.kind == CommandKind::Popup) {
            auto *menu = new QMenu(parent ? static_cast<QWidget *>(parent) : this);
            menu->setObjectName(name);
            m_menus.insert(name, menu);
            m_actions.insert(name, menu->menuAction());
            if (parent)
                parent->addMenu(menu);
            else if (command.kind == CommandKind::Menu)
                menuBar()->addMenu(menu);
        } else {
            auto *action = new QAction(this);
            action->setObjectName(name);
            action->setShortcut(QKeySequence(QString::fromUtf8(command.shortcut)));
            m_actions.insert(name, action);
            if (command.kind == CommandKind::Button) {
                action->setIcon(AppIcon(m_program.services.programPath, name));
                m_toolbar->addAction(action);
                m_toolbar->widgetForAction(action)->setObjectName(name);
            } else {
                parent->addAction(action);
            }
            connect(action, &QAction::triggered, this, [this, name] {
                if (OnCommand)
                    OnCommand(name);
                UpdateCommand(name); // a click on a checked entry has turned its mark over
            });
        }
        UpdateCommand(name);
    }
    UpdateConnectIcon();
}

void frmMDIMain::AddRecentAccounts()
{
    auto *open =
        qobject_cast<QToolButton *>(m_toolbar->widgetForAction(Action(QStringLiteral("Open"))));
    auto *recent = new RecentMenu(m_program, open);
    recent->OnAccount = [this](const QString &path) { ChooseAccount(path); };
    open->setMenu(recent);
    open->setPopupMode(QToolButton::MenuButtonPopup);
}

/// The keys of a desktop for what the menus do not have.
void frmMDIMain::AddKeys()
{
    auto *toolbar = new ToolbarKeys(*m_toolbar);
    const auto key = [this](const char *keys, auto act) {
        connect(new QShortcut(QKeySequence(QLatin1String(keys)), this), &QShortcut::activated, this,
                act);
    };
    key("F6", [toolbar] { toolbar->Toggle(); });
    key("F10", [this] { menuBar()->setActiveAction(menuBar()->actions().constFirst()); });
    key("Ctrl+F6", [this] { m_area->activateNextSubWindow(); });
    key("Ctrl+Shift+F6", [this] { m_area->activatePreviousSubWindow(); });
    key("Alt+-", [this] {
        if (QMdiSubWindow *child = m_area->activeSubWindow())
            child->showSystemMenu();
    });
}

void frmMDIMain::ChooseAccount(const QString &path)
{
    if (OnAccount)
        OnAccount(path);
}

void frmMDIMain::UpdateCommand(const QString &name)
{
    QAction *action = m_actions.value(name);
    if (!action)
        return;
    const CommandStates &states = m_program.services.commands;
    action->setText(states.Caption(name));
    action->setEnabled(states.Enabled(name));
    // Checkable only while it is checked: an empty box beside every other entry would mislead.
    action->setCheckable(states.Checked(name));
    action->setChecked(states.Checked(name));
}

void frmMDIMain::UpdateConnectIcon()
{
    const bool on = m_program.priceUpdate.PriceUpdateActive;
    if (m_connectIconOn == on)
        return;
    m_connectIconOn = on;
    QIcon &icon = on ? m_connectOn : m_connectOff;
    if (icon.isNull())
        icon = AppIcon(m_program.services.programPath,
                       on ? QStringLiteral("ConnectOn") : QStringLiteral("ConnectOff"));
    Action(QStringLiteral("Connect"))->setIcon(icon);
}

void frmMDIMain::Load()
{
    TakeDesktopColor();
    UpdateCaption();
    showMaximized();
    m_program.run.ScreenWidth = m_area->viewport()->width();
    m_program.run.ScreenHeight = m_area->viewport()->height();
    m_program.priceUpdate.ConnectionState = 3;
    m_program.services.status.Post(QString());
}

QString frmMDIMain::Caption() const
{
    return QStringLiteral("Quillon - ") + m_program.settings.AccountName;
}

void frmMDIMain::UpdateCaption()
{
    setWindowTitle(Caption());
}

void frmMDIMain::UpdateStatusBar()
{
    m_statusBar->Update(m_program, m_statusMessage);
    UpdateConnectIcon();
}

void frmMDIMain::TakeDesktopColor()
{
    FollowDesktopColor(m_program.settings, m_program.services.settingsStore,
                       palette().color(QPalette::Active, QPalette::Base).rgb());
}

void frmMDIMain::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && isVisible()) // the settings are read by then
        TakeDesktopColor();
}

void frmMDIMain::closeEvent(QCloseEvent *event)
{
    // The exit sequence hides the window itself when the program ends.
    event->ignore();
    if (OnClose)
        OnClose();
}

QString frmMDIMain::DroppedAccount(const QDropEvent &event) const
{
    const CommandStates &states = m_program.services.commands;
    if (QApplication::activeModalWidget() || !states.Enabled(QStringLiteral("Open")) ||
        !CommandUsable(states, QStringLiteral("mnuFLOpenExisting")))
        return QString();
    const QList<QUrl> urls = event.mimeData()->urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return QString();
    const QFileInfo file(urls.first().toLocalFile());
    const bool isAccount =
        file.isFile() && file.suffix().compare(QLatin1String("mdb"), Qt::CaseInsensitive) == 0;
    return isAccount ? file.filePath() : QString();
}

void frmMDIMain::dragEnterEvent(QDragEnterEvent *event)
{
    if (DroppedAccount(*event).isEmpty())
        return;
    // A copy: the program the file comes from must not take it away as moved.
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void frmMDIMain::dropEvent(QDropEvent *event)
{
    const QString path = DroppedAccount(*event);
    if (path.isEmpty())
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // Later: the program the file comes from waits until the drop is done, and there may be boxes.
    QMetaObject::invokeMethod(
        this, [this, path] { ChooseAccount(path); }, Qt::QueuedConnection);
}

bool frmMDIMain::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonPress)
        m_program.UserActed();
    return QMainWindow::eventFilter(watched, event);
}
