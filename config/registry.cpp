#include "config/registry.h"

#include "core/text.h"

#include <algorithm>
#include <vector>

namespace quorvane {
namespace {

constexpr std::size_t IntegerBytes = 4;

int Success(int systemError) {
    return systemError == store_error::None ? 1 : 0;
}

int WriteData(Store& store, const StoreKey& key, std::string_view name, ValueType type, std::string data) {
    return Success(store.Set(key, name, {type, std::move(data)}));
}

} // namespace

std::string IntegerData(std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    std::string data;
    for (unsigned shift = 0; shift < 32; shift += 8)
        data.push_back(static_cast<char>(bits >> shift & 0xFF));
    return data;
}

std::int32_t DataInteger(std::string_view fourBytes) {
    std::uint32_t bits = 0;
    for (std::size_t i = IntegerBytes; i-- > 0;)
        bits = bits << 8 | static_cast<unsigned char>(fourBytes[i]);
    return static_cast<std::int32_t>(bits);
}

int RegReadValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                 std::uint32_t access, std::string_view name, std::string& value) {
    StoredValue stored;
    if (store.Query({Trim(machine), hive, key, access}, name, stored) != store_error::None) return 0;
    // The last byte is the terminator, whatever it is: an integer read as text loses its highest byte.
    if (!stored.data.empty()) value.assign(stored.data, 0, stored.data.size() - 1);
    return 1;
}

int RegReadValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                 std::uint32_t access, std::string_view name, std::int32_t& value) {
    StoredValue stored;
    if (store.Query({Trim(machine), hive, key, access}, name, stored) != store_error::None) return 0;
    if (stored.data.size() > IntegerBytes) return 0;
    // Shorter data, of a text, goes over the low bytes alone, as a query into the variable's memory does.
    std::string bytes = IntegerData(value);
    std::copy(stored.data.begin(), stored.data.end(), bytes.begin());
    value = DataInteger(bytes);
    return 1;
}

int RegWriteValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                  std::uint32_t access, std::string_view name, std::string_view value) {
    std::string data(value);
    if (!data.empty() && data.back() != '\0') data.push_back('\0');
    return WriteData(store, {Trim(machine), hive, key, access}, name, ValueType::Text, std::move(data));
}

int RegWriteValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                  std::uint32_t access, std::string_view name, std::int32_t value) {
    return WriteData(store, {Trim(machine), hive, key, access}, name, ValueType::Integer, IntegerData(value));
}

int RegDeleteValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                   std::uint32_t access, std::string_view name) {
    return Success(store.DeleteValue({Trim(machine), hive, key, access}, name));
}

int RegDeleteTree(Store& store, std::string_view machine, Hive hive, std::string_view key) {
    const StoreKey top{Trim(machine), hive, key, key_access::All};
    std::vector<std::string> names;
    if (store.SubKeys(top, names) != store_error::None) names.clear();
    // From the last to the first, as indices stay valid while children vanish. A child that stays makes the
    // deletion of its parent fail, so its own answer needs no look.
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        std::string child(key);
        if (!child.ends_with('\\')) child.push_back('\\');
        RegDeleteTree(store, machine, hive, child.append(*name));
    }
    return Success(store.DeleteKey(top));
}

} // namespace quorvane
