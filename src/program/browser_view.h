#pragma once

/// The view of a web page inside the program.
///
/// The browser engine behind it is large, so that it lies in a plug-in, which is loaded when the
/// browser screen opens; nothing else of the program knows the engine. A program without the
/// plug-in shows its pages in the user's browser.

#include <QUrl>
#include <QWidget>

#include <functional>

class BrowserView : public QWidget
{
public:
    using QWidget::QWidget;

    /// Begins to load the page, and comes back at once.
    virtual void Navigate(const QUrl &page) = 0;
    /// Loads the page that is shown anew.
    virtual void Refresh() = 0;

    /// Called with a page that the user wants to see in a window of its own.
    std::function<void(const QUrl &page)> OnNewWindow;
};

/// The root object of the plug-in.
class BrowserPlugin
{
public:
    virtual ~BrowserPlugin() = default;
    /// Owned by `parent`, or by the caller when there is none. Nothing when the engine cannot run here.
    virtual BrowserView *CreateView(QWidget *parent) = 0;
};
Q_DECLARE_INTERFACE(BrowserPlugin, "Quillon.BrowserPlugin/1")
