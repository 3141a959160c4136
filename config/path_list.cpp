#include "config/path_list.h"

#include "core/run_time_error.h"

#include <algorithm>
#include <iterator>
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

std::uint32_t PathList::Keep(std::string_view text) {
    char* place = Reserve(text.size() + 1);
    *std::copy(text.begin(), text.end(), place) = 0;
    const auto offset = static_cast<std::uint32_t>(end_);
    end_ += text.size() + 1;
    return offset;
}

std::string_view PathList::TextAt(std::uint32_t offset) const {
    return chunks_[offset / ChunkSize].get() + offset % ChunkSize;
}

void PathList::Add(std::string_view folder, std::string_view name) {
    if (folders_.empty() || TextAt(folders_.back().path) != folder)
        folders_.push_back({count_ + 1, Keep(folder)});
    if (count_ >= Capacity()) offsets_.emplace_back(new std::uint32_t[Growth]);
    offsets_[static_cast<std::size_t>(count_ / Growth)][static_cast<std::size_t>(count_ % Growth)] =
        Keep(name);
    ++count_;
}

std::string PathList::operator[](std::int32_t index) const {
    if (index == 0) return {};
    if (index < 0 || index > count_) throw RunTimeError::SubscriptOutOfRange();
    const auto behind =
        std::upper_bound(folders_.begin(), folders_.end(), index,
                         [](std::int32_t at, const Folder& folder) { return at < folder.first; });
    std::string path(TextAt(std::prev(behind)->path));
    const std::int32_t entry = index - 1;
    return path.append(
        TextAt(offsets_[static_cast<std::size_t>(entry / Growth)][static_cast<std::size_t>(entry % Growth)]));
}

} // namespace quorvane
