#include "host/components.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

#include "platform/component_registry.h"

namespace lorvane::host {

using namespace Qt::StringLiterals;

QString defaultInstallation() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           u"/lorvane/demo"_s;
}

// A library is taken where it was built, else beside the program (an
// installed copy).
void registerComponents() {
    for (const char* library : {LORVANE_MODULE_LIBRARY, LORVANE_SEARCH_LIBRARY}) {
        QString path = QString::fromLocal8Bit(library);
        if (!QFileInfo::exists(path))
            path = QCoreApplication::applicationDirPath() + u'/' + QFileInfo(path).fileName();
        platform::ComponentRegistry::registerServer(path);
    }
}

}  // namespace lorvane::host
