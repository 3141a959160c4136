#pragma once

#include "config/global_record.h"
#include "config/settings.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvane {
class Program;
class System;
} // namespace quorvane

namespace quorvane::commands {

// Where a command works: on the record and the tree of a running program, or on the stored tree where
// `program` is null and the record was read for this one command.
struct Place {
    GlobalRecord& record;
    SettingsContext context; // the tree, files and clock; a failure throws RefusedInput
    System& system;
    Program* program = nullptr;

    std::string folder = {};                 // where relative paths begin
    std::optional<std::string> content = {}; // of the file that the command reads; nothing where it cannot be

    // What is left to do once the answer is on its way: the end of the program.
    std::function<void()> afterwards = {};
};

// A path of the command line, made whole.
std::string WholePath(const Place& place, const std::string& path);

// The record's values of one key to the tree: all of the record in a running program, which keeps them in
// step, this one section on the stored tree, where what else stands there stays. Throws RefusedInput.
void Save(Place& place, const std::string& key);

} // namespace quorvane::commands
