#pragma once

/// Quote sites as a text file that people can mend, send to each other and load: JSON.
///
///     {"rows": [{"row": {"ID": 12, "WebSiteName": "Our broker", "CharToPrice": 900, ...}}, ...]}
///
/// A plain list of rows, [{"ID": 12, ...}, ...], is read as well; what stands beside "rows" and
/// "row" is passed over. The keys of a row are the columns of WebParameters: texts, whole numbers
/// of 16 bits (the ID of 32), and true or false for the flags.
///
/// Both work on the file, not on gRsWebParameters: the caller writes what is being edited before,
/// and reads the rows anew after a load.

#include "store/connection.h"

#include <QString>

struct LoadedRows
{
    int added = 0;
    int replaced = 0;
};

/// Each row of the file replaces the one of its ID or, failing that, the one of its name (blanks at
/// the end and small or capital letters aside), which then keeps its ID; else it is added. A column
/// that a row leaves out stays as it is, and is empty in a new row; null empties a text or number.
///
/// Throws RuntimeError 53 without the file, and 5 when it holds anything but sound rows, with a
/// description that names the row and the column. Nothing is changed then.
LoadedRows LoadQuoteSiteRows(Connection &gConnWebSites, const QString &path);

/// Writes every row, by ID, with the columns in the order of the table. The file is there whole or
/// as it was before. Throws RuntimeError 70 or 75 when it cannot be written.
void SaveQuoteSiteRows(Connection &gConnWebSites, const QString &path);
