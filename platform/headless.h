#pragma once

#include <memory>
#include <string>

namespace quorvane {

class Clock;
class Drawing;
class Files;
class Store;
class System;

// The services that need no display, made by the platform that the program is linked with: what a
// command-line program lives on. Each is made when it is first wanted, since start-up time counts there.
std::unique_ptr<Clock> CreateClock();
std::unique_ptr<Files> CreateFiles();
std::unique_ptr<Drawing> CreateDrawing();
std::unique_ptr<System> CreateSystem();
// The person's stored tree. Null, with the reason in `why`, where it cannot be opened.
std::unique_ptr<Store> CreateStore(std::string& why);

} // namespace quorvane
