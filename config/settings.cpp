#include "config/settings.h"

#include "config/registry.h"
#include "config/schema.h"
#include "config/stored_value.h"
#include "platform/files.h"
#include "platform/prompts.h"
#include "platform/session.h"
#include "platform/store.h"

#include <algorithm>

namespace quorvane {
namespace {

// A counter above this says that the tree is damaged, not that somebody keeps so long a list.
constexpr std::int32_t MostEntries = 1'000'000;

std::string KeyPath(const std::string& group) {
    return std::string(RootKey) + "\\" + group;
}

template<typename Record>
std::string EntryName(const SettingRow<Record>& row, std::int32_t number) {
    return row.name + std::to_string(number) + row.suffix;
}

DefaultPlace PlaceOfDefaults(Files& files) {
    return {files.WritableDirectory(), files.Separator()};
}

class Reader {
  public:
    Reader(GlobalRecord& record, Store& store, Files& files, const SettingsEvents& events)
        : record_(record)
        , store_(store)
        , place_(PlaceOfDefaults(files))
        , decimalSign_(DecimalSign(store))
        , events_(events) {}

    void ReadAll() {
        const Schema& schema = SettingsSchema();
        ReadGroup(schema.colors);
        Bar(20);
        ReadGroup(schema.fonts);
        Bar(30);
        ReadGroup(schema.screenCapture);
        ReadGroup(schema.hotkeys);
        // The place of the corner events and the notes.
        Bar(40);
        // The place of the alarms.
        ReadGroup(schema.general);
        Bar(50);
        // The place of the profiles.
        Bar(55);
        ReadList(schema.wallpaperSources);
        Bar(60);
        ReadList(schema.favorites);
        Bar(65);
        ReadList(schema.blacklist);
        Bar(70);
        ReadList(schema.customDays);
        Bar(72);
    }

  private:
    void Bar(int value) {
        if (record_.Main_Exec && events_.Progress) events_.Progress(value);
    }

    void ReadGroup(const SettingGroup& group) {
        const std::string key = KeyPath(group.key);
        for (const auto& row : group.rows)
            ReadRow(key, row.name, row, record_);
    }

    template<typename Record>
    void ReadList(const SettingList<Record>& schema) {
        const std::string key = KeyPath(schema.key);
        std::int32_t count = 0;
        ReadValue({store_, key, schema.counter, decimalSign_}, StoredForm::Integer, &count);
        OneBased<Record>& list = record_.*schema.list;
        list.Clear();
        for (std::int32_t number = 1; number <= std::min(count, MostEntries); ++number) {
            Record& entry = list.Add();
            for (const auto& row : schema.rows)
                ReadRow(key, EntryName(row, number), row, entry);
        }
    }

    template<typename Record>
    void ReadRow(const std::string& key, const std::string& name, const SettingRow<Record>& row,
                 Record& record) {
        const FieldRef field = row.field(record);
        if (ReadValue({store_, key, name, decimalSign_}, row.form, field)) return;
        StoreDefault(row.fallback(record, place_), row.form, field);
        if (row.onFailedRead == OnFailedRead::Report && events_.ShowErrorDialog) {
            const int error = store_.LastError();
            batch_.Interrupt(
                [&] { events_.ShowErrorDialog(error, "call: Read registry, Wallpaper sources"); });
        }
    }

    GlobalRecord& record_;
    Store& store_;
    DefaultPlace place_;
    std::string decimalSign_;
    const SettingsEvents& events_;
    StoreBatch batch_{store_};
};

class Writer {
  public:
    Writer(GlobalRecord& record, Store& store, Session& session, const SettingsEvents& events)
        : record_(record)
        , store_(store)
        , session_(session)
        , decimalSign_(DecimalSign(store))
        , events_(events) {}

    void WriteAll() {
        const Schema& schema = SettingsSchema();
        // Nobody reads the two: they tell a person which program wrote the tree.
        WriteInteger(std::string(RootKey), "Version", QUORVANE_VERSION_MAJOR * 100 + QUORVANE_VERSION_MINOR);
        WriteInteger(std::string(RootKey), "Build", QUORVANE_VERSION_REVISION);
        WriteGroup(schema.colors);
        WriteGroup(schema.fonts);
        WriteGroup(schema.screenCapture);
        WriteGroup(schema.hotkeys);
        // The place of the corner events, the notes and the alarms.
        WriteGroup(schema.general);
        SettleAutostart();
        // The place of the profiles.
        schema.ForEachList([this](const auto& list) { WriteList(list); });
        if (batch_.End() != store_error::None) ReportFailure();
    }

  private:
    void ReportFailure() {
        if (events_.ShowErrorDialog) events_.ShowErrorDialog(store_.LastError(), "call: Write registry");
    }
    void Check(bool written) {
        if (!written) batch_.Interrupt([this] { ReportFailure(); });
    }

    void WriteInteger(const std::string& key, const std::string& name, std::int32_t value) {
        Check(WriteValue({store_, key, name, decimalSign_}, StoredForm::Integer, &value));
    }

    void WriteGroup(const SettingGroup& group) {
        const std::string key = KeyPath(group.key);
        for (const auto& row : group.rows) {
            Check(WriteValue({store_, key, row.name, decimalSign_}, row.form, row.field(record_)));
        }
    }

    template<typename Record>
    void WriteList(const SettingList<Record>& schema) {
        const std::string key = KeyPath(schema.key);
        OneBased<Record>& list = record_.*schema.list;
        WriteInteger(key, schema.counter, list.Count());
        for (std::int32_t number = 1; number <= list.Count(); ++number) {
            for (const auto& row : schema.rows) {
                const std::string name = EntryName(row, number);
                Check(WriteValue({store_, key, name, decimalSign_}, row.form, row.field(list[number])));
            }
        }
    }

    // Taking the entry away may fail, as it does where there is none.
    void SettleAutostart() {
        const bool enabled = record_.AutoStartApplication != 0;
        const bool settled = session_.SetAutostart(enabled, record_.RunOnWin9x ? " /win9x" : "");
        if (enabled) Check(settled);
    }

    GlobalRecord& record_;
    Store& store_;
    Session& session_;
    std::string decimalSign_;
    const SettingsEvents& events_;
    StoreBatch batch_{store_};
};

bool WriteDesktopValue(Store& store, Hive hive, std::string_view key, std::string_view name,
                       std::string_view value) {
    return RegWriteValue(store, "", hive, key, key_access::All, name, value) != 0;
}

} // namespace

std::string DecimalSign(Store& store) {
    std::string sign = ".";
    RegReadValue(store, "", Hive::CurrentUser, "Control Panel\\International", key_access::Read, "sDecimal",
                 sign);
    return sign;
}

void PresetRecord(GlobalRecord& record, Files& files) {
    const DefaultPlace place = PlaceOfDefaults(files);
    record.DISABLE_WALLPAPER_CHANGE = false;
    record.DISABLE_WALLPAPER_PREVIEW_CHANGE = false;
    record.RESCANWALLPAPERSOURCESNOW = false;
    record.BMHandles.clear();
    record.SelectProfileTimeout = 30;
    record.CaptureDirectory = place.directory + place.separator;
    record.CaptureFileName = "YYYYMMDDHHNNSS.BMP";
    record.User_Wallpaper_Directory = std::string(".") + place.separator + "Wallpaper.bmp";
    record.Current_System_Profile.Name = "Default";
}

void ReadSettingOf(GlobalRecord& record, const std::string* field, Store& store) {
    for (const SettingGroup* group : SettingsSchema().Groups()) {
        for (const auto& row : group->rows) {
            const FieldRef rowField = row.field(record);
            const auto* text = std::get_if<std::string*>(&rowField);
            if (text && *text == field)
                ReadValue({store, KeyPath(group->key), row.name, {}}, row.form, rowField);
        }
    }
}

void ReadRecord(GlobalRecord& record, Store& store, Files& files, const SettingsEvents& events) {
    Reader(record, store, files, events).ReadAll();
}

std::string_view WallpaperStyle(std::int32_t wallpaperPosition) {
    if (wallpaperPosition == 1) return "1";
    return wallpaperPosition >= 2 && wallpaperPosition <= 4 ? "2" : "0";
}

void PublishWallpaper(const GlobalRecord& record, Store& store, Prompts& prompts,
                      const SettingsEvents& events) {
    const std::string_view style = WallpaperStyle(record.WallpaperPosition);
    const auto publish = [&](std::string_view name, std::string_view value) {
        if (WriteDesktopValue(store, Hive::CurrentUser, "Control Panel\\Desktop", name, value)) return;
        if (events.ShowErrorDialog)
            events.ShowErrorDialog(store.LastError(), "Unable set User wallpaper properties!");
    };
    publish("Wallpaper", record.Wallpaper);
    publish("WallpaperStyle", style);
    if (record.SyncWithSystemDefaultWallpaper)
        PublishSystemWallpaper(store, prompts, record.Wallpaper, style);
}

void PublishSystemWallpaper(Store& store, Prompts& prompts, std::string_view path, std::string_view style) {
    const auto publish = [&](std::string_view name, std::string_view value, const char* what) {
        if (WriteDesktopValue(store, Hive::Users, ".DEFAULT\\Control Panel\\Desktop", name, value)) return;
        prompts.Message(std::string("Unable set system ") + what +
                            ", please check that you have an administrative rights!",
                        "Error!", message_style::Stop);
    };
    publish("Wallpaper", path, "wallpaper");
    publish("WallpaperStyle", style, "wallpaper style");
}

void ReadSettings(GlobalRecord& record, Store& store, Files& files, Prompts& prompts,
                  const SettingsEvents& events) {
    ReadRecord(record, store, files, events);
    PublishWallpaper(record, store, prompts, events);
    if (record.Main_Exec && events.Progress) events.Progress(75);
}

void WriteSettings(GlobalRecord& record, Store& store, Session& session, const SettingsEvents& events) {
    Writer(record, store, session, events).WriteAll();
}

} // namespace quorvane
