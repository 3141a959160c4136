#pragma once

#include "config/schema.h"
#include "config/stored_value.h"

#include <algorithm>
#include <utility>

namespace quorvane {

// The walks over a schema.

// Where a walk goes.
struct WalkPlace {
    Store& store;
    std::string root; // the whole path below the current user's hive
    std::string decimalSign;
};

// One value of one entry in the tree, or the one value of a plain row.
template<typename Record, typename Visit>
void VisitEntry(const SettingSection<Record>& section, Record& record, std::int32_t entry,
                const std::string& root, Visit&& visit) {
    const std::string number = section.list ? std::to_string(entry) : std::string();
    const bool inSubkey = section.list && section.list->subkeys;
    const std::string key = root + "\\" + section.key + (inSubkey ? "\\" + number : "");
    for (const SettingRow<Record>& row : section.rows) {
        const std::string name = row.name + (inSubkey ? "" : number) + row.suffix;
        if (!row.repeats) {
            visit(row, key, name, ValueAt{entry});
            continue;
        }
        for (ValueAt at{entry}; at.repeat < row.repeats(record, at); ++at.repeat)
            visit(row, key, name + std::to_string(at.repeat), at);
    }
}

template<typename Record>
class SchemaReader {
  public:
    SchemaReader(Record& record, const WalkPlace& place, DefaultSources sources)
        : record_(record)
        , place_(place)
        , sources_(std::move(sources)) {}

    // The value is missing, and its row reports that. With the system's error number.
    std::function<void(int error)> onReport;

    // What is missing becomes its default, and so does what cannot be understood.
    void Read(const SettingSection<Record>& section) {
        if (!section.list) return ReadEntry(section, 0);
        const SettingList<Record>& list = *section.list;
        const std::int32_t count = list.resize ? std::min(ReadCount(list), list.most) : list.count(record_);
        if (list.resize) list.resize(record_, 0);
        for (std::int32_t i = 0; i < count; ++i) {
            if (list.resize) list.resize(record_, i + 1);
            ReadEntry(section, list.first + i);
        }
    }

  private:
    std::int32_t ReadCount(const SettingList<Record>& list) {
        std::int32_t count = 0;
        const SettingCounter& counter = list.counters.front();
        ReadValue(ValueIn(place_.root + "\\" + counter.key, counter.name), counter.form, &count);
        return count;
    }

    void ReadEntry(const SettingSection<Record>& section, std::int32_t entry) {
        VisitEntry(section, record_, entry, place_.root,
                   [this](const auto& row, const std::string& key, const std::string& name, ValueAt at) {
                       const FieldRef field = row.field(record_, at);
                       if (ReadValue(ValueIn(key, name), row.form, field)) return;
                       const int error = place_.store.LastError();
                       StoreDefault(row.fallback(record_, sources_, at), row.form, field);
                       if (row.onFailedRead == OnFailedRead::Report && onReport)
                           batch_.Interrupt([&] { onReport(error); });
                   });
    }

    ValuePlace ValueIn(std::string_view key, std::string_view name) {
        return {place_.store, key, name, place_.decimalSign};
    }

    Record& record_;
    WalkPlace place_;
    DefaultSources sources_;
    StoreBatch batch_{place_.store};
};

template<typename Record>
class SchemaWriter {
  public:
    SchemaWriter(Record& record, const WalkPlace& place)
        : record_(record)
        , place_(place) {}

    // The store refused a value. With the system's error number.
    std::function<void(int error)> onRefused;
    // After each entry of the lists that let events run.
    std::function<void()> letEventsRun;

    // The counter of a list comes last, so that whatever ends the writing leaves entries for all it counts.
    void Write(const SettingSection<Record>& section) {
        if (!section.list) return WriteEntry(section, 0);
        const SettingList<Record>& list = *section.list;
        // Asked anew for each entry: events that run may change the list.
        for (std::int32_t i = 0; i < list.count(record_); ++i) {
            WriteEntry(section, list.first + i);
            if (list.letsEventsRun && letEventsRun) batch_.Interrupt(letEventsRun);
        }
        for (const SettingCounter& counter : list.counters) {
            std::int32_t count = list.count(record_);
            WriteOne(place_.root + "\\" + counter.key, counter.name, counter.form, &count);
        }
    }

    // A plain section, or one entry of a list without its counter.
    void WriteEntry(const SettingSection<Record>& section, std::int32_t entry) {
        VisitEntry(section, record_, entry, place_.root,
                   [&](const auto& row, const std::string& key, const std::string& name, ValueAt at) {
                       const FieldRef field = row.field(record_, at);
                       if (section.onlyWhereSet && IsZero(field) && !Stands(key, name)) return;
                       WriteOne(key, name, row.form, field);
                   });
    }

    void WriteOne(const std::string& key, const std::string& name, StoredForm form, FieldRef field) {
        if (!WriteValue({place_.store, key, name, place_.decimalSign}, form, field))
            Refused(place_.store.LastError());
    }

    // A failure of something that is written beside the values.
    void Refused(int error) {
        if (onRefused) batch_.Interrupt([&] { onRefused(error); });
    }

    // What was gathered goes to the store.
    void End() {
        const int error = batch_.End();
        if (error != store_error::None && onRefused) onRefused(error);
    }

  private:
    static bool IsZero(FieldRef field) {
        return std::visit([](auto* value) { return *value == std::remove_pointer_t<decltype(value)>{}; },
                          field);
    }
    bool Stands(const std::string& key, const std::string& name) {
        StoredValue value;
        return place_.store.Query({"", Hive::CurrentUser, key}, name, value) == store_error::None;
    }

    Record& record_;
    WalkPlace place_;
    StoreBatch batch_{place_.store};
};

} // namespace quorvane
