#pragma once

#include "platform/keys.h"

#include <set>

namespace quorvane {

class MemoryKeys final : public Keys {
  public:
    void Watch(std::vector<int> codes, std::function<void()> onPress) override {
        watched = {codes.begin(), codes.end()};
        onPress_ = std::move(onPress);
        std::erase_if(pressed_, [this](int code) { return !watched.contains(code); });
    }
    bool WasDown(int code) override {
        const bool was = pressed_.erase(code) > 0;
        return watched.contains(code) && (was || down_.contains(code));
    }
    bool Busy() override {
        for (const int code : watched) {
            if (pressed_.contains(code) || down_.contains(code)) return true;
        }
        return false;
    }
    std::string Means() override { return "memory"; }

    // What a person does.
    void Press(int code) {
        down_.insert(code);
        if (!watched.contains(code)) return;
        pressed_.insert(code);
        if (onPress_) onPress_();
    }
    void Release(int code) { down_.erase(code); }

    std::set<int> watched;

  private:
    std::set<int> down_;
    std::set<int> pressed_; // since they were last asked for
    std::function<void()> onPress_;
};

} // namespace quorvane
