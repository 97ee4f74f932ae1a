// The window every report screen is built on: its title from the screen's
// Titolo, deleted when closed, counted while alive.
#pragma once

#include <QString>
#include <QWidget>

#include "entry/module_values.h"

namespace lorvane::screens {

class FilterScreen : public QWidget {
  public:
    explicit FilterScreen(const QString& titolo);

    // The report title of the screen.
    const QString& Titolo() const { return titolo_; }

  private:
    QString titolo_;
    entry::LiveObject live_;
};

}  // namespace lorvane::screens
