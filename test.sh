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

readonly logs=build/test last_step="all tests, release"
report=()
failed=()

log_of() { printf '%s/%s.log' "$logs" "${1//[ ,]/-}"; }

# step <title> <command...>: runs it, keeps its output, reports how long it took, and remembers a
# failure.
step() {
  local title=$1 start=$SECONDS result=ok
  shift
  printf '\n==> %s\n' "$title"
  "$@" 2>&1 | tee "$(log_of "$title")" || result="FAILED (status $?)"
  report+=("$(printf '%6d s  %-44s %s' $((SECONDS - start)) "$title" "$result")")
  printf '<== %s: %s, %d s (%d s so far)\n' "$title" "$result" $((SECONDS - start)) "$SECONDS"
  if [[ $result != ok ]]; then
    failed+=("$title")
    return 1
  fi
}

# The lines that name what went wrong in the steps that failed, for whoever sees only the end.
tell_failures() {
  local title
  for title in "${failed[@]}"; do
    printf '\nIn the step "%s":\n' "$title"
    grep -E '\*\*\*|[Ee]rror:|^FAILED|: Failure$|SUMMARY: |^E: ' "$(log_of "$title")" |
      cut -c1-200 | awk '!seen[$0]++' | head -n 20
  done
  printf '\n'
}

finish() {
  printf '\n'
  printf '%s\n' "${report[@]}"
  printf '%6d s  in all\n\n' "$SECONDS"
  if [[ -f $(log_of "$last_step") ]]; then
    sed -n '/tests passed,/,$p' "$(log_of "$last_step")"
  fi
  if [[ ${#failed[@]} != 0 ]]; then
    tell_failures
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

check_under_asan() {
  build_preset asan unit_tests &&
    test_preset asan -L unit
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

mkdir -p "$logs"
rm -f "$logs"/*.log
step "packages" ensure_packages demo tests || finish
step "format" scripts/check-format
step "layers" scripts/check-layers
step "length of files" scripts/check-length
step "release build" build_preset release || finish
step "lint" scripts/lint build/release
step "address and undefined-behaviour sanitizers" check_under_asan
step "thread sanitizer" check_under_tsan
step "$last_step" test_preset release
finish
