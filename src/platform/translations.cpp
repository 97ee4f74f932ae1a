#include "platform/translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace lorvane::platform {

bool installItalianTranslations() {
    static bool installed = false;
    if (installed || !QCoreApplication::instance()) return installed;
    // Owned by the application, so that it lives as long as the texts it gives.
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (!translator->load(QLocale(QLocale::Italian, QLocale::Italy), QStringLiteral("qtbase"),
                          QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete translator;
        return false;
    }
    installed = QCoreApplication::installTranslator(translator);
    return installed;
}

}  // namespace lorvane::platform
