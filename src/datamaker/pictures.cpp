/// quillon_make_pictures ICONS FOLDER: draws the four pictures of the connection's state as the
/// bitmaps that the status bar loads from the application folder. They are shown 16 pixels wide, of
/// which a fine screen has four for one.

#include <QCoreApplication>
#include <QImage>
#include <QImageReader>
#include <QPainter>

#include <cstdio>

namespace
{

constexpr int kSide = 64;

/// Draws `source` into the bitmap `target`. Bitmaps know no transparency: the drawings fill
/// their square, and what they leave open at the edges becomes white.
bool MakeBitmap(const QString &source, const QString &target)
{
    QImageReader reader(source, "svg");
    reader.setScaledSize(QSize(kSide, kSide));
    const QImage drawing = reader.read();
    if (drawing.isNull()) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(source), qPrintable(reader.errorString()));
        return false;
    }
    QImage bitmap(kSide, kSide, QImage::Format_RGB32);
    bitmap.fill(Qt::white);
    QPainter(&bitmap).drawImage(0, 0, drawing);
    if (!bitmap.save(target, "BMP")) {
        std::fprintf(stderr, "%s: cannot be written\n", qPrintable(target));
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: quillon_make_pictures ICONS FOLDER\n");
        return 2;
    }
    for (const char *name : {"Connecting", "ConnStablished", "ConnDisabled", "ConnError"}) {
        const QLatin1String picture(name);
        if (!MakeBitmap(arguments[1] + '/' + picture + ".svg",
                        arguments[2] + '/' + picture + ".bmp"))
            return 1;
    }
    return 0;
}
