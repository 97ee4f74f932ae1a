#pragma once

#include "platform/runtime_error.h"

namespace lorvane::platform {

template <typename T>
std::shared_ptr<T> createComponent(const QString& progId) {
    std::shared_ptr<T> object = std::dynamic_pointer_cast<T>(ComponentRegistry::create(progId));
    if (!object) {
        throw RuntimeError(
            QStringLiteral("Il componente '%1' non offre l'interfaccia richiesta.").arg(progId));
    }
    return object;
}

}  // namespace lorvane::platform
