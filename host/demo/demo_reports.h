// The report layouts of the demo installation, their work-database templates
// and their rows in the report catalogues.
#pragma once

#include <QString>

namespace lorvane::demo {

// Writes the layouts and templates below `folder` and lists them in the
// catalogues already there (Stampe.db and pers/StampePers.db). Throws
// RuntimeError naming the file that cannot be written.
void writeDemoReports(const QString& folder);

}  // namespace lorvane::demo
