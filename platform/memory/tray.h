#pragma once

#include "platform/memory/call_log.h"
#include "platform/tray.h"

namespace quorvane {

class MemoryTray : public Tray {
  public:
    explicit MemoryTray(CallLog& calls)
        : calls_(calls) {}

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
        if (whilePopup) whilePopup(shown);
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
    std::function<void(Menu& menu)> whilePopup; // what the person picks of an open menu

  private:
    CallLog& calls_;
    std::function<void(int message)> handler_;
};

} // namespace quorvane
