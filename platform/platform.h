#pragma once

namespace quorvane {

class Channel;
class Clock;
class Desktop;
class Drawing;
class EventLoop;
class Files;
class FormHost;
class Keys;
class Programs;
class Prompts;
class Random;
class Session;
class Sound;
class Store;
class System;
class Tray;
class Workstation;

// Everything that the logic may ask of the machine it runs on, one service a family. Owned by the platform's
// implementation; whoever holds a Platform holds references that live as long as the process.
struct Platform {
    Clock& clock;
    Desktop& desktop;
    Drawing& drawing;
    EventLoop& events;
    Files& files;
    FormHost& forms;
    Prompts& prompts;
    Random& random;
    Session& session;
    Store& store;
    System& system;
    Tray& tray;

    // Null on a machine that has no such thing, and on a platform that does not know it yet. Whoever uses
    // one leaves out what hangs on it.
    Channel* channel = nullptr;
    Keys* keys = nullptr;
    Programs* programs = nullptr;
    Sound* sound = nullptr;
    Workstation* workstation = nullptr;
};

} // namespace quorvane
