#pragma once

/// Web pages by Qt WebEngine. A page leaves nothing behind on the disk, opens no window and no box of
/// its own, saves no file and gets no permission (place, camera, notifications).

#include "program/browser_view.h"

class QWebEnginePage;
class QWebEngineProfile;
class QWebEngineView;

class WebEngineView : public BrowserView
{
public:
    explicit WebEngineView(QWidget *parent);
    ~WebEngineView() override;

    void Navigate(const QUrl &page) override;
    void Refresh() override;

private:
    QWebEngineProfile *m_profile; ///< outlives the page
    QWebEngineView *m_view;
    QWebEnginePage *m_page;
};
