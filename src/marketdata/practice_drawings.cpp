/// The two drawn pages of the practice market, as SVG within the page: no script, no picture files.

#include "marketdata/practice_pages.h"

#include "base/formats.h"
#include "marketdata/practice_walk.h"

#include <QRectF>

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{

const Formats &English()
{
    static const Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    return formats;
}

QString PriceText(double price)
{
    return English().Format(price, u"#,##0.00");
}

/// A place in a drawing.
QString At(double value)
{
    return QString::number(value, 'f', 1);
}

Currency CloseBefore(const QString &symbol, QDate day)
{
    return PracticePricesOf(symbol, LatestWeekday(day.addDays(-1))).value().Close;
}

/// From the close before to the end of the session, in percent.
double ChangeOf(const QString &symbol, const PracticeSession &session)
{
    const double before = CloseBefore(symbol, session.day).ToDouble();
    return (PracticePriceAt(symbol, session.Moment()).ToDouble() / before - 1) * 100;
}

QString ChangeText(double percent)
{
    return English().Format(percent, u"+0.00;-0.00;0.00") + QLatin1Char('%');
}

QString SessionText(const PracticeSession &session)
{
    const QString day = English().FormatDate(session.day, u"dddd, mmmm d, yyyy");
    if (session.until == PracticeClose())
        return day + QStringLiteral(", at the close");
    return day + QStringLiteral(", ") + session.until.toString(QStringLiteral("HH:mm"));
}

// --- the chart of a day --------------------------------------------------------------------------

const QRectF Plot(70, 14, 866, 380); ///< within a drawing of 960 x 430

double PlaceOf(QTime time)
{
    return Plot.left() +
           Plot.width() * PracticeOpen().secsTo(time) / PracticeOpen().secsTo(PracticeClose());
}

/// The prices at which lines are drawn: round ones, four to nine of them.
std::vector<double> RoundPrices(double low, double high)
{
    double step = std::pow(10, std::floor(std::log10(high - low)));
    for (const double part : {0.5, 0.4, 0.5}) {
        if ((high - low) / step >= 4)
            break;
        step *= part;
    }
    std::vector<double> prices;
    for (double price = std::ceil(low / step) * step; price <= high; price += step)
        prices.push_back(price);
    return prices;
}

QString Text(double x, double y, const char *anchor, const QString &text)
{
    return QStringLiteral("<text x=\"%1\" y=\"%2\" text-anchor=\"%3\" font-size=\"13\" "
                          "fill=\"var(--soft)\">%4</text>\n")
        .arg(At(x), At(y), QLatin1String(anchor), text);
}

QString GridLine(double x1, double y1, double x2, double y2)
{
    return QStringLiteral(
               "<line x1=\"%1\" y1=\"%2\" x2=\"%3\" y2=\"%4\" stroke=\"var(--grid)\"/>\n")
        .arg(At(x1), At(y1), At(x2), At(y2));
}

QString DrawChart(const QString &symbol, const PracticeSession &session)
{
    struct Point
    {
        double x, price;
    };
    std::vector<Point> points;
    for (QTime time = PracticeOpen(); time < session.until; time = time.addSecs(60))
        points.push_back(
            {PlaceOf(time), PracticePriceAt(symbol, QDateTime(session.day, time)).ToDouble()});
    points.push_back(
        {PlaceOf(session.until), PracticePriceAt(symbol, session.Moment()).ToDouble()});

    const double before = CloseBefore(symbol, session.day).ToDouble();
    double low = before;
    double high = before;
    for (const Point &point : points) {
        low = std::min(low, point.price);
        high = std::max(high, point.price);
    }
    const double margin = std::max(0.05, (high - low) * 0.08); // a day may stand still
    low -= margin;
    high += margin;
    const auto height = [&](double price) {
        return Plot.bottom() - Plot.height() * (price - low) / (high - low);
    };

    QString svg = QStringLiteral("<svg viewBox=\"0 0 960 430\" role=\"img\" "
                                 "aria-label=\"Practice chart of %1\">\n")
                      .arg(EscapedForHtml(symbol));
    for (const double price : RoundPrices(low, high)) {
        svg += GridLine(Plot.left(), height(price), Plot.right(), height(price));
        svg += Text(Plot.left() - 8, height(price) + 4, "end", PriceText(price));
    }
    for (QTime time = PracticeOpen(); time <= PracticeClose(); time = time.addSecs(30 * 60)) {
        svg += GridLine(PlaceOf(time), Plot.top(), PlaceOf(time), Plot.bottom());
        svg += Text(PlaceOf(time), Plot.bottom() + 20, "middle",
                    time.toString(QStringLiteral("H:mm")));
    }
    svg += QStringLiteral("<line x1=\"%1\" y1=\"%2\" x2=\"%3\" y2=\"%2\" stroke=\"var(--soft)\" "
                          "stroke-dasharray=\"6 5\"/>\n")
               .arg(At(Plot.left()), At(height(before)), At(Plot.right()));
    QStringList places;
    for (const Point &point : points)
        places << At(point.x) + QLatin1Char(',') + At(height(point.price));
    svg += QStringLiteral("<polyline fill=\"none\" stroke=\"var(--line)\" stroke-width=\"2\" "
                          "stroke-linejoin=\"round\" points=\"%1\"/>\n"
                          "<circle cx=\"%2\" cy=\"%3\" r=\"4\" fill=\"var(--line)\"/>\n</svg>\n")
               .arg(places.join(QLatin1Char(' ')), At(points.back().x),
                    At(height(points.back().price)));
    return svg;
}

// --- the map of the market -----------------------------------------------------------------------

struct Tile
{
    const char *symbol;
    double size; ///< of the company, against the others
};
struct Sector
{
    const char *name;
    std::vector<Tile> tiles; ///< the largest first
};

const std::vector<Sector> &Sectors()
{
    static const std::vector<Sector> sectors = {
        {"Technology",
         {{"QLLN", 30}, {"ARLN", 17}, {"VXRA", 14}, {"NMBS", 9}, {"TSSL", 6}, {"ORBT", 4}}},
        {"Health Care", {{"CDMT", 19}, {"PLVA", 12}, {"SNVR", 8}, {"MRDH", 5}}},
        {"Financials", {{"BKHL", 18}, {"LDGR", 11}, {"TRSM", 7}, {"FNWK", 4}}},
        {"Consumer", {{"BRWK", 16}, {"HRTH", 9}, {"VSTA", 6}, {"LNDL", 5}, {"PPRK", 3}}},
        {"Industrials", {{"FSKR", 14}, {"OMRA", 8}, {"GRDR", 5}, {"STLW", 3}}},
        {"Energy", {{"LMNT", 13}, {"DRLK", 7}, {"PTRV", 4}}},
        {"Utilities", {{"VLTW", 8}, {"HYDR", 4}, {"GRDN", 3}}},
        {"Materials", {{"QRTZ", 7}, {"CPRQ", 5}, {"TMBR", 3}}},
        {"Real Estate", {{"HLWD", 7}, {"PRCT", 4}, {"BRKS", 2}}},
    };
    return sectors;
}

double SizeOf(const Sector &sector)
{
    double size = 0;
    for (const Tile &tile : sector.tiles)
        size += tile.size;
    return size;
}

/// Cuts `area` into rectangles with these shares of it, in order: rows of them along the shorter
/// side, each row as long as that makes its tiles squarer.
std::vector<QRectF> CutIntoTiles(const std::vector<double> &sizes, QRectF area)
{
    double left = 0;
    for (const double size : sizes)
        left += size;
    std::vector<QRectF> tiles;
    for (size_t first = 0; first < sizes.size();) {
        const double side = std::min(area.width(), area.height());
        const double scale = area.width() * area.height() / left;
        size_t end = first;
        double sum = 0;
        for (double worst = HUGE_VAL; end < sizes.size(); ++end) {
            const double depth = (sum + sizes[end]) * scale / side;
            double shape = 1; // of the least square tile
            for (size_t i = first; i <= end; ++i) {
                const double length = sizes[i] * scale / depth;
                shape = std::max({shape, length / depth, depth / length});
            }
            if (shape > worst)
                break;
            worst = shape;
            sum += sizes[end];
        }
        const double depth = sum * scale / side;
        double along = 0;
        const bool isColumn = area.width() >= area.height();
        for (; first < end; ++first) {
            const double length = sizes[first] * scale / depth;
            tiles.push_back(isColumn ? QRectF(area.left(), area.top() + along, depth, length)
                                     : QRectF(area.left() + along, area.top(), length, depth));
            along += length;
        }
        isColumn ? area.setLeft(area.left() + depth) : area.setTop(area.top() + depth);
        left -= sum;
    }
    return tiles;
}

/// Green above, red below, grey around nothing; full at three percent. White reads on all of them.
QString ColorOf(double percent)
{
    const double part = std::min(1.0, std::fabs(percent) / 3);
    const int grey[] = {82, 90, 102};
    const int full[2][3] = {{176, 32, 40}, {18, 118, 58}};
    int mixed[3];
    for (int i = 0; i < 3; ++i)
        mixed[i] = int(std::lround(grey[i] + (full[percent >= 0][i] - grey[i]) * part));
    return QStringLiteral("rgb(%1,%2,%3)").arg(mixed[0]).arg(mixed[1]).arg(mixed[2]);
}

QString DrawTile(const QString &symbol, const QRectF &place, double percent)
{
    const QRectF tile = place.adjusted(1, 1, -1, -1);
    const double size = std::clamp(std::min(tile.width() / 4.2, tile.height() / 3), 8.0, 30.0);
    const QPointF middle = tile.center();
    return QStringLiteral("<a href=\"/q?s=%1\"><rect x=\"%2\" y=\"%3\" width=\"%4\" height=\"%5\" "
                          "fill=\"%6\"/>")
               .arg(symbol, At(tile.left()), At(tile.top()), At(tile.width()), At(tile.height()),
                    ColorOf(percent)) +
           QStringLiteral("<text x=\"%1\" y=\"%2\" font-size=\"%3\" font-weight=\"bold\">%4</text>")
               .arg(At(middle.x()), At(middle.y()), At(size), symbol) +
           QStringLiteral("<text x=\"%1\" y=\"%2\" font-size=\"%3\">%4</text></a>\n")
               .arg(At(middle.x()), At(middle.y() + size), At(size * 0.7), ChangeText(percent));
}

} // namespace

QString IntradayChartPage(const QString &symbol, const QDateTime &now)
{
    if (symbol.isEmpty())
        return PracticeHtml(QStringLiteral("Practice (simulated)"),
                            QStringLiteral("<p>No security is chosen. Choose a row in the Daily "
                                           "Tracker to see its chart here.</p>\n"));
    const QString name = EscapedForHtml(symbol);
    const QString title = name + QStringLiteral(" - Practice (simulated)");
    if (!IsPracticeSymbol(symbol))
        return PracticeHtml(
            title, QStringLiteral("<p>The practice market has no security %1.</p>\n").arg(name));
    const PracticeSession session = SessionAt(now);
    return PracticeHtml(
        title,
        QStringLiteral("<p><b>%1</b> %2 <span class=\"soft\">%3</span></p>\n")
                .arg(PriceText(PracticePriceAt(symbol, session.Moment()).ToDouble()),
                     ChangeText(ChangeOf(symbol, session)), SessionText(session)) +
            DrawChart(symbol, session) +
            QStringLiteral("<p class=\"soft\">The broken line is the close of the day before. "
                           "These prices are simulated by this program.</p>\n"));
}

QString MarketMapPage(const QDateTime &now)
{
    const PracticeSession session = SessionAt(now);
    std::vector<double> sizes;
    for (const Sector &sector : Sectors())
        sizes.push_back(SizeOf(sector));
    const std::vector<QRectF> places = CutIntoTiles(sizes, QRectF(0, 0, 1200, 640));

    QString svg = QStringLiteral("<svg viewBox=\"0 0 1200 640\" role=\"img\" "
                                 "aria-label=\"Practice map of the market\" fill=\"#fff\" "
                                 "text-anchor=\"middle\">\n");
    for (size_t i = 0; i < places.size(); ++i) {
        const Sector &sector = Sectors()[i];
        const QRectF place = places[i].adjusted(2, 2, -2, -2);
        svg += QStringLiteral("<text x=\"%1\" y=\"%2\" font-size=\"15\" fill=\"currentColor\" "
                              "text-anchor=\"start\">%3</text>\n")
                   .arg(At(place.left() + 2), At(place.top() + 15), QLatin1String(sector.name));
        std::vector<double> tileSizes;
        for (const Tile &tile : sector.tiles)
            tileSizes.push_back(tile.size);
        const std::vector<QRectF> tiles = CutIntoTiles(tileSizes, place.adjusted(0, 21, 0, 0));
        for (size_t k = 0; k < tiles.size(); ++k) {
            const QString symbol = QLatin1String(sector.tiles[k].symbol);
            svg += DrawTile(symbol, tiles[k], ChangeOf(symbol, session));
        }
    }
    return PracticeHtml(
        QStringLiteral("Practice: map of the market (simulated)"),
        QStringLiteral(
            "<p class=\"soft\">%1. Change since the close before; the larger a tile, the "
            "larger the company. Companies and prices are invented.</p>\n")
                .arg(SessionText(session)) +
            svg + QStringLiteral("</svg>\n"));
}
