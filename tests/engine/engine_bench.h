#pragma once

#include "config/global_record.h"
#include "engine/file_list.h"
#include "platform/memory/memory_platform.h"

#include <gtest/gtest.h>

namespace quorvane {

// The machine, the record and the list of files that every part of the engine works on.
class EngineBench : public testing::Test {
  protected:
    EngineBench() { record_.RescanWallpaperSources = true; }

    MemoryPlatform machine_;
    MemoryClock& clock_ = machine_.clock;
    MemoryEventLoop& events_ = machine_.events;
    MemoryFiles& files_ = machine_.files;
    MemoryRandom& random_ = machine_.random;
    MemorySystem& system_ = machine_.system;
    MemoryDrawing& drawing_ = machine_.drawing;
    GlobalRecord record_;
    Complaints complaints_{system_};
    FileList fileList_{record_, clock_, events_, files_, complaints_};
};

} // namespace quorvane
