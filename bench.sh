#!/usr/bin/env bash
# Installs what is missing, builds everything in Release, runs every benchmark and prints one table:
# figure, measured, budget, met or not. Exits non-zero where a budget is not met or a figure is
# missing.
#
#   ./bench.sh [word...]   only the programs build/release/bin/*_benchmark whose name holds one of
#                          the words; figures of the others are left out of the table
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source scripts/common.sh
exec </dev/null

use_utf8_locale
ensure_packages demo tests
build_preset release
exec scripts/bench-table build/release/bin build/bench "$@"
