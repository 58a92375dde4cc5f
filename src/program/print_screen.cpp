#include "program/print_screen.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>

#include <chrono>

using namespace std::chrono_literals;

namespace
{

/// What the desktop shows in this part of it, in the coordinates of the desktop; no picture when it
/// gives none away.
QImage CaptureDesktop(QScreen &screen, const QRect &part)
{
    // Programs for X run on other desktops too, which show them nothing but black.
    const bool isX = QGuiApplication::platformName() == QLatin1String("xcb") &&
                     qgetenv("XDG_SESSION_TYPE") != "wayland";
    const QRect seen = part.intersected(screen.geometry());
    if (!isX || seen.isEmpty())
        return QImage();
    const QRect inScreen = seen.translated(-screen.geometry().topLeft());
    return screen.grabWindow(0, inScreen.x(), inScreen.y(), inScreen.width(), inScreen.height())
        .toImage();
}

/// The program's windows where they stand on the screen, the main window behind the others.
QImage DrawOwnWindows(QMainWindow &main)
{
    QScreen &screen = *main.screen();
    QImage picture(screen.size() * screen.devicePixelRatio(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(screen.devicePixelRatio());
    picture.fill(Qt::white);
    QPainter painter(&picture);
    const auto draw = [&](QWidget *window) {
        painter.drawPixmap(window->geometry().topLeft() - screen.geometry().topLeft(),
                           window->grab());
    };
    draw(&main);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        const Qt::WindowType type = window->windowType(); // no menus, no tool tips
        if (window != &main && window->isVisible() && (type == Qt::Dialog || type == Qt::Window))
            draw(window);
    }
    return picture;
}

QImage CaptureWindow(QWidget &window)
{
    const QImage seen = CaptureDesktop(*window.screen(), window.frameGeometry());
    return seen.isNull() ? window.grab().toImage() : seen;
}

} // namespace

QImage CaptureScreen(QMainWindow &main)
{
    const QImage seen = CaptureDesktop(*main.screen(), main.screen()->geometry());
    return seen.isNull() ? DrawOwnWindows(main) : seen;
}

QImage CaptureForm(QMainWindow &main)
{
    return CaptureWindow(main);
}

QImage CaptureClient(QMainWindow &main)
{
    QRect client = main.rect();
    client.setTop(main.menuBar()->geometry().bottom() + 1);
    return main.grab(client).toImage();
}

QImage CaptureActiveWindow(QMainWindow &main)
{
    QWidget *active = QApplication::activeWindow();
    return active ? CaptureWindow(*active) : CaptureScreen(main);
}

void PrintPicture(Program &program, const QImage &picture)
{
    const auto &print = program.services.printPicture;
    if (picture.isNull() || !print)
        throw RuntimeError::Printer();
    print(picture);
}

void PrintActiveWindow(Program &program, QMainWindow &main)
{
    program.services.dialogs.MsgBox(
        QStringLiteral("Four seconds after you close this dialog box\n"
                       "the active window will be captured and printed.\n"
                       "Click on any window to make it the active window."),
        Box::Information, EditorTitle(QStringLiteral("Print")));
    program.services.clock.Wait(4s);
    PrintPicture(program, CaptureActiveWindow(main));
}

void LetMenuGo(Program &program)
{
    program.services.clock.Wait(250ms);
}
