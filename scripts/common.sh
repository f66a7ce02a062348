# Shared by the commands at the root: where the project is, what it needs, how it is built.
# Sourced, with `set -euo pipefail` on.

ZVL_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
cd "$ZVL_ROOT"

say() { printf '\033[1m%s\033[0m\n' "$*"; }
die() {
    printf '%s\n' "$*" >&2
    exit 1
}

# install_packages PURPOSE...: installs what scripts/packages.txt names for them and is missing.
install_packages() {
    local wanted=() missing=() purpose package
    while read -r purpose package; do
        [[ " $* " == *" $purpose "* ]] && wanted+=("$package")
    done < <(grep -v '^#' scripts/packages.txt)
    for package in "${wanted[@]}"; do
        dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
            missing+=("$package")
    done
    [[ ${#missing[@]} -eq 0 ]] && return
    local as_root=()
    if [[ $(id -u) -ne 0 ]]; then
        command -v sudo >/dev/null || die "Please install: ${missing[*]}"
        as_root=(sudo)
    fi
    say "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
        --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET [TARGET...]
build() {
    local preset=$1
    shift
    say "Building ($preset)"
    cmake --preset "$preset" >"build-$preset.log" 2>&1 || {
        cat "build-$preset.log"
        die "The configuration failed."
    }
    rm -f "build-$preset.log"
    ninja -C "build/$preset" --quiet "$@"
}
