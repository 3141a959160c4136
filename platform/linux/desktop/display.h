#pragma once

#include <string>

namespace quorvane {

// Why no window can be shown: no display is named, or the one that is does not answer. Empty where one does.
std::string DisplayProblem();

// From now on a toolkit that cannot go on says so in a line and ends the process with status 1, in place of a
// core dump, and a display that goes away is the session's end.
void ListenToTheToolkit();

} // namespace quorvane
