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

// Whether a text that a person types for a value of this form is read back as what it says: "48,2" is not for
// a number with a point, which ends at the comma. Forms that hold any text take any.
bool ReadsAsTyped(const std::string& text, StoredForm form, std::string_view decimalSign);

// `value` in the field, as a read of it would have left it.
void StoreDefault(const DefaultValue& value, StoredForm form, FieldRef field);

} // namespace quorvane
