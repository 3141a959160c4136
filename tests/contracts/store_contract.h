#pragma once

#include "platform/store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

// What every store must do. A platform's test gives a class with
//     std::unique_ptr<Store> Open();   // the same tree at each call where the store lasts
//     static std::string Root();       // a key that is the test's own
// and instantiates:
//     INSTANTIATE_TYPED_TEST_SUITE_P(Memory, StoreContract, MemoryStoreMaker);
template<typename Maker>
class StoreContract : public testing::Test {
  protected:
    StoreKey Key(std::string_view below = {}) {
        paths_.push_back(std::make_unique<std::string>(Maker::Root() + std::string(below)));
        return {"", Hive::CurrentUser, *paths_.back()};
    }
    static StoredValue Text(std::string_view text) {
        std::string data(text);
        if (!data.empty()) data.push_back('\0');
        return {ValueType::Text, data};
    }
    static std::vector<std::string> Sorted(std::vector<std::string> names) {
        std::sort(names.begin(), names.end());
        return names;
    }

    Maker maker_;
    std::unique_ptr<Store> store_ = maker_.Open();

  private:
    std::vector<std::unique_ptr<std::string>> paths_; // keeps the views alive
};

TYPED_TEST_SUITE_P(StoreContract);

TYPED_TEST_P(StoreContract, ReadsBackWhatWasWritten) {
    Store& store = *this->store_;
    const std::string everyByte = [] {
        std::string bytes;
        for (int i = 1; i < 128; ++i)
            bytes.push_back(static_cast<char>(i));
        return bytes;
    }();
    const std::vector<StoredValue> values{this->Text("plain"),
                                          this->Text(""),
                                          this->Text(everyByte),
                                          this->Text("\xD0\x9E\xD0\xB1\xD0\xBE\xD0\xB8 \xE2\x82\xAC"),
                                          this->Text(std::string(100'000, 'x')),
                                          {ValueType::Text, std::string(1, '\0')},
                                          {ValueType::Integer, std::string("\xFF\xFF\xFF\xFF", 4)},
                                          {ValueType::Integer, std::string("\0\0\0\x80", 4)},
                                          {ValueType(2), std::string("%HOME%\\\xD0\x9E\0", 10)},
                                          {ValueType(7), std::string("a\0\xD0\xB1\0\0", 6)},
                                          {ValueType(3), std::string("\xFF\0\x80", 3)},
                                          {ValueType(3), ""},
                                          {ValueType(11), std::string("\1\2\3\4\5\6\7\xFF", 8)}};
    for (const StoredValue& value : values) {
        StoredValue read{ValueType::Integer, "preset"};
        ASSERT_EQ(store.Set(this->Key("\\Colors"), "Left Upper color", value), store_error::None);
        ASSERT_EQ(store.Query(this->Key("\\Colors"), "Left Upper color", read), store_error::None);
        EXPECT_EQ(read.type, value.type);
        EXPECT_EQ(read.data, value.data);
    }
}

TYPED_TEST_P(StoreContract, NamesIgnoreLetterCaseAndKeepTheirFirst) {
    Store& store = *this->store_;
    store.Set(this->Key("\\Custom Day(s)"), "Day #1", this->Text("1"));
    store.Set(this->Key("\\CUSTOM day(s)\\"), "DAY #1", this->Text("2"));
    StoredValue read;
    EXPECT_EQ(store.Query(this->Key("\\custom DAY(S)"), "day #1", read), store_error::None);
    EXPECT_EQ(read.data, this->Text("2").data);
    std::vector<std::string> names;
    EXPECT_EQ(store.SubKeys(this->Key(), names), store_error::None);
    EXPECT_EQ(names, std::vector<std::string>{"Custom Day(s)"});
    EXPECT_EQ(store.ValueNames(this->Key("\\Custom Day(s)"), names), store_error::None);
    EXPECT_EQ(names, std::vector<std::string>{"Day #1"});
}

TYPED_TEST_P(StoreContract, SaysWhatIsNotThere) {
    Store& store = *this->store_;
    StoredValue read{ValueType::Text, "preset"};
    std::vector<std::string> names{"old"};
    store.Set(this->Key("\\There"), "value", this->Text("x"));
    EXPECT_EQ(store.Query(this->Key("\\Missing"), "value", read), store_error::NotFound);
    EXPECT_EQ(store.LastError(), store_error::NotFound);
    EXPECT_EQ(store.Query(this->Key("\\There"), "other", read), store_error::NotFound);
    EXPECT_EQ(store.Query(this->Key("\\There\\Below"), "value", read), store_error::NotFound);
    EXPECT_EQ(read.data, "preset");
    EXPECT_EQ(store.DeleteValue(this->Key("\\There"), "other"), store_error::NotFound);
    EXPECT_EQ(store.DeleteValue(this->Key("\\Missing"), "value"), store_error::NotFound);
    EXPECT_EQ(store.DeleteKey(this->Key("\\Missing")), store_error::NotFound);
    EXPECT_EQ(store.SubKeys(this->Key("\\Missing"), names), store_error::NotFound);
    EXPECT_EQ(store.ValueNames(this->Key("\\Missing"), names), store_error::NotFound);
    EXPECT_TRUE(names.empty());
}

TYPED_TEST_P(StoreContract, KeepsKeysApart) {
    Store& store = *this->store_;
    store.Set(this->Key("\\a"), "v", this->Text("1"));
    store.Set(this->Key("\\a\\b"), "v", this->Text("2"));
    store.Set(this->Key("\\ab"), "v", this->Text("3"));
    store.Set(this->Key("\\a\\b\\c"), "", this->Text("4"));
    StoredValue read;
    std::vector<std::string> names;
    store.Query(this->Key("\\a"), "v", read);
    EXPECT_EQ(read.data, this->Text("1").data);
    store.Query(this->Key("\\a\\b\\c"), "", read);
    EXPECT_EQ(read.data, this->Text("4").data);
    store.SubKeys(this->Key(), names);
    EXPECT_EQ(this->Sorted(names), (std::vector<std::string>{"a", "ab"}));
    store.SubKeys(this->Key("\\a"), names);
    EXPECT_EQ(names, std::vector<std::string>{"b"});
    EXPECT_EQ(store.Query({"", Hive::Users, this->Key("\\a").path}, "v", read), store_error::NotFound);
}

TYPED_TEST_P(StoreContract, DeletesValuesAndKeysWithoutSubkeys) {
    Store& store = *this->store_;
    store.Set(this->Key("\\a"), "v", this->Text("1"));
    store.Set(this->Key("\\a"), "w", this->Text("1"));
    store.Set(this->Key("\\a\\b"), "v", this->Text("2"));
    StoredValue read;
    EXPECT_EQ(store.DeleteValue(this->Key("\\A"), "V"), store_error::None);
    EXPECT_EQ(store.Query(this->Key("\\a"), "v", read), store_error::NotFound);
    EXPECT_EQ(store.Query(this->Key("\\a"), "w", read), store_error::None);
    EXPECT_EQ(store.DeleteKey(this->Key("\\a")), store_error::AccessDenied);
    EXPECT_EQ(store.DeleteKey(this->Key("\\a\\b")), store_error::None);
    EXPECT_EQ(store.DeleteKey(this->Key("\\a")), store_error::None);
    EXPECT_EQ(store.Query(this->Key("\\a"), "w", read), store_error::NotFound);
    store.Set(this->Key("\\a"), "x", this->Text("1"));
    EXPECT_EQ(store.Query(this->Key("\\a"), "w", read), store_error::NotFound) << "a key comes back empty";
}

TYPED_TEST_P(StoreContract, GuardsMachinesAndRights) {
    Store& store = *this->store_;
    StoreKey readOnly = this->Key("\\a");
    store.Set(readOnly, "v", this->Text("1"));
    readOnly.access = 131097;
    StoredValue read;
    EXPECT_EQ(store.Query(readOnly, "v", read), store_error::None);
    EXPECT_EQ(store.Set(readOnly, "v", this->Text("2")), store_error::AccessDenied);
    EXPECT_EQ(store.DeleteValue(readOnly, "v"), store_error::AccessDenied);
    StoreKey remote = this->Key("\\a");
    remote.machine = "no-such-machine.invalid";
    EXPECT_NE(store.Query(remote, "v", read), store_error::None);
    EXPECT_NE(store.Set(remote, "v", this->Text("2")), store_error::None);
    store.Query(this->Key("\\a"), "v", read);
    EXPECT_EQ(read.data, this->Text("1").data);
}

TYPED_TEST_P(StoreContract, BatchesNestAndLast) {
    Store& store = *this->store_;
    StoredValue read;
    store.BeginBatch();
    EXPECT_EQ(store.Query(this->Key(), "v", read), store_error::NotFound);
    store.BeginBatch();
    store.Set(this->Key(), "v", this->Text("1"));
    EXPECT_EQ(store.EndBatch(), store_error::None);
    EXPECT_EQ(store.Query(this->Key(), "v", read), store_error::None);
    store.Set(this->Key("\\a"), "v", this->Text("2"));
    EXPECT_EQ(store.EndBatch(), store_error::None);
    EXPECT_EQ(store.Query(this->Key("\\a"), "v", read), store_error::None);
    if (!store.Lasting()) return;

    this->store_.reset();
    this->store_ = this->maker_.Open();
    EXPECT_EQ(this->store_->Query(this->Key("\\a"), "v", read), store_error::None);
    EXPECT_EQ(read.data, this->Text("2").data);
}

REGISTER_TYPED_TEST_SUITE_P(StoreContract, ReadsBackWhatWasWritten, NamesIgnoreLetterCaseAndKeepTheirFirst,
                            SaysWhatIsNotThere, KeepsKeysApart, DeletesValuesAndKeysWithoutSubkeys,
                            GuardsMachinesAndRights, BatchesNestAndLast);

} // namespace quorvane
