#include "platform/windows/base/store.h"

#include "core/text.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/base/win32.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr std::size_t LongestKeyName = 256;     // letters, the zero included
constexpr std::size_t LongestValueName = 16384; // likewise

std::string_view WithoutEnd(std::string_view path) {
    while (path.ends_with('\\'))
        path.remove_suffix(1);
    return path;
}

// The registry keeps these in UTF-16; what belongs to any other type are plain bytes.
bool IsText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// An open key, and the connection it was reached through where a machine was named.
class OpenKey {
  public:
    OpenKey(const StoreKey& key, bool create) {
        HKEY root = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(key.hive)));
        const std::string_view machine = Trim(key.machine);
        if (!machine.empty()) {
            error_ = RegConnectRegistryW(Wide(machine).c_str(), root, &connection_);
            if (error_ != ERROR_SUCCESS) return;
            root = connection_;
        }
        const std::wstring path = Wide(WithoutEnd(key.path));
        const REGSAM access = key.access;
        error_ = create ? RegCreateKeyExW(root, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access,
                                          nullptr, &handle_, nullptr)
                        : RegOpenKeyExW(root, path.c_str(), 0, access, &handle_);
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey() {
        if (handle_) RegCloseKey(handle_);
        if (connection_) RegCloseKey(connection_);
    }

    LONG Error() const { return error_; }
    HKEY Handle() const { return handle_; }

  private:
    HKEY connection_ = nullptr;
    HKEY handle_ = nullptr;
    LONG error_ = ERROR_SUCCESS;
};

// Reads the bytes of a value, however often another program makes it longer meanwhile.
LONG ReadBytes(HKEY key, const std::wstring& name, DWORD& type, std::vector<BYTE>& bytes) {
    DWORD size = 0;
    LONG error = RegQueryValueExW(key, name.c_str(), nullptr, &type, nullptr, &size);
    while (error == ERROR_SUCCESS && size > 0) {
        bytes.resize(size);
        error = RegQueryValueExW(key, name.c_str(), nullptr, &type, bytes.data(), &size);
        if (error == ERROR_SUCCESS) break;
        if (error == ERROR_MORE_DATA) error = ERROR_SUCCESS;
    }
    bytes.resize(error == ERROR_SUCCESS ? size : 0);
    return error;
}

std::string TextOf(const std::vector<BYTE>& bytes) {
    std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
    std::copy_n(bytes.begin(), wide.size() * sizeof(wchar_t), reinterpret_cast<BYTE*>(wide.data()));
    if (!wide.empty() && wide.back() != L'\0') wide.push_back(L'\0');
    return Utf8(wide);
}

// Collects what `next` enumerates: it fills the name's buffer for an index and answers a system error.
template<typename Next>
LONG Enumerate(std::size_t longest, std::vector<std::string>& out, Next&& next) {
    std::wstring buffer(longest, L'\0');
    for (DWORD index = 0;; ++index) {
        DWORD length = static_cast<DWORD>(buffer.size());
        const LONG error = next(index, buffer.data(), &length);
        if (error == ERROR_NO_MORE_ITEMS) return ERROR_SUCCESS;
        if (error != ERROR_SUCCESS) return error;
        out.push_back(Utf8({buffer.data(), length}));
    }
}

} // namespace

int RegistryStore::Noted(long error) {
    if (error == ERROR_PATH_NOT_FOUND) error = ERROR_FILE_NOT_FOUND;
    if (error != ERROR_SUCCESS) lastError_ = static_cast<int>(error);
    return static_cast<int>(error);
}

int RegistryStore::Query(const StoreKey& key, std::string_view name, StoredValue& out) {
    const OpenKey open(key, false);
    if (open.Error() != ERROR_SUCCESS) return Noted(open.Error());
    DWORD type = REG_NONE;
    std::vector<BYTE> bytes;
    const LONG error = ReadBytes(open.Handle(), Wide(name), type, bytes);
    if (error != ERROR_SUCCESS) return Noted(error);
    out.type = static_cast<ValueType>(type);
    out.data = IsText(type) ? TextOf(bytes) : std::string(bytes.begin(), bytes.end());
    return store_error::None;
}

int RegistryStore::Set(const StoreKey& key, std::string_view name, const StoredValue& value) {
    const OpenKey open(key, true);
    if (open.Error() != ERROR_SUCCESS) return Noted(open.Error());
    const auto type = static_cast<DWORD>(value.type);
    const std::wstring text = IsText(type) ? Wide(value.data) : std::wstring();
    const void* bytes = IsText(type) ? static_cast<const void*>(text.data()) : value.data.data();
    const std::size_t size = IsText(type) ? text.size() * sizeof(wchar_t) : value.data.size();
    return Noted(RegSetValueExW(open.Handle(), Wide(name).c_str(), 0, type, static_cast<const BYTE*>(bytes),
                                static_cast<DWORD>(size)));
}

int RegistryStore::DeleteValue(const StoreKey& key, std::string_view name) {
    const OpenKey open(key, false);
    if (open.Error() != ERROR_SUCCESS) return Noted(open.Error());
    return Noted(RegDeleteValueW(open.Handle(), Wide(name).c_str()));
}

int RegistryStore::DeleteKey(const StoreKey& key) {
    if (WithoutEnd(key.path).empty()) return Noted(ERROR_ACCESS_DENIED); // a hive itself stays
    const OpenKey hive({key.machine, key.hive, {}, KEY_READ}, false);
    if (hive.Error() != ERROR_SUCCESS) return Noted(hive.Error());
    return Noted(RegDeleteKeyW(hive.Handle(), Wide(WithoutEnd(key.path)).c_str()));
}

int RegistryStore::SubKeys(const StoreKey& key, std::vector<std::string>& out) {
    out.clear();
    const OpenKey open(key, false);
    if (open.Error() != ERROR_SUCCESS) return Noted(open.Error());
    return Noted(Enumerate(LongestKeyName, out, [&](DWORD index, wchar_t* name, DWORD* length) {
        return RegEnumKeyExW(open.Handle(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    }));
}

int RegistryStore::ValueNames(const StoreKey& key, std::vector<std::string>& out) {
    out.clear();
    const OpenKey open(key, false);
    if (open.Error() != ERROR_SUCCESS) return Noted(open.Error());
    return Noted(Enumerate(LongestValueName, out, [&](DWORD index, wchar_t* name, DWORD* length) {
        return RegEnumValueW(open.Handle(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    }));
}

} // namespace quorvane
