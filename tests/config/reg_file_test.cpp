#include "config/reg_file.h"
#include "config/registry.h"
#include "config/schema.h"
#include "config/tree.h"
#include "config/utf16.h"
#include "core/run_time_error.h"
#include "platform/shared/memory_store.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

const std::string Header = "Windows Registry Editor Version 5.00\r\n\r\n";
const std::string Root = "[HKEY_CURRENT_USER\\Software\\Quorvane]\r\n";

std::string Data(Store& store, const std::string& name, const std::string& key = std::string(RootKey)) {
    StoredValue value;
    if (store.Query({"", Hive::CurrentUser, key}, name, value) != store_error::None) return "(none)";
    return std::to_string(static_cast<std::uint32_t>(value.type)) + ":" + value.data;
}

TEST(RegFile, ReadsWhatTheRegistryEditorWrites) {
    MemoryStore store;
    ImportRegFile(Header + "; a comment\r\n"
                           "[HKEY_CURRENT_USER\\Software\\Quorvane\\General]\r\n"
                           "\"Wallpaper\"=\"C:\\\\pictures\\\\\\\"best\\\".bmp\" ; behind\r\n"
                           "\"Empty\"=\"\"\r\n"
                           "@=\"default\"\n"
                           "  \"Wallpaper position\" = dword:00000004\r\n"
                           "\"Minus\"=DWORD:FFFFFFFF\r\n"
                           "\"Lines\"=\"one\r\ntwo\"\r\n"
                           "\"Bytes\"=hex:01,ff,\\\r\n  0a,b\r\n"
                           "\"Wide\"=hex(1):41,00,ac,20,3d,d8,00,de,00,00\r\n"
                           "\"Unended\"=hex(1):41,00\r\n"
                           "\"Nothing\"=hex(1):\r\n"
                           "\"Number\"=hex(4):01,02,03,04\r\n"
                           "\r\n[HKCU\\SOFTWARE\\quorvane\\Colors ]odd] ; [a] comment [b]\r\n"
                           "\"x\"=\"y\"",
                  store, RegScope::Program);
    const std::string key = "Software\\Quorvane\\General";
    const auto at = [&](const char* name) { return Data(store, name, key); };
    EXPECT_EQ(at("Wallpaper"), std::string("1:C:\\pictures\\\"best\".bmp\0", 25));
    EXPECT_EQ(at("Empty"), "1:");
    EXPECT_EQ(at(""), std::string("1:default\0", 10));
    EXPECT_EQ(at("Wallpaper position"), std::string("4:\4\0\0\0", 6));
    EXPECT_EQ(at("Minus"), "4:\xFF\xFF\xFF\xFF");
    EXPECT_EQ(at("Lines"), std::string("1:one\r\ntwo\0", 11));
    EXPECT_EQ(at("Bytes"), "3:\x01\xFF\x0A\x0B");
    EXPECT_EQ(at("Wide"), std::string("1:A\xE2\x82\xAC\xF0\x9F\x98\x80\0", 11));
    EXPECT_EQ(at("Unended"), std::string("1:A\0", 4));
    EXPECT_EQ(at("Nothing"), "1:");
    EXPECT_EQ(at("Number"), "4:\1\2\3\4");
    EXPECT_EQ(Data(store, "x", "Software\\Quorvane\\Colors ]odd"), std::string("1:y\0", 4));
}

TEST(RegFile, DeletesValuesAndKeys) {
    MemoryStore store;
    for (const char* key : {"Software\\Quorvane\\a", "Software\\Quorvane\\a\\b", "Software\\Quorvane\\c"}) {
        RegWriteValue(store, "", Hive::CurrentUser, key, key_access::All, "v", "x");
        RegWriteValue(store, "", Hive::CurrentUser, key, key_access::All, "w", "x");
    }
    ImportRegFile(Header +
                      "[-HKEY_CURRENT_USER\\Software\\Quorvane\\a]\n[-HKCU\\Software\\Quorvane\\missing]\n"
                      "[HKCU\\Software\\Quorvane\\c]\n\"v\"=-\n\"missing\"=-\n",
                  store, RegScope::Program);
    EXPECT_EQ(Data(store, "v", "Software\\Quorvane\\a"), "(none)");
    EXPECT_EQ(Data(store, "v", "Software\\Quorvane\\a\\b"), "(none)");
    EXPECT_EQ(Data(store, "v", "Software\\Quorvane\\c"), "(none)");
    EXPECT_NE(Data(store, "w", "Software\\Quorvane\\c"), "(none)");
}

TEST(RegFile, SaysWhatIsWrongAndWhere) {
    const std::string deep = [] {
        std::string path = "[HKCU\\Software\\Quorvane";
        for (int i = 0; i < 520; ++i)
            path += "\\x";
        return path + "]";
    }();
    const struct {
        std::string text;
        int line;
        const char* what;
    } rows[] = {
        {"", 1, "does not begin with"},
        {"\n\nREGEDIT4\n", 3, "does not begin with"},
        {Header + "[HKEY_CURRENT_USER\\Software\\Quorvane\n", 3, "closing bracket"},
        {Header + "]x[\n", 3, "neither"},
        {Header + "[]\n", 3, "HKEY_CURRENT_USER"},
        {Header + "[HKEY_LOCAL_MACHINE\\Software\\Quorvane]\n", 3, "HKEY_CURRENT_USER"},
        {Header + "[HKEY_CURRENT_USER\\Software\\Quorvane 2]\n", 3, "does not lie in"},
        {Header + "[-HKEY_CURRENT_USER]\n", 3, "does not lie in"},
        {Header + "[HKEY_USERS\\Software\\Quorvane]\n", 3, "does not lie in"},
        {Header + "[HKCU\\Software\\Quorvane\\" + std::string(256, 'n') + "]", 3, "255"},
        {Header + deep, 3, "512"},
        {Header + Root.substr(0, Root.size() - 2) + " x\n", 3, "more stands behind"},
        {Header + "\"x\"=\"y\"\n", 3, "below no key"},
        {Header + Root + "x=1\n", 4, "neither"},
        {Header + Root + "\"x\" \"y\"\n", 4, "no \"=\""},
        {Header + Root + "\"x\"=\n", 4, "neither a text"},
        {Header + Root + "\"x\"=hex(zz):00\n", 4, "neither a text"},
        {Header + Root + "\"x\"=\"a\\b\"\n", 4, "in front of another"},
        {Header + Root + "\n\"x\"=\"never\nclosed\n", 5, "closing quotation mark"},
        {Header + Root + "\"x\"=\"y\" z\n", 4, "more stands behind"},
        {Header + Root + "\"x\"=dword:\n", 4, "hexadecimal"},
        {Header + Root + "\"x\"=dword:123456789\n", 4, "eight"},
        {Header + Root + "\"x\"=dword:12x\n", 4, "more stands behind"},
        {Header + Root + "\"x\"=hex:00,,01\n", 4, "two hexadecimal digits"},
        {Header + Root + "\"x\"=hex:000\n", 4, "two hexadecimal digits"},
        {Header + Root + "\"x\"=hex:00 01\n", 4, "comma"},
        {Header + Root + "\"x\"=hex:00,\\ x\n", 4, "ends its line"},
        {Header + Root + "\"x\"=hex(1):00,00,00\n", 4, "two bytes"},
    };
    for (const auto& row : rows) {
        MemoryStore store;
        store.refuse = [](const StoreKey&, std::string_view) {
            ADD_FAILURE() << "changed";
            return 0;
        };
        try {
            ImportRegFile(row.text, store, RegScope::Program);
            ADD_FAILURE() << row.text;
        } catch (const RegFileError& error) {
            EXPECT_EQ(error.Line(), row.line) << row.text << error.what();
            EXPECT_NE(std::string(error.what()).find(row.what), std::string::npos) << error.what();
        }
    }
}

TEST(RegFile, TakesOtherKeysOfThePersonWhereItMay) {
    MemoryStore store;
    ImportRegFile(Header + "[HKEY_CURRENT_USER\\Control Panel\\International]\n\"sDecimal\"=\",\"\n"
                           "[HKEY_USERS\\.DEFAULT]\n\"x\"=\"y\"\n",
                  store, RegScope::UserHives);
    EXPECT_EQ(Data(store, "sDecimal", "Control Panel\\International"), std::string("1:,\0", 4));
    EXPECT_THROW(ImportRegFile(Header + "[HKEY_CURRENT_USER]\n", store, RegScope::UserHives), RegFileError);
}

TEST(RegFile, WhatIsWrittenIsReadBackInEveryEncoding) {
    MemoryStore store;
    std::string everyByte;
    for (int i = 1; i < 256; ++i)
        everyByte.push_back(static_cast<char>(i));
    const StoredValue values[] = {
        {ValueType::Text, ""},
        {ValueType::Text, std::string(1, '\0')},
        {ValueType::Text, everyByte + '\0'},
        {ValueType::Text, std::string("a\0b\0", 4)},
        {ValueType::Text, "\xED\xA0\x80 \xF0\x9F\x98\x80 \\ \" ;" + std::string(1, '\0')},
        {ValueType::Text, std::string("C:\\pictures\0", 12)},
        {ValueType::Integer, std::string("\x78\x56\x34\x92", 4)},
        {static_cast<ValueType>(3), std::string(300, '\x07')},
        {static_cast<ValueType>(0xFFFFFFFF), ""}};
    int number = 0;
    for (const StoredValue& value : values) {
        const std::string key = std::string(RootKey) + (number % 2 ? "" : "\\General");
        store.Set({"", Hive::CurrentUser, key}, "value \"\\ " + std::to_string(number++), value);
    }
    store.Set({"", Hive::CurrentUser, RootKey}, "", values[5]);

    const std::string utf8 = ExportRegFile(store, RootKey, RegEncoding::Utf8);
    const std::string utf16 = ExportRegFile(store, RootKey, RegEncoding::Utf16);
    std::string bigEndian = utf16;
    for (std::size_t i = 0; i + 1 < bigEndian.size(); i += 2)
        std::swap(bigEndian[i], bigEndian[i + 1]);
    for (const std::string& file : {utf8, "\xEF\xBB\xBF" + utf8, utf16, bigEndian}) {
        MemoryStore read;
        ImportRegFile(file, read, RegScope::Program);
        EXPECT_EQ(ExportRegFile(read, RootKey, RegEncoding::Utf8), utf8);
        number = 0;
        for (const StoredValue& value : values) {
            const std::string key = std::string(RootKey) + (number % 2 ? "" : "\\General");
            StoredValue back;
            read.Query({"", Hive::CurrentUser, key}, "value \"\\ " + std::to_string(number++), back);
            EXPECT_EQ(back.type, value.type);
            EXPECT_EQ(back.data, value.data);
        }
    }
    std::size_t longest = 0;
    for (std::size_t start = 0; start < utf8.size();) {
        const std::size_t end = utf8.find("\r\n", start);
        longest = std::max(longest, end - start);
        start = end + 2;
    }
    EXPECT_LE(longest, 80U) << "long lists of bytes are wrapped";
}

TEST(RegFile, ARefusedWriteIsAnError) {
    MemoryStore store;
    store.refuse = [](const StoreKey&, std::string_view name) {
        return name == "x" ? store_error::WriteFault : 0;
    };
    EXPECT_THROW(ImportRegFile(Header + Root + "\"x\"=\"1\"\n\"y\"=\"2\"\n", store, RegScope::Program),
                 RunTimeError);
    EXPECT_EQ(Data(store, "y"), std::string("1:2\0", 4));
}

TEST(Tree, CopiesAllBelowAKey) {
    MemoryStore from;
    MemoryStore to;
    for (const char* key :
         {"Software\\Quorvane", "Software\\Quorvane\\Profiles\\1\\Colors", "Software\\Other"}) {
        RegWriteValue(from, "", Hive::CurrentUser, key, key_access::All, "v", "x");
    }
    EXPECT_TRUE(CopyTree(from, to, Hive::CurrentUser, RootKey));
    EXPECT_NE(Data(to, "v", "Software\\Quorvane\\Profiles\\1\\Colors"), "(none)");
    EXPECT_EQ(Data(to, "v", "Software\\Other"), "(none)");
    to.refuse = [](const StoreKey&, std::string_view) { return store_error::WriteFault; };
    EXPECT_FALSE(CopyTree(from, to, Hive::CurrentUser, RootKey));
}

} // namespace
} // namespace quorvane
