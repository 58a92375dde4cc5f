#pragma once

/// A price as pages and people write it, in decimals or as a fraction.
///
///     "12 3/8"      12.375          "3/8"      0.375
///     "1,234.56"    1234.5601       a price passes through a 32-bit float and keeps seven digits
///
/// The empty text is 0. A text that is no number throws RuntimeError 13, a fraction of nothing 11,
/// a price beyond the range 6.

#include "base/currency.h"
#include "base/formats.h"

Currency ParseFractionPrice(const QString &text, const Formats &formats);
