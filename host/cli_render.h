// "lorvane render LAYOUT [--pdf F] [--doc F] [--xls F] [--png DIR]": renders a
// layout against its work file without a window, so a layout can be checked alone.
#pragma once

#include <QStringList>
#include <QTextStream>

namespace lorvane::host {

// `args` are the words after "render". Prints the page count; gives 0, or 2
// with the error on `err`.
int runRenderCommand(const QStringList& args, QTextStream& out, QTextStream& err);

}  // namespace lorvane::host
