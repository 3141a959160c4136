#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace quorvane {

// An empty folder of the test's own, gone with everything in it at the end.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::random_device random;
        path = (std::filesystem::temp_directory_path() /
                ("quorvane-test-" + std::to_string(random()) + std::to_string(random())))
                   .string();
        std::filesystem::create_directory(path);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path;
};

} // namespace quorvane
