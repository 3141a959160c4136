#!/usr/bin/env bash
# Includes run one way: each folder may include what ranks below it, folders of one rank each other only without a
# circle, and toolkit and system headers appear in the platform folders and in the main files alone.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

git ls-files -co --exclude-standard -- '*.h' '*.cpp' | awk '
function folder_of(path) {
    if (path ~ /^core\/entry\//) return "core/entry"
    if (path ~ /^platform\/(linux|windows|memory)\//) { split(path, p, "/"); return p[1] "/" p[2] }
    split(path, p, "/"); return p[1]
}
function complain(text) { print file ":" line ": " text; bad = 1 }
BEGIN {
    n = split("core:0 platform:1 platform/memory:2 platform/linux:2 platform/windows:2 config:3 " \
              "engine:4 calendar:4 alarms:4 notes:4 triggers:4 locale:4 clock:4 diagnostics:4 " \
              "shell:5 cli:6 core/entry:7 tests:8 bench:8 fuzz:8 samples:8", rows, " ")
    for (i = 1; i <= n; ++i) { split(rows[i], r, ":"); rank[r[1]] = r[2] }
    n = split("algorithm any array atomic bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits " \
              "cmath compare concepts condition_variable csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime " \
              "deque exception filesystem format forward_list fstream functional future initializer_list iomanip ios iosfwd " \
              "iostream istream iterator limits list locale map memory memory_resource mutex new numbers numeric optional " \
              "ostream queue random ranges ratio regex set shared_mutex span sstream stack stdexcept streambuf string " \
              "string_view system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility " \
              "valarray variant vector version", words, " ")
    for (i = 1; i <= n; ++i) standard[words[i]] = 1
}
{
    file = $0; line = 0; own = folder_of(file)
    if (!(own in rank)) { complain("no rank for folder " own); next }
    native = own == "platform/linux" || own == "platform/windows" || file ~ /^core\/entry\/main_[a-z]+\.cpp$/ ||
             file ~ /^(tests\/platform|tests\/entry|tests\/support|bench|fuzz|samples)\//
    while ((getline text < file) > 0) {
        ++line
        if (!native && own != "tests" && text ~ /^[ \t]*#[ \t]*(if|ifdef|ifndef|elif).*(_WIN32|__linux__|__unix__|WIN32)/)
            complain("a platform switch outside the platform folders")
        if (text !~ /^[ \t]*#[ \t]*include/) continue
        if (match(text, /<[^>]+>/)) {
            name = substr(text, RSTART + 1, RLENGTH - 2)
            if (native || name in standard) continue
            if ((own == "tests") && name ~ /^(gtest|gmock)\//) continue
            complain("<" name "> is no header of the standard library")
        } else if (match(text, /"[^"]+"/)) {
            name = substr(text, RSTART + 1, RLENGTH - 2)
            other = folder_of(name)
            if (!(other in rank)) { complain("\"" name "\" is not named from the root"); continue }
            if (other == own) continue
            if (rank[other] > rank[own] && !(file ~ /^core\/entry\/main_/)) complain("\"" name "\" ranks above " own)
            if (own !~ /^(tests|bench|fuzz|samples)$/) print own, other > "/dev/fd/3"
        }
    }
    close(file)
}
END { exit bad }
' 3>/tmp/quorvane-includes.$$ || { rm -f "/tmp/quorvane-includes.$$"; exit 1; }

circles=$(sort -u "/tmp/quorvane-includes.$$" | tsort 2>&1 >/dev/null || true)
rm -f "/tmp/quorvane-includes.$$"
if [ -n "$circles" ]; then
    echo "These folders include each other in a circle:"
    echo "$circles"
    exit 1
fi
echo "include directions: clean"
