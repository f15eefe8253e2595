#!/usr/bin/env bash
# Installs what is missing, builds Zarvy and starts it. Without an X display, or with --demo, the
# program runs on a private virtual desktop instead and shows there what it does.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source scripts/common.sh

has_display() {
  [[ -n ${DISPLAY:-} ]] && timeout 10 xdpyinfo >/dev/null 2>&1
}

run_program() {
  build_preset release zarvy
  say "Starting Zarvy. Ctrl+C ends it."
  exec build/release/bin/zarvy
}

run_demo() {
  ensure_packages demo
  build_preset release zarvy zarvy_demo
  mkdir -p build/demo
  exec build/release/bin/zarvy_demo
}

use_utf8_locale
ensure_packages
if [[ ${1:-} == --demo ]]; then
  run_demo
elif has_display; then
  run_program
else
  say "No X display answers here: showing Zarvy on a virtual one."
  run_demo
fi
