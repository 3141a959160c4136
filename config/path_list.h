#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// The candidates of a scan: full paths, kept as their folders and, for each, its name and five bytes more, so
// that a million files cost no more than their names. Entries stand at 1 to Count; index 0 is the empty text
// that is never drawn. Nothing is moved when the list grows.
class PathList {
  public:
    PathList() = default;
    PathList(PathList&&) = default;
    PathList& operator=(PathList&&) = default;

    std::int32_t Count() const { return count_; }
    // The highest index there is room for; it grows by Growth.
    std::int32_t Capacity() const { return static_cast<std::int32_t>(offsets_.size()) * Growth; }

    // Appends `folder` followed by `name`, neither with a zero byte in it. The names of one folder belong one
    // behind the other. Throws RunTimeError 7, "Out of memory", beyond 4 GiB of names.
    void Add(std::string_view folder, std::string_view name);

    // Throws SubscriptOutOfRange outside 0 to Count.
    std::string operator[](std::int32_t index) const;

    // Gives the memory back as well.
    void Clear() { *this = PathList(); }

    static constexpr std::int32_t Growth = 5000;

  private:
    static constexpr std::size_t ChunkSize = 64 * 1024;

    struct Folder {
        std::int32_t first; // the index of its first entry; the others follow
        std::uint32_t path; // an offset
    };

    char* Reserve(std::size_t bytes);
    std::uint32_t Keep(std::string_view text);
    std::string_view TextAt(std::uint32_t offset) const;

    // Each text ends in a zero byte and lies in one piece; one longer than a chunk takes the places of
    // several. An offset is the chunk's number times ChunkSize and the place within it.
    std::vector<std::unique_ptr<char[]>> chunks_;
    std::vector<std::unique_ptr<std::uint32_t[]>> offsets_; // of the names, Growth of them in each block
    std::vector<Folder> folders_;                           // in the order of their entries
    std::size_t end_ = 0;
    std::int32_t count_ = 0;
};

} // namespace quorvane
