#include "platform/memory/files.h"

#include "core/text.h"
#include "platform/shared/name_pattern.h"

#include <algorithm>
#include <utility>

namespace quorvane {

class MemoryFileWriter final : public FileWriter {
  public:
    MemoryFileWriter(MemoryFiles& files, std::string path)
        : files_(files)
        , path_(std::move(path)) {}

    bool WriteAt(std::uint64_t place, const void* bytes, std::size_t count) override {
        const std::size_t end = std::max(content_.size(), static_cast<std::size_t>(place) + count);
        whole_ = whole_ && end <= files_.freeBytes;
        if (!whole_) return false;
        content_.resize(end);
        content_.replace(static_cast<std::size_t>(place), count, static_cast<const char*>(bytes), count);
        return true;
    }

    bool Commit() override {
        const MemoryFiles::Place place = files_.PlaceOf(path_);
        MemoryFiles::Folder* folder = files_.Find(place.folder);
        if (!whole_ || !folder || files_.readOnly.count(place.folder) > 0) return false;
        folder->files[place.name] = std::move(content_);
        files_.replaced.push_back(path_);
        return true;
    }

    std::string Why() const override { return whole_ ? "the folder cannot be written" : "the disk is full"; }

  private:
    MemoryFiles& files_;
    std::string path_;
    std::string content_;
    bool whole_ = true;
};

MemoryFiles::MemoryFiles(char separator)
    : programDirectory(separator == '/' ? "/opt/quorvane" : "C:\\Quorvane")
    , writableDirectory(separator == '/' ? "/home/person/.local/share/quorvane" : programDirectory)
    , separator_(separator) {
    PutFolder(programDirectory);
    PutFolder(writableDirectory);
}

std::vector<std::string> MemoryFiles::Names(const std::string& path) const {
    std::vector<std::string> names = Split(path, separator_);
    std::erase(names, "");
    return names;
}

MemoryFiles::Place MemoryFiles::PlaceOf(const std::string& path) const {
    const std::size_t last = path.rfind(separator_);
    if (last == std::string::npos) return {"", path};
    return {path.substr(0, last), path.substr(last + 1)};
}

MemoryFiles::Folder* MemoryFiles::Find(const std::string& path) {
    Folder* folder = &root_;
    for (const std::string& name : Names(path)) {
        const auto found = folder->folders.find(name);
        if (found == folder->folders.end()) return nullptr;
        folder = &found->second;
        if (!folder->target.empty()) folder = Find(folder->target);
        if (!folder) return nullptr;
    }
    return folder;
}

MemoryFiles::Folder& MemoryFiles::Make(const std::string& path) {
    Folder* folder = &root_;
    for (const std::string& name : Names(path)) {
        folder = &folder->folders[name];
    }
    return *folder;
}

void MemoryFiles::Put(const std::string& path, std::string content) {
    const Place place = PlaceOf(path);
    Make(place.folder).files[place.name] = std::move(content);
}

void MemoryFiles::PutFolder(const std::string& path) {
    Make(path);
}

void MemoryFiles::PutLink(const std::string& path, const std::string& target) {
    Make(path).target = target;
}

void MemoryFiles::RemoveFolder(const std::string& path) {
    const Place place = PlaceOf(path);
    if (Folder* above = Find(place.folder)) above->folders.erase(place.name);
}

bool MemoryFiles::List(const std::string& folder, std::string_view pattern, FolderListing& out) {
    out.folders.Clear();
    out.files.Clear();
    out.identity.reset();
    std::string path = folder;
    while (!path.empty() && path.back() == separator_)
        path.pop_back();
    if (onList) onList(path);
    const Folder* found = folder.empty() ? nullptr : Find(path);
    if (!found || unreadable.count(path) > 0) return false;
    for (const auto& [name, below] : found->folders) {
        const bool leadsBack =
            !below.target.empty() && (path + separator_).starts_with(below.target + separator_);
        if (!leadsBack) out.folders.Add(name);
    }
    out.identity.emplace(1, reinterpret_cast<std::uintptr_t>(found));
    const NamePattern fits(pattern);
    for (const auto& [name, content] : found->files) {
        if (fits.Fits(name)) out.files.Add(name);
    }
    return true;
}

bool MemoryFiles::Exists(const std::string& path) {
    const Place place = PlaceOf(path);
    const Folder* folder = Find(place.folder);
    return Find(path) != nullptr || (folder && folder->files.count(place.name) > 0);
}

std::optional<std::string> MemoryFiles::Read(const std::string& path) {
    const Place place = PlaceOf(path);
    const Folder* folder = Find(place.folder);
    if (!folder || unreadable.count(path) > 0) return std::nullopt;
    const auto found = folder->files.find(place.name);
    if (found == folder->files.end()) return std::nullopt;
    return found->second;
}

std::unique_ptr<FileWriter> MemoryFiles::Replace(const std::string& path, std::string& why) {
    const Place place = PlaceOf(path);
    if (!Find(place.folder) || readOnly.count(place.folder) > 0) {
        why = "the folder cannot be written";
        return nullptr;
    }
    return std::make_unique<MemoryFileWriter>(*this, path);
}

bool MemoryFiles::MakeFolder(const std::string& path) {
    const Place place = PlaceOf(path);
    if (Find(path)) return true;
    if (readOnly.count(place.folder) > 0) return false;
    Make(path);
    return true;
}

bool MemoryFiles::Delete(const std::string& path) {
    const Place place = PlaceOf(path);
    Folder* folder = Find(place.folder);
    return folder && readOnly.count(place.folder) == 0 && folder->files.erase(place.name) > 0;
}

} // namespace quorvane
