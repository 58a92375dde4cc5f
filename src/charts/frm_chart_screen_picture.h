#pragma once

/// A picture of a chart for the user's own papers: into a PNG file or onto the clipboard.

#include "program/program.h"

#include <QImage>

/// Asks for a file, `name` and ".png" in the folder of pictures to begin with, and writes it; nothing
/// when the user cancels. A file that cannot be written is told in a box, and what was there stays.
void SaveChartPicture(Program &program, const QImage &picture, const QString &name);
void CopyChartPicture(Program &program, const QImage &picture);
