#include "cli/commands.h"
#include "platform/headless.h"

namespace quorvane::cli {
namespace {

constexpr const char* Program = "quorvanectl-render";

// The libraries that draw take longer to load than most commands take to run: a program of its own has them.
int RenderBeside(const Arguments& arguments, Streams&) {
    std::vector<std::string> words{"render"};
    words.insert(words.end(), arguments.Words().begin(), arguments.Words().end());
    BecomeProgram(Program, words);
    throw RefusedInput(std::string(Program) + " does not lie beside quorvanectl");
}

} // namespace

Command RenderCommand() {
    return RenderCommandThat(RenderBeside);
}

} // namespace quorvane::cli
