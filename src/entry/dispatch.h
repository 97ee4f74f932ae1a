// The report codes and the screen each one opens, in the order Start tests them.
#pragma once

#include <QString>
#include <functional>
#include <span>

class QWidget;

namespace lorvane::entry {

struct ReportScreen {
    const char* code;         // CodiceStampa, compared without regard to case
    const char* screenClass;  // the name of the screen's class
    std::function<QWidget*()> create;
};

std::span<const ReportScreen> reportScreens();

// The first row whose code equals `code` without regard to case, or nullptr.
const ReportScreen* findReportScreen(const QString& code);

}  // namespace lorvane::entry
