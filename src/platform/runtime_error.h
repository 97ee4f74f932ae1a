// The one exception type of the module: a run-time failure whose text is what
// the user reads in the message box.
#pragma once

#include <QString>
#include <stdexcept>

namespace lorvane {

class RuntimeError : public std::runtime_error {
  public:
    explicit RuntimeError(const QString& message)
        : std::runtime_error(message.toStdString()), message_(message) {}

    // The text for the user, as it was given (UTF-16, unlike what()).
    const QString& message() const noexcept { return message_; }

  private:
    QString message_;
};

// The object behind `object`; the runtime's failure on an object reference
// that was never set when there is none.
template <typename Pointer>
auto& impostato(const Pointer& object) {
    if (!object)
        throw RuntimeError(
            QStringLiteral("Variabile oggetto o variabile del blocco With non impostata"));
    return *object;
}

}  // namespace lorvane
