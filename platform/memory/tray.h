#pragma once

#include "platform/event_loop.h"
#include "platform/memory/call_log.h"
#include "platform/memory/forms.h"
#include "platform/tray.h"

namespace quorvane {

class MemoryTray : public Tray {
  public:
    MemoryTray(CallLog& calls, EventLoop& events)
        : calls_(calls)
        , events_(events) {}

    bool Add(const TrayRecord& newRecord) override {
        calls_.Add("tray.Add " + newRecord.tip);
        added = true;
        record = newRecord;
        return present;
    }
    bool Modify(const TrayRecord& newRecord) override {
        calls_.Add("tray.Modify " + newRecord.tip);
        record = newRecord;
        return present;
    }
    bool SetVersion(int newVersion) override {
        calls_.Add("tray.SetVersion " + std::to_string(newVersion));
        version = newVersion;
        return present;
    }
    void Remove() override {
        calls_.Add("tray.Remove");
        added = false;
    }
    void SetMenu(Menu* newMenu) override { menu = newMenu; }
    void Popup(Menu& shown) override {
        calls_.Add("tray.Popup");
        const ShownMenu opened = shown.Open();
        {
            const TimersHeld held(events_);
            if (whileMenu) whileMenu();
        }
        if (const MenuItem* picked = FindEntry(opened, menuChoice)) Menu::Choose(*picked);
    }
    void OnMessage(std::function<void(int message)> handler) override { handler_ = std::move(handler); }

    // What a person does with the icon.
    void Send(int message) {
        if (handler_) handler_(message);
    }

    bool present = true; // there is a notification area
    bool added = false;
    TrayRecord record; // as last added or modified
    int version = 0;
    Menu* menu = nullptr;
    std::function<void()> whileMenu; // what happens while the menu is open
    std::string menuChoice;          // what the person picks, by its captions ("System/Hardware"); or nothing

  private:
    CallLog& calls_;
    EventLoop& events_;
    std::function<void(int message)> handler_;
};

} // namespace quorvane
