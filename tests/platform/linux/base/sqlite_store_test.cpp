#include "platform/headless.h"
#include "platform/linux/base/sqlite_store.h"
#include "platform/linux/base/system_values.h"
#include "tests/contracts/store_contract.h"
#include "tests/support/process.h"

#include <sys/resource.h>

namespace quorvane {
namespace {

namespace fs = std::filesystem;

class SqliteStoreMaker {
  public:
    std::unique_ptr<Store> Open() {
        std::string why;
        auto store = SqliteStore::Open(folder_.Path().string() + "/new/settings.db", why);
        EXPECT_EQ(why, "");
        return store;
    }
    static std::string Root() { return "Software\\Quorvane test"; }

  private:
    test::TemporaryFolder folder_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Sqlite, StoreContract, SqliteStoreMaker);

const StoreKey Key{"", Hive::CurrentUser, "Software\\Quorvane"};

StoredValue Text(const std::string& text) {
    return {ValueType::Text, text + '\0'};
}

std::string TextOf(Store& store, std::string_view name) {
    StoredValue value;
    if (store.Query(Key, name, value) != store_error::None) return "(none)";
    return value.data.substr(0, value.data.size() - 1);
}

class SqliteStoreTest : public testing::Test {
  protected:
    std::unique_ptr<SqliteStore> Open() { return SqliteStore::Open(file, why); }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.Path()))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    test::TemporaryFolder folder;
    std::string file = folder.Path().string() + "/settings.db";
    std::string why;
};

TEST_F(SqliteStoreTest, SetsADamagedFileAsideAndBeginsAFreshOne) {
    const std::string zeros(8192, '\0');
    const std::string header = "SQLite format 3" + std::string(1, '\0');
    int number = 0;
    for (const std::string& garbage :
         {std::string("this is no tree"), header + "but nothing behind it", zeros}) {
        std::ofstream(file) << garbage;
        auto store = Open();
        ASSERT_TRUE(store);
        const std::string aside = file + (++number == 1 ? ".damaged" : ".damaged-" + std::to_string(number));
        EXPECT_NE(why.find("[" + aside + "]"), std::string::npos) << why;
        EXPECT_EQ(test::ReadWhole(aside), garbage);
        EXPECT_EQ(store->Set(Key, "v", Text("1")), store_error::None);
        store.reset();
        EXPECT_EQ(TextOf(*Open(), "v"), "1") << "the fresh file is kept";
        EXPECT_EQ(why, "");
        fs::remove(file);
    }
}

TEST_F(SqliteStoreTest, SaysWhyAPlaceCannotBeUsed) {
    std::ofstream(folder.Path().string() + "/file") << "in the way";
    EXPECT_FALSE(SqliteStore::Open(folder.Path().string() + "/file/settings.db", why));
    EXPECT_NE(why.find("cannot be made"), std::string::npos) << why;
    fs::create_directory(file);
    EXPECT_FALSE(Open());
    EXPECT_NE(why.find("[" + file + "]"), std::string::npos) << why;
    EXPECT_EQ(TextOf(*SqliteStore::ReadIntoMemory(file, why), "v"), "(none)");
    EXPECT_NE(why.find("cannot be read"), std::string::npos) << why;
}

TEST_F(SqliteStoreTest, ReadingLeavesNoTraceAndWaitsForNoWriter) {
    EXPECT_EQ(TextOf(*SqliteStore::ReadIntoMemory(file, why), "v"), "(none)");
    EXPECT_EQ(why, "") << "no tree is an empty one";
    EXPECT_EQ(Names(), std::vector<std::string>{});
    Open()->Set({"", Hive::Users, "A\\b C"}, "v", Text("1"));
    Open()->Set(Key, "v", Text("kept"));
    const auto before = Names();
    auto memory = SqliteStore::ReadIntoMemory(file, why);
    EXPECT_EQ(TextOf(*memory, "v"), "kept");
    std::vector<std::string> names;
    memory->SubKeys({"", Hive::Users, "a"}, names);
    EXPECT_EQ(names, std::vector<std::string>{"b C"});
    EXPECT_EQ(Names(), before);

    auto writer = Open();
    writer->BeginBatch();
    writer->Set(Key, "v", Text("not yet"));
    EXPECT_EQ(TextOf(*SqliteStore::ReadIntoMemory(file, why), "v"), "kept");
    writer->EndBatch();
    EXPECT_EQ(TextOf(*SqliteStore::ReadIntoMemory(file, why), "v"), "not yet") << "it lies in the log";
    writer.reset();
    std::ofstream(file) << "this is no tree";
    SqliteStore::ReadIntoMemory(file, why);
    EXPECT_NE(why.find("is damaged"), std::string::npos) << why;
    EXPECT_EQ(Names(), before) << "mending is for whoever writes";
}

TEST_F(SqliteStoreTest, AnswersAnErrorWhereTheDiskIsFull) {
    auto store = Open();
    ASSERT_EQ(store->Set(Key, "old", Text("old")), store_error::None);
    // The child lives under a limit on file sizes, which is how a full disk shows to it.
    const pid_t child = test::StartChild([this] {
        auto full = Open();
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{100'000, 100'000};
        setrlimit(RLIMIT_FSIZE, &limit);
        const int error = full->Set(Key, "big", Text(std::string(1'000'000, 'x')));
        const bool stillReads = TextOf(*full, "old") == "old";
        return error == store_error::WriteFault && full->LastError() == error && stillReads ? 0 : 1;
    });
    EXPECT_EQ(test::StatusOf(child), 0);
    EXPECT_EQ(TextOf(*store, "old"), "old");
    EXPECT_EQ(TextOf(*store, "big"), "(none)");
}

TEST_F(SqliteStoreTest, FollowsAFileThatIsTakenAwayOrReplacedWhileItIsOpen) {
    auto store = Open();
    store->Set(Key, "old", Text("old"));
    fs::remove_all(folder.Path());
    EXPECT_EQ(store->Set(Key, "new", Text("new")), store_error::None);
    EXPECT_EQ(TextOf(*SqliteStore::ReadIntoMemory(file, why), "old"), "old") << "the tree is written anew";
    EXPECT_EQ(TextOf(*SqliteStore::ReadIntoMemory(file, why), "new"), "new");

    fs::remove_all(folder.Path());
    auto other = Open();
    other->Set(Key, "other", Text("other"));
    store->BeginBatch();
    store->Set(Key, "new", Text("newer"));
    EXPECT_EQ(store->EndBatch(), store_error::None);
    EXPECT_EQ(TextOf(*store, "old"), "(none)") << "what another copy has begun counts";
    fs::remove_all(folder.Path());
    auto third = Open();
    third->Set(Key, "third", Text("third"));
    other.reset();
    store.reset(); // neither may take the log of the third away
    EXPECT_EQ(TextOf(*SqliteStore::ReadIntoMemory(file, why), "third"), "third");

    fs::remove_all(folder.Path());
    std::ofstream(folder.Path()) << "in the way";
    EXPECT_EQ(third->Set(Key, "third", Text("lost")), store_error::WriteFault) << "and says so";
}

TEST_F(SqliteStoreTest, WaitsForTheOpeningOfOthersOnlySoLong) {
    const OpeningLock first(file);
    EXPECT_TRUE(first.Free());
    EXPECT_FALSE(OpeningLock(file, std::chrono::milliseconds(30)).Free());
    EXPECT_TRUE(OpeningLock("/proc/settings.db").Free()) << "where none can be made";
}

TEST_F(SqliteStoreTest, ManyProcessesBeginOneFileAtOnce) {
    std::vector<pid_t> children;
    for (int i = 0; i < 8; ++i) {
        children.push_back(test::StartChild([this, i] {
            const auto store = Open();
            int failures = !store || !why.empty();
            for (int n = 0; n < 20 && store; ++n)
                failures += store->Set(Key, std::to_string(i) + "/" + std::to_string(n), Text("x")) != 0;
            return failures;
        }));
    }
    for (const pid_t child : children)
        EXPECT_EQ(test::StatusOf(child), 0);
    std::vector<std::string> names;
    Open()->ValueNames(Key, names);
    EXPECT_EQ(names.size(), 160U);
}

TEST(CreateStore, WorksFromMemoryWhereNothingCanBeWritten) {
    test::TemporaryFolder home;
    std::ofstream(home.Path().string() + "/file") << "in the way";
    setenv("XDG_CONFIG_HOME", (home.Path().string() + "/file").c_str(), 1);
    std::string why;
    testing::internal::CaptureStderr();
    auto store = CreateStore(why);
    EXPECT_NE(testing::internal::GetCapturedStderr().find(why), std::string::npos);
    EXPECT_NE(why.find("kept in memory"), std::string::npos) << why;
    EXPECT_FALSE(store->Lasting());
    EXPECT_EQ(store->Set(Key, "v", Text("1")), store_error::None);
    EXPECT_EQ(TextOf(*store, "v"), "1");

    setenv("XDG_CONFIG_HOME", home.Path().string().c_str(), 1);
    store = CreateStore(why);
    EXPECT_EQ(why, "");
    EXPECT_TRUE(store->Lasting());
    EXPECT_TRUE(fs::exists(home.Path().string() + "/quorvane/settings.db"));
    unsetenv("XDG_CONFIG_HOME");
}

TEST(SystemValues, AnswersTheSystemsAndPassesOnTheRest) {
    auto tree = std::make_unique<MemoryStore>();
    tree->Set(Key, "v", Text("own"));
    tree->Set({"", Hive::CurrentUser, "Control Panel\\Desktop"}, "Wallpaper", Text("/w.bmp"));
    SystemValues store(std::move(tree), {{"control panel\\colors", "buttonface", [] { return "1 2 3"; }}});
    StoredValue value;
    EXPECT_EQ(store.Query({"", Hive::CurrentUser, "Control Panel\\Colors", 131097}, "ButtonFace", value), 0);
    EXPECT_EQ(value.data, std::string("1 2 3\0", 6));
    EXPECT_EQ(store.Query({"", Hive::CurrentUser, "Control Panel\\Desktop"}, "Wallpaper", value), 0);
    EXPECT_EQ(value.data, std::string("/w.bmp\0", 7));
    EXPECT_EQ(store.Query({"", Hive::Users, "Control Panel\\Colors"}, "ButtonFace", value),
              store_error::NotFound);
    EXPECT_EQ(TextOf(store, "v"), "own");
    store.Set({"", Hive::CurrentUser, "Control Panel\\Colors"}, "ButtonFace", Text("4 5 6"));
    store.Query({"", Hive::CurrentUser, "Control Panel\\Colors"}, "ButtonFace", value);
    EXPECT_EQ(value.data, Text("4 5 6").data) << "what the tree holds comes first";
}

TEST(SystemValues, TakesTheLocaleOfTheEnvironment) {
    setenv("LC_ALL", "C", 1);
    const std::vector<SystemValue> values = LocaleValues();
    EXPECT_EQ(values[0].answer(), ".");
    EXPECT_EQ(values[1].answer(), "MM/dd/yy");
    EXPECT_EQ(values[2].answer(), "0") << "Monday, where the calendar begins";
    setenv("LC_ALL", "no_SUCH.locale", 1);
    EXPECT_EQ(values[0].answer(), ".") << "a locale that is not installed is the neutral one";
    unsetenv("LC_ALL");
}

} // namespace
} // namespace quorvane
