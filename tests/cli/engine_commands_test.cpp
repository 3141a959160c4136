#include "cli/commands.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace quorvane::cli {
namespace {

namespace fs = std::filesystem;

class EngineCommands : public testing::Test {
  protected:
    EngineCommands()
        : folder_(
              fs::temp_directory_path() /
              ("quorvane-" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()))) {
        fs::remove_all(folder_);
        fs::create_directories(folder_ / "one" / "two");
        for (const char* name : {"a.JPG", "b.png", "one/c.jpg", "one/two/d.jpg"}) {
            std::ofstream(folder_ / name) << "no picture";
        }
    }
    ~EngineCommands() override { fs::remove_all(folder_); }

    int Run(const std::vector<std::string>& words) {
        std::istringstream in;
        std::ostringstream out;
        std::ostringstream err;
        Streams streams{in, out, err};
        const int status = RunCommand(AllCommands(), words, streams);
        out_ = out.str();
        return status;
    }

    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        std::istringstream text(out_);
        for (std::string line; std::getline(text, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    fs::path folder_;
    std::string out_;
};

using Paths = std::vector<std::string>;

TEST_F(EngineCommands, ScanListsTheDeepestFolderFirst) {
    EXPECT_EQ(Run({"scan", "--pattern", "*.jpg", "--level", "inf", folder_.string()}), Done);
    EXPECT_EQ(Lines(), (Paths{Path("one/two/d.jpg"), Path("one/c.jpg"), Path("a.JPG")}));
    EXPECT_EQ(Run({"scan", folder_.string() + "/"}), Done);
    const auto lines = Lines();
    EXPECT_EQ(std::set<std::string>(lines.begin(), lines.end()),
              (std::set<std::string>{Path("a.JPG"), Path("b.png")}));
    EXPECT_EQ(Run({"scan", "--json", "--pattern=*.png", folder_.string()}), Done);
    EXPECT_EQ(out_.rfind("{\"files\": [\"" + Path("b.png") + "\"], \"seconds\": 0", 0), 0U) << out_;
    EXPECT_EQ(Run({"scan", Path("gone")}), Refused);
    EXPECT_EQ(Run({"scan", Path("b.png")}), Refused);
    EXPECT_EQ(Run({"scan"}), WrongUsage);
}

} // namespace
} // namespace quorvane::cli
