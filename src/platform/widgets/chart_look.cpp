#include "platform/widgets/chart_look.h"

#include "platform/chart_grid.h"
#include "platform/widgets/colors.h"

#include <array>

namespace
{

/// Told apart by people of every kind of colour vision, and seen on white as on black.
constexpr std::array<QRgb, 8> ownColors = {0x0072B2, 0xE69F00, 0x009E73, 0xD55E00,
                                           0xCC79A7, 0x56B4E9, 0xB8A800, 0x8A7CC9};

/// The later rounds of the same colours are lighter and darker ones.
QColor OwnColor(int series)
{
    const QColor color(ownColors[size_t(series - 1) % ownColors.size()]);
    switch ((series - 1) / int(ownColors.size()) % 4) {
    case 1:
        return Lit(color, 0.45);
    case 2:
        return Shaded(color, 0.35);
    case 3:
        return Lit(color, 0.7);
    default:
        return color;
    }
}

} // namespace

ChartLook::ChartLook(const ChartColors &colors, const QPalette &palette) : m_chosen(colors.Series)
{
    const auto chosen = [](const QColor &color, const QColor &own) {
        return color.isValid() ? color : own;
    };
    Backdrop = chosen(colors.Backdrop, palette.color(QPalette::Base));
    Wall = chosen(colors.Wall,
                  Mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.04));
    Base = chosen(colors.Base,
                  Mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.25));
    Text = ReadableOn(Backdrop, palette);
    WallText = ReadableOn(Wall, palette);
    Grid = Mixed(Wall, WallText, 0.18);
    AxisLine = Mixed(Backdrop, Text, 0.45);
    Highlight = palette.color(QPalette::Highlight);
    if (Contrast(Highlight, Backdrop) < 3)
        Highlight = Text;
}

QColor ChartLook::Series(int series) const
{
    const auto chosen = m_chosen.find(series);
    return chosen != m_chosen.end() && chosen->second.isValid() ? chosen->second : OwnColor(series);
}

bool ChartLook::IsFaint(const QColor &color, const QColor &ground)
{
    constexpr double seen = 1.5;
    return Contrast(color, ground) < seen;
}

QColor ChartLook::Edge(const QColor &color, const QColor &ground) const
{
    if (!IsFaint(color, ground))
        return Shaded(color, 0.35);
    return Mixed(color,
                 Contrast(ground, Qt::black) > Contrast(ground, Qt::white) ? Qt::black : Qt::white,
                 0.6);
}

QColor Lit(const QColor &color, double share)
{
    return Mixed(color, Qt::white, share);
}

QColor Shaded(const QColor &color, double share)
{
    return Mixed(color, Qt::black, share);
}

QFont FontOf(const ChartFont &font, const QFont &own)
{
    QFont result = own;
    if (!font.Name.isEmpty())
        result.setFamily(font.Name);
    result.setPointSize(qMax(1, font.Size));
    result.setBold(font.Bold);
    return result;
}
