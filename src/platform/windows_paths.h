// Windows-form paths as the module writes them ("c:\temp1\x.mdb",
// "export\pdf\"), mapped onto this file system.
#pragma once

#include <QString>

namespace lorvane::platform {

// The folder that stands for "C:\temp1\": $LORVANE_TEMP1 when set, otherwise
// $XDG_CACHE_HOME/lorvane/temp1/ (~/.cache when unset). Always ends in "/".
QString workFolder();

// Maps a path as the module writes it: a leading "c:\temp1\" (any case, either
// slash) becomes the work folder, and every "\" becomes "/". Other text is
// kept, so a relative path stays relative.
QString toLocalPath(const QString& windowsPath);

// True when `localPath` lies inside the work folder.
bool isInWorkFolder(const QString& localPath);

}  // namespace lorvane::platform
