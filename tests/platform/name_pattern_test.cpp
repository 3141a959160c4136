#include "platform/name_pattern.h"

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
        {"*.jpg", ".jpg", true},
        {"*.jpg", "jpg", false},
        {"*.jpg", "a.jpeg", false},
        {"*.JPG;*.jpeg", "b.Jpeg", true},
        {" *.bmp ; *.png ", "c.PNG", true},
        {"*.bmp;", "c.png", false},
        {"*.*", "no point", true},
        {"*.gif;*.*", "no point", true},
        {"*", ".hidden", true},
        {"", "anything", true},
        {";", "anything", true},
        {"*wmf", "picture.wmf", true},
        {"*wmf", "wmf", true},
        {"photo.jpg", "Photo.jpg", true},
        {"photo.jpg", "my photo.jpg", false},
        {"a?c*.png", "ABCdef.png", true},
        {"a?c*.png", "ac.png", false},
        {"?.bmp", "ж.bmp", true}, // one letter, two bytes
        {"??.bmp", "ж.bmp", false},
        {"*ЖУК*", "Мой жук.png", true},
        {"*a*a*b", "aaaaaaaaaaaaaaaaaaaaaaac", false},
        {"*a*b", "xaxxbxb", true},
        {"[a]*", "a.png", false}, // brackets mean themselves
    };
    for (const Row& row : rows) {
        EXPECT_EQ(NamePattern(row.pattern).Fits(row.name), row.fits) << row.pattern << " on " << row.name;
    }
}

} // namespace
} // namespace quorvane
