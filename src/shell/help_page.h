#pragma once

/// The page of the help window: a topic with its pictures.
///
/// A picture is shown at its own size, or as wide as the page when that is narrower, and gets a
/// thin frame, since a screen's edge and the page may have the same colour. It is scaled to the
/// screen's own pixels: what is drawn is smooth at any scaling of the desktop.

#include <QHash>
#include <QImage>
#include <QTextBrowser>

class HelpPage : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

protected:
    QVariant loadResource(int type, const QUrl &name) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    int WidthOfPage() const;
    QImage Fitted(const QImage &picture) const;
    void FitPictures();

    QHash<QUrl, QImage> m_pictures; ///< of the topic that is shown, as they were read
    int m_fittedWidth = 0;          ///< the page's when they were fitted last
};
