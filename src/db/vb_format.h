// The runtime's Format(value, format) for the SQL function Format and for
// callers that need the same texts, with Italian regional settings.
#pragma once

#include "db/variant.h"

namespace lorvane::db {

// Formats `value` as Format$ does with Italian regional settings.
// Date formats: d dd ddd dddd m mm mmm mmmm yy yyyy h hh n nn s ss, ":" "/" "-"
// and literals; a date-time named format "Short Date" / "Long Date" /
// "General Date" / "Short Time" / "Long Time". Number formats: 0 # . , % and
// E+ E- placeholders, up to four ";" sections (positive; negative; zero; Null),
// named "General Number", "Fixed", "Standard", "Percent", "Currency", "Yes/No",
// "True/False", "On/Off". In a format, "." is the decimal placeholder and ","
// the thousands placeholder, output as "," and "." (the Italian separators).
// "\x" and "text in double quotes" are literals. An empty format gives CStr.
// Null gives "" (or the fourth section). A text value that reads as a number or
// a date is formatted as one; other text is returned as it is.
QString FormatVariant(const Variant& value, QStringView format);

}  // namespace lorvane::db
