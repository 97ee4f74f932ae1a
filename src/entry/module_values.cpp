#include "entry/module_values.h"

namespace lorvane::entry {

ModuleValues& moduleValues() {
    static ModuleValues values;
    return values;
}

std::atomic<int>& liveObjects() {
    static std::atomic<int> count{0};
    return count;
}

}  // namespace lorvane::entry
