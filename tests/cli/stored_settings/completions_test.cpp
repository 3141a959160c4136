#include "cli/completions.h"
#include "tests/cli/run.h"
#include "tests/support/process.h"

#include <gtest/gtest.h>

namespace quorvane::cli {
namespace {

TEST(CompletionsTest, AVerbIsAWordOfTheUsageLine) {
    const auto verbs = [](const char* name, const char* usage) {
        return VerbsOf({name, usage, {}, {}, nullptr});
    };
    using Words = std::vector<std::string>;
    EXPECT_EQ(verbs("criteria", "criteria compile|test [--json] TEXT|-"), (Words{"compile", "test"}));
    EXPECT_EQ(verbs("sources", "sources list | add FOLDER [--inactive] | remove K"),
              (Words{"list", "add", "remove"}));
    EXPECT_EQ(verbs("week", "week [--json] YYYY-MM-DD|-"), Words{});
    EXPECT_EQ(verbs("status", "status"), Words{});
}

TEST(CompletionsTest, BashCompletesCommandsVerbsOptionsAndFiles) {
    const test::TemporaryFolder folder;
    std::ofstream(folder.Path() / "a photo.png");
    std::ofstream(folder.Path() / "quorvanectl.bash") << RunWords({"completions", "bash"}).out;
    const auto complete = [&](const std::string& words, int at) {
        const std::string script = "cd '" + folder.Path().string() +
                                   "' && . ./quorvanectl.bash && COMP_WORDS=(quorvanectl " + words +
                                   ") COMP_CWORD=" + std::to_string(at) +
                                   "; _quorvanectl; printf '%s\n' \"${COMPREPLY[@]}\"";
        return test::Output({"bash", "-c", script});
    };
    EXPECT_EQ(complete("sou", 1), "sources\n");
    EXPECT_EQ(complete("sources ''", 2), "list\nadd\nenable\ndisable\nremove\n");
    EXPECT_EQ(complete("sources add --pa", 3), "--pattern\n");
    EXPECT_EQ(complete("do change 'a '", 3), "a photo.png\n");
    EXPECT_EQ(complete("sing x", 2), "\n");
}

} // namespace
} // namespace quorvane::cli
