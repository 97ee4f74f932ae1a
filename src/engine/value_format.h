// The display formats of layouts, written the Italian way: "dd/MM/yyyy" for a
// date, "#.##0,00" for an amount ("." groups thousands, "," starts the decimals).
#pragma once

#include <QString>

#include "db/variant.h"

namespace lorvane::engine {

// The text of `value` in `format`. An empty format gives the value's plain
// text; Null gives "". A date format (letters d, M, y, H, m, s) applies to a
// date or a text that reads as one; a number format ('#', '0', '.', ',', '%'
// with any literal text around it) to a number or a text that reads as one;
// a value that does not fit its format is shown as plain text.
QString formatValue(const db::Variant& value, const QString& format);

// True when `format` is a number format.
bool isNumberFormat(const QString& format);

}  // namespace lorvane::engine
