#include "db/access_functions.h"

#include <sqlite3.h>

#include <QString>
#include <cmath>
#include <span>

#include "db/field_type.h"
#include "db/variant.h"
#include "db/vb_format.h"
#include "platform/runtime_error.h"

namespace lorvane::db {

using namespace Qt::StringLiterals;

namespace {

using Args = std::span<const Variant>;

const RuntimeError& invalidArgument() {
    static const RuntimeError error(u"Chiamata di routine o argomento non validi"_s);
    return error;
}

bool anyNull(Args args) {
    for (const Variant& arg : args) {
        if (arg.isNull()) return true;
    }
    return false;
}

// --- the operators of the dialect ------------------------------------------

Variant concat(Args a) {
    if (a[0].isNull() && a[1].isNull()) return Variant::null();
    return Variant(a[0].text() + a[1].text());
}
Variant add(Args a) { return a[0] + a[1]; }
Variant subtract(Args a) { return a[0] - a[1]; }
Variant divide(Args a) { return a[0] / a[1]; }

Variant integerDivide(Args a) {
    if (anyNull(a)) return Variant::null();
    const qint32 divisor = a[1].toLong();
    if (divisor == 0) throw RuntimeError(u"Divisione per zero"_s);
    return Variant(qint32(a[0].toLong() / divisor));
}

Variant modulo(Args a) {
    if (anyNull(a)) return Variant::null();
    const qint32 divisor = a[1].toLong();
    if (divisor == 0) throw RuntimeError(u"Divisione per zero"_s);
    return Variant(qint32(a[0].toLong() % divisor));
}

Variant power(Args a) {
    if (anyNull(a)) return Variant::null();
    return Variant(std::pow(a[0].toDouble(), a[1].toDouble()));
}

// --- Access functions ---------------------------------------------------------

Variant nz(Args a) {
    if (!a[0].isNull()) return a[0];
    return a.size() > 1 ? a[1] : Variant(QString());
}

template <int Part>
Variant datePart(Args a) {
    if (a[0].isNull()) return Variant::null();
    const QDate date = a[0].toDate().date();
    return Variant(qint32(Part == 0 ? date.year() : Part == 1 ? date.month() : date.day()));
}

Variant format(Args a) {
    return Variant(FormatVariant(a[0], a.size() > 1 ? a[1].text() : QString()));
}

Variant upperCase(Args a) { return a[0].isNull() ? a[0] : Variant(a[0].text().toUpper()); }
Variant lowerCase(Args a) { return a[0].isNull() ? a[0] : Variant(a[0].text().toLower()); }

// InStr([start,] text, sought[, compare]): 1-based position, 0 when absent.
// Without a compare argument the texts compare without regard to case.
Variant inStr(Args a) {
    if (anyNull(a)) return Variant::null();
    qsizetype start = 1;
    Args texts = a;
    if (a.size() >= 3) {
        start = a[0].toLong();
        texts = a.subspan(1, 2);
        if (start < 1) throw invalidArgument();
    }
    const Qt::CaseSensitivity sensitivity =
        a.size() == 4 && a[3].toLong() == 0 ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const QString text = texts[0].text();
    if (start > text.size() + 1) return Variant(qint32(0));
    return Variant(qint32(text.indexOf(texts[1].text(), start - 1, sensitivity) + 1));
}

// CDbl, CLng...: the runtime's conversion of the one argument.
template <auto Convert>
Variant converted(Args a) {
    return Variant((a[0].*Convert)());
}

// Val reads the leading number of a text with "." as the decimal point,
// skipping blanks, whatever the regional settings.
Variant val(Args a) {
    const QString text = a[0].toString();
    QString number;
    bool seenPoint = false, seenExponent = false, seenDigit = false;
    for (const QChar c : text) {
        if (c == u' ' || c == u'\t') continue;
        if (c.isDigit() && c.unicode() < 128) {
            number += c;
            seenDigit = true;
        } else if ((c == u'-' || c == u'+') && (number.isEmpty() || number.endsWith(u'E'))) {
            number += c;
        } else if (c == u'.' && !seenPoint && !seenExponent) {
            number += c;
            seenPoint = true;
        } else if ((c == u'e' || c == u'E' || c == u'd' || c == u'D') && seenDigit &&
                   !seenExponent) {
            number += u'E';
            seenExponent = true;
        } else {
            break;
        }
    }
    while (!number.isEmpty() && !number.back().isDigit() && number.back() != u'.')
        number.chop(1);
    return Variant(number.isEmpty() ? 0.0 : number.toDouble());
}

Variant round(Args a) {
    if (anyNull(a)) return Variant::null();
    const int decimals = a.size() > 1 ? int(a[1].toLong()) : 0;
    if (decimals < 0) throw invalidArgument();
    if (a[0].type() == VarType::Long || a[0].type() == VarType::Integer) return a[0];
    return Variant(roundHalfEven(a[0].toDouble(), decimals));
}

Variant mid(Args a) {
    if (anyNull(a)) return Variant::null();
    const qint32 start = a[1].toLong();
    const qint32 length = a.size() > 2 ? a[2].toLong() : -1;
    if (start < 1 || (a.size() > 2 && length < 0)) throw invalidArgument();
    return Variant(a[0].text().mid(start - 1, length));
}

Variant left(Args a) {
    if (anyNull(a)) return Variant::null();
    const qint32 length = a[1].toLong();
    if (length < 0) throw invalidArgument();
    return Variant(a[0].text().left(length));
}

Variant right(Args a) {
    if (anyNull(a)) return Variant::null();
    const qint32 length = a[1].toLong();
    if (length < 0) throw invalidArgument();
    return Variant(a[0].text().right(length));
}

Variant length(Args a) { return a[0].isNull() ? a[0] : Variant(qint32(a[0].text().size())); }
Variant isNull(Args a) { return Variant(a[0].isNull()); }

template <bool Floor>
Variant integerPart(Args a) {
    if (a[0].isNull()) return a[0];
    if (a[0].type() == VarType::Long || a[0].type() == VarType::Integer) return a[0];
    const double value = a[0].toDouble();
    return Variant(Floor ? std::floor(value) : std::trunc(value));
}

struct Definition {
    const char* name;
    int minArgs;
    int maxArgs;
    Variant (*function)(Args);
};

constexpr Definition definitions[] = {
    {"jet_concat", 2, 2, concat},
    {"jet_add", 2, 2, add},
    {"jet_sub", 2, 2, subtract},
    {"jet_div", 2, 2, divide},
    {"jet_intdiv", 2, 2, integerDivide},
    {"jet_mod", 2, 2, modulo},
    {"jet_pow", 2, 2, power},
    {"jet_left", 2, 2, left},
    {"jet_right", 2, 2, right},
    {"Nz", 1, 2, nz},
    {"Year", 1, 1, datePart<0>},
    {"Month", 1, 1, datePart<1>},
    {"Day", 1, 1, datePart<2>},
    {"Format", 1, 2, format},
    {"UCase", 1, 1, upperCase},
    {"LCase", 1, 1, lowerCase},
    {"InStr", 2, 4, inStr},
    {"CDbl", 1, 1, converted<&Variant::toDouble>},
    {"CLng", 1, 1, converted<&Variant::toLong>},
    {"CInt", 1, 1, converted<&Variant::toInteger>},
    {"CCur", 1, 1, converted<&Variant::toCurrency>},
    {"CDate", 1, 1, converted<&Variant::toDate>},
    {"CBool", 1, 1, converted<&Variant::toBool>},
    {"CStr", 1, 1, converted<&Variant::toString>},
    {"Val", 1, 1, val},
    {"Round", 1, 2, round},
    {"Mid", 2, 3, mid},
    {"Len", 1, 1, length},
    {"jet_isnull", 1, 1, isNull},
    {"Int", 1, 1, integerPart<true>},
    {"Fix", 1, 1, integerPart<false>},
};

void callFunction(sqlite3_context* context, int argc, sqlite3_value** argv) {
    const auto* definition = static_cast<const Definition*>(sqlite3_user_data(context));
    Variant args[4];
    for (int i = 0; i < argc; ++i)
        args[i] = variantFromSqlite(argv[i], DataType::Empty);
    try {
        resultVariant(context, definition->function(Args(args, size_t(argc))));
    } catch (const RuntimeError& error) {
        sqlite3_result_error(context, error.what(), -1);
    }
}

// --- text comparison ------------------------------------------------------------

char32_t nextCodePoint(const unsigned char*& p, const unsigned char* end) {
    const unsigned char lead = *p++;
    if (lead < 0x80) return lead;
    int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    char32_t cp = lead & (0x3F >> extra);
    for (; extra > 0 && p < end && (*p & 0xC0) == 0x80; --extra)
        cp = (cp << 6) | (*p++ & 0x3F);
    return cp;
}

char32_t fold(char32_t cp) {
    if (cp < 0x80) return cp >= 'A' && cp <= 'Z' ? cp + 32 : cp;
    return QChar::toCaseFolded(cp);
}

int collateFolded(void*, int aLength, const void* a, int bLength, const void* b) {
    return compareFoldedUtf8(static_cast<const char*>(a), aLength, static_cast<const char*>(b),
                             bLength);
}

void likeFunction(sqlite3_context* context, int argc, sqlite3_value** argv) {
    for (int i = 0; i < argc; ++i) {
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL) {
            sqlite3_result_null(context);
            return;
        }
    }
    const auto text = [](sqlite3_value* value) {
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(value)),
                                 sqlite3_value_bytes(value));
    };
    char32_t escape = 0;
    if (argc == 3) {
        const QString escapeText = text(argv[2]);
        if (escapeText.size() != 1) {
            sqlite3_result_error(context, "ESCAPE deve essere un solo carattere", -1);
            return;
        }
        escape = escapeText.front().unicode();
    }
    sqlite3_result_int(context, likeMatches(text(argv[0]), text(argv[1]), escape) ? 1 : 0);
}

void check(sqlite3* db, int rc, const char* what) {
    if (rc != SQLITE_OK) {
        throw RuntimeError(u"Impossibile registrare %1: %2"_s.arg(
            QString::fromUtf8(what), QString::fromUtf8(sqlite3_errmsg(db))));
    }
}

}  // namespace

int compareFoldedUtf8(const char* a, int aLength, const char* b, int bLength) {
    auto* p = reinterpret_cast<const unsigned char*>(a);
    auto* q = reinterpret_cast<const unsigned char*>(b);
    const auto* pEnd = p + aLength;
    const auto* qEnd = q + bLength;
    // Plain ASCII, the common case, compares byte by byte; the first other
    // byte goes on through the code points from where it stands.
    while (p < pEnd && q < qEnd && (*p | *q) < 0x80) {
        const unsigned char x = *p >= 'A' && *p <= 'Z' ? *p + 32 : *p;
        const unsigned char y = *q >= 'A' && *q <= 'Z' ? *q + 32 : *q;
        if (x != y) return x < y ? -1 : 1;
        ++p;
        ++q;
    }
    while (p < pEnd && q < qEnd) {
        const char32_t x = fold(nextCodePoint(p, pEnd));
        const char32_t y = fold(nextCodePoint(q, qEnd));
        if (x != y) return x < y ? -1 : 1;
    }
    if (p < pEnd) return 1;
    if (q < qEnd) return -1;
    return 0;
}

bool likeMatches(QStringView pattern, QStringView text, char32_t escape) {
    const QList<uint> p = pattern.toString().toCaseFolded().toUcs4();
    const QList<uint> t = text.toString().toCaseFolded().toUcs4();
    // Greedy match with backtracking to the last "%".
    qsizetype pi = 0, ti = 0, starP = -1, starT = 0;
    while (ti < t.size()) {
        bool literal = false;
        uint pc = pi < p.size() ? p[pi] : 0;
        qsizetype step = 1;
        if (pi < p.size() && escape && pc == escape && pi + 1 < p.size()) {
            pc = p[pi + 1];
            literal = true;
            step = 2;
        }
        if (pi < p.size() && !literal && pc == u'%') {
            starP = pi++;
            starT = ti;
        } else if (pi < p.size() && ((!literal && pc == u'_') || pc == t[ti])) {
            pi += step;
            ++ti;
        } else if (starP >= 0) {
            pi = starP + 1;
            ti = ++starT;
        } else {
            return false;
        }
    }
    while (pi < p.size() && p[pi] == u'%')
        ++pi;
    return pi == p.size();
}

void registerAccessFunctions(sqlite3* db) {
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    for (const Definition& definition : definitions) {
        for (int args = definition.minArgs; args <= definition.maxArgs; ++args) {
            check(db,
                  sqlite3_create_function_v2(db, definition.name, args, flags,
                                             const_cast<Definition*>(&definition), callFunction,
                                             nullptr, nullptr, nullptr),
                  definition.name);
        }
    }
    check(db,
          sqlite3_create_collation_v2(db, "NOCASE", SQLITE_UTF8, nullptr, collateFolded, nullptr),
          "NOCASE");
    for (int args = 2; args <= 3; ++args) {
        check(db,
              sqlite3_create_function_v2(db, "like", args, flags, nullptr, likeFunction, nullptr,
                                         nullptr, nullptr),
              "like");
    }
}

}  // namespace lorvane::db
