#pragma once

#include "config/schema.h"

#include <string_view>

namespace quorvane {

// Where one value lies in a tree.
struct ValuePlace {
    Store& store;
    std::string_view key; // the whole path below the hive
    std::string_view name;
    std::string_view decimalSign; // the person's
};

// Reads a value into its field by its stored form. False, with the field untouched, where it is missing or
// does not say what its form wants; a text without data leaves a text field as it is and counts as read.
bool ReadValue(const ValuePlace& place, StoredForm form, FieldRef field);

// False where the store refused it.
bool WriteValue(const ValuePlace& place, StoredForm form, FieldRef field);

// `value` in the field, as a read of it would have left it.
void StoreDefault(const DefaultValue& value, StoredForm form, FieldRef field);

} // namespace quorvane
