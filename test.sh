#!/usr/bin/env bash
# Installs what is missing, builds, and checks everything: format, layering, lint, every test in
# Release, the unit tests under AddressSanitizer and UndefinedBehaviorSanitizer, the threaded ones
# under ThreadSanitizer. Exits non-zero if anything failed; ctest's summary closes the output.
#
#   ./test.sh                         everything
#   ./test.sh --soak N [option...]    only the long runs against real applications, N times;
#                                     the options are zarvy_soak's
#   ./test.sh --fuzz [S [target...]]  only the fuzzers, S seconds each, 60 if not said otherwise
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")" || exit 1
source scripts/common.sh
exec </dev/null

readonly ctest_log=build/test/ctest-release.log
report=()
failed=()

# step <title> <command...>: runs it, reports how long it took, and remembers a failure.
step() {
  local title=$1 start=$SECONDS result=ok
  shift
  printf '\n==> %s\n' "$title"
  "$@" || result="FAILED (status $?)"
  report+=("$(printf '%6d s  %-44s %s' $((SECONDS - start)) "$title" "$result")")
  printf '<== %s: %s, %d s (%d s so far)\n' "$title" "$result" $((SECONDS - start)) "$SECONDS"
  if [[ $result != ok ]]; then
    failed+=("$title")
    return 1
  fi
}

finish() {
  printf '\n'
  printf '%s\n' "${report[@]}"
  printf '%6d s  in all\n\n' "$SECONDS"
  if [[ -f $ctest_log ]]; then
    sed -n '/tests passed,/,$p' "$ctest_log"
  fi
  if [[ ${#failed[@]} != 0 ]]; then
    printf -v list '%s; ' "${failed[@]}"
    complain "FAILED: ${list%; }"
    exit 1
  fi
  exit 0
}

test_preset() {
  local preset=$1
  shift
  ctest --preset "$preset" --no-tests=error --parallel "$(nproc)" "$@"
}

test_release() {
  test_preset release 2>&1 | tee "$ctest_log"
}

check_under_asan() {
  build_preset asan unit_tests &&
    UBSAN_OPTIONS=print_stacktrace=1 test_preset asan -L unit
}

# ThreadSanitizer's memory layout does not bear the address randomisation of newer kernels.
check_under_tsan() {
  local plain=()
  if setarch --addr-no-randomize true 2>/dev/null; then
    plain=(setarch --addr-no-randomize)
  fi
  "${plain[@]}" bash -c 'source scripts/common.sh; build_preset tsan threads_tests' &&
    "${plain[@]}" ctest --preset tsan --no-tests=error --parallel "$(nproc)" -L threads
}

soak() {
  local repeat=${1:-}
  if [[ ! $repeat =~ ^[1-9][0-9]*$ ]]; then
    complain "usage: ./test.sh --soak N [option...]"
    exit 2
  fi
  shift
  ensure_packages demo tests && build_preset release zarvy zarvy_soak || exit 1
  exec build/release/bin/zarvy_soak --repeat "$repeat" "$@"
}

use_utf8_locale
if [[ ${1:-} == --soak ]]; then
  soak "${@:2}"
elif [[ ${1:-} == --fuzz ]]; then
  exec scripts/fuzz "${@:2}"
elif [[ $# != 0 ]]; then
  complain "usage: ./test.sh [--soak N [option...]] [--fuzz [S [target...]]]"
  exit 2
fi

mkdir -p build/test
rm -f "$ctest_log"
step "packages" ensure_packages demo tests || finish
step "format" scripts/check-format
step "layers" scripts/check-layers
step "length of files" scripts/check-length
step "release build" build_preset release || finish
step "lint" scripts/lint build/release
step "address and undefined-behaviour sanitizers" check_under_asan
step "thread sanitizer" check_under_tsan
step "all tests, release" test_release
finish
