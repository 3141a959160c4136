#pragma once

#include "platform/files.h"

#include <algorithm>
#include <string>

namespace quorvane::test {

// A file in a text, on a disk that holds `room` bytes.
class StringWriter final : public FileWriter {
  public:
    bool WriteAt(std::uint64_t place, const void* data, std::size_t count) override {
        largest = std::max(largest, count);
        const std::size_t at = static_cast<std::size_t>(place);
        if (at + count > room) return false;
        bytes.resize(std::max(bytes.size(), at + count));
        bytes.replace(at, count, static_cast<const char*>(data), count);
        return true;
    }
    bool Commit() override { return true; }
    std::string Why() const override { return {}; }

    std::string bytes;
    std::size_t largest = 0; // bytes of one write
    std::size_t room = std::string::npos;
};

} // namespace quorvane::test
