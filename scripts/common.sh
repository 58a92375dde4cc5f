# What ./run, ./test and bench/run share; sourced by them.

# The project's folder, wherever it lies and whoever calls from where.
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

# What a bare Debian 12 lacks; everything else comes along as a dependency. With the spreadsheet
# programs the tests read workbooks; with what is below them, our package is made and tried.
packages=(
    ca-certificates git g++ ccache cmake ninja-build
    qt6-base-dev qt6-charts-dev qt6-httpserver-dev libqt6svg6
    libsqlite3-dev zlib1g-dev libgsf-1-dev pkgconf libgtest-dev libbenchmark-dev
    qt6-webengine-dev fonts-dejavu-core
    libreoffice-calc-nogui gnumeric python3-xlrd
    dpkg-dev debootstrap xvfb xdotool desktop-file-utils appstream groff-base libglib2.0-bin
)

say() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
}

# Installs the packages that are missing; asks the network for nothing when there are none.
install_packages() {
    command -v dpkg-query >/dev/null || return 0
    local missing=() package as_root=()
    for package in "${packages[@]}"; do
        [[ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" == installed ]] ||
            missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    if [[ $EUID -ne 0 ]]; then
        if ! command -v sudo >/dev/null; then
            say "these packages are missing, and there is no sudo to install them: ${missing[*]}"
            return 1
        fi
        as_root=(sudo)
    fi
    say "installing ${missing[*]}"
    local log
    log="$(mktemp)"
    if ! {
        "${as_root[@]}" apt-get update &&
            "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
                apt-get install --yes --no-install-recommends "${missing[@]}"
    } >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        say "the packages could not be installed"
        return 1
    fi
    rm -f "$log"
}

# Makes the Debian package in the build folder $1, and what is needed to try it in a clean Debian.
make_package() {
    local log
    log="$(mktemp)"
    if ! cmake --build "$1" --target package >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        say "the package could not be made"
        return 1
    fi
    rm -f "$log"
    "$root/scripts/clean_debian.sh" "$1"
}

# Configures and builds the preset $1; says nothing but its line unless something fails.
build() {
    local preset="$1" log
    say "building ($preset)"
    log="$(mktemp)"
    if ! (cd "$root" && cmake --preset "$preset" && cmake --build --preset "$preset") \
        >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        say "the build failed"
        return 1
    fi
    rm -f "$log"
}
