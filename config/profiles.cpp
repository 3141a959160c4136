#include "config/profiles.h"

#include "config/registry.h"
#include "config/schema_walk.h"
#include "core/text.h"
#include "platform/store.h"

#include <algorithm>
#include <vector>

namespace quorvane {
namespace {

constexpr std::string_view Temporary = "tmp";
// A value of "tmp": the number of the profile whose place is being filled. Those below it have moved, those
// above it stand where they stood.
constexpr std::string_view Filling = "Filling";

bool Delete(const std::string& key, Store& store) {
    return RegDeleteTree(store, "", Hive::CurrentUser, key) != 0;
}

void TellOfRefusal(int error, const SettingsEvents& events) {
    if (events.ShowErrorDialog) events.ShowErrorDialog(error, "call: Write registry");
}

void WriteFilling(std::int32_t number, const SettingsContext& context) {
    const int written = RegWriteValue(context.store, "", Hive::CurrentUser, ProfileKey(Temporary),
                                      key_access::All, Filling, number);
    if (!written) TellOfRefusal(context.store.LastError(), context.events);
}

// Half of it left behind is not to be taken for the live settings.
void DropTemporary(const SettingsContext& context) {
    WriteFilling(0, context);
    Delete(ProfileKey(Temporary), context.store);
}

const SettingSection<Settings>& ProfileList() {
    static const auto found = std::find_if(SettingsSchema().begin(), SettingsSchema().end(),
                                           [](const auto& section) { return section.key == "Profiles"; });
    return *found;
}

// Writes along the section of the list.
template<typename Write>
void WriteListed(Settings& settings, const SettingsContext& context, Write&& write) {
    SchemaWriter<Settings> writer(settings,
                                  {context.store, std::string(RootKey), DecimalSign(context.store)});
    writer.onRefused = [&](int error) { TellOfRefusal(error, context.events); };
    write(writer);
    writer.End();
}

// Nobody's turn comes while profiles stand half moved or half written.
SettingsContext WithoutEvents(SettingsContext context) {
    context.events.LetEventsRun = nullptr;
    return context;
}

// Fills the place of a profile and those above it, each from the next. Broken off anywhere, it can be begun
// again at the number that "tmp" tells.
void FillPlace(std::int32_t number, Settings& settings, const SettingsContext& context) {
    const std::int32_t last = settings.Sys_Profiles_Count();
    Settings passing = settings; // the live ones are nobody else's for a moment
    for (std::int32_t i = number; i <= last; ++i) {
        WriteFilling(i, context);
        Delete(ProfileKey(i), context.store);
        if (i == last) break;
        ReadProfile(ProfileKey(i + 1), passing, context);
        WriteProfile(ProfileKey(i), passing, context);
        settings.System_Profiles[i] = settings.System_Profiles[i + 1];
        settings.System_Profiles[i].Id = i;
        WriteListed(settings, context, [i](auto& writer) { writer.WriteEntry(ProfileList(), i); });
    }
    settings.System_Profiles.Resize(last - 1);
    WriteProfileList(settings, context);
}

} // namespace

std::string ProfileKey(std::string_view id) {
    return std::string(RootKey) + "\\Profiles\\" + std::string(id);
}

std::string ProfileKey(std::int32_t number) {
    return ProfileKey(std::to_string(number));
}

void WriteProfile(const std::string& key, Settings& settings, const SettingsContext& context) {
    WriteRecordAt(key, settings, context);
}

void ReadProfile(const std::string& key, Settings& settings, const SettingsContext& context) {
    PresetTexts(settings, context.files);
    ReadRecordAt(key, settings, context);
}

std::int32_t FindProfile(const Settings& settings, std::string_view name) {
    for (std::int32_t number = 1; number <= settings.Sys_Profiles_Count(); ++number) {
        if (SameName(settings.System_Profiles[number].Name, name)) return number;
    }
    return 0;
}

void WriteProfileList(Settings& settings, const SettingsContext& context) {
    WriteListed(settings, context, [](auto& writer) { writer.Write(ProfileList()); });
}

std::int32_t SaveProfile(const ProfileNote& note, Settings& settings, const SettingsContext& context) {
    const StoreBatch batch(context.store);
    const std::string now = PresentMoment(context.store, context.clock);
    std::int32_t number = FindProfile(settings, note.name);
    if (number == 0) {
        SystemProfile added;
        added.Name = note.name;
        added.CreationDate = now;
        settings.System_Profiles.Add(added);
        number = settings.Sys_Profiles_Count();
    }
    if (note.isDefault) SetDefaultProfile(number, settings);
    SystemProfile& profile = settings.System_Profiles[number];
    profile.Description = note.description;
    profile.Default = note.isDefault ? 1 : 0;
    profile.ModificationDate = profile.LastAccessDate = now;
    profile.Id = number;
    WriteProfile(ProfileKey(number), settings, WithoutEvents(context));
    WriteProfileList(settings, context);
    return number;
}

void SaveCurrentProfile(GlobalRecord& record, const SettingsContext& context) {
    const std::int32_t number = FindProfile(record, record.Current_System_Profile.Name);
    if (number == 0) return;
    record.System_Profiles[number].ModificationDate = PresentMoment(context.store, context.clock);
    WriteProfile(ProfileKey(number), record, context);
}

void LoadProfile(std::int32_t number, GlobalRecord& record, const SettingsContext& context) {
    ReadProfile(number > 0 ? ProfileKey(number) : ProfileKey(DefaultProfile), record, context);
    if (number > 0) {
        record.Current_System_Profile = record.System_Profiles[number];
    } else {
        record.Current_System_Profile.Name = DefaultProfile;
    }
    record.RESCANWALLPAPERSOURCESNOW = true;
}

void DeleteProfile(std::int32_t number, GlobalRecord& record, const SettingsContext& context) {
    const StoreBatch batch(context.store);
    const SettingsContext quiet = WithoutEvents(context);
    if (SameName(record.System_Profiles[number].Name, record.Current_System_Profile.Name))
        record.Current_System_Profile.Name = DefaultProfile;
    Delete(ProfileKey(Temporary), context.store);
    WriteProfile(ProfileKey(Temporary), record, quiet);
    FillPlace(number, record, quiet);
    DropTemporary(quiet);
}

bool FinishDelete(Settings& settings, const SettingsContext& context) {
    std::vector<std::string> groups;
    if (context.store.SubKeys({"", Hive::CurrentUser, ProfileKey(Temporary)}, groups) != store_error::None)
        return false;
    const StoreBatch batch(context.store);
    const SettingsContext quiet = WithoutEvents(context);
    std::int32_t number = 0;
    RegReadValue(context.store, "", Hive::CurrentUser, ProfileKey(Temporary), key_access::All, Filling,
                 number);
    const bool begun = number > 0; // else no profile was touched yet
    if (begun) {
        if (number <= settings.Sys_Profiles_Count()) FillPlace(number, settings, quiet);
        ReadProfile(ProfileKey(Temporary), settings, quiet);
        WriteRecord(settings, quiet);
    }
    DropTemporary(quiet);
    return begun;
}

int DeleteAllProfiles(GlobalRecord& record, const SettingsContext& context) {
    const StoreBatch batch(context.store);
    const std::int32_t last = record.Sys_Profiles_Count();
    if (FindProfile(record, record.Current_System_Profile.Name) > 0)
        record.Current_System_Profile.Name = DefaultProfile;
    // The list first: broken off behind it, no entry is left without what it tells of.
    record.System_Profiles.Clear();
    WriteProfileList(record, context);
    int error = store_error::None;
    for (std::int32_t number = last; number >= 1; --number) {
        const bool gone = Delete(ProfileKey(number), context.store);
        if (!gone && context.store.LastError() != store_error::NotFound) error = context.store.LastError();
    }
    return error;
}

void SetDefaultProfile(std::int32_t number, Settings& settings) {
    for (SystemProfile& profile : settings.System_Profiles)
        profile.Default = 0;
    if (number > 0) settings.System_Profiles[number].Default = 1;
}

} // namespace quorvane
