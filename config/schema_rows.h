#pragma once

#include "config/schema.h"
#include "core/numbers.h"

#include <cstddef>
#include <tuple>
#include <utility>

namespace quorvane {

// What a schema is put together from.

// The field of a scalar row: a member of the record, or of a record within it.
template<typename Record, typename Value>
auto Field(Value Record::*member) {
    return [member](Record& record, ValueAt) -> FieldRef { return &(record.*member); };
}
template<typename Record, typename Inner, typename Value>
auto Field(Inner Record::*inner, Value Inner::*member) {
    return [inner, member](Record& record, ValueAt) -> FieldRef { return &(record.*inner.*member); };
}

// An entry by its number, of a list that grows or of one with a fixed length.
template<typename List>
auto& EntryOf(List& list, std::int32_t number) {
    if constexpr (requires { std::tuple_size<List>::value; })
        return list[static_cast<std::size_t>(number)];
    else
        return list[number];
}

// The field of a list's row: a member of the entry.
template<typename Record, typename List, typename Entry, typename Value>
auto EntryField(List Record::*list, Value Entry::*member) {
    return [list, member](Record& record, ValueAt at) -> FieldRef {
        return &(EntryOf(record.*list, at.entry).*member);
    };
}

// The defaults that a value can have.
inline auto Is(DefaultValue value) {
    return [value](const auto&...) { return value; };
}
// A file, or with an empty name the folder itself, where the program may write.
inline auto OwnPath(const char* name) {
    return [name](const auto&, const DefaultSources& sources, ValueAt) -> DefaultValue {
        return sources.directory + sources.separator + name;
    };
}
template<typename Record>
auto SameAs(std::int32_t Record::*other) {
    return [other](const Record& record, const DefaultSources&, ValueAt) -> DefaultValue {
        return record.*other;
    };
}
// `text` and the number of the entry.
inline auto Numbered(const char* text) {
    return [text](const auto&, const DefaultSources&, ValueAt at) -> DefaultValue {
        return text + std::to_string(at.entry);
    };
}
inline auto Now() {
    return [](const auto&, const DefaultSources& sources, ValueAt) -> DefaultValue { return sources.now; };
}
inline auto QuarterOf(std::int32_t DefaultSources::*length) {
    return [length](const auto&, const DefaultSources& sources, ValueAt) -> DefaultValue {
        return ToInteger(sources.*length / 4.0);
    };
}

// A list whose entries are counted and can become more or fewer.
template<typename Record, typename List>
SettingList<Record> Counted(List Record::*list, std::vector<SettingCounter> counters) {
    SettingList<Record> made;
    made.counters = std::move(counters);
    made.count = [list](const Record& record) { return (record.*list).Count(); };
    made.resize = [list](Record& record, std::int32_t count) { (record.*list).Resize(count); };
    return made;
}

// An array of one length, numbered from 0.
template<typename Record, typename List>
SettingList<Record> Fixed(List Record::*list) {
    SettingList<Record> made;
    made.count = [list](const Record& record) { return static_cast<std::int32_t>((record.*list).size()); };
    made.first = 0;
    return made;
}

} // namespace quorvane
