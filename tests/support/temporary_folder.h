#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace quorvane::test {

// An empty folder of the test's own, gone with everything in it at the end.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::random_device random;
        path_ = std::filesystem::temp_directory_path() /
                ("quorvane-test-" + std::to_string(random()) + std::to_string(random()));
        std::filesystem::create_directory(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

} // namespace quorvane::test
