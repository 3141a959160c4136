#include "config/settings.h"

#include "config/registry.h"
#include "config/schema_walk.h"
#include "core/date_text.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/prompts.h"
#include "platform/session.h"
#include "platform/store.h"

namespace quorvane {
namespace {

// What a walk takes: the whole tree, or what a profile holds.
enum class Extent { Tree, Profile };

constexpr std::string_view International = "Control Panel\\International";

DefaultSources SourcesOf(const SettingsContext& context) {
    return {context.files.WritableDirectory(), context.files.Separator(), context.screen.width,
            context.screen.height, PresentMoment(context.store, context.clock)};
}

WalkPlace PlaceIn(Store& store, std::string_view root) {
    return {store, std::string(root), DecimalSign(store)};
}

void Tell(const SettingsEvents& events, int error, const char* what) {
    if (events.ShowErrorDialog) events.ShowErrorDialog(error, what);
}

void Read(std::string_view root, Extent extent, Settings& settings, const SettingsContext& context) {
    SchemaReader<Settings> reader(settings, PlaceIn(context.store, root), SourcesOf(context));
    reader.onReport = [&](int error) {
        Tell(context.events, error, "call: Read registry, Wallpaper sources");
    };
    for (const auto& section : SettingsSchema()) {
        if (extent == Extent::Profile && !section.inProfiles) continue;
        reader.Read(section);
        if (extent == Extent::Tree && section.bar > 0 && context.events.Progress)
            context.events.Progress(section.bar);
    }
}

void Write(std::string_view root, Extent extent, Settings& settings, const SettingsContext& context,
           const std::function<int()>& settleAutostart) {
    SchemaWriter<Settings> writer(settings, PlaceIn(context.store, root));
    writer.onRefused = [&](int error) { Tell(context.events, error, "call: Write registry"); };
    writer.letEventsRun = context.events.LetEventsRun;
    if (extent == Extent::Tree) {
        // Nobody reads the two: they tell a person which program wrote the tree.
        std::int32_t version = QUORVANE_VERSION_MAJOR * 100 + QUORVANE_VERSION_MINOR;
        std::int32_t build = QUORVANE_VERSION_REVISION;
        writer.WriteOne(std::string(root), "Version", StoredForm::Integer, &version);
        writer.WriteOne(std::string(root), "Build", StoredForm::Integer, &build);
    }
    for (const auto& section : SettingsSchema()) {
        if (extent == Extent::Profile && !section.inProfiles) continue;
        writer.Write(section);
        if (!section.settlesAutostart || !settleAutostart) continue;
        if (const int error = settleAutostart()) writer.Refused(error);
    }
    writer.End();
}

// The error of the system. Taking the entry away may fail, as it does where there is none.
int SettleAutostart(const GlobalRecord& record, Session& session) {
    const bool enabled = record.AutoStartApplication != 0;
    const int error = session.SetAutostart(enabled, record.RunOnWin9x ? "/win9x" : "");
    return enabled ? error : store_error::None;
}

bool WriteDesktopValue(Store& store, Hive hive, std::string_view key, std::string_view name,
                       std::string_view value) {
    return RegWriteValue(store, "", hive, key, key_access::All, name, value) != 0;
}

// The texts that have a value before the first setting is read.
void PutPresets(Settings& settings, Files& files) {
    settings.CaptureDirectory = files.WritableDirectory() + files.Separator();
    settings.CaptureFileName = "YYYYMMDDHHNNSS.BMP";
    settings.User_Wallpaper_Directory = std::string(".") + files.Separator() + "Wallpaper.bmp";
}

} // namespace

std::string DecimalSign(Store& store) {
    std::string sign = ".";
    RegReadValue(store, "", Hive::CurrentUser, International, key_access::Read, "sDecimal", sign);
    return sign;
}

std::string PresentMoment(Store& store, Clock& clock) {
    std::string shortDate;
    RegReadValue(store, "", Hive::CurrentUser, International, key_access::Read, "sShortDate", shortDate);
    return GeneralDateText(clock.Now(), shortDate);
}

void PresetRecord(GlobalRecord& record, Files& files) {
    record.DISABLE_WALLPAPER_CHANGE = false;
    record.DISABLE_WALLPAPER_PREVIEW_CHANGE = false;
    record.RESCANWALLPAPERSOURCESNOW = false;
    record.BMHandles.clear();
    record.SelectProfileTimeout = 30;
    PutPresets(record, files);
    record.Current_System_Profile.Name = "Default";
}

void PresetTexts(Settings& settings, Files& files) {
    for (const auto& section : SettingsSchema()) {
        if (section.list && section.list->resize) continue; // its entries are made anew
        const std::int32_t entries = section.list ? section.list->count(settings) : 1;
        for (const auto& row : section.rows) {
            for (std::int32_t entry = 0; entry < entries; ++entry) {
                const FieldRef field = row.field(settings, {entry});
                if (auto* text = std::get_if<std::string*>(&field)) (*text)->clear();
            }
        }
    }
    settings.CurrentLanguage = "EN";
    PutPresets(settings, files);
}

void ReadSettingOf(Settings& settings, const std::string* field, Store& store) {
    for (const auto& section : SettingsSchema()) {
        if (section.list) continue;
        for (const auto& row : section.rows) {
            const FieldRef rowField = row.field(settings, {});
            const auto* text = std::get_if<std::string*>(&rowField);
            if (text && *text == field)
                ReadValue({store, std::string(RootKey) + "\\" + section.key, row.name, {}}, row.form,
                          rowField);
        }
    }
}

void ReadRecord(Settings& settings, const SettingsContext& context) {
    Read(RootKey, Extent::Tree, settings, context);
    for (std::int32_t number = 1; number <= settings.Sys_Profiles_Count(); ++number)
        settings.System_Profiles[number].Id = number;
}

void WriteRecord(Settings& settings, const SettingsContext& context) {
    Write(RootKey, Extent::Tree, settings, context, nullptr);
}

void ReadRecordAt(const std::string& key, Settings& settings, const SettingsContext& context) {
    Read(key, Extent::Profile, settings, context);
}

void WriteRecordAt(const std::string& key, Settings& settings, const SettingsContext& context) {
    Write(key, Extent::Profile, settings, context, nullptr);
}

std::string_view WallpaperStyle(std::int32_t wallpaperPosition) {
    if (wallpaperPosition == 1) return "1";
    return wallpaperPosition >= 2 && wallpaperPosition <= 4 ? "2" : "0";
}

void PublishWallpaper(const Settings& settings, Store& store, Prompts& prompts,
                      const SettingsEvents& events) {
    const std::string_view style = WallpaperStyle(settings.WallpaperPosition);
    const auto publish = [&](std::string_view name, std::string_view value) {
        if (WriteDesktopValue(store, Hive::CurrentUser, "Control Panel\\Desktop", name, value)) return;
        Tell(events, store.LastError(), "Unable set User wallpaper properties!");
    };
    publish("Wallpaper", settings.Wallpaper);
    publish("WallpaperStyle", style);
    if (settings.SyncWithSystemDefaultWallpaper)
        PublishSystemWallpaper(store, prompts, settings.Wallpaper, style);
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

void ReadSettings(GlobalRecord& record, const SettingsContext& context, Prompts& prompts) {
    SettingsContext told = context;
    if (!record.Main_Exec) told.events.Progress = nullptr;
    ReadRecord(record, told);
    PublishWallpaper(record, context.store, prompts, context.events);
    if (told.events.Progress) told.events.Progress(75);
}

void WriteSettings(GlobalRecord& record, const SettingsContext& context, Session& session) {
    Write(RootKey, Extent::Tree, record, context, [&] { return SettleAutostart(record, session); });
}

} // namespace quorvane
