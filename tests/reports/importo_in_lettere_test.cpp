// Amounts in words: the required results, the receipt's edge cases, a sample
// spelt by hand, and bad input.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/runtime_error.h"
#include "reports/documents/importo_in_lettere.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using reports::ModSommeConsegnate::ImportoInLettere;
using reports::ModSommeConsegnate::NumeroInLettere;

struct Words {
    double number;
    const char* words;
};

// The required results, irregular ones included, and the accent-free joins.
constexpr Words required[] = {
    {0, ""},
    {1, "uno"},
    {21, "ventuno"},
    {28, "ventotto"},
    {100, "cento"},
    {101, "centouno"},
    {108, "centootto"},
    {181, "centoottantuno"},
    {118, "centodiciotto"},
    {23, "ventitre"},
    {1000, "mille"},
    {1001, "milleuno"},
    {1500, "millecinquecento"},
    {2000, "duemila"},
    {2001, "duemilauno"},
    {21000, "ventunomila"},
    {101000, "centounomila"},
    {1000000, "unmilione"},
    {1000001, "unmilioneuno"},
    {1001000, "unmilioneunomila"},
    {1002000, "unmilioneduemila"},
    {2001000, "duemilioniunomila"},
    {21000000, "ventunomilioni"},
    {1000000000, "unmiliardo"},
    {1001000000, "unmiliardounmilione"},
    {2000000000, "duemiliardi"},
    {1000000000000, "millemiliardi"},
};

// Spelt by hand, not by the routine: a reader's check of the rules above.
constexpr Words spelt[] = {
    {7, "sette"},
    {19, "diciannove"},
    {38, "trentotto"},
    {45, "quarantacinque"},
    {91, "novantuno"},
    {98, "novantotto"},
    {200, "duecento"},
    {777, "settecentosettantasette"},
    {2025, "duemilaventicinque"},
    {18081, "diciottomilaottantuno"},
    {350000, "trecentocinquantamila"},
    {999999, "novecentonovantanovemilanovecentonovantanove"},
    {12345678, "dodicimilionitrecentoquarantacinquemilaseicentosettantotto"},
    {301001001, "trecentounomilioniunomilauno"},
    {2500000000, "duemiliardicinquecentomilioni"},
    {999999999999999,
     "novecentonovantanovemilanovecentonovantanovemiliardinovecentonovantanovemilioni"
     "novecentonovantanovemilanovecentonovantanove"},
};

TEST(NumeroInLettere, GivesTheRequiredAndTheHandSpeltWords) {
    for (const auto* table : {std::begin(required), std::begin(spelt)}) {
        const Words* end = table == std::begin(required) ? std::end(required) : std::end(spelt);
        for (const Words* row = table; row != end; ++row) {
            double numero = row->number;
            EXPECT_EQ(NumeroInLettere(numero).toStdString(), row->words) << row->number;
            EXPECT_EQ(numero, row->number);
        }
    }
}

struct Amount {
    double importo;
    const char* separatore;
    const char* text;
    double afterwards;  // the caller's variable after the call
};

constexpr Amount amounts[] = {
    {0, "/", "zero/00", 0},
    {-0.0, "/", "zero/00", 0},
    {0, " e ", "zero e 00", 0},
    {1234.56, "/", "milleduecentotrentaquattro/56", 1234.56},
    {1234.5, "/", "milleduecentotrentaquattro/50", 1234.5},
    {20, "/", "venti/00", 20},
    {-1234.56, "/", "- milleduecentotrentaquattro/56", 1234.56},
    {0.50, "/", "/50", 0.5},
    {-0.50, "/", "- /50", 0.5},
    {0.004, "/", "/00", 0.004},
    {1234.996, "/", "milleduecentotrentaquattro/1235,00", 1234.996},
    {99.999, "/", "novantanove/100,00", 99.999},
    {181.08, "", "centoottantuno08", 181.08},
    {1001000.1, "/", "unmilioneunomila/10", 1001000.1},
    {999999999999999, "/",
     "novecentonovantanovemilanovecentonovantanovemiliardinovecentonovantanovemilioni"
     "novecentonovantanovemilanovecentonovantanove/00",
     999999999999999},
    // From 1E+15 the default text has an exponent: the words are wrong, as
    // they always were, but defined.
    {1e15, "/", "uno/1000000000000000,00", 1e15},
    {-2.5e20, "/", "- due/250000000000000000000,00", 2.5e20},
};

TEST(ImportoInLettere, WritesTheReceiptsAmountAndMakesTheCallersVariablePositive) {
    for (const Amount& row : amounts) {
        double importo = row.importo;
        EXPECT_EQ(ImportoInLettere(importo, QString::fromUtf8(row.separatore)).toStdString(),
                  row.text)
            << row.importo;
        EXPECT_EQ(importo, row.afterwards) << row.importo;
    }
}

TEST(ImportoInLettere, RefusesWhatIsNoNumberAndLeavesItAsItWas) {
    const struct {
        double importo;
        const char* message;
    } rows[] = {
        {std::numeric_limits<double>::quiet_NaN(), "non è un numero"},
        {std::numeric_limits<double>::infinity(), "infinito"},
        {-std::numeric_limits<double>::infinity(), "infinito"},
    };
    for (const auto& row : rows) {
        double importo = row.importo;
        try {
            ImportoInLettere(importo, u"/"_s);
            ADD_FAILURE() << row.importo;
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().endsWith(QString::fromUtf8(row.message)))
                << error.message().toStdString();
        }
        EXPECT_TRUE(std::isnan(row.importo) ? std::isnan(importo) : importo == row.importo);
    }
    for (double numero : {-1.0, 2.5, 1e19}) {
        EXPECT_THROW(NumeroInLettere(numero), RuntimeError) << numero;
    }
}

}  // namespace
}  // namespace lorvane
