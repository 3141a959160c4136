#include "notes/markup.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

const NoteValues Values{"1.2.2026 7:30:00", " ann ", "box", "."};

// The text as printed, with every property that differs from those of a plain note.
std::string Read(const std::string& text) {
    const NoteLook look = Set_Text(text, Values);
    const NoteLook plain;
    std::string told = look.text;
    const auto tell = [&](bool differs, const std::string& words) {
        if (differs) told += "|" + words;
    };
    tell(look.ticking, "ticking");
    tell(look.bold, "bold");
    tell(look.italic, "italic");
    tell(look.underline, "underline");
    tell(look.strikethrough, "struck");
    tell(look.size != plain.size, "size " + std::to_string(look.size).substr(0, 5));
    tell(!look.font.empty(), "font " + look.font);
    tell(look.forecolor != plain.forecolor, "fore " + std::to_string(look.forecolor));
    tell(look.backcolor != plain.backcolor, "back " + std::to_string(look.backcolor));
    tell(look.alpha != plain.alpha, "alpha " + std::to_string(look.alpha));
    tell(!look.link.empty(), "link " + look.link);
    return told;
}

TEST(NoteMarkup, IsAChainOfSteps) {
    const struct {
        const char* text;
        const char* read;
    } rows[] = {
        {"Hello", "Hello"},
        {"$f Arial$$s12$$r50$$c255$$b16777215$Hi",
         "Hi|size 12.00|font  Arial|fore 255|back 16777215|alpha 127"},
        {"a\\nb\\tc", "a\r\nb\tc"},
        {"\\bHi\\iThere\\u\\s", "HiThere|bold|italic|underline|struck"},
        {"$time$ $clock$", "1.2.2026 7:30:00 1.2.2026 7:30:00|ticking"},
        {"$name$@$host$", "ann@box"},
        {"$s 100$ cost", " cost|size 100.0"},
        {"$s12", "$s12"},
        {"$s$x$s8$", "$s$x|size 8.000"},
        {"$sbig$x$s0$", "x$s0$"},
        {"$s9$x$s9$", "x|size 9.000"},
        {"$s9$x$s10$", "x$s10$|size 9.000"},
        {"$f$x", "$f$x"},
        {"$fA\\bC$x", "x|bold|font AC"},
        {"$c&HFF$x", "$c&HFF$x|fore 255"},
        {"$c&HFF$x$c255$", "$c&HFF$x|fore 255"},
        {"$cred$x$c0$", "$cred$x"},
        {"$c99999999999$x", "$c99999999999$x"},
        {"$c255", "$c255"},
        {"$b$x", "$b$x"},
        {"$b-1$x", "x|back -1"},
        {"$r75$x", "x|alpha 191"},
        {"$r101$x", "x|alpha 1"},
        {"$r0$x", "x|alpha 0"},
        {"$r$x", "$r$x"},
        {"$r1e999$x", "x"},
        {"$uC:||a.txt$", "|link C:\\a.txt"},
        {"$u$x", "$u$x"},
        {"$s1$s2$", "s2$|size 1.000"}, // the first token's end is no second one's beginning
        {"$", "$"},
        {"", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Read(row.text), row.read) << row.text;
}

TEST(NoteMarkup, KeepsWhatALaterTextDoesNotChange) {
    const NoteLook first = Set_Text("$fArial$$s12$$r50$$c255$$time$", Values);
    const NoteLook second = Set_Text("$sx$$rx$$cx$y", Values, first);
    EXPECT_EQ(second.font, "Arial");
    EXPECT_EQ(second.size, 12);
    EXPECT_EQ(second.alpha, 127);
    EXPECT_EQ(second.forecolor, 255);
    EXPECT_TRUE(second.ticking);
    EXPECT_EQ(Set_Text("y", Values, first).alpha, 255);
}

TEST(NoteMarkup, ShowsEditorsTheWordsAndTheStyles) {
    EXPECT_EQ(NoteDisplayText("$fArial$$s12$$r50$$c&HFF$$b1$\\bHi\r\n\t$time$$ulink$"), "\\bHi\\n\\t$time$");
    EXPECT_EQ(NoteDisplayText("$s$$r$x$s9$y$s9$z$s10$"), "$s$$r$x$s9$y$s9$z$s10$")
        << "an empty value hides later ones";
}

} // namespace
} // namespace quorvane
