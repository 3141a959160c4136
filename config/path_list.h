#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace quorvane {

// The candidates of a scan: full paths, in memory close to the bytes of the paths themselves (five bytes more
// for each), so that a million files cost no more than their names. Entries stand at 1 to Count; index 0 is
// the empty text that is never drawn. Nothing is moved when the list grows.
class PathList {
  public:
    PathList() = default;
    PathList(PathList&&) = default;
    PathList& operator=(PathList&&) = default;

    std::int32_t Count() const { return count_; }
    // The highest index there is room for; it grows by Growth.
    std::int32_t Capacity() const { return static_cast<std::int32_t>(offsets_.size()) * Growth; }

    // Appends `folder` followed by `name`. Throws RunTimeError 7, "Out of memory", beyond 4 GiB of paths.
    void Add(std::string_view folder, std::string_view name);

    // Valid until Clear. Throws SubscriptOutOfRange outside 0 to Count.
    std::string_view operator[](std::int32_t index) const;

    // Gives the memory back as well.
    void Clear() { *this = PathList(); }

    static constexpr std::int32_t Growth = 5000;

  private:
    static constexpr std::size_t ChunkSize = 64 * 1024;

    char* Reserve(std::size_t bytes);

    // Each path ends in a zero byte and lies in one piece; a path longer than a chunk takes the places of
    // several. An offset is the chunk's number times ChunkSize and the place within it.
    std::vector<std::unique_ptr<char[]>> chunks_;
    std::vector<std::unique_ptr<std::uint32_t[]>> offsets_; // Growth of them in each block
    std::size_t end_ = 0;
    std::int32_t count_ = 0;
};

} // namespace quorvane
