#include "platform/shared/name_pattern.h"

#include <gtest/gtest.h>

#include <random>

namespace quorvane {
namespace {

struct Row {
    const char* pattern;
    const char* name;
    bool fits;
};

TEST(NamePattern, TableOfPatternsAndNames) {
    const Row rows[] = {
        {"*.jpg", "a.JPG", true},
        {"*.JPG;*.jpeg", "b.Jpeg", true},
        {" *.bmp ; *.png ", "c.PNG", true},
        {"*.bmp;", "c.png", false},
        {"*.*", "no point", true},
        {"*.gif;*.*", "no point", true},
        {"*", ".hidden", true},
        {"", "anything", true},
        {";", "anything", true},
        {"?.bmp", "ж.bmp", true}, // one letter, two bytes
        {"??.bmp", "ж.bmp", false},
        {"*ЖУК*", "Мой жук.png", true},
        {"[a]*", "a.png", false}, // brackets mean themselves
    };
    for (const Row& row : rows)
        EXPECT_EQ(NamePattern(row.pattern).Fits(row.name), row.fits) << row.pattern << " on " << row.name;
}

// The meaning of the wildcards word for word, in exponential time.
bool FitsSlowly(std::string_view name, std::string_view pattern) {
    if (pattern.empty()) return name.empty();
    if (pattern[0] == '*')
        return FitsSlowly(name, pattern.substr(1)) || (!name.empty() && FitsSlowly(name.substr(1), pattern));
    return !name.empty() && (pattern[0] == '?' || pattern[0] == name[0]) &&
           FitsSlowly(name.substr(1), pattern.substr(1));
}

TEST(NamePattern, AgreesWithTheSlowMeaningOnRandomTexts) {
    std::mt19937 random(1);
    const auto text = [&](std::string_view letters, std::size_t longest) {
        std::string made(random() % (longest + 1), ' ');
        for (char& c : made)
            c = letters[random() % letters.size()];
        return made;
    };
    for (int i = 0; i < 20000; ++i) {
        const std::string pattern = "x" + text("ab.*?", 6);
        const std::string name = "x" + text("ab.", 8);
        ASSERT_EQ(NamePattern(pattern).Fits(name), FitsSlowly(name, pattern)) << pattern << " on " << name;
    }
}

} // namespace
} // namespace quorvane
