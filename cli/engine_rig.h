#pragma once

#include "cli/command.h"
#include "cli/no_events.h"
#include "config/global_record.h"
#include "engine/complaints.h"
#include "engine/file_list.h"
#include "engine/selection.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/shared/seeded_random.h"
#include "platform/store.h"
#include "platform/system.h"

#include <memory>

namespace quorvane::cli {

// The parts of the engine that need no desktop, under the settings and the seed of a command line: the
// options "settings" and "set", "seed", "at".
class EngineRig {
  public:
    // Throws UsageError and RefusedInput.
    explicit EngineRig(const Arguments& arguments);

    // The candidate list as the engine fills it at its start; no later step scans again.
    void FillList();

    std::unique_ptr<Clock> clock; // stands at "--at" where it is given
    std::unique_ptr<Files> files;
    std::unique_ptr<System> system;
    std::unique_ptr<Store> store;
    OnceSeededRandom random;
    GlobalRecord record;
    NoEvents events;
    Complaints complaints;
    FileList fileList;
    Selection selection;
};

} // namespace quorvane::cli
