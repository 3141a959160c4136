#include "config/registry.h"

#include "core/text.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace quorvane {
namespace {

constexpr std::size_t IntegerBytes = 4;
constexpr std::size_t DoubleBytes = 8;

template<typename Bits>
std::string BytesOf(Bits bits) {
    std::string data;
    for (std::size_t i = 0; i < sizeof bits; ++i)
        data.push_back(static_cast<char>(bits >> i * 8 & 0xFF));
    return data;
}

template<typename Bits>
Bits BitsOf(std::string_view data) {
    Bits bits = 0;
    for (std::size_t i = sizeof bits; i-- > 0;)
        bits = bits << 8 | static_cast<unsigned char>(data[i]);
    return bits;
}

int Success(int systemError) {
    return systemError == store_error::None ? 1 : 0;
}

int WriteData(Store& store, const StoreKey& key, std::string_view name, ValueType type, std::string data) {
    return Success(store.Set(key, name, {type, std::move(data)}));
}

} // namespace

std::string IntegerData(std::int32_t value) {
    return BytesOf(static_cast<std::uint32_t>(value));
}
std::int32_t DataInteger(std::string_view fourBytes) {
    return static_cast<std::int32_t>(BitsOf<std::uint32_t>(fourBytes));
}
std::string DoubleData(double value) {
    return BytesOf(std::bit_cast<std::uint64_t>(value));
}
double DataDouble(std::string_view eightBytes) {
    return std::bit_cast<double>(BitsOf<std::uint64_t>(eightBytes));
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

int RegReadValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                 std::uint32_t access, std::string_view name, double& value) {
    StoredValue stored;
    if (store.Query({Trim(machine), hive, key, access}, name, stored) != store_error::None) return 0;
    if (stored.type != ValueType::Integer || stored.data.size() != DoubleBytes) return 0;
    value = DataDouble(stored.data);
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

int RegWriteValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                  std::uint32_t access, std::string_view name, double value) {
    return WriteData(store, {Trim(machine), hive, key, access}, name, ValueType::Integer, DoubleData(value));
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
