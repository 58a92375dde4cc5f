#pragma once

/// The seven kinds of charts; each is an entry of the Charts menu, and the entry that stands checked
/// tells which one is shown.

#include "platform/chart_grid.h"
#include "platform/command_states.h"

#include <QString>

#include <optional>

enum class ChartKind
{
    PortfolioPL,
    SelectedSecPL,
    Positions,
    AssetAllocation,
    HistoricalPrices,
    SelectedSecPerf,
    PortfolioPerf
};

/// What a screen shows of a kind.
struct ChartKindInfo
{
    ChartKind kind;
    const char *menu;      ///< "mnuChartPositions"
    const char *caption;   ///< of the form
    const char *helpTopic; ///< "CHPortfolioPositions.html"
    bool hasSymbolList;
    bool hasDates;         ///< pickers, their labels, cmdOK and cmd3D
    bool hasInterval;      ///< daily, weekly or monthly points
    ChartStyle style;      ///< to begin with
    const char *nextStyle; ///< caption of cmd3D to begin with; empty: none
    const char *hint;      ///< how to select and recolour
};

const ChartKindInfo &InfoOf(ChartKind kind);
/// The kind whose menu entry is checked; nothing when none is.
std::optional<ChartKind> CheckedChartKind(const CommandStates &commands);

/// What a press of cmd3D gives, by its caption: the style, and the caption of the press after it.
struct ChartStyleStep
{
    ChartStyle style;
    QString nextCaption;
};
/// Throws RuntimeError 5 for a caption that is none of the kind's.
ChartStyleStep NextChartStyle(ChartKind kind, const QString &caption);
