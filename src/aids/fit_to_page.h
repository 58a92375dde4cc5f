#pragma once

/// How large a picture is printed: as large as its page lets it, in its own proportions.
///
///     picture 1280 x 800 on a page of 190 x 280     190 x 118.75; the page's width is the limit
///     picture 1280 x 800 on a page of 400 x 100     160 x 100; its height is

#include <QSizeF>

/// In the units of `page`. Empty when one of them has no width or height.
inline QSizeF FitToPage(const QSizeF &picture, const QSizeF &page)
{
    if (picture.isEmpty() || page.isEmpty())
        return QSizeF(0, 0);
    const double pageRatio = page.height() / page.width();
    const double pictureRatio = picture.height() / picture.width();
    if (pageRatio > pictureRatio)
        return QSizeF(page.width(), page.width() * pictureRatio);
    return QSizeF(page.height() / pictureRatio, page.height());
}
