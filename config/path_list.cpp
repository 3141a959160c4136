#include "config/path_list.h"

#include "core/run_time_error.h"

#include <algorithm>
#include <limits>

namespace quorvane {

char* PathList::Reserve(std::size_t bytes) {
    const std::size_t current = end_ / ChunkSize;
    const bool fits = current < chunks_.size() && chunks_[current] && end_ % ChunkSize + bytes <= ChunkSize;
    if (!fits) {
        end_ = chunks_.size() * ChunkSize;
        const std::size_t places = (bytes + ChunkSize - 1) / ChunkSize;
        if (end_ + places * ChunkSize - 1 > std::numeric_limits<std::uint32_t>::max())
            throw RunTimeError(7, "Out of memory");
        // The first of several places owns the memory of them all, and the rest of it stays unused.
        chunks_.emplace_back(new char[places * ChunkSize]);
        chunks_.resize(chunks_.size() + places - 1);
    }
    return chunks_[end_ / ChunkSize].get() + end_ % ChunkSize;
}

void PathList::Add(std::string_view folder, std::string_view name) {
    const std::size_t bytes = folder.size() + name.size() + 1;
    char* place = Reserve(bytes);
    if (count_ >= Capacity()) offsets_.emplace_back(new std::uint32_t[Growth]);
    place = std::copy(folder.begin(), folder.end(), place);
    place = std::copy(name.begin(), name.end(), place);
    *place = 0;
    offsets_[static_cast<std::size_t>(count_ / Growth)][static_cast<std::size_t>(count_ % Growth)] =
        static_cast<std::uint32_t>(end_);
    end_ += bytes;
    ++count_;
}

std::string_view PathList::operator[](std::int32_t index) const {
    if (index == 0) return {};
    if (index < 0 || index > count_) throw RunTimeError::SubscriptOutOfRange();
    const std::int32_t entry = index - 1;
    const std::size_t offset =
        offsets_[static_cast<std::size_t>(entry / Growth)][static_cast<std::size_t>(entry % Growth)];
    return chunks_[offset / ChunkSize].get() + offset % ChunkSize;
}

} // namespace quorvane
