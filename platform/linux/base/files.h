#pragma once

#include "platform/files.h"

namespace quorvane {

// Files of a POSIX system. Bytes of names are taken as they are.
class LinuxFiles final : public Files {
  public:
    char Separator() const override { return '/'; }
    // Regular files and links to them; pipes, sockets and devices, which a reader could hang on, do not
    // count.
    bool List(const std::string& folder, std::string_view pattern, FolderListing& out) override;
    bool Exists(const std::string& path) override;
    std::optional<std::string> Read(const std::string& path) override;
    std::unique_ptr<FileWriter> Replace(const std::string& path, std::string& why) override;
    bool MakeFolder(const std::string& path) override;
    bool Delete(const std::string& path) override;
    std::string ProgramDirectory() override;
    // "quorvane" in the data folder.
    std::string WritableDirectory() override;
    // "share/quorvane" under the prefix in whose "bin" the program lies.
    std::string SharedDirectory() override;
};

} // namespace quorvane
