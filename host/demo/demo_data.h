// A demo installation of Lorvane: an operator of gaming machines with its
// companies, venues, machines and a year of weekly collections, written as
// the host's databases and settings, the same bytes for the same options.
#pragma once

#include <QDate>
#include <QString>
#include <QtGlobal>

namespace lorvane::demo {

struct DemoOptions {
    int venues = 300;
    int months = 12;  // collections cover this many months up to lastDay
    quint64 seed = 1;
    QDate lastDay;  // invalid = today
};

// Writes below `folder` (created if missing):
//   Lorvane.db            the main database, filled
//   Stampe.db             the standard report catalogue
//   pers/StampePers.db    the personalised report catalogue
//   Report/, pers/        the layouts and work-database templates they list
//                         (the trial balance, the takings report)
//   Preferenze.db         the grid views, with the default view of the venues
//   Lorvane.ini           the host's settings: company name, user, options
// Everything is written in a staging folder beside `folder` and moved into
// place at the end, the main database last: a failure leaves nothing behind.
// The data depend only on the options (lastDay being the one date they take).
// Throws RuntimeError when `folder` already holds an installation or any of
// these files, when the options are out of range, or when a write fails.
void writeDemoInstallation(const QString& folder, const DemoOptions& options);

}  // namespace lorvane::demo
