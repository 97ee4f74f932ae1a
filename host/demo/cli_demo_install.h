// The "demo-install" command of the host's command line: writes a demo
// installation and says in one line what it holds.
#pragma once

#include <QStringList>
#include <QTextStream>

namespace lorvane::demo {

// `args` are the words after "demo-install":
//   DIR [--venues N] [--months M] [--seed S] [--today dd/mm/yyyy]
// Prints the summary on `out` and gives 0; prints the reason on `err` and
// gives 2 for bad arguments or a failed installation.
int runDemoInstallCommand(const QStringList& args, QTextStream& out, QTextStream& err);

}  // namespace lorvane::demo
