#include "platform/linux/base/system.h"

#include "core/text.h"
#include "core/utf8.h"
#include "platform/headless.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iconv.h>
#include <iterator>
#include <langinfo.h>
#include <locale.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace quorvane {

namespace {

constexpr std::int32_t FamilyNt = 2;

std::string OsReleaseText() {
    for (const char* path : {"/etc/os-release", "/usr/lib/os-release"}) {
        std::ifstream file(path);
        if (file) {
            return {std::istreambuf_iterator<char>(file), {}};
        }
    }
    return {};
}

bool IsFolder(const char* path) {
    struct stat status {};
    return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

std::string OsReleaseValue(std::string_view text, std::string_view name) {
    for (const std::string& line : Split(text, '\n')) {
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos || Trim(std::string_view(line).substr(0, equals)) != name) continue;
        std::string_view value = Trim(std::string_view(line).substr(equals + 1));
        const bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                            value.back() == value.front();
        if (!quoted) return std::string(value);
        std::string plain;
        value = value.substr(1, value.size() - 2);
        for (std::size_t i = 0; i < value.size(); ++i) {
            i += value[i] == '\\' && i + 1 < value.size() ? 1 : 0;
            plain += value[i];
        }
        return plain;
    }
    return {};
}

void ReadKernelRelease(std::string_view release, VersionRecord& record) {
    const char* at = release.data();
    const char* const end = at + release.size();
    for (std::int32_t* number : {&record.dwMajorVersion, &record.dwMinorVersion, &record.dwBuildNumber}) {
        const auto [stop, error] = std::from_chars(at, end, *number);
        if (error != std::errc() || stop == end || *stop != '.') return;
        at = stop + 1;
    }
}

VersionRecord LinuxSystem::Version() {
    VersionRecord record;
    record.dwOSVersionInfoSize = 148;
    record.dwPlatformId = FamilyNt;
    utsname kernel{};
    uname(&kernel);
    ReadKernelRelease(kernel.release, record);
    record.displayName = OsReleaseValue(OsReleaseText(), "PRETTY_NAME");
    if (record.displayName.empty()) record.displayName = std::string(kernel.sysname) + " " + kernel.release;
    return record;
}

std::string LinuxSystem::DesktopName() {
    const char* name = std::getenv("XDG_CURRENT_DESKTOP");
    return name ? name : "";
}

std::string LinuxSystem::UserName() {
    const passwd* entry = getpwuid(geteuid());
    if (entry && entry->pw_name && *entry->pw_name) return entry->pw_name;
    const char* name = std::getenv("USER");
    return name ? name : "";
}

std::string LinuxSystem::ComputerName() {
    utsname kernel{};
    uname(&kernel);
    return kernel.nodename;
}

std::string LinuxSystem::CodePageText(std::string_view bytes) {
    const std::string own = nl_langinfo(CODESET);
    const iconv_t conversion = iconv_open(
        "UTF-8", own.empty() || own == "UTF-8" || own == "ANSI_X3.4-1968" ? "CP1252" : own.c_str());
    std::string text;
    for (const char byte : bytes) {
        char in = byte;
        char out[8];
        char* from = &in;
        char* to = out;
        std::size_t inLeft = 1;
        std::size_t outLeft = sizeof out;
        const bool known = iconv(conversion, &from, &inLeft, &to, &outLeft) != static_cast<std::size_t>(-1);
        if (known) {
            text.append(out, to);
        } else {
            AppendLetter(text, 0xFFFD);
        }
    }
    iconv_close(conversion);
    return text;
}

std::int32_t LinuxSystem::ProcessId() {
    return getpid();
}

std::int32_t LinuxSystem::ThreadId() {
    return gettid();
}

std::string LinuxSystem::SystemWindowsDirectory() {
    return IsFolder("/usr/share/backgrounds") ? "/usr/share/backgrounds" : "/usr/share";
}

// The locale says them in its own encoding, which is UTF-8 wherever it counts; English stands for any other.
DateNames LinuxSystem::ShortDateNames() {
    DateNames names;
    const locale_t locale = newlocale(LC_TIME_MASK | LC_CTYPE_MASK, "", nullptr);
    if (!locale) return names;
    if (std::string_view(nl_langinfo_l(CODESET, locale)) == "UTF-8") {
        for (int month = 0; month < 12; ++month)
            names.months[static_cast<std::size_t>(month)] = nl_langinfo_l(ABMON_1 + month, locale);
        for (int day = 0; day < 7; ++day) // its week begins on Sunday
            names.days[static_cast<std::size_t>(day)] = nl_langinfo_l(ABDAY_1 + (day + 1) % 7, locale);
    }
    freelocale(locale);
    return names;
}

void LinuxSystem::Complain(std::string_view line) {
    std::fprintf(stderr, "quorvane: %s\n", EscapeControls(line).c_str());
}

bool OutputIsTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

std::unique_ptr<System> CreateSystem() {
    return std::make_unique<LinuxSystem>();
}

} // namespace quorvane
