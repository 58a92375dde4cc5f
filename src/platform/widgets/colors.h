#pragma once

/// Colours that the user chose: as the settings keep them, and what can be read on them, in light
/// and in dark palettes.
///
///     ColorOfValue(0x8AFFFF)             #ffff8a, a light yellow: blue stands in the highest byte
///     ReadableOn(Qt::yellow, palette)    black, in a dark palette too

#include <QColor>
#include <QPalette>

QRgb ColorOfValue(double value);
double ValueOfColor(QRgb color);

/// Contrast of two colours, from 1 (equal) to 21 (black and white); text wants 4.5.
double Contrast(const QColor &one, const QColor &other);

/// The palette's text colour when it can be read on `ground`, else black or white.
QColor ReadableOn(const QColor &ground, const QPalette &palette);

/// `share` (0 to 1) of `added` mixed into `ground`.
QColor Mixed(const QColor &ground, const QColor &added, double share);

/// The text of what is switched off: fainter than `text`, and still to be read where `text` is.
QColor Dimmed(const QColor &ground, const QColor &text);

/// For a list on `ground`: text, alternate rows and selection that stand out from it, of `palette`
/// where they can be. Nothing else is set, so that the widget goes on following its desktop.
QPalette PaletteOn(const QColor &ground, const QPalette &palette);
