#include "platform/widgets/colors.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr double readableText = 4.5;
constexpr double visibleArea = 1.6;

double Linear(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor &color)
{
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) +
           0.0722 * Linear(color.blueF());
}

} // namespace

QRgb ColorOfValue(double value)
{
    // Colours of the desktop, which settings of long ago may hold, are negative or have more bytes.
    const auto bits = static_cast<quint32>(static_cast<qint64>(value));
    return qRgb(bits & 0xFF, (bits >> 8) & 0xFF, (bits >> 16) & 0xFF);
}

double ValueOfColor(QRgb color)
{
    return (qBlue(color) << 16) | (qGreen(color) << 8) | qRed(color);
}

double Contrast(const QColor &one, const QColor &other)
{
    const auto [dark, light] = std::minmax({Luminance(one), Luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

QColor ReadableOn(const QColor &ground, const QPalette &palette)
{
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    if (Contrast(ground, text) >= readableText)
        return text;
    return Contrast(ground, Qt::black) >= Contrast(ground, Qt::white) ? Qt::black : Qt::white;
}

QColor Mixed(const QColor &ground, const QColor &added, double share)
{
    const auto mix = [share](int from, int to) { return qRound(from + (to - from) * share); };
    return QColor(mix(ground.red(), added.red()), mix(ground.green(), added.green()),
                  mix(ground.blue(), added.blue()));
}

QColor Dimmed(const QColor &ground, const QColor &text)
{
    double share = 0.6;
    while (share < 1 && Contrast(ground, Mixed(ground, text, share)) < readableText)
        share += 0.05;
    return Mixed(ground, text, std::min(share, 1.0));
}

QPalette PaletteOn(const QColor &ground, const QPalette &palette)
{
    const QColor text = ReadableOn(ground, palette);
    QColor alternate = Mixed(ground, text, 0.05);
    if (Contrast(alternate, text) < readableText)
        alternate = ground;
    QPalette list;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor mark = palette.color(group, QPalette::Highlight);
        const bool standsOut = Contrast(ground, mark) >= visibleArea;
        const QColor marked = palette.color(group, QPalette::HighlightedText);
        list.setColor(group, QPalette::Highlight, standsOut ? mark : text);
        list.setColor(group, QPalette::HighlightedText, standsOut ? marked : ground);
        list.setColor(group, QPalette::Base, ground);
        list.setColor(group, QPalette::AlternateBase, alternate);
        list.setColor(group, QPalette::Text,
                      group == QPalette::Disabled ? Dimmed(ground, text) : text);
    }
    return list;
}
