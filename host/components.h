// What the launcher and the scripted run share: the installation used when
// none is given, made ready for use, and the component libraries built with
// the program.
#pragma once

#include <QString>

namespace lorvane::host {

// ~/.local/share/lorvane/demo: the installation when --percorso is not given.
QString defaultInstallation();

// Registers the component libraries built with this program for this user, so
// that the suite's objects are created by program id. Throws RuntimeError
// naming a library that cannot be registered.
void registerComponents();

// True when `folder` holds an installation (its main database).
bool isInstallation(const QString& folder);

// Makes `folder` ready for a session: the demo installation written there
// when it holds none (its last day today, by the platform's clock), the work
// folder made, the component libraries registered. With `showProgress` a
// window says that the demo installation is being written while it is.
// Throws RuntimeError.
void prepareInstallation(const QString& folder, bool showProgress = false);

}  // namespace lorvane::host
