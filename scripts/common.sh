# shellcheck shell=bash
# Sourced by run.sh, test.sh and bench.sh: what all three do before their own work.
# The working directory is the root of the repository.

say() { printf '%s\n' "$*"; }
complain() { printf '%s\n' "$*" >&2; }

# Qt and the applications of the tests want a UTF-8 locale; a bare machine often has none set.
use_utf8_locale() {
  if [[ $(locale charmap 2>/dev/null) != UTF-8 ]]; then
    export LC_ALL=C.UTF-8
  fi
}

# debian_release: prints the number of the Debian that this is, a high one where it is not released.
debian_release() {
  local number
  number=$(. /etc/os-release 2>/dev/null && printf '%s' "${VERSION_ID:-}")
  number=${number%%.*}
  printf '%d' "${number:-99}"
}

# choose_packages [<purpose>...]: sets the array `wanted` to the lines of packages.txt without a
# purpose, those of the purposes given, and those of this release of Debian.
choose_packages() {
  local name _ purpose release
  release=$(debian_release)
  wanted=()
  while read -r name _ purpose || [[ -n $name ]]; do
    if [[ -z $name || $name == \#* ]]; then
      continue
    elif [[ $purpose =~ ^[0-9]+$ ]]; then
      ((release < purpose)) || wanted+=("$name")
    elif [[ -z $purpose || " $* " == *" $purpose "* ]]; then
      wanted+=("$name")
    fi
  done <packages.txt
}

# find_missing: sets the array `missing` to what of `wanted` is not installed.
find_missing() {
  local states name
  missing=()
  # The status says that some package is unknown here, which is what is being asked.
  states=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null) || true
  for name in "${wanted[@]}"; do
    if ! grep -qxF -- "$name installed" <<<"$states"; then
      missing+=("$name")
    fi
  done
}

# ensure_packages [<purpose>...]: installs what packages.txt names for these purposes, if any of it
# is missing.
ensure_packages() {
  local wanted missing apt
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    complain "This is not a Debian system: install the counterparts of packages.txt by hand, then" \
      "use the presets of CMakePresets.json (see CONTRIBUTING.md)."
    return 1
  fi
  choose_packages "$@"
  find_missing
  if [[ ${#missing[@]} == 0 ]]; then
    return 0
  fi
  say "Installing ${#missing[@]} packages: ${missing[*]}"
  apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300)
  if [[ $(id -u) != 0 ]]; then
    if ! command -v sudo >/dev/null; then
      complain "That needs root, and there is no sudo here. As root, run:" \
        "apt-get install --no-install-recommends ${missing[*]}"
      return 1
    fi
    apt=(sudo "${apt[@]}")
  fi
  # A source that does not answer need not be one that these packages come from.
  "${apt[@]}" update || complain "Not every package list could be refreshed; going on."
  "${apt[@]}" install --no-install-recommends "${missing[@]}" || return 1
  find_missing
  if [[ ${#missing[@]} != 0 ]]; then
    complain "Still missing after the installation: ${missing[*]}"
    return 1
  fi
}

# build_preset <preset> [<target>...]: configures, and builds the targets (all of them if none is
# named).
build_preset() {
  local preset=$1
  shift
  cmake --preset "$preset" -Wno-dev --log-level=WARNING &&
    cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}
