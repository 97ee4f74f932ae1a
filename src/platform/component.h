// The object model of in-process components on this platform: a component
// library exports four C entry points; its class factory makes objects that
// callers reach through the interface they know.
#pragma once

#include <memory>

namespace lorvane::platform {

// Result codes of the entry points, as the component model defines them.
inline constexpr int ResultOk = 0;
inline constexpr int ResultFalse = 1;
inline constexpr int ClassNotAvailable = -2147221231;   // CLASS_E_CLASSNOTAVAILABLE
inline constexpr int RegistrationFailed = -2147220992;  // SELFREG_E_CLASS

// Every object a component makes. Callers cast to the interface they expect.
class ComponentObject {
  public:
    virtual ~ComponentObject() = default;
};
using ComponentPtr = std::shared_ptr<ComponentObject>;

class ClassFactory {
  public:
    virtual ~ClassFactory() = default;
    virtual ComponentPtr CreateInstance() = 0;
};

// The entry points a component library exports with C linkage:
//   int DllGetClassObject(const char* progId, ClassFactory** factory);
//   int DllCanUnloadNow();      ResultOk when no object of the library is alive
//   int DllRegisterServer();    adds the library to the registry under its ids
//   int DllUnregisterServer();  removes it
using DllGetClassObjectFunction = int (*)(const char* progId, ClassFactory** factory);
using DllEntryFunction = int (*)();

}  // namespace lorvane::platform
