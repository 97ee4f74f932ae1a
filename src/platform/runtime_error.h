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

}  // namespace lorvane
