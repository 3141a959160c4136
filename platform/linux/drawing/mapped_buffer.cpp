#include "platform/linux/drawing/mapped_buffer.h"

#include <sys/mman.h>

#include <utility>

namespace quorvane {

MappedBuffer::MappedBuffer(std::size_t bytes)
    : bytes_(bytes) {
    void* memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory != MAP_FAILED) {
        // Large pages spare most of the faults of a first painting.
        madvise(memory, bytes, MADV_HUGEPAGE);
        data_ = static_cast<std::uint8_t*>(memory);
    }
}

MappedBuffer::~MappedBuffer() {
    if (data_) munmap(data_, bytes_);
}

MappedBuffer::MappedBuffer(MappedBuffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr))
    , bytes_(std::exchange(other.bytes_, 0)) {}

MappedBuffer& MappedBuffer::operator=(MappedBuffer&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(bytes_, other.bytes_);
    return *this;
}

} // namespace quorvane
