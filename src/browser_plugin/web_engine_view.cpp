#include "browser_plugin/web_engine_view.h"

#include <QAuthenticator>
#include <QVBoxLayout>
#include <QWebEngineNewWindowRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>

namespace
{

/// What a page asks by a box is answered without one.
class QuietPage : public QWebEnginePage
{
public:
    using QWebEnginePage::QWebEnginePage;

protected:
    void javaScriptAlert(const QUrl &, const QString &) override {}
    bool javaScriptConfirm(const QUrl &, const QString &) override { return false; }
    bool javaScriptPrompt(const QUrl &, const QString &, const QString &, QString *) override
    {
        return false;
    }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString &, int,
                                  const QString &) override
    {}
};

} // namespace

WebEngineView::WebEngineView(QWidget *parent)
    : BrowserView(parent), m_profile(new QWebEngineProfile(this)), // without a name: off the record
      m_view(new QWebEngineView(this)), m_page(new QuietPage(m_profile, this))
{
    connect(m_page, &QWebEnginePage::newWindowRequested, this,
            [this](QWebEngineNewWindowRequest &request) {
                if (request.isUserInitiated() && OnNewWindow)
                    OnNewWindow(request.requestedUrl());
            });
    connect(m_page, &QWebEnginePage::authenticationRequired, this,
            [](const QUrl &, QAuthenticator *login) { *login = QAuthenticator(); });
    m_view->setPage(m_page);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (const auto action : {QWebEnginePage::Back, QWebEnginePage::Forward, QWebEnginePage::Reload,
                              QWebEnginePage::Copy})
        m_view->addAction(m_page->action(action));
    setFocusProxy(m_view);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
}

WebEngineView::~WebEngineView()
{
    delete m_view;
    delete m_page;
    delete m_profile;
}

void WebEngineView::Navigate(const QUrl &page)
{
    m_page->load(page);
}

void WebEngineView::Refresh()
{
    m_page->triggerAction(QWebEnginePage::Reload);
}
