#include "platform/clock.h"

namespace lorvane::platform {

namespace {

std::function<QDate()>& clock() {
    static std::function<QDate()> current;
    return current;
}

}  // namespace

QDate Today() { return clock() ? clock()() : QDate::currentDate(); }

void setToday(std::function<QDate()> today) { clock() = std::move(today); }

}  // namespace lorvane::platform
