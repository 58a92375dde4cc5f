#include "shell/screen_host.h"

#include "platform/widgets/on_top.h"
#include "shell/frm_mdi_main.h"
#include "shell/help_window.h"
#include "shell/mdi_arrange.h"

#include <QApplication>
#include <QEventLoop>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace
{

/// Frames give the focus to a child's first control, even a disabled one, which refuses it: the keys
/// would then stay with the screen of before, and with the next return to the window that screen.
void EnsureFocusWithin(QWidget &form)
{
    const QWidget *focused = form.window()->focusWidget();
    if (focused && form.isAncestorOf(focused))
        return;
    for (QWidget *next = form.nextInFocusChain(); next != &form && form.isAncestorOf(next);
         next = next->nextInFocusChain()) {
        if ((next->focusPolicy() & Qt::TabFocus) && next->isEnabled() && next->isVisible()) {
            next->setFocus();
            return;
        }
    }
}

/// Moves a window whose lower or right end is out of the user's reach.
void KeepOnDesktop(QWidget &window)
{
    const QRect desktop = window.screen()->availableGeometry();
    const QRect frame = window.frameGeometry();
    const auto within = [](int at, int size, int from, int space) {
        return std::clamp(at, from, from + std::max(0, space - size));
    };
    const QPoint place(within(frame.x(), frame.width(), desktop.x(), desktop.width()),
                       within(frame.y(), frame.height(), desktop.y(), desktop.height()));
    if (place != frame.topLeft())
        window.move(place);
}

/// The frame of a child. What hides gives the focus to the next control, as Tab does; a maximized
/// frame hides for a moment whenever another one comes to the front or goes. The screen would be found
/// with the focus elsewhere each time one returns to it.
class ChildFrame : public QMdiSubWindow
{
public:
    ChildFrame()
    {
        // Left alone, desktops differ in which of the two closes a child; Close is the last entry.
        systemMenu()->actions().constLast()->setShortcuts(
            {QKeySequence(Qt::CTRL | Qt::Key_F4), QKeySequence(Qt::CTRL | Qt::Key_W)});
    }

protected:
    bool focusNextPrevChild(bool next) override
    {
        return isVisible() && QMdiSubWindow::focusNextPrevChild(next);
    }
};

} // namespace

struct ScreenHost::LoadedScreen
{
    QString name;
    QPointer<Form> form;
    QPointer<QMdiSubWindow> subWindow; ///< the frame of a child, which owns the form
    QEventLoop *loop = nullptr;        ///< of the caller that waits for a modal screen
    bool unloading = false;
};

ScreenHost::ScreenHost() = default;

ScreenHost::~ScreenHost()
{
    DestroyAll();
}

void ScreenHost::Attach(Program &program, frmMDIMain &window)
{
    m_program = &program;
    m_window = &window;
    QObject::connect(window.Area(), &QMdiArea::subWindowActivated, window.Area(),
                     [this](QMdiSubWindow *subWindow) { OnChildActivated(subWindow); });
}

void ScreenHost::Register(const QString &form, Factory factory, const QString &viewEntry)
{
    m_known.insert(form, {std::move(factory), viewEntry});
}

// --- loading and showing -------------------------------------------------------------------------

bool ScreenHost::Show(const QString &form)
{
    if (!Has(form)) {
        if (OnMissing)
            OnMissing(form);
        return false;
    }
    if (LoadedScreen *screen = LoadEntry(form))
        Display(*screen, false);
    return true;
}

bool ScreenHost::ShowModal(const QString &form)
{
    if (!Has(form)) {
        if (OnMissing)
            OnMissing(form);
        return false;
    }
    LoadedScreen *screen = LoadEntry(form);
    if (!screen)
        return true;
    if (screen->loop) { // somebody waits for it already
        Display(*screen, false);
        return true;
    }
    QEventLoop loop;
    screen->loop = &loop;
    Display(*screen, true);
    if (Entry(form) == screen) // it may have gone as soon as it was shown
        loop.exec();
    if (m_ended)
        throw ProgramEnded();
    return true;
}

bool ScreenHost::Load(const QString &form)
{
    if (!Has(form))
        return false;
    LoadEntry(form);
    return true;
}

ScreenHost::LoadedScreen *ScreenHost::LoadEntry(const QString &form)
{
    if (LoadedScreen *screen = Entry(form))
        return screen;
    const Known &known = m_known[form];
    auto entry = std::make_unique<LoadedScreen>();
    entry->name = form;
    entry->form = known.factory(*m_program).release();
    LoadedScreen *screen = entry.get();
    m_loaded.push_back(std::move(entry));
    if (!known.viewEntry.isEmpty())
        m_program->services.commands.SetChecked(known.viewEntry, true);
    try {
        screen->form->Load();
    } catch (...) {
        Remove(form);
        throw;
    }
    return Entry(form);
}

void ScreenHost::Display(LoadedScreen &screen, bool modal)
{
    const QString name = screen.name;
    const Placement placement = screen.form->Where();
    if (placement == Placement::Hidden)
        return;
    if (placement == Placement::Child && !modal) {
        const bool wasActive = m_activeChild == name;
        DisplayChild(screen);
        if (wasActive && Find(name)) // no change of the active child will tell it
            Find(name)->Activate();
        return;
    }
    if (modal)
        screen.form->setWindowModality(Qt::ApplicationModal);
    // No tool window: the main window's Alt keys would stay at work in it, beside its own.
    DisplayWindow(screen, placement == Placement::OnTop
                              ? Qt::WindowFlags(Qt::Dialog | Qt::WindowStaysOnTopHint)
                              : Qt::WindowFlags(Qt::Dialog));
    if (Find(name))
        Find(name)->Activate();
}

void ScreenHost::DisplayChild(LoadedScreen &screen)
{
    QMdiArea *area = m_window->Area();
    if (!screen.subWindow) {
        // Measured before the frame takes it: what the layout asks for, but never beyond the area.
        const QSize wanted = screen.form->sizeHint();
        screen.subWindow = new ChildFrame;
        screen.subWindow->setWidget(screen.form);
        area->addSubWindow(screen.subWindow);
        screen.subWindow->setAttribute(Qt::WA_DeleteOnClose, false);
        screen.subWindow->setWindowIcon(m_window->windowIcon());
        if (m_program->settings.ArgMaximize) {
            screen.subWindow->showMaximized();
        } else {
            const QSize frame = screen.subWindow->size() - screen.form->size();
            const QSize size = (wanted + frame).boundedTo(area->viewport()->size());
            const QSize space = area->viewport()->size() - size;
            screen.subWindow->setGeometry(space.width() / 2, space.height() / 2, size.width(),
                                          size.height());
        }
    }
    if (screen.subWindow->isMinimized())
        screen.subWindow->showNormal();
    else
        screen.subWindow->show();
    screen.form->show();
    area->setActiveSubWindow(screen.subWindow);
    EnsureFocusWithin(*screen.form);
    // The first web page makes the desktop take the main window for a new one, of its usual size.
    QWindow *desktop = m_window->windowHandle();
    if (desktop && m_window->isMaximized() && !(desktop->windowStates() & Qt::WindowMaximized))
        desktop->setWindowStates(Qt::WindowMaximized);
}

void ScreenHost::DisplayWindow(LoadedScreen &screen, Qt::WindowFlags type)
{
    Form *form = screen.form;
    if (!form->isVisible()) {
        form->setParent(m_window, type | (form->windowFlags() & Qt::FramelessWindowHint));
        if (form->isModal())
            PutOnTop(*form);
        form->adjustSize();
        const QRect around =
            m_window->isVisible() ? m_window->geometry() : m_window->screen()->availableGeometry();
        form->move(around.center() - form->rect().center());
    }
    form->show();
    KeepOnDesktop(*form); // it may have grown as it came up
    form->raise();
    form->activateWindow();
}

void ScreenHost::OnChildActivated(QMdiSubWindow *subWindow)
{
    // The signal also comes when the main window itself gains or loses the focus. On the way out the
    // screen behind the one that closes is the next to close.
    if (!subWindow || m_program->run.ProgramClosing)
        return;
    for (const auto &screen : m_loaded) {
        if (screen->subWindow == subWindow && m_activeChild != screen->name) {
            m_activeChild = screen->name;
            RunGuarded(*m_program, [form = screen->form] { form->Activate(); });
            return;
        }
    }
}

// --- unloading -----------------------------------------------------------------------------------

bool ScreenHost::Unload(const QString &form)
{
    LoadedScreen *screen = Entry(form);
    if (!screen || screen->unloading)
        return true;
    screen->unloading = true;
    try {
        if (!screen->form->QueryUnload()) {
            if (Entry(form) == screen)
                screen->unloading = false;
            return false;
        }
        screen->form->OnUnload();
    } catch (...) {
        Remove(form); // a screen that cannot be left would be worse
        throw;
    }
    Remove(form);
    return true;
}

void ScreenHost::Remove(const QString &form)
{
    const auto at = std::find_if(m_loaded.begin(), m_loaded.end(),
                                 [&](const auto &screen) { return screen->name == form; });
    if (at == m_loaded.end())
        return;
    const std::unique_ptr<LoadedScreen> screen = std::move(*at);
    m_loaded.erase(at);
    if (m_activeChild == form)
        m_activeChild.clear();
    if (const QString &entry = m_known[form].viewEntry; !entry.isEmpty())
        m_program->services.commands.SetChecked(entry, false);
    QWidget *shown = screen->subWindow ? static_cast<QWidget *>(screen->subWindow) : screen->form;
    if (shown) {
        const bool wasMaximized = screen->subWindow && shown->isMaximized();
        shown->hide();
        if (screen->subWindow)
            m_window->Area()->removeSubWindow(shown);
        QMdiSubWindow *next = wasMaximized ? m_window->Area()->activeSubWindow() : nullptr;
        if (next) // of maximized screens the one behind is maximized as well
            next->showMaximized();
        shown->deleteLater();
        m_removed.removeIf([](const auto &gone) { return gone.isNull(); });
        m_removed.append(shown);
    }
    if (screen->loop)
        screen->loop->quit();
}

void ScreenHost::EndAll()
{
    m_ended = true;
    for (const auto &screen : m_loaded) {
        if (screen->loop)
            screen->loop->quit();
        if (!screen->subWindow && screen->form)
            screen->form->hide();
    }
    if (m_help)
        m_help->hide();
    if (m_window)
        m_window->hide();
}

void ScreenHost::DestroyAll()
{
    m_help.reset();
    for (const auto &screen : m_loaded) {
        if (screen->subWindow)
            delete screen->subWindow.data();
        else
            delete screen->form.data();
    }
    m_loaded.clear();
    for (const QPointer<QWidget> &removed : std::exchange(m_removed, {}))
        delete removed.data();
}

// --- what is there -------------------------------------------------------------------------------

ScreenHost::LoadedScreen *ScreenHost::Entry(const QString &form) const
{
    for (const auto &screen : m_loaded)
        if (screen->name == form)
            return screen.get();
    return nullptr;
}

Form *ScreenHost::Find(const QString &form) const
{
    const LoadedScreen *screen = m_ended ? nullptr : Entry(form);
    return screen ? screen->form.data() : nullptr;
}

QStringList ScreenHost::LoadedScreens() const
{
    QStringList names;
    for (const auto &screen : m_loaded)
        if (!m_ended)
            names << screen->name;
    return names;
}

Form *ScreenHost::ActiveChild() const
{
    const QMdiSubWindow *active = m_window->Area()->activeSubWindow();
    for (const auto &screen : m_loaded)
        if (active && screen->subWindow == active)
            return screen->form;
    return nullptr;
}

void ScreenHost::Arrange(int arrangement)
{
    ArrangeWindows(*m_window->Area(), arrangement);
}

void ScreenHost::ShowHelp(const QString &topic)
{
    if (!m_help)
        m_help =
            std::make_unique<HelpWindow>(m_program->services.programPath + QStringLiteral("/help"));
    if (!m_help->ShowTopic(topic))
        m_program->services.status.Post(
            QStringLiteral("The help topic %1 was not found").arg(topic));
}

void ScreenHost::ShowPopup(const QString &popup, const QPoint &where)
{
    if (QMenu *menu = m_window->Popup(popup))
        menu->popup(where);
}
