#include "reports/documents/importo_in_lettere.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

#include "platform/runtime_error.h"

namespace lorvane::reports::ModSommeConsegnate {

using namespace std::string_view_literals;

namespace {

// The word tables, filled once by InizializzaNumeri. Unita(20) is never
// written; Potenze(i) is the word for ten to the power i+1.
bool NumeriPronti = false;
std::array<std::string_view, 21> Unita;
std::array<std::string_view, 10> Decine;
std::array<std::string_view, 9> Potenze;

template <std::size_t N>
std::string_view voce(const std::array<std::string_view, N>& tabella, quint64 indice) {
    if (indice >= N) throw RuntimeError(QStringLiteral("Indice non incluso nell'intervallo"));
    return tabella[indice];
}

// A working text on the stack: the words of one step, with no allocation.
class Testo {
  public:
    void add(std::string_view parte) {
        if (parte.size() > testo_.size() - lunghezza_)
            throw RuntimeError(
                QStringLiteral("Numero troppo grande per essere scritto in lettere"));
        std::memcpy(testo_.data() + lunghezza_, parte.data(), parte.size());
        lunghezza_ += parte.size();
    }
    void add(const Testo& altro) { add(altro.view()); }
    // Drops the last `quante` letters.
    void togli(std::size_t quante) { lunghezza_ -= std::min(quante, lunghezza_); }
    void svuota() { lunghezza_ = 0; }
    bool vuoto() const { return lunghezza_ == 0; }
    std::string_view view() const { return {testo_.data(), lunghezza_}; }
    // Equal to `parola`, letter case aside.
    bool comeParola(std::string_view parola) const {
        if (lunghezza_ != parola.size()) return false;
        for (std::size_t i = 0; i < lunghezza_; ++i) {
            const auto minuscola = [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; };
            if (minuscola(testo_[i]) != minuscola(parola[i])) return false;
        }
        return true;
    }

  private:
    std::array<char, 240> testo_;
    std::size_t lunghezza_ = 0;
};

void inLettere(quint64 numero, Testo& risultato);

// The value of the digits of `numero` without the first one.
quint64 senzaPrimaCifra(quint64 numero) {
    quint64 peso = 1;
    while (numero / peso >= 10)
        peso *= 10;
    return numero % peso;
}

// `numero` in words followed by "mille", whose last two letters become "a".
void conMila(quint64 numero, Testo& parte) {
    inLettere(numero, parte);
    parte.add(voce(Potenze, 2));
    parte.togli(2);
    parte.add("a"sv);
}

// "un" + `potenza` for one, else the words of `numero` + `plurale`.
void unOPiu(quint64 numero, std::string_view potenza, std::string_view plurale, Testo& parte) {
    if (numero == 1) {
        parte.add("un"sv);
        parte.add(potenza);
    } else {
        inLettere(numero, parte);
        parte.add(plurale);
    }
}

// The steps of NumeroInLettere, on the plain digits of a whole number.
void inLettere(quint64 numero, Testo& risultato) {
    if (numero < 20) {
        risultato.add(voce(Unita, numero));
        return;
    }
    Testo miliardi, milioni, migliaia, centinaia, resto;
    quint64 s = numero;
    const quint64 t = s % 100;
    if (t <= 19) {
        inLettere(t, resto);
    } else {
        const quint64 u = s % 10;
        inLettere(u, resto);
        s = numero - u;
        Testo decina;
        decina.add(voce(Decine, (s % 100) / 10));
        if ((resto.comeParola("uno"sv) || resto.comeParola("otto"sv)) && !decina.vuoto())
            decina.togli(1);
        decina.add(resto);
        resto = decina;
    }
    const quint64 h = (s - s % 100) / 100;
    if (h == 0) {
        risultato.add(resto);
        return;
    }
    if (h <= 9) {
        if (h != 1) inLettere(h, centinaia);
        centinaia.add(voce(Potenze, 1));
    } else {
        quint64 k = h / 10;
        const quint64 c = h % 10;
        if (c > 1) inLettere(c, centinaia);
        if (c >= 1) centinaia.add(voce(Potenze, 1));
        if (k <= 999) {
            if (k == 1) {
                migliaia.add(voce(Potenze, 2));
            } else {
                conMila(k, migliaia);
            }
        } else {
            quint64 m = k / 1000;
            if (m == 1) {
                milioni.add("un"sv);
                milioni.add(voce(Potenze, 5));
                inLettere(senzaPrimaCifra(k), migliaia);
                migliaia.add("mila"sv);
            } else {
                if (m <= 999) {
                    inLettere(m, milioni);
                    milioni.add("milioni"sv);
                } else {
                    unOPiu(m / 1000, voce(Potenze, 8), "miliardi"sv, miliardi);
                    m %= 1000;
                    if (m != 0) unOPiu(m, voce(Potenze, 5), "milioni"sv, milioni);
                }
                // No test for one here: a remainder of a thousand reads "unomila".
                k %= 1000;
                if (k != 0) conMila(k, migliaia);
            }
        }
    }
    if (migliaia.comeParola("mila"sv)) migliaia.svuota();
    risultato.add(miliardi);
    risultato.add(milioni);
    risultato.add(migliaia);
    risultato.add(centinaia);
    risultato.add(resto);
}

// The amount's default text: up to 15 significant digits, an exponent from
// 1E+15 on (and below 1E-04), the decimal comma.
std::string_view testoPredefinito(double valore, std::array<char, 40>& buffer) {
    const auto fine = std::to_chars(buffer.data(), buffer.data() + buffer.size(), valore,
                                    std::chars_format::general, 15)
                          .ptr;
    std::replace(buffer.data(), fine, '.', ',');
    return {buffer.data(), std::size_t(fine - buffer.data())};
}

// The leading number of a text, read up to the first character that is
// neither digit nor point: the decimal comma, or the exponent's letter, stops
// it (the text has no point).
quint64 numeroIniziale(std::string_view testo) {
    quint64 valore = 0;
    for (char c : testo) {
        if (c < '0' || c > '9') break;
        valore = valore * 10 + quint64(c - '0');
    }
    return valore;
}

void appendi(QString& risultato, std::string_view testo) {
    risultato.append(QLatin1StringView(testo.data(), qsizetype(testo.size())));
}

}  // namespace

void InizializzaNumeri() {
    Unita = {""sv,         "uno"sv,    "due"sv,         "tre"sv,      "quattro"sv,
             "cinque"sv,   "sei"sv,    "sette"sv,       "otto"sv,     "nove"sv,
             "dieci"sv,    "undici"sv, "dodici"sv,      "tredici"sv,  "quattordici"sv,
             "quindici"sv, "sedici"sv, "diciassette"sv, "diciotto"sv, "diciannove"sv,
             ""sv};
    Decine = {""sv,          "dieci"sv,    "venti"sv,    "trenta"sv,  "quaranta"sv,
              "cinquanta"sv, "sessanta"sv, "settanta"sv, "ottanta"sv, "novanta"sv};
    Potenze = {"dieci"sv,   "cento"sv,   "mille"sv,   "mila"sv,    "mila"sv,
               "milione"sv, "milioni"sv, "milioni"sv, "miliardo"sv};
    NumeriPronti = true;
}

QString NumeroInLettere(double& numero) {
    if (!(numero >= 0 && numero <= 1e18) || numero != std::floor(numero))
        throw RuntimeError(QStringLiteral("Numero non valido per la scrittura in lettere: ") +
                           QString::number(numero, 'g', 17));
    if (!NumeriPronti) InizializzaNumeri();
    Testo parole;
    inLettere(quint64(numero), parole);
    QString risultato;
    appendi(risultato, parole.view());
    return risultato;
}

QString ImportoInLettere(double& importo, const QString& separatore) {
    if (importo == 0) return QStringLiteral("zero") + separatore + QStringLiteral("00");
    if (std::isnan(importo))
        throw RuntimeError(QStringLiteral("Importo non valido: il valore non è un numero"));
    if (std::isinf(importo))
        throw RuntimeError(QStringLiteral("Importo non valido: il valore è infinito"));
    if (!NumeriPronti) InizializzaNumeri();
    std::string_view prefisso;
    if (importo < 0) {
        prefisso = "- "sv;
        importo = std::fabs(importo);
    }

    std::array<char, 40> predefinito;
    const quint64 intero = numeroIniziale(testoPredefinito(importo, predefinito));

    // "0.00": two decimals, rounded, with the decimal comma.
    std::array<char, 330> formattato;
    char* fine = std::to_chars(formattato.data(), formattato.data() + formattato.size(), importo,
                               std::chars_format::fixed, 2)
                     .ptr;
    std::replace(formattato.data(), fine, '.', ',');
    const std::string_view conDecimali(formattato.data(), std::size_t(fine - formattato.data()));

    // Every "<whole>," taken out: on a carry into the units it is not there,
    // and the whole formatted text stays.
    // The whole part, below 1E+15, has its plain digits as default text.
    std::array<char, 24> interoTesto;
    char* fineIntero =
        std::to_chars(interoTesto.data(), interoTesto.data() + interoTesto.size() - 1, intero).ptr;
    *fineIntero++ = ',';
    const std::string_view cercato(interoTesto.data(),
                                   std::size_t(fineIntero - interoTesto.data()));
    std::array<char, 330> decimali;
    std::size_t lunghezza = 0;
    for (std::size_t i = 0; i < conDecimali.size();) {
        if (conDecimali.substr(i, cercato.size()) == cercato) {
            i += cercato.size();
        } else {
            decimali[lunghezza++] = conDecimali[i++];
        }
    }

    Testo parole;
    inLettere(intero, parole);
    QString risultato;
    risultato.reserve(qsizetype(prefisso.size() + parole.view().size() + lunghezza) +
                      separatore.size());
    appendi(risultato, prefisso);
    appendi(risultato, parole.view());
    risultato.append(separatore);
    appendi(risultato, {decimali.data(), lunghezza});
    return risultato;
}

}  // namespace lorvane::reports::ModSommeConsegnate
