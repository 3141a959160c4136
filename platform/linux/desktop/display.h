#pragma once

#include <string>

namespace quorvane {

// How the toolkit gets its windows on the screen.
struct DisplayChoice {
    std::string platform; // the toolkit's own word for it ("xcb"); empty leaves the choice to the toolkit
    std::string problem;  // why no window can be shown; empty where one can
};

// A compositor that answers is used where the toolkit has its plug-in for Wayland, and its X server
// otherwise.
DisplayChoice ChooseDisplay();

// From now on a toolkit that cannot go on says so in a line and ends the process with status 1, in place of a
// core dump, and a display that goes away is the session's end.
void ListenToTheToolkit();

} // namespace quorvane
