#pragma once

#include <string>
#include <string_view>

namespace quorvane {

struct CompiledCriterion {
    // The criterion as prefix instructions; empty for an empty criterion and after any failure.
    std::string compiled;
    // What is wrong, in the words for the person. Empty on success, and also where a class of values has run
    // out of room or a constant is too great, of which nothing is said.
    std::string message;
    // The message is for a message box of the critical kind titled "ERROR!", not for the editor's text box.
    bool inBox = false;
    bool refused = false;
};

// A criterion from the text a person types to its compiled form.
CompiledCriterion CompileCriteria(std::string_view text);

} // namespace quorvane
