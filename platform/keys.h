#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quorvane {

// The state of chosen keys, wherever on the desktop they are pressed and without taking them from anybody.
// Codes are virtual-key codes (config/vk_mapping.h, and 16, 17, 18 for either Shift, Ctrl and Alt).
class Keys {
  public:
    virtual ~Keys() = default;

    // From now on the presses of these keys are noticed, and no others; with none the system tells this
    // process of no key at all. `onPress` comes from the event loop when one of them goes down.
    virtual void Watch(std::vector<int> codes, std::function<void()> onPress) = 0;

    // Whether the watched key is down, or was at any time since it was last asked for. False for others.
    virtual bool WasDown(int code) = 0;
    // Whether WasDown would be true for any watched key.
    virtual bool Busy() = 0;

    // How keys are noticed here, in the words of a report; empty where they cannot be.
    virtual std::string Means() = 0;
};

} // namespace quorvane
