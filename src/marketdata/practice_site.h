#pragma once

/// The row of the practice quotes follows the server: its address names the port that the server
/// listens on.

#include "marketdata/practice_server.h"
#include "store/recordset.h"

/// True for "http://127.0.0.1:<port>/quotes?s=".
bool IsPracticeAddress(const QString &begWebAddress);

/// When the current row is the practice site: has the server listen, on the row's port when that is
/// free, else on another, which the row then names. A row whose port is taken, and is not the
/// delivered one, is left as it is: whoever wrote it there has a server of his own on it, or another
/// Quillon serves the same prices. Any other row is left alone as well.
///
/// Throws RuntimeError 3021 without a current row, and what the store has against writing it; the row
/// is then as it was.
void ServePracticeSite(PracticeServer &server, Recordset &gRsWebParameters);
