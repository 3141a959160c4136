#!/usr/bin/env bash
# Every source file stands as clang-format leaves it.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
git ls-files -co --exclude-standard -z -- '*.h' '*.cpp' | xargs -0 -r clang-format-14 --dry-run -Werror
echo "format: clean"
