#!/usr/bin/env bash
# Includes run one way: each folder may include what ranks below it, folders of one rank each other only without a
# circle, the platform in memory serves tests alone, and toolkit and system headers appear in the platform folders
# and in the main files alone.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

git ls-files -co --exclude-standard -- '*.h' '*.cpp' | awk '
function folder_of(path) {
    if (path ~ /^platform\/[a-z]+\//) { split(path, p, "/"); return p[1] "/" p[2] }
    split(path, p, "/"); return p[1]
}
function complain(text) { print file ":" line ": " text; bad = 1 }
BEGIN {
    n = split("core:0 platform:1 platform/forms:1 platform/painting:1 platform/shared:1 " \
              "platform/memory:2 platform/linux:2 platform/windows:2 config:3 dialogues:4 " \
              "engine:5 calendar:5 alarms:5 notes:5 triggers:5 locale:5 clock:5 diagnostics:5 " \
              "shell:6 commands:7 cli:8 entry:9 tests:10 bench:10 fuzz:10 samples:10", rows, " ")
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
    native = own == "platform/linux" || own == "platform/windows" || file ~ /^entry\/main_[a-z]+\.cpp$/ ||
             file ~ /^(tests\/platform|tests\/program|tests\/entry|tests\/support|bench|fuzz|samples)\//
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
            if (rank[other] > rank[own] && !(file ~ /^entry\/main_/)) complain("\"" name "\" ranks above " own)
            if (other == "platform/memory" && own !~ /^(tests|bench|fuzz)$/) complain("the platform of the tests in a program")
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
