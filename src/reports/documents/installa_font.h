// The bar-code font of the label layouts, put where the report engine finds
// it: copied from the installation into the user's font folder, and made
// known to this program at once.
#pragma once

#include <QString>

namespace lorvane::reports {

// The font file's name, in the installation's "Bin\" and in the font folder.
inline constexpr char FontEtichette[] = "IDAutomationHC39M.ttf";

// True when a file (not a folder) stands at `percorso`, a path as the module
// writes it.
bool FileExists(const QString& percorso);

// The folder that stands for "WINDIR\Fonts\": $XDG_DATA_HOME/fonts/, or
// ~/.local/share/fonts/ when that is unset. Ends in "/".
QString cartellaFont();

// Copies "Bin\IDAutomationHC39M.ttf" of the installation at `percorso` into
// the font folder when the source exists and the target does not (a target
// present is never touched), then registers the target, when there is one,
// with the program's fonts. Nothing is told to the user. A font folder that
// cannot be written throws RuntimeError; no partial file is left behind.
void InstallaFont(const QString& percorso);

}  // namespace lorvane::reports
