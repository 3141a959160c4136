#include "tests/cli/run.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quorvane::cli {
namespace {

// What profiles are is tested below the commands; here it is their words.
TEST(ProfilesCommand, SavesLoadsMarksAndDeletes) {
    const test::TemporaryFolder folder;
    setenv("XDG_CONFIG_HOME", folder.Path().string().c_str(), 1);
    const struct {
        std::vector<std::string> words;
        const char* told; // the status where it is not 0, and the output
    } rows[] = {
        {{"settings", "set", "General\\Week name", "one"}, ""},
        {{"profiles", "save", "Home", "--description", "at home", "--as-default"}, "1\n"},
        {{"settings", "set", "General\\Week name", "two"}, ""},
        {{"profiles", "save", "Way", "--json"}, "{\"profile\": 2}\n"},
        {{"profiles", "load", "home"}, ""},
        {{"settings", "get", "General\\Week name"}, "one\n"},
        {{"profiles", "save", " HOME "}, "1\n"},
        {{"profiles", "list"}, "1  Home  (default)\n2  Way\n"},
        {{"profiles", "default", "way"}, ""},
        {{"profiles", "delete", "Home"}, ""},
        {{"profiles", "list"}, "1  Way  (default)\n"},
        {{"profiles", "save", "--default"}, ""},
        {{"profiles", "load", "Way"}, ""},
        {{"settings", "get", "General\\Week name"}, "two\n"},
        {{"profiles", "load", "--default"}, ""},
        {{"settings", "get", "General\\Week name"}, "one\n"},
        {{"profiles", "load", "Home"}, "1 "},
        {{"profiles", "save", " "}, "1 "},
        {{"profiles", "save"}, "2 "},
        {{"profiles", "load", "--default", "Way"}, "2 "},
        {{"profiles", "save", "--default", "--as-default"}, "2 "},
        {{"profiles", "delete", "--all"}, ""},
        {{"profiles", "list"}, ""},
    };
    for (const auto& row : rows) {
        const Ran ran = RunWords(row.words);
        EXPECT_EQ((ran.status == Done ? "" : std::to_string(ran.status) + " ") + ran.out, row.told)
            << row.words[1] << " " << row.words.back();
    }
}

} // namespace
} // namespace quorvane::cli
