# What ./run, ./test and bench/run share; sourced by them.

# The project's folder, from whichever folder the command is called.
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

# Packages that a bare Debian 12 lacks; apt adds their dependencies.
program_packages=( # to build and to run the program
    g++ cmake ninja-build pkgconf
    qt6-base-dev qt6-charts-dev libqt6svg6
    libsqlite3-dev zlib1g-dev libgsf-1-dev libcurl4-openssl-dev libmicrohttpd-dev
    ca-certificates fonts-dejavu-core
)
test_packages=(libgtest-dev python3-xlrd) # without them no test can be built or run
test_tools=( # the browser plug-in; other readers of workbooks; making and trying the package
    qt6-webengine-dev
    libreoffice-calc-nogui gnumeric
    dpkg-dev debootstrap xvfb xdotool desktop-file-utils appstream groff-base libglib2.0-bin
)
bench_packages=(libbenchmark-dev)

say() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
}

# --- stages ----------------------------------------------------------------------------------------

stage_times=()

# Runs the command $2... as the stage $1 and notes how long it took.
stage() {
    local name="$1" start="${EPOCHREALTIME/[.,]/}" status=0
    shift
    "$@" || status=$?
    local tenths=$(((${EPOCHREALTIME/[.,]/} - start) / 100000))
    stage_times+=("$name $((tenths / 10)).$((tenths % 10)) s")
    return "$status"
}

say_times() {
    local text
    printf -v text ', %s' "${stage_times[@]}"
    say "done: ${text#, }"
}

news_seconds=15 # from one line about progress to the next

# Waits for the process $1, and from time to time says what the command $2... prints of its progress.
wait_and_report() {
    local process="$1" next=$((SECONDS + news_seconds)) news
    shift
    while kill -0 "$process" 2>/dev/null; do
        if ((SECONDS >= next)); then
            next=$((SECONDS + news_seconds))
            news="$("$@")" || true
            [[ -z "$news" ]] || say "$news"
        fi
        sleep 0.2
    done
    wait "$process"
}

# --- packages --------------------------------------------------------------------------------------

# Prints those of the packages $@ that are not installed.
missing_packages() {
    local installed package
    installed="$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2>/dev/null)" || true
    for package in "$@"; do
        [[ $'\n'"$installed"$'\n' == *$'\n'"$package installed"$'\n'* ]] || printf '%s\n' "$package"
    done
}

# apt-get with the arguments $@. It gives up on a server that is silent for half a minute, and prints
# its progress among the rest: "dlstatus:1:34.5:Retrieving file 12 of 80".
apt() {
    local seconds="${QUILLON_APT_TIMEOUT:-30}"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get --yes \
        -o Acquire::Retries=1 -o "Acquire::http::Timeout=$seconds" \
        -o "Acquire::https::Timeout=$seconds" -o DPkg::Lock::Timeout=60 -o APT::Status-Fd=1 "$@"
}

# Prints what apt is doing, from its log $1: "Retrieving file 12 of 80 (34%)".
apt_progress() {
    grep -aE '^(dl|pm)status:' "$1" | tail -n 1 | awk -F: '{ printf "%s (%d%%)", $4, $3 }'
}

# Installs those of the packages $@ that are missing. Asks the network for nothing when none is.
# Returns 2 if this user may not install packages.
install_packages() {
    command -v dpkg-query >/dev/null || return 0
    local missing as_root=() log status=0
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0
    if [[ $EUID -ne 0 ]]; then
        as_root=(sudo)
        [[ -t 0 ]] || as_root=(sudo -n) # nobody is there to type a password
        if ! command -v sudo >/dev/null || ! "${as_root[@]}" true; then
            say "packages are missing, and you may not install them. Ask someone who may to run:"
            say "    apt-get install --no-install-recommends ${missing[*]}"
            return 2
        fi
    fi
    say "installing ${missing[*]}"
    log="$(mktemp)"
    { apt update && apt install --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 </dev/null &
    wait_and_report $! apt_progress "$log" || status=$?
    # A list of packages that could not be fetched is a warning to apt: what counts is what is there.
    mapfile -t missing < <(missing_packages "${missing[@]}")
    if ((status || ${#missing[@]})); then
        grep -E '^(E|W|Err):?' "$log" >&2 || tail -n 20 "$log" >&2
        say "could not install: ${missing[*]}"
        say "Check the network and the package sources in /etc/apt, then start again. By hand:"
        say "    apt-get update && apt-get install --no-install-recommends ${missing[*]}"
        status=1
    fi
    rm -f "$log"
    return "$status"
}

# --- building --------------------------------------------------------------------------------------

# Configures the preset $1 with the settings $3... ("QUILLON_TESTS=ON") in its folder $2, unless that
# is done already: Ninja configures again by itself when a build file has changed.
configure() {
    local preset="$1" folder="$2" log setting done=1
    shift 2
    [[ -f "$folder/build.ninja" ]] || done=0
    for setting in "$@"; do
        grep -qs "^${setting/=/:BOOL=}$" "$folder/CMakeCache.txt" || done=0
    done
    ((!done)) || return 0
    say "configuring ($preset)"
    log="$(mktemp)"
    if ! (cd "$root" && cmake --preset "$preset" "${@/#/-D}") >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        say "the build could not be configured"
        return 1
    fi
    rm -f "$log"
}

# Builds the targets $2... in the build folder $1. On a terminal Ninja shows its own progress.
build() {
    local folder="$1" log status=0
    shift
    say "building"
    if [[ -t 2 ]]; then
        ninja -C "$folder" "$@" >&2 || status=$?
    else
        log="$(mktemp)"
        ninja -C "$folder" "$@" >"$log" 2>&1 &
        wait_and_report $! build_progress "$log" || status=$?
        ((!status)) || sed -n '/^FAILED: /,$p' "$log" >&2
        ((!status)) || grep -q '^FAILED: ' "$log" || cat "$log" >&2
        rm -f "$log"
    fi
    ((!status)) || say "the build failed"
    return "$status"
}

# Prints Ninja's last line, "[12/340] Building CXX object ...", from its log $1.
build_progress() {
    grep -o '^\[[0-9]*/[0-9]*\].*' "$1" | tail -n 1 | cut -c -100
}
