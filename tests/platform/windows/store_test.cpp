#include "platform/windows/base/store.h"
#include "tests/contracts/store_contract.h"

#include <windows.h>

namespace quorvane {
namespace {

struct RegistryMaker {
    RegistryMaker() { Erase(); }
    ~RegistryMaker() { Erase(); }

    std::unique_ptr<Store> Open() { return std::make_unique<RegistryStore>(); }
    static std::string Root() { return "Software\\Quorvane store test"; }

  private:
    static void Erase() { RegDeleteTreeA(HKEY_CURRENT_USER, Root().c_str()); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Registry, StoreContract, RegistryMaker);

TEST(RegistryStore, NamesAndTextsBeyondAsciiAreWhatOtherProgramsSee) {
    const RegistryMaker cleanUp;
    RegistryStore store;
    const std::string path = RegistryMaker::Root() + "\\Папка";
    const StoreKey key{"", Hive::CurrentUser, path};
    ASSERT_EQ(store.Set(key, "Имя", {ValueType::Text, std::string("é€𝄞\0", 10)}), store_error::None);

    HKEY handle = nullptr;
    ASSERT_EQ(
        RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Quorvane store test\\Папка", 0, KEY_ALL_ACCESS, &handle),
        ERROR_SUCCESS);
    wchar_t text[16]{};
    DWORD size = sizeof text;
    EXPECT_EQ(RegQueryValueExW(handle, L"Имя", nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size),
              ERROR_SUCCESS);
    EXPECT_EQ(std::wstring(text), L"é€𝄞");

    // As another program may leave it: without the zero at the end.
    RegSetValueExW(handle, L"bare", 0, REG_SZ, reinterpret_cast<const BYTE*>(L"ab"), 4);
    RegSetValueExW(handle, L"odd", 0, REG_SZ, reinterpret_cast<const BYTE*>(L"ab"), 3);
    RegCloseKey(handle);
    StoredValue read;
    EXPECT_EQ(store.Query(key, "bare", read), store_error::None);
    EXPECT_EQ(read.data, std::string("ab\0", 3));
    EXPECT_EQ(store.Query(key, "odd", read), store_error::None);
    EXPECT_EQ(read.data, std::string("a\0", 2)) << "half a letter is none";
}

TEST(RegistryStore, KeepsTheHivesAndReachesTheDefaultUser) {
    RegistryStore store;
    EXPECT_EQ(store.DeleteKey({"", Hive::CurrentUser, ""}), store_error::AccessDenied);
    EXPECT_EQ(store.DeleteKey({"", Hive::CurrentUser, "\\"}), store_error::AccessDenied);
    const StoreKey everybody{"", Hive::Users, ".DEFAULT\\Control Panel\\Desktop"};
    ASSERT_EQ(store.Set(everybody, "Quorvane test", {ValueType::Text, ""}), store_error::None);
    StoredValue read{ValueType::Integer, "preset"};
    EXPECT_EQ(store.Query(everybody, "Quorvane test", read), store_error::None);
    EXPECT_EQ(read.data, "");
    EXPECT_EQ(store.DeleteValue(everybody, "Quorvane test"), store_error::None);
}

} // namespace
} // namespace quorvane
