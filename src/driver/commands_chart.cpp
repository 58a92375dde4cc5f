#include "driver/commands.h"
#include "driver/failure.h"
#include "driver/printing.h"
#include "driver/widget_actions.h"
#include "platform/widgets/shown_chart.h"

namespace
{

using Lines = QStringList;

/// A first click may select the series only, and points that share a pixel take turns.
constexpr int mostClicks = 50;

ShownChart &Chart(Session &session)
{
    if (const QWidget *screen = session.LoadedForm(QStringLiteral("frmChartScreen"))) {
        const auto controls = screen->findChildren<QWidget *>();
        for (QWidget *control : controls)
            if (auto *chart = dynamic_cast<ShownChart *>(control); chart && control->isVisible())
                return *chart;
    }
    throw Failed(QStringLiteral("no chart is shown"));
}

int Ordinal(const QString &word)
{
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    if (!isNumber || number < 1)
        throw ScriptWrong(QStringLiteral("\"%1\" is no number from 1 on").arg(word));
    return number;
}

Lines ShowChart(Session &session, const QStringList &)
{
    const ShownChart &chart = Chart(session);
    Lines lines{QStringLiteral("ChartType %1").arg(chart.ChartType())};
    for (const ShownChart::Value &value : chart.Values())
        lines += QStringList{Printing::CellText(value.columnLabel),
                             Printing::CellText(value.rowLabel), Printing::CellText(value.text)}
                     .join(QLatin1Char('\t'));
    return lines;
}

Lines ClickPoint(Session &session, const QStringList &arguments)
{
    ShownChart &chart = Chart(session);
    const int series = Ordinal(arguments[0]);
    const int index = Ordinal(arguments[1]);
    // A point that is selected already is clicked too, and read out again.
    for (int click = 0; click == 0 || (click < mostClicks && !chart.IsPointSelected(series, index));
         ++click) {
        const auto target = chart.PointTarget(series, index);
        if (!target.widget)
            throw Failed(
                QStringLiteral("the chart has no point %1 in series %2").arg(index).arg(series));
        WidgetActions::ClickAt(target.widget, QRect(target.center, QSize(1, 1)));
    }
    if (!chart.IsPointSelected(series, index))
        throw Failed(
            QStringLiteral("point %1 of series %2 is not selected").arg(index).arg(series));
    return {};
}

} // namespace

QList<ScriptCommand> ChartCommands()
{
    return {
        {"chart", "", 0, 0, true, ShowChart},
        {"point", "SERIES INDEX", 2, 2, false, ClickPoint},
    };
}
