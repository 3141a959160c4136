#pragma once

#include "platform/linux/base/store_entry.h"

#include <string>
#include <vector>

namespace quorvane {

// What can still be read of a damaged settings file: the values of every page that is whole, wherever it
// lies. Needs no part of the file to be sound and trusts none. Changes nothing.
std::vector<StoreEntry> SalvageEntries(const std::string& file);

} // namespace quorvane
