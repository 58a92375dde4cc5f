#pragma once

/// The accounts that a report over several of them takes: the "Portfolio" rows of the shared control
/// data, one for each account that was ever opened here.

#include "store/recordset.h"

#include <vector>

struct Portfolio
{
    QString name;
    bool isSelected = false;
};

/// In the order of the rows, which is that of the names but for accounts opened since the start.
std::vector<Portfolio> ReadPortfolios(Recordset &gRsApplication);

/// Writes the choice into the row of this account; nothing when there is none. Throws RuntimeError
/// when the store refuses it; the row then is as it was.
void SelectPortfolio(Recordset &gRsApplication, const QString &name, bool isSelected);
