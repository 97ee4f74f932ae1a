// A money amount in Italian words, as a receipt writes it: the whole part as
// one lower-case word, a separator, the two decimals in digits
// ("milleduecentotrentaquattro/56"). A pure text routine: no database, no
// control. The words follow the suite's own rules, irregular results
// included ("unmilioneunomila", "centoottantuno").
#pragma once

#include <QString>

namespace lorvane::reports::ModSommeConsegnate {

// The amount in words, then `separatore`, then the decimals. Exactly 0 (also
// -0) gives "zero" + separatore + "00" without filling the tables. A negative
// amount gets "- " in front and `importo` is made positive. From 1E+15 on the
// amount's text has an exponent and the words come out wrong, without error.
// NaN and the infinities throw RuntimeError and leave `importo` as it was.
QString ImportoInLettere(double& importo, const QString& separatore);

// A whole number not below 0 in words; "" for 0. `numero` is left as it was.
// Throws RuntimeError for a number that is not whole or not in 0..1E+18.
QString NumeroInLettere(double& numero);

// Fills the word tables once per process (ImportoInLettere calls it).
void InizializzaNumeri();

}  // namespace lorvane::reports::ModSommeConsegnate
