# Shared by ./panel and ./check: installs what is missing and builds a preset. Sourced, not run.

say() { printf '== %s\n' "$*"; }

die() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# What the build itself needs; ./check adds more.
build_packages=(
    g++ cmake ninja-build binutils pkg-config
    libgettextpo-dev libfreetype-dev libpng-dev libgtest-dev libcpp-httplib-dev libncurses-dev tmux libgif-dev
    nlohmann-json3-dev
    xfonts-mplus xfonts-75dpi xfonts-efont-unicode xfonts-wqy xfonts-base
)

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# need PACKAGE...: installs those that are not there.
need() {
    local package missing=()
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    say "installing ${missing[*]}"
    as_root apt-get update -qq || die "apt-get update failed"
    DEBIAN_FRONTEND=noninteractive as_root apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
        die "could not install ${missing[*]}"
}

# build PRESET [TARGET...]: configures when needed, then builds.
build() {
    local preset=$1 log
    shift
    log=$(mktemp)
    say "building the preset $preset"
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" ${1:+--target "$@"}; } >"$log" 2>&1; then
        cat "$log"
        rm -f "$log"
        die "the build of $preset failed"
    fi
    # Of a good build only what the asset compilers warn of, and the sizes of the glyph sets, are worth a look.
    grep -E ': warning:|: [0-9]+ glyph files' "$log" || true
    rm -f "$log"
}
