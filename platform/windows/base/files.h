#pragma once

#include "platform/files.h"

namespace quorvane {

class WindowsFiles final : public Files {
  public:
    char Separator() const override { return '\\'; }
    bool List(const std::string& folder, std::string_view pattern, FolderListing& out) override;
    bool Exists(const std::string& path) override;
    std::optional<std::string> Read(const std::string& path) override;
    std::unique_ptr<FileWriter> Replace(const std::string& path, std::string& why) override;
    bool MakeFolder(const std::string& path) override;
    bool Delete(const std::string& path) override;
    std::string ProgramDirectory() override;
    std::string WritableDirectory() override { return ProgramDirectory(); }
    std::string SharedDirectory() override { return ProgramDirectory(); }
};

} // namespace quorvane
