#pragma once

#include "platform/store.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

// A text of the current user's hive that the system decides; key and name in lower case.
struct SystemValue {
    std::string key;
    std::string name;
    std::function<std::string()> answer;
};

// "sDecimal", "sShortDate" and "iFirstDayOfWeek" of "Control Panel\International", from the LC_ variables.
std::vector<SystemValue> LocaleValues();

// A tree in which the given values, where the tree underneath does not hold them, are answered by the system.
class SystemValues final : public Store {
  public:
    SystemValues(std::unique_ptr<Store> tree, std::vector<SystemValue> values)
        : tree_(std::move(tree))
        , values_(std::move(values)) {}

    bool Lasting() const override { return tree_->Lasting(); }
    int Query(const StoreKey& key, std::string_view name, StoredValue& out) override;
    int Set(const StoreKey& key, std::string_view name, const StoredValue& value) override {
        return tree_->Set(key, name, value);
    }
    int DeleteValue(const StoreKey& key, std::string_view name) override {
        return tree_->DeleteValue(key, name);
    }
    int DeleteKey(const StoreKey& key) override { return tree_->DeleteKey(key); }
    int SubKeys(const StoreKey& key, std::vector<std::string>& out) override {
        return tree_->SubKeys(key, out);
    }
    int ValueNames(const StoreKey& key, std::vector<std::string>& out) override {
        return tree_->ValueNames(key, out);
    }
    void BeginBatch() override { tree_->BeginBatch(); }
    int EndBatch() override { return tree_->EndBatch(); }
    int LastError() const override { return tree_->LastError(); }

  private:
    std::unique_ptr<Store> tree_;
    std::vector<SystemValue> values_;
};

} // namespace quorvane
