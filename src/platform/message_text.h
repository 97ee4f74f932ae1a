// Texts quoted in messages: a long value is cut so that the box stays readable.
#pragma once

#include <QString>

namespace lorvane::platform {

// `value` itself when it has at most `maxChars` characters; otherwise its
// first maxChars - 1 characters and "…".
inline QString elided(const QString& value, qsizetype maxChars = 200) {
    return value.size() <= maxChars ? value : value.left(maxChars - 1) + QChar(0x2026);
}

}  // namespace lorvane::platform
