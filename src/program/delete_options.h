#pragma once

/// A list screen opens the dialog that deletes rows of its table.
///
///     OpenDeleteOptions(m_program, QStringLiteral("popHLDelete"));
///
/// The row to act on is Selection::CurrentSymbol with Selection::SelectedRowID; the table goes by
/// the screen's popup entry, which stands checked while the dialog is open.

#include "program/program.h"

/// Comes back when the dialog is closed.
void OpenDeleteOptions(Program &program, const QString &popupEntry);
