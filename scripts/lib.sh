# shellcheck shell=bash
# Shared by the scripts beside it, which source it first thing. It enters the repository root and
# gives up standard input, so that they behave the same from everywhere.

set -euo pipefail
exec </dev/null
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export LC_ALL=C.UTF-8
if command -v ccache >/dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

say() { printf '%s\n' "$*"; }

die() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# sources: every C++ and C file of ours, sorted.
sources() {
  find . \( -path ./build -o -path ./.git \) -prune -o \( -name '*.[ch]pp' -o -name '*.[ch]' \) \
    -printf '%P\n' | sort
}

# packages_of SECTION...: the names that scripts/packages.txt lists there.
packages_of() {
  local section
  for section in "$@"; do
    awk -v want="[$section]" '/^\[/ { on = $1 == want; next } on && !/^#/ && NF { print $1 }' \
      scripts/packages.txt
  done
}

# missing_of PACKAGE...: those of them that are not installed, and that no installed one stands for,
# as some of Node.js do for npm.
missing_of() {
  local there
  there=$(dpkg-query -W -f '${db:Status-Status}, ${Package}, ${Provides}\n' |
    sed -n '/^installed,/{ s/([^)]*)//g; s/ //g; s/,/\n/gp }')
  printf '%s\n' "$@" | grep -vxF -f <(say "$there") || true
}

# may_sudo: whether sudo gives root, asking for a password only where there is somebody to ask.
may_sudo() {
  command -v sudo >/dev/null && { sudo -n true 2>/dev/null || { [[ -t 2 ]] && sudo -v; }; }
}

# need SECTION...: installs what is missing of the sections' packages. `needed` remembers them all.
needed=()
need() {
  needed+=("$@")
  local packages missing
  mapfile -t packages < <(packages_of "$@")
  if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    say "No apt here, so nothing is installed. These must be present: ${packages[*]}" >&2
    return
  fi
  mapfile -t missing < <(missing_of "${packages[@]}")
  if ((${#missing[@]} == 0)); then
    return
  fi
  local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=60)
  if [[ $(id -u) != 0 ]]; then
    may_sudo || die "only root can install what is missing here, and sudo does not give that:" \
      "apt-get install ${missing[*]}"
    apt=(sudo "${apt[@]}")
  fi
  say "Installing ${missing[*]}"
  "${apt[@]}" update || say "apt-get update failed; trying with the lists at hand" >&2
  "${apt[@]}" install --no-install-recommends -y "${missing[@]}" >/dev/null ||
    die "apt-get could not install: ${missing[*]}"
}

# is_configured PRESET: whether CMake has run since every needed package was there. What changes
# later in CMake files or the list of sources, Ninja sees by itself.
is_configured() {
  local stamp=build/$1/configured-with section
  [[ -e build/$1/build.ninja && -e $stamp && ! CMakePresets.json -nt $stamp ]] || return
  for section in "${needed[@]}"; do
    grep -qx "$section" "$stamp" || return
  done
}

# configure PRESET: runs CMake unless that was done.
configure() {
  local log=build/$1/configure.log
  if ! is_configured "$1"; then
    mkdir -p "build/$1"
    cmake --preset "$1" >"$log" 2>&1 || { cat "$log" >&2 && return 1; }
    printf '%s\n' "${needed[@]}" >"build/$1/configured-with"
  fi
}

# build PRESET TARGET...: builds the targets. Only a terminal is shown the progress.
build() {
  local preset=$1
  shift
  configure "$preset" || return
  if [[ -t 1 ]]; then
    cmake --build --preset "$preset" --target "$@"
  else
    cmake --build --preset "$preset" --target "$@" -- --quiet | sed '/^ninja: no work to do/d'
  fi
}

# build_command: the command as its users get it, at build/bin/tern.
build_command() {
  need build && build release tern && mkdir -p build/bin &&
    ln -sfn ../release/tern build/bin/tern
}

# npm_packages FROM TO: what FROM/package-lock.json lists, at TO/node_modules. Nothing of it is run.
npm_packages() {
  mkdir -p "$2"
  cmp -s "$1/package-lock.json" "$2/installed" && return
  cp "$1/package.json" "$1/package-lock.json" "$2/"
  (cd "$2" && npm ci --ignore-scripts --no-audit --no-fund) &&
    cp "$1/package-lock.json" "$2/installed"
}

# build_explorer: the page with the library in it, at build/explorer.
build_explorer() {
  need build web wasm && build wasm terncorekit_wasm &&
    npm_packages explorer build/explorer-packages &&
    node explorer/build.mjs build/explorer-packages bindings/js/dist/terncorekit.wasm build/explorer
}
