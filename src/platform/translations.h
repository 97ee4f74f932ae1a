// Qt's own texts (the print dialog, the file chooser, context menus, the
// buttons of standard boxes) in Italian, whatever the machine's language: the
// users work with Italian settings.
#pragma once

namespace lorvane::platform {

// Loads Qt's Italian translations into the running application, once; later
// calls do nothing. Gives false when Qt's translation files are not installed
// (the texts then stay in English).
bool installItalianTranslations();

}  // namespace lorvane::platform
