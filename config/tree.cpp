#include "config/tree.h"

#include <vector>

namespace quorvane {

void VisitTree(Store& store, Hive hive, const std::string& key,
               const std::function<void(const std::string& key, const std::string& name,
                                        const StoredValue& value)>& visit) {
    std::vector<std::string> names;
    store.ValueNames({"", hive, key}, names);
    for (const std::string& name : names) {
        StoredValue value;
        if (store.Query({"", hive, key}, name, value) == store_error::None) visit(key, name, value);
    }
    store.SubKeys({"", hive, key}, names);
    for (const std::string& name : names)
        VisitTree(store, hive, key.empty() ? name : key + "\\" + name, visit);
}

bool CopyTree(Store& from, Store& to, Hive hive, std::string_view key) {
    bool whole = true;
    StoreBatch reading(from);
    StoreBatch writing(to);
    VisitTree(from, hive, std::string(key),
              [&](const std::string& at, const std::string& name, const StoredValue& value) {
                  whole = to.Set({"", hive, at}, name, value) == store_error::None && whole;
              });
    return writing.End() == store_error::None && whole;
}

} // namespace quorvane
