// The report layouts of the demo installation, their work-database templates
// and their rows in the report catalogues.
#pragma once

#include <QString>
#include <QStringList>

namespace lorvane::demo {

// Writes the layouts and templates below `folder` and lists them in the
// catalogues already there (Stampe.db and pers/StampePers.db). Throws
// RuntimeError naming the file that cannot be written.
void writeDemoReports(const QString& folder);

// The files writeDemoReports writes, each once, relative to the folder.
QStringList demoReportFiles();

}  // namespace lorvane::demo
