#pragma once

/// The plug-in that shows web pages inside the program: libquillon_browser in the folder plugins/
/// beside the executable, if it is there.

#include <QString>

class BrowserView;
class QWidget;

/// To be called before the QApplication is made: the browser engine draws with what all windows
/// share, which cannot be had later. Does nothing when the plug-in is not beside the executable.
void PrepareForBrowserPlugin();

/// Loads the plug-in of this folder at the first call, and makes a view. Nothing when there is no
/// plug-in, when it does not load, or when the program is not prepared for it.
BrowserView *CreatePluginView(const QString &appPath, QWidget *parent);
