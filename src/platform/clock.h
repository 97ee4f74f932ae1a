// Today's date, through one function that a test or a scripted run can fix.
#pragma once

#include <QDate>
#include <functional>

namespace lorvane::platform {

// The system date, or the fixed one.
QDate Today();

// Replaces the clock; an empty function puts the system clock back.
void setToday(std::function<QDate()> today);

}  // namespace lorvane::platform
