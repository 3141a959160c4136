#pragma once

#include <memory>
#include <string>
#include <vector>

namespace quorvane {

class ChannelClient;
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
std::unique_ptr<ChannelClient> CreateChannelClient();
// Goes on as the program of this name that lies beside this one, with these words behind its name. Comes back
// where there is none, and on systems where a program cannot do so.
void BecomeProgram(const std::string& name, const std::vector<std::string>& words);
// The person's stored tree. It always works. What `why` then holds has been said on standard error and is for
// a box as well: that a damaged tree was set aside and a fresh one begun, or that nothing written will last
// (Store::Lasting).
std::unique_ptr<Store> CreateStore(std::string& why);
// The stored tree for whoever only looks: nothing is made, mended or waited for, and what is wrong with the
// tree has been said on standard error. What is written to it may be lost.
std::unique_ptr<Store> ReadStore();
// Whether standard output goes to a terminal.
bool OutputIsTerminal();
// An empty tree in memory that answers the values of the system ("Control Panel") as the stored one does.
std::unique_ptr<Store> CreateScratchStore();

} // namespace quorvane
