#include "platform/shared/name_pattern.h"

#include <gtest/gtest.h>

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
        {"x*ab?c*", "xaababxcab", true},
        {"x*ab*ab", "xabcabab", true},
        {"x*ab*ab", "xab.ba", false},
        {"x*?b", "xb", false},
        {"x**.?", "x.a.b", true},
        {"x?*", "xa", true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(NamePattern(row.pattern).Fits(row.name), row.fits) << row.pattern << " on " << row.name;
}

} // namespace
} // namespace quorvane
