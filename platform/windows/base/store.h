#pragma once

#include "platform/store.h"

namespace quorvane {

// The registry itself. Texts are kept in the registry's UTF-16; bytes that are no UTF-8 do not survive it.
// A batch gathers nothing: the registry writes value by value, each of them whole.
class RegistryStore final : public Store {
  public:
    int Query(const StoreKey& key, std::string_view name, StoredValue& out) override;
    int Set(const StoreKey& key, std::string_view name, const StoredValue& value) override;
    int DeleteValue(const StoreKey& key, std::string_view name) override;
    int DeleteKey(const StoreKey& key) override;
    int SubKeys(const StoreKey& key, std::vector<std::string>& out) override;
    int ValueNames(const StoreKey& key, std::vector<std::string>& out) override;
    int LastError() const override { return lastError_; }

  private:
    int Noted(long error);

    int lastError_ = store_error::None;
};

} // namespace quorvane
