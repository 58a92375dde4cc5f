#pragma once

/// A picture on paper: previewed, then sent to a printer or saved as a PDF file, as the user chooses.

#include <QImage>

class QPrinter;

/// Shows the preview, and comes back when it is closed. It needs no printer: a PDF file can always
/// be chosen. Throws RuntimeError 482 when the printer, or the file, refused the picture.
void PreviewPicture(const QImage &picture);

/// Prints the picture on a page of its own, from the top left corner, as large as the page lets it
/// in its own proportions. False when the printer refused it.
bool PrintPictureToFitPage(QPrinter &printer, const QImage &picture);
