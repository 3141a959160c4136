#pragma once

namespace quorvane {

class Clock;
class Desktop;
class Drawing;
class EventLoop;
class Files;
class FormHost;
class Prompts;
class Random;
class Session;
class Store;
class System;
class Tray;

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
};

} // namespace quorvane
