#!/usr/bin/env bash
# Installs the package into a clean Debian, without what it only recommends, and uses the program
# there: an ordinary user's first start and a later one, an update, a removal.
#
#   starts_in_a_clean_debian.sh BUILD
#
# BUILD/clean_debian/ is made by scripts/clean_debian.sh; without it, or where no other root folder can
# be entered, the test is skipped (status 77). The display runs outside, so that its libraries cannot
# stand in for one that the package forgot to name. The pictures stay in BUILD/clean_debian/.
set -euo pipefail
umask 022 # what root makes in the clean system is for the user there as well

build="$(cd "$1" && pwd)"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
clean="$build/clean_debian"

skip() {
    printf 'skipped: %s\n' "$*"
    exit 77
}
fail() {
    printf 'FAILED: %s\n' "$*"
    exit 1
}

if [[ -z "${2:-}" ]]; then
    [[ -f "$clean/needs" ]] ||
        skip "$(cat "$clean/reason" 2>/dev/null || echo "no clean Debian was prepared")"
    if [[ $EUID -ne 0 ]]; then
        sudo -n true 2>/dev/null || skip "another root folder is entered by root alone, and sudo asks"
        exec sudo -n "${BASH_SOURCE[0]}" "$@"
    fi
    # This one makes the folder, waits for the part below, and leaves nothing of it behind, however it
    # ends: where the system allows it, mounts and processes go with the part's own namespaces.
    find /var/tmp -maxdepth 1 -name 'quillon_clean.??????' -user root -mmin +60 \
        -exec rm -rf --one-file-system {} + # of a run that was killed outright
    work="$(mktemp -d /var/tmp/quillon_clean.XXXXXX)"
    private=() signal=TERM
    if unshare --mount --pid --fork true 2>/dev/null; then
        private=(setpriv --pdeathsig KILL unshare --mount --pid --fork --kill-child)
        signal=KILL
    fi
    part=
    leave() {
        [[ -z "$part" ]] || kill -s "$signal" "$part" 2>/dev/null || true
        wait 2>/dev/null || true
        rm -rf --one-file-system "$work"
    }
    trap leave EXIT
    trap 'exit 1' INT TERM HUP
    "${private[@]}" "${BASH_SOURCE[0]}" "$build" "$work" "${private[@]:0:1}" &
    part=$!
    status=0
    wait "$part" || status=$?
    part=
    exit "$status"
fi

work="$2"
root="$work/root"
display_pid=
program=
finish() {
    [[ -z "$program" ]] || kill "$program" 2>/dev/null || true
    [[ -z "$display_pid" ]] || kill "$display_pid" 2>/dev/null || true
    wait 2>/dev/null || true
}
trap finish EXIT
trap 'exit 1' INT TERM HUP

# --- the package in a clean Debian -----------------------------------------------------------------

mkdir "$root"
tar -xf "$clean/base.tar" -C "$root" 2>"$work/log" ||
    skip "a clean Debian cannot be unpacked here: $(head -n 1 "$work/log")"
chroot "$root" true 2>"$work/log" || skip "no other root folder can be entered: $(cat "$work/log")"
[[ -z "${3:-}" ]] || mount -t proc proc "$root/proc" # seen by no other process

package="$(ls -t "$build"/quillon_*.deb | head -n 1)"
mkdir "$root/packages"
cp "$clean"/archives/*.deb "$root/packages/"
cp "$package" "$root/packages/quillon.deb"
echo force-unsafe-io >"$root/etc/dpkg/dpkg.cfg.d/fast" # it is all gone in a minute
in_root() {
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}
in_root sh -c 'apt-get install --yes --no-install-recommends /packages/*.deb' >"$work/log" 2>&1 ||
    { tail -n 30 "$work/log"; fail "the package does not install"; }
is_installed() {
    [[ "$(in_root dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" == installed ]]
}
is_installed quillon || fail "the package is not installed"
! is_installed libqt6webenginecore6 ||
    fail "the browser engine came along, which is only recommended"
[[ "$(readlink "$root/usr/bin/quillon")" == ../lib/quillon/quillon ]] ||
    fail "/usr/bin/quillon does not lead to the program"
in_root find /usr/share/quillon -type f -exec sha256sum {} + | sort >"$work/delivered"

# --- an ordinary user ------------------------------------------------------------------------------

home="/home/anne marie"
in_root useradd --create-home --home-dir "$home" anne
user="$(in_root id -u anne)" group="$(in_root id -g anne)"
# No function: the process that is started in the background must be the program itself.
as_anne=(chroot --userspec="$user:$group" --groups="$group" "$root" env -i HOME="$home"
    PATH=/usr/bin:/bin)

[[ "$("${as_anne[@]}" LANG=C quillon --version 2>&1)" == "Quillon "[0-9]* ]] ||
    fail "--version without a display: $("${as_anne[@]}" LANG=C quillon --version 2>&1)"
"${as_anne[@]}" LANG=C quillon --help | grep -q -- --version || fail "--help without a display"
status=0
"${as_anne[@]}" quillon --nonsense >/dev/null 2>&1 || status=$?
[[ $status -eq 2 ]] || fail "an unknown option ended with status $status"

# --- the display -----------------------------------------------------------------------------------

mkdir "$work/screen"
exec {number}<> <(:)
Xvfb -displayfd "$number" -noreset -screen 0 1280x800x24 -nolisten tcp -fbdir "$work/screen" \
    >"$work/xvfb.log" 2>&1 &
display_pid=$!
read -r -t 30 -u "$number" display || fail "no virtual display: $(cat "$work/xvfb.log")"

# Waits for a window with a title like $1.
await_window() {
    local count
    for ((count = 0; count < 600; ++count)); do
        DISPLAY=":$display" xdotool search --onlyvisible --name "$1" >/dev/null 2>&1 && return
        kill -0 "$program" 2>/dev/null || fail "the program ended: $(cat "$work/program.log")"
        sleep 0.1
    done
    fail "no window \"$1\" after a minute: $(cat "$work/program.log")"
}
start() {
    "${as_anne[@]}" DISPLAY=":$display" LANG=C.UTF-8 quillon "$@" >"$work/program.log" 2>&1 &
    program=$!
}
end() {
    kill "$program"
    wait "$program" 2>/dev/null || true
    program=
}
own="$root$home/.local/share/Quillon"
sums() {
    (cd "$own" && find . -type f -name '*.mdb' -exec sha256sum {} + | sort)
}

# --- the first start -------------------------------------------------------------------------------

start
await_window '^Quillon - Sample Portfolio'
sleep 3 # the tip of the day comes up on top
# The balance of the account has a colour of its own, and so have the drawings of the toolbar.
"$here/picture.py" "$work/screen/Xvfb_screen0" "$clean/first_start.png" ffff8a 3f86c9 ||
    fail "too little is to be seen on $clean/first_start.png"
[[ "$(stat -c '%a %u' "$own")" == "700 $user" ]] || fail "mode of the folder: $(stat -c '%a %u' "$own")"
wide="$(find "$own" -type f -name '*.mdb' ! -perm 600)"
[[ -z "$wide" ]] || fail "others may read $wide"
for name in "Sample Portfolio.mdb" ApplControl.mdb HistPrices.mdb WebSites.mdb Template.xxx \
    ApplControl.xxx HistPrices.xxx TIPOFDAY.TXT Connecting.bmp; do
    [[ -f "$own/$name" ]] || fail "$name is missing in the user's folder"
done
[[ ! -e "$own/help" && ! -e "$own/icons" ]] || fail "the program's own folders were copied"
grep -v -i 'XDG_RUNTIME_DIR' "$work/program.log" >"$work/complaints" || true
[[ ! -s "$work/complaints" ]] || fail "the program complains: $(cat "$work/complaints")"
end

# --- a later start, on an account that is named ----------------------------------------------------

printf 'my own tip\n' >"$own/TIPOFDAY.TXT"
rm "$own/Connecting.bmp"
"${as_anne[@]}" cp "$home/.local/share/Quillon/Sample Portfolio.mdb" "$home/Dépôt Anne.mdb"
start "$home/Dépôt Anne.mdb"
await_window '^Quillon - D.*t Anne'
[[ "$(cat "$own/TIPOFDAY.TXT")" == "my own tip" ]] || fail "a file that the user changed was overwritten"
[[ -f "$own/Connecting.bmp" ]] || fail "a file that was lost did not come back"
end
in_root find /usr/share/quillon -type f -exec sha256sum {} + | sort | cmp -s - "$work/delivered" ||
    fail "a start changed what is installed"

# --- a home folder that may not be written to ------------------------------------------------------

"${as_anne[@]}" HOME=/nowhere DISPLAY=":$display" LANG=C.UTF-8 quillon >"$work/program.log" 2>&1 &
program=$!
await_window '^Quillon Editor'
# The box goes at the press of the key, before xdotool has let go of it.
DISPLAY=":$display" xdotool search --onlyvisible --name '^Quillon Editor' \
    key --window %1 Return 2>/dev/null || true
status=0
wait "$program" || status=$?
program=
[[ $status -eq 1 ]] || fail "without a home folder the program ended with status $status"

# --- the media type --------------------------------------------------------------------------------

cp "$own/Sample Portfolio.mdb" "$work/account"
head -c 68 "$work/account" >"$work/other"
printf '\0\0\0\0' >>"$work/other"
tail -c +73 "$work/account" >>"$work/other"
type_of() {
    XDG_DATA_HOME=/nowhere XDG_DATA_DIRS="$root/usr/share" \
        gio info --attributes=standard::content-type "$1" |
        sed -n 's/^ *standard::content-type: //p'
}
[[ "$(type_of "$work/account")" == application/x-quillon-database ]] ||
    fail "an account is taken for $(type_of "$work/account")"
[[ "$(type_of "$work/other")" == application/vnd.sqlite3 ]] ||
    fail "a database of another program is taken for $(type_of "$work/other")"
[[ -z "$(grep -l quillon "$root"/usr/share/mime/globs*)" ]] || fail "the package claims an extension"

# --- an update, and a removal ----------------------------------------------------------------------

sums >"$work/before"
in_root dpkg -i /packages/quillon.deb >"$work/log" 2>&1 || fail "no update: $(cat "$work/log")"
sums | cmp -s - "$work/before" || fail "an update touched the user's databases"
in_root dpkg --purge quillon >"$work/log" 2>&1 || fail "no removal: $(cat "$work/log")"
for gone in /usr/bin/quillon /usr/lib/quillon /usr/share/quillon /usr/share/applications/quillon.desktop; do
    [[ ! -e "$root$gone" ]] || fail "the removal left $gone"
done
sums | cmp -s - "$work/before" || fail "the removal touched the user's databases"
echo "passed"
