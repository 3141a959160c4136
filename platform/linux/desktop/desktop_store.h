#pragma once

#include "platform/store.h"

#include <memory>
#include <string>

namespace quorvane {

// CreateStore, with the colours of the person's palette among the values of the system: "ButtonFace" and
// "InfoWindow" of "Control Panel\Colors". Needs the application object.
std::unique_ptr<Store> CreateDesktopStore(std::string& why);

} // namespace quorvane
