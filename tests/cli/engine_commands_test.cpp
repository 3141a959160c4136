#include "commands/json.h"
#include "platform/headless.h"
#include "platform/painting/bitmap_file.h"
#include "tests/cli/run.h"
#include "tests/support/string_writer.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

namespace quorvane::cli {
namespace {

namespace fs = std::filesystem;

class EngineCommands : public testing::Test {
  protected:
    EngineCommands() {
        fs::create_directories(folder_ / "one" / "two");
        for (const char* name : {"a.JPG", "b.png", "one/c.jpg", "one/two/d.jpg"})
            std::ofstream(folder_ / name) << "no picture";
        // The defaults, whatever the person who runs the tests has stored.
        std::ofstream(folder_ / "none.reg") << "Windows Registry Editor Version 5.00\n";
    }

    int Run(const std::vector<std::string>& words) {
        ran_ = RunWords(words);
        return ran_.status;
    }

    std::string Path(const std::string& name) const { return (folder_ / name).make_preferred().string(); }

    const test::TemporaryFolder own_;
    const fs::path folder_ = own_.Path();
    Ran ran_;
};

using Paths = std::vector<std::string>;

TEST_F(EngineCommands, ScanListsTheDeepestFolderFirst) {
    EXPECT_EQ(Run({"scan", "--pattern", "*.jpg", "--level", "inf", folder_.string()}), Done);
    EXPECT_EQ(ran_.Lines(), (Paths{Path("one/two/d.jpg"), Path("one/c.jpg"), Path("a.JPG")}));
    EXPECT_EQ(Run({"scan", Path("")}), Done);
    const auto lines = ran_.Lines();
    EXPECT_EQ(std::set<std::string>(lines.begin(), lines.end()),
              (std::set<std::string>{Path("a.JPG"), Path("b.png"), Path("none.reg")}));
    EXPECT_EQ(Run({"scan", "--json", "--pattern=*.png", folder_.string()}), Done);
    EXPECT_EQ(ran_.out.rfind("{\"files\": [" + JsonText(Path("b.png")) + "], \"seconds\": 0", 0), 0U)
        << ran_.out;
    EXPECT_EQ(Run({"scan", Path("gone")}), Refused);
    EXPECT_EQ(Run({"scan", Path("b.png")}), Refused);
    EXPECT_EQ(Run({"scan"}), WrongUsage);
    EXPECT_EQ(Run({"scan", ""}), WrongUsage) << "not the whole disk";
}

TEST_F(EngineCommands, NamesOfAnyBytesPassAndReachNoTerminal) {
    const std::string name = "a\x1b[31m\nb.odd";
    if (!std::ofstream(folder_ / name)) GTEST_SKIP() << "this system has no such names";
    EXPECT_EQ(Run({"scan", "-0", "--pattern", "*.odd", folder_.string()}), Done);
    EXPECT_EQ(ran_.out, Path(name) + '\0');
    EXPECT_EQ(Run({"scan", "--pattern", "*.odd", folder_.string()}), Done);
    EXPECT_EQ(ran_.out, Path(name) + '\n');
    std::istringstream in;
    std::ostringstream out;
    Streams terminal{in, out, out, true};
    RunCommand(AllCommands(), {"scan", "--pattern", "*.odd", folder_.string()}, terminal);
    EXPECT_EQ(out.str(), Path("a\\x1b[31m\\nb.odd") + '\n');
    EXPECT_EQ(Run({"draw", "-0", "--count", "2", "--settings", Path("none.reg")}), Done);
    EXPECT_EQ(ran_.out, std::string(2, '\0'));
    EXPECT_EQ(Run({"week", "-0"}), Refused) << "an input where the command does not know it";
}

TEST_F(EngineCommands, DrawFollowsItsSeedAndNeverRepeats) {
    const auto words = [&](std::vector<std::string> more) {
        for (const std::string& setting :
             std::vector<std::string>{"sources counter=1", "source #1=" + folder_.string(),
                                      "source #1 pattern=*.jpg", "source #1 scan level=inf"}) {
            more.insert(more.end(), {"--set", "Wallpaper sources\\Wallpaper " + setting});
        }
        more.insert(more.end(), {"--set", "Wallpaper sources\\Is active wallpaper source #1=True"});
        more.insert(more.begin(), {"draw", "--settings", Path("none.reg")});
        return more;
    };
    ASSERT_EQ(Run(words({"--seed", "7", "--count", "40"})), Done);
    const auto picks = ran_.Lines();
    ASSERT_EQ(picks.size(), 40U);
    EXPECT_EQ(std::adjacent_find(picks.begin(), picks.end()), picks.end());
    EXPECT_EQ(std::set<std::string>(picks.begin(), picks.end()),
              (std::set<std::string>{Path("a.JPG"), Path("one/c.jpg"), Path("one/two/d.jpg")}));
    Run(words({"--count", "40", "--seed", "7", "--set", "General\\Rescan wallpaper sources=0"}));
    EXPECT_EQ(ran_.Lines(), picks);
    Run(words({"--count", "40", "--seed", "8"}));
    EXPECT_NE(ran_.Lines(), picks);
    Run(words({"--json", "--seed=7"}));
    EXPECT_EQ(ran_.out, "{\"picks\": [" + JsonText(picks[0]) + "]}\n");
    Run({"draw", "--settings", Path("none.reg"), "--count", "2", "--set",
         "Wallpaper sources\\Wallpaper sources counter=0"});
    EXPECT_EQ(ran_.out, "\n\n") << "nothing to choose";
    EXPECT_EQ(Run({"draw", "--count", "-1"}), WrongUsage);
}

// Blue, green and red of a pixel of a bitmap file with a width that is a multiple of four.
std::vector<int> FilePixel(const fs::path& path, int width, int height, int x, int y) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    const auto place = static_cast<std::size_t>(54 + ((height - 1 - y) * width + x) * 3);
    if (bytes.size() != static_cast<std::size_t>(54 + width * height * 3)) return {};
    return {static_cast<unsigned char>(bytes[place]), static_cast<unsigned char>(bytes[place + 1]),
            static_cast<unsigned char>(bytes[place + 2])};
}

TEST_F(EngineCommands, RenderPlacesAPictureOnItsBackground) {
    const auto green = CreateDrawing()->CreateSurface({10, 10});
    green->Fill({0, 0, 10, 10}, Rgb(2, 200, 1));
    test::StringWriter bitmap;
    ASSERT_TRUE(WriteBitmap(green->Pixels(), bitmap));
    std::ofstream(folder_ / "green.bmp", std::ios::binary) << bitmap.bytes;
    const auto render = [&](const std::string& out, const std::string& size) {
        return Run({"render", "--json", "--settings", Path("none.reg"), "--out", Path(out), "--picture",
                    Path("green.bmp"), "--size", size, "--set", "General\\Paint calendar=0", "--set",
                    "General\\Use gradient background fill=1", "--set", "Colors\\Right Upper color=0xFF"});
    };
    ASSERT_EQ(render("out.bmp", "40x20"), Done);
    EXPECT_EQ(ran_.out.rfind("{\"out\": " + JsonText(Path("out.bmp")) +
                                 ", \"width\": 44, \"height\": 24, \"picture\": " +
                                 JsonText(Path("green.bmp")) + ", \"calendar\": {\"x\": 0",
                             0),
              0U)
        << ran_.out;
    // 20 of 40 columns, times 24 / 20: from 12 to 36. Beside it red grows from 0 to 255 in 24 rows.
    const auto pixel = [&](int x, int y) { return FilePixel(folder_ / "out.bmp", 44, 24, x, y); };
    EXPECT_EQ(pixel(12, 0), (std::vector<int>{1, 200, 2}));
    EXPECT_EQ(pixel(35, 23), (std::vector<int>{1, 200, 2}));
    EXPECT_EQ(pixel(11, 0), (std::vector<int>{0, 0, 0}));
    ASSERT_EQ(pixel(36, 12).size(), 3U);
    EXPECT_NEAR(pixel(36, 12)[2], 127, 1);
    EXPECT_NEAR(pixel(0, 23)[2], 244, 1);

    EXPECT_EQ(render("out.png", "40x20"), Done);
    EXPECT_GT(fs::file_size(folder_ / "out.png"), 50U);
    EXPECT_EQ(render("out.jpg", "40x20"), WrongUsage);
    EXPECT_EQ(render("out.bmp", "40x0"), WrongUsage);
    EXPECT_EQ(render("none/out.bmp", "40x20"), Refused);
}

} // namespace
} // namespace quorvane::cli
