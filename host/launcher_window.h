// The application's main window: the reports of the suite, each opened through
// the printing module exactly as the suite's own menu opens it.
#pragma once

#include <QMainWindow>
#include <memory>
#include <span>

#include "host/reference_host.h"

class QCheckBox;
class QTreeWidget;

namespace lorvane::host {

// A report of the menu: the code given to the module and the title shown.
struct MenuReport {
    const char* area;
    const char* code;
    const char* title;
};

// The 20 reports of the suite's print menu.
std::span<const MenuReport> menuReports();

class LauncherWindow : public QMainWindow {
  public:
    explicit LauncherWindow(std::shared_ptr<ReferenceHost> host, QWidget* parent = nullptr);

    // Creates Configura through the component registry and starts the report.
    void openReport(const QString& code);

  private:
    void raiseCloseRequest();

    std::shared_ptr<ReferenceHost> host_;
    QTreeWidget* reports_;
    QCheckBox* modal_;
};

}  // namespace lorvane::host
