#include "shell/help_page.h"

#include <QEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextDocument>
#include <QtMath>

#include <algorithm>

namespace
{

constexpr int BodyMargin = 14; ///< in the style of the help

} // namespace

QVariant HelpPage::loadResource(int type, const QUrl &name)
{
    const QVariant read = QTextBrowser::loadResource(type, name);
    if (type == QTextDocument::HtmlResource) // another topic, not another place in this one
        m_pictures.clear();
    if (type != QTextDocument::ImageResource)
        return read;
    const QImage picture = QImage::fromData(read.toByteArray());
    if (picture.isNull())
        return read;
    m_pictures.insert(name, picture);
    m_fittedWidth = WidthOfPage();
    return Fitted(picture);
}

void HelpPage::resizeEvent(QResizeEvent *event)
{
    QTextBrowser::resizeEvent(event);
    FitPictures();
}

void HelpPage::changeEvent(QEvent *event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        m_fittedWidth = 0; // the frame has another colour
        FitPictures();
    }
}

/// With the scroll bar there, whether it is or not: the bar comes and goes with the height of the
/// pictures, which follows from their width.
int HelpPage::WidthOfPage() const
{
    const int margins = 2 * (BodyMargin + qCeil(document()->documentMargin()));
    return contentsRect().width() - verticalScrollBar()->sizeHint().width() - margins;
}

QImage HelpPage::Fitted(const QImage &picture) const
{
    const qreal pixels = devicePixelRatioF();
    const int width = std::clamp(picture.width(), 1, std::max(1, WidthOfPage()));
    QImage fitted = width == picture.width() && pixels == 1
                        ? picture.convertToFormat(QImage::Format_RGB32)
                        : picture.scaledToWidth(qRound(width * pixels), Qt::SmoothTransformation);
    QPainter painter(&fitted);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(fitted.rect().adjusted(0, 0, -1, -1));
    painter.end();
    fitted.setDevicePixelRatio(pixels);
    return fitted;
}

void HelpPage::FitPictures()
{
    const int width = WidthOfPage();
    if (m_pictures.isEmpty() || width == m_fittedWidth)
        return;
    m_fittedWidth = width;
    for (auto picture = m_pictures.cbegin(); picture != m_pictures.cend(); ++picture)
        document()->addResource(QTextDocument::ImageResource, picture.key(),
                                Fitted(picture.value()));
    document()->markContentsDirty(0, document()->characterCount());
}
