#include "config/mend_lists.h"

#include "config/schema_walk.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace quorvane {
namespace {

using Section = SettingSection<Settings>;

const std::string Root(RootKey);

struct EntryValue {
    std::string key;
    std::string name;
};

bool IsStored(Store& store, const EntryValue& value) {
    StoredValue stored;
    return store.Query({"", Hive::CurrentUser, value.key}, value.name, stored) == store_error::None;
}

void MoveValue(Store& store, const EntryValue& from, const EntryValue& to) {
    StoredValue stored;
    if (store.Query({"", Hive::CurrentUser, from.key}, from.name, stored) == store_error::None) {
        store.Set({"", Hive::CurrentUser, to.key}, to.name, stored);
    } else {
        store.DeleteValue({"", Hive::CurrentUser, to.key}, to.name);
    }
}

// Closes the gaps of one list.
class ListMender {
  public:
    ListMender(Store& store, const Section& section)
        : store_(store)
        , section_(section)
        , list_(*section.list) {}

    void Mend() {
        const std::optional<std::int32_t> stored = StoredCount();
        const std::int32_t count = std::min(stored ? *stored : EntriesInARow(), list_.most);
        std::int32_t kept = 0;
        for (std::int32_t i = 0; i < count; ++i) {
            if (!IsThere(i)) continue;
            if (kept < i) Move(i, kept);
            Fill(kept++);
        }
        if (kept != stored.value_or(0)) WriteCount(kept);
    }

  private:
    std::vector<EntryValue> Entry(std::int32_t i) {
        std::vector<EntryValue> values;
        VisitEntry(section_, record_, list_.first + i, Root,
                   [&](const auto&, const std::string& key, const std::string& name, ValueAt) {
                       values.push_back({key, name});
                   });
        return values;
    }

    // An entry's first value is what makes it one: the path of a folder or file.
    bool IsThere(std::int32_t i) { return IsStored(store_, Entry(i).front()); }

    // Gives an entry the defaults of the values that no read may miss.
    void Fill(std::int32_t i) {
        list_.resize(record_, i + 1);
        VisitEntry(section_, record_, list_.first + i, Root,
                   [&](const auto& row, const std::string& key, const std::string& name, ValueAt at) {
                       if (row.onFailedRead != OnFailedRead::Report || IsStored(store_, {key, name})) return;
                       const FieldRef field = row.field(record_, at);
                       StoreDefault(row.fallback(record_, {}, at), row.form, field);
                       WriteValue({store_, key, name, {}}, row.form, field);
                   });
    }

    void Move(std::int32_t from, std::int32_t to) {
        const auto values = Entry(from);
        const auto places = Entry(to);
        for (std::size_t v = 0; v < values.size(); ++v)
            MoveValue(store_, values[v], places[v]);
    }

    ValuePlace PlaceOf(const SettingCounter& counter, const std::string& key) {
        return {store_, key, counter.name, {}};
    }

    std::optional<std::int32_t> StoredCount() {
        const SettingCounter& counter = list_.counters.front();
        const std::string key = Root + "\\" + counter.key;
        std::int32_t count = 0;
        if (!ReadValue(PlaceOf(counter, key), counter.form, &count)) return std::nullopt;
        return count;
    }

    std::int32_t EntriesInARow() {
        std::int32_t count = 0;
        while (count < list_.most && IsThere(count))
            ++count;
        return count;
    }

    void WriteCount(std::int32_t count) {
        for (const SettingCounter& counter : list_.counters) {
            const std::string key = Root + "\\" + counter.key;
            WriteValue(PlaceOf(counter, key), counter.form, &count);
        }
    }

    Store& store_;
    const Section& section_;
    const SettingList<Settings>& list_;
    Settings record_; // what the rows' fields belong to
};

} // namespace

void MendLists(Store& store) {
    StoreBatch batch(store);
    for (const Section& section : SettingsSchema()) {
        const bool reports = std::any_of(section.rows.begin(), section.rows.end(), [](const auto& row) {
            return row.onFailedRead == OnFailedRead::Report;
        });
        if (reports && section.list && !section.list->counters.empty()) ListMender(store, section).Mend();
    }
}

} // namespace quorvane
