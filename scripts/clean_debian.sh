#!/usr/bin/env bash
# Prepares a clean Debian for the test that installs our package in it: the only step of ./test, next
# to installing packages, that may ask the network.
#
#   scripts/clean_debian.sh BUILD base        the clean Debian
#   scripts/clean_debian.sh BUILD archives    what BUILD/quillon_*.deb needs in it
#
#   BUILD/clean_debian/base.tar        what debootstrap makes of the release this machine runs
#   BUILD/clean_debian/archives/       the packages that ours needs beyond that, and no recommended ones
#   BUILD/clean_debian/needs           what they were fetched for; as long as that holds, nothing is
#   BUILD/clean_debian/reason          in their place: why it could not be done
#
# Packages come from where this machine has its own.
set -euo pipefail
umask 022 # others enter the clean system, whoever makes it

build="$(cd "$1" && pwd)"
folder="$build/clean_debian"
say() {
    printf 'clean_debian: %s\n' "$*" >&2
}
# The test is skipped, with this as its reason.
give_up() {
    printf '%s\n' "$*" >"$folder/reason"
    say "$*"
    exit 0
}

mkdir -p "$folder"
if [[ "$2" == base ]]; then
    [[ ! -f "$folder/base.tar" ]] || exit 0
else
    [[ -f "$folder/base.tar" ]] || exit 0 # the reason is there
    package="$(ls -t "$build"/quillon_*.deb | head -n 1)"
    needs="$(dpkg-deb -f "$package" Architecture Depends)"
    [[ "$needs" != "$(cat "$folder/needs" 2>/dev/null)" ]] || exit 0
    rm -f "$folder/needs"
fi
rm -f "$folder/reason"

if [[ $EUID -ne 0 ]]; then
    sudo -n true 2>/dev/null || give_up "a clean Debian can be made by root alone, and sudo asks"
    exec sudo -n "$0" "$@"
fi
for tool in debootstrap apt-get; do
    command -v "$tool" >/dev/null || give_up "there is no $tool here"
done

# Not in the build folder: debootstrap takes no path with blanks.
work="$(mktemp -d /var/tmp/quillon_clean.XXXXXX)"
trap 'rm -rf --one-file-system "$work" "$folder/base.tar.new"' EXIT
trap 'exit 1' INT TERM HUP
private=()
if unshare --mount --pid --fork true 2>/dev/null; then
    private=(unshare --mount --pid --fork --kill-child) # its mounts and processes go with it
fi
log="$work/log"

release="$(. /etc/os-release && echo "${VERSION_CODENAME:-}")"
lists() {
    apt-get indextargets --format '$(ORIGIN)|$(CODENAME)|$(COMPONENT)|$(REPO_URI)' \
        'Created-By: Packages' 2>/dev/null
}
mirror() {
    lists | sed -n "s/^Debian|$release|main|//p" | head -n 1
}
[[ -n "$(mirror)" ]] || apt-get update >"$log" 2>&1 || true
[[ -n "$(mirror)" ]] || give_up "this machine has no package source of Debian $release"

if [[ "$2" == base ]]; then
    say "making a clean Debian $release"
    # The way out that this machine's own package manager has been given.
    eval "$(apt-config shell proxy Acquire::http::Proxy)"
    [[ -z "${proxy:-}" || "${proxy:-}" == DIRECT ]] || export http_proxy="${http_proxy:-$proxy}"
    # A network that answers nothing would hold it up for hours.
    timeout --foreground 1200 "${private[@]}" debootstrap --variant=minbase "$release" \
        "$work/root" "$(mirror)" >"$log" 2>&1 ||
        give_up "debootstrap failed: $(tail -n 1 "$log")"
    rm -f "$work"/root/var/cache/apt/archives/*.deb "$work"/root/var/lib/apt/lists/*_*
    { tar -C "$work/root" --one-file-system -cf "$folder/base.tar.new" . &&
        mv "$folder/base.tar.new" "$folder/base.tar"; } 2>"$log" ||
        give_up "the clean Debian could not be kept: $(tail -n 1 "$log")"
    chown --reference="$build" "$folder" "$folder/base.tar"
    exit 0
fi

# This machine's sources, but the clean system's list of what is installed.
say "fetching what the package needs"
mkdir -p "$work/archives/partial" "$work/lib"
tar -xOf "$folder/base.tar" ./var/lib/dpkg/status >"$work/status"
fetch() {
    apt-get --yes --no-install-recommends --download-only \
        -o Dir::State::status="$work/status" -o Dir::State::extended_states="$work/lib/extended" \
        -o Dir::Cache::archives="$work/archives" -o Dir::Cache::pkgcache= \
        -o Dir::Cache::srcpkgcache= -o APT::Keep-Downloaded-Packages=true \
        -o APT::Sandbox::User=root -o Debug::NoLocking=true install "$package" >"$log" 2>&1
}
fetch || { apt-get update && fetch; } >/dev/null 2>&1 ||
    give_up "what the package needs could not be fetched: $(tail -n 1 "$log")"
rm -rf "$folder/archives"
{ mkdir "$folder/archives" && mv "$work"/archives/*.deb "$folder/archives/"; } 2>"$log" ||
    give_up "what the package needs could not be kept: $(tail -n 1 "$log")"
printf '%s\n' "$needs" >"$folder/needs"
chown -R --reference="$build" "$folder"
