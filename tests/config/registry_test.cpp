#include "config/registry.h"
#include "platform/shared/memory_store.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

constexpr Hive User = Hive::CurrentUser;

class RegistryTest : public testing::Test {
  protected:
    int Write(std::string_view name, std::string_view value) {
        return RegWriteValue(store, "", User, key, key_access::All, name, value);
    }
    // What a read leaves in a field that held "preset".
    std::string Read(std::string_view name, int expected = 1) {
        std::string value = "preset";
        EXPECT_EQ(RegReadValue(store, "", User, key, key_access::All, name, value), expected);
        return value;
    }
    std::string Stored(std::string_view name) {
        StoredValue value;
        EXPECT_EQ(store.Query({"", User, key}, name, value), store_error::None);
        return value.data;
    }
    MemoryStore store;
    const std::string key = "Software\\Quorvane\\General";
};

TEST_F(RegistryTest, TextsComeBackAndTheEmptyOneLeavesTheField) {
    const struct {
        std::string text, stored, read;
    } rows[] = {{"x", std::string("x\0", 2), "x"},
                {"", "", "preset"},
                {std::string(1, '\0'), std::string(1, '\0'), ""},
                {std::string("x\0", 2), std::string("x\0", 2), "x"},
                {std::string("a\0b", 3), std::string("a\0b\0", 4), std::string("a\0b", 3)}};
    for (const auto& row : rows) {
        EXPECT_EQ(Write("v", row.text), 1);
        EXPECT_EQ(Stored("v"), row.stored);
        EXPECT_EQ(Read("v"), row.read);
    }
    EXPECT_EQ(Read("missing", 0), "preset");
}

TEST_F(RegistryTest, IntegersTakeFourBytes) {
    for (const std::int32_t value : {0, 1, -1, 255, 2147483647, -2147483647 - 1}) {
        std::int32_t read = 7;
        EXPECT_EQ(RegWriteValue(store, "", User, key, key_access::All, "i", value), 1);
        EXPECT_EQ(RegReadValue(store, "", User, key, key_access::All, "i", read), 1);
        EXPECT_EQ(read, value);
    }
    RegWriteValue(store, "", User, key, key_access::All, "i", 0x04030201);
    EXPECT_EQ(Stored("i"), "\x01\x02\x03\x04");
    std::int32_t kept = 7;
    EXPECT_EQ(RegReadValue(store, "", User, key, key_access::All, "missing", kept), 0);
    EXPECT_EQ(kept, 7);
}

// The store does not guard its types: a read takes the bytes that are there.
TEST_F(RegistryTest, ValuesOfTheOtherType) {
    RegWriteValue(store, "", User, key, key_access::All, "i", 0x00434241);
    EXPECT_EQ(Read("i"), "ABC");
    std::int32_t number = 0x11223344;
    Write("v", "");
    EXPECT_EQ(RegReadValue(store, "", User, key, key_access::All, "v", number), 1);
    EXPECT_EQ(number, 0x11223344);
    Write("v", "A");
    EXPECT_EQ(RegReadValue(store, "", User, key, key_access::All, "v", number), 1);
    EXPECT_EQ(number, 0x11220041);
    Write("v", "longer");
    EXPECT_EQ(RegReadValue(store, "", User, key, key_access::All, "v", number), 0);
    EXPECT_EQ(number, 0x11220041);
}

TEST_F(RegistryTest, NamesOfMachinesAndRights) {
    Write("v", "x");
    std::string value;
    EXPECT_EQ(RegReadValue(store, "  ", User, key, key_access::Read, "v", value), 1);
    EXPECT_EQ(RegReadValue(store, " far ", User, key, key_access::All, "v", value), 0);
    EXPECT_EQ(RegWriteValue(store, "", User, key, key_access::Read, "v", "y"), 0);
    EXPECT_EQ(RegDeleteTree(store, "far", User, key), 0);
}

TEST_F(RegistryTest, DeletesTreesWithAllBelow) {
    const std::string longName(255, 'n');
    for (const std::string& below : {std::string(), std::string("\\1"), std::string("\\1\\Colors"),
                                     std::string("\\2"), "\\" + longName, "\\" + longName + "\\x"}) {
        RegWriteValue(store, "", User, "Root\\Profiles" + below, key_access::All, "v", "x");
    }
    RegWriteValue(store, "", User, "Root\\Profiles of others", key_access::All, "v", "x");
    EXPECT_EQ(RegDeleteTree(store, "", User, "Root\\profiles\\"), 1);
    std::vector<std::string> names;
    store.SubKeys({"", User, "Root"}, names);
    EXPECT_EQ(names, std::vector<std::string>{"Profiles of others"});
    EXPECT_EQ(RegDeleteTree(store, "", User, "Root\\Profiles"), 0);

    RegWriteValue(store, "", User, "Root\\a\\b", key_access::All, "v", "x");
    store.refuse = [](const StoreKey& at, std::string_view) {
        return at.path == "Root\\a\\b" ? store_error::WriteFault : store_error::None;
    };
    EXPECT_EQ(RegDeleteTree(store, "", User, "Root\\a"), 0) << "it keeps a child";
    EXPECT_EQ(store.LastError(), store_error::AccessDenied);
}

} // namespace
} // namespace quorvane
