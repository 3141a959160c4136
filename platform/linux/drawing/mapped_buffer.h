#pragma once

#include <cstddef>
#include <cstdint>

namespace quorvane {

// Zeroed memory straight from the system, which gets it back at once when the buffer goes: a resident program
// keeps nothing of a canvas as large as the screen.
class MappedBuffer {
  public:
    MappedBuffer() = default;
    explicit MappedBuffer(std::size_t bytes);
    ~MappedBuffer();
    MappedBuffer(MappedBuffer&& other) noexcept;
    MappedBuffer& operator=(MappedBuffer&& other) noexcept;

    // Null where there was no memory.
    std::uint8_t* Data() const { return data_; }
    std::size_t Bytes() const { return bytes_; }

  private:
    std::uint8_t* data_ = nullptr;
    std::size_t bytes_ = 0;
};

} // namespace quorvane
