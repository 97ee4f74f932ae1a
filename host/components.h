// What the launcher and the scripted run share: the installation used when
// none is given, and the component libraries built with the program.
#pragma once

#include <QString>

namespace lorvane::host {

// ~/.local/share/lorvane/demo: the installation when --percorso is not given.
QString defaultInstallation();

// Registers the component libraries built with this program for this user, so
// that the suite's objects are created by program id. Throws RuntimeError
// naming a library that cannot be registered.
void registerComponents();

}  // namespace lorvane::host
