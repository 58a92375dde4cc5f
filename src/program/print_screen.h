#pragma once

/// The screen on paper: what it shows is captured as a picture and goes to Services::printPicture.
///
///     PrintPicture(program, CaptureClient(window));
///
/// The pictures are in the device's own pixels. A desktop under X gives them away as they are seen,
/// with frames, and with what lies in front. Other desktops keep what they show to themselves: there
/// the program's windows are drawn into the picture, without frames.

#include "program/program.h"

#include <QImage>

class QMainWindow;

/// The whole screen on which the main window stands.
QImage CaptureScreen(QMainWindow &main);
/// The main window with its frame.
QImage CaptureForm(QMainWindow &main);
/// What the frame and the menu bar leave of the main window: toolbar, screens and status bar.
QImage CaptureClient(QMainWindow &main);
/// The window that has the focus. When that is a window of another program, the whole screen, for a
/// program does not come to know which one it is.
QImage CaptureActiveWindow(QMainWindow &main);

/// Throws RuntimeError 482 when there is no picture, or when it can't be printed.
void PrintPicture(Program &program, const QImage &picture);

/// Tells the user to choose a window, gives him four seconds to do it, and prints that window.
void PrintActiveWindow(Program &program, QMainWindow &main);

/// Lets the menu from which the command came go from view.
void LetMenuGo(Program &program);
