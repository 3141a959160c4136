#pragma once

#include "platform/files.h"

#include <functional>
#include <limits>
#include <map>
#include <set>

namespace quorvane {

// A tree of folders and files in memory. What a test makes fail, and what it wants to know afterwards, are
// plain members.
class MemoryFiles final : public Files {
  public:
    explicit MemoryFiles(char separator = '/');

    // Both make the folders above as well.
    void Put(const std::string& path, std::string content = {});
    void PutFolder(const std::string& path);
    void RemoveFolder(const std::string& path);
    // A link to a folder, which need not be there.
    void PutLink(const std::string& path, const std::string& target);

    char Separator() const override { return separator_; }
    bool List(const std::string& folder, std::string_view pattern, FolderListing& out) override;
    bool Exists(const std::string& path) override;
    std::optional<std::string> Read(const std::string& path) override;
    std::unique_ptr<FileWriter> Replace(const std::string& path, std::string& why) override;
    bool MakeFolder(const std::string& path) override;
    bool Delete(const std::string& path) override;
    std::string ProgramDirectory() override { return programDirectory; }
    std::string WritableDirectory() override { return writableDirectory; }
    std::string SharedDirectory() override { return sharedDirectory; }

    std::string programDirectory;
    std::string writableDirectory;
    std::string sharedDirectory;
    std::set<std::string> unreadable; // folders and files, by path without a separator at the end
    std::set<std::string> readOnly;   // folders in which nothing can be made, replaced or deleted
    std::size_t freeBytes = std::numeric_limits<std::size_t>::max();
    std::function<void(const std::string& folder)> onList; // called before each listing
    std::vector<std::string> replaced;                     // paths committed, in order

  private:
    friend class MemoryFileWriter;

    struct Folder {
        std::map<std::string, Folder> folders;
        std::map<std::string, std::string> files;
        std::string target; // of a link
    };
    // A path parted into the folder that it lies in and its last name.
    struct Place {
        std::string folder;
        std::string name;
    };

    std::vector<std::string> Names(const std::string& path) const;
    Place PlaceOf(const std::string& path) const;
    Folder* Find(const std::string& path);
    Folder& Make(const std::string& path);

    char separator_;
    Folder root_;
};

} // namespace quorvane
