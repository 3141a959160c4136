#pragma once

// The system's headers, in the one order and with the one set of switches that they need.
#include <windows.h>

#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>

namespace quorvane {

// A COM object that is released with its holder.
template<typename Interface>
class ComPointer {
  public:
    ComPointer() = default;
    ComPointer(const ComPointer&) = delete;
    ComPointer& operator=(const ComPointer&) = delete;
    ~ComPointer() {
        if (object_) object_->Release();
    }
    Interface* operator->() const { return object_; }
    Interface* Get() const { return object_; }
    // For calls that hand an object out.
    Interface** Out() { return &object_; }
    explicit operator bool() const { return object_ != nullptr; }

  private:
    Interface* object_ = nullptr;
};

// A function of a system library that older systems lack; null there.
template<typename Function>
Function SystemFunction(const wchar_t* library, const char* name) {
    const HMODULE module = GetModuleHandleW(library);
    return module ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)))
                  : nullptr;
}

} // namespace quorvane
