#pragma once

#include "config/global_record.h"

#include <string>

namespace quorvane {

class Program;
class Session;
class System;

// Finds out which operating system and machine the program runs on, and writes it into the record. A system
// below the NT family is refused, by the error dialogue and the end of the process, unless RunOnWin9x is set.
void DetectSystem(GlobalRecord& record, System& system, Session& session, Program& program);

// What of that is no decision: names, numbers and the people's names.
void SurveySystem(GlobalRecord& record, System& system);

// Asks for the rights of the shutting-down actions. What is refused is simply not held.
void EnableProcessPrivileges(System& system);

// The name of an operating system by the version query's numbers, and of its edition by the suite mask. Empty
// for a platform that has no name.
std::string SystemName(const VersionRecord& version);
std::string EditionName(std::uint16_t suiteMask);

} // namespace quorvane
