#pragma once

#include <string>
#include <vector>

namespace quorvane {

// What became of one thing that a person would like to work.
struct Finding {
    enum class State {
        Ok,
        Limited, // it works, and not as it might
        Missing, // it does not work
    };
    std::string check; // a word or two: "wallpaper"
    State state = State::Ok;
    std::string why;
    std::string hint = {}; // what to do about it; empty where there is nothing to be done
};

// What the person's settings want of the desktop.
struct Expected {
    std::string wallpaper; // the file that is handed over
    std::string style;     // as it is published: "0", "1", "2"
    bool autostart = false;
    std::vector<std::string> fonts; // families
};

// Looks at the desktop that this process would run on, whether the program runs or not, and says what works.
// Changes nothing. It asks other programs, each for a few seconds at most, and needs no display.
std::vector<Finding> ExamineDesktop(const Expected& expected);

} // namespace quorvane
