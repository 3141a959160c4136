#pragma once

#include "platform/store.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvane {

// How the whole system reaches the tree. Each operation answers 1 when all of it succeeded and 0 otherwise
// and reports nothing itself; Store::LastError holds the reason. `machine` is blank for this computer. The
// value's C++ type decides its stored type: text, a 32-bit integer, or a double in the eight bytes of an
// integer that is longer than usual.

namespace key_access {
inline constexpr std::uint32_t All = 63;      // query, set, create subkey, enumerate, notify, create link
inline constexpr std::uint32_t Read = 131097; // for the values of the system
} // namespace key_access

// `value` stays untouched where the answer is 0, and also, with the answer 1, where the value is stored with
// no data at all: that is how an empty text is stored, so a caller's preset outlives it.
int RegReadValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                 std::uint32_t access, std::string_view name, std::string& value);
int RegReadValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                 std::uint32_t access, std::string_view name, std::int32_t& value);
int RegReadValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                 std::uint32_t access, std::string_view name, double& value);

// A missing key and its parents come into being.
int RegWriteValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                  std::uint32_t access, std::string_view name, std::string_view value);
int RegWriteValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                  std::uint32_t access, std::string_view name, std::int32_t value);
int RegWriteValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                  std::uint32_t access, std::string_view name, double value);

int RegDeleteValue(Store& store, std::string_view machine, Hive hive, std::string_view key,
                   std::uint32_t access, std::string_view name);

// The key with everything below it.
int RegDeleteTree(Store& store, std::string_view machine, Hive hive, std::string_view key);

// Numbers as the store holds them, the low byte first: an integer in four bytes, a double in eight.
std::string IntegerData(std::int32_t value);
std::int32_t DataInteger(std::string_view fourBytes);
std::string DoubleData(double value);
double DataDouble(std::string_view eightBytes);

} // namespace quorvane
