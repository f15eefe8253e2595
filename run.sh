#!/usr/bin/env bash
# Installs what is missing, builds Zarvy and starts it. Without an X display, or with --demo, the
# program runs on a private virtual desktop instead and shows there what it does.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source scripts/common.sh

display_answers() {
  timeout 10 xdpyinfo >/dev/null 2>&1
}

run_program() {
  build_preset run zarvy
  say "Starting Zarvy. Ctrl+C ends it."
  exec build/run/bin/zarvy
}

run_demo() {
  ensure_packages demo
  build_preset run zarvy zarvy_demo
  exec build/run/bin/zarvy_demo --screenshot build/demo/zarvy.png
}

use_utf8_locale
if [[ ${1:-} == --demo ]]; then
  run_demo
elif [[ -z ${DISPLAY:-} ]]; then
  say "No X display here: showing Zarvy on a virtual one."
  run_demo
fi
ensure_packages
if ! display_answers; then
  say "The X display $DISPLAY does not answer: showing Zarvy on a virtual one."
  run_demo
fi
run_program
