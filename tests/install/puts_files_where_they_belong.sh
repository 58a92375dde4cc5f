#!/usr/bin/env bash
# Installs the build below a prefix with blanks and accents, looks whether every file is where a desktop
# expects it, and starts the program there without a display.
#
#   puts_files_where_they_belong.sh BUILD
set -euo pipefail

for tool in desktop-file-validate appstreamcli groff; do
    command -v "$tool" >/dev/null || { printf 'skipped: %s is not installed\n' "$tool"; exit 77; }
done

build="$(cd "$1" && pwd)"
work="$(mktemp -d)"
program=
finish() {
    [[ -z "$program" ]] || kill "$program" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT
trap 'exit 1' INT TERM HUP
fail() {
    printf 'FAILED: %s\n' "$*"
    exit 1
}

umask 077 # what is installed is for everybody all the same
DESTDIR="$work/a stage" cmake --install "$build" --prefix "/opt/Prog été" >"$work/log"
umask 022
prefix="$work/a stage/opt/Prog été"

# --- the files -------------------------------------------------------------------------------------

for file in bin/quillon lib*/quillon/quillon share/quillon/Template.xxx \
    "share/quillon/Sample Portfolio.mdb" share/quillon/WebSites.mdb share/quillon/TIPOFDAY.TXT \
    share/quillon/WebLinks.json share/quillon/Connecting.bmp share/quillon/icons/New.svg \
    share/quillon/help/AboutQuillon.htm share/applications/quillon.desktop \
    share/icons/hicolor/scalable/apps/quillon.svg share/mime/packages/quillon.xml \
    share/metainfo/quillon.metainfo.xml share/man/man1/quillon.1.gz share/doc/quillon/copyright \
    share/doc/quillon/changelog.gz; do
    # A pattern with a folder in it is left to the shell, a name with a blank is not.
    case "$file" in
        lib*) compgen -G "$prefix/$file" >/dev/null || fail "$file is missing" ;;
        *) [[ -f "$prefix/$file" ]] || fail "$file is missing" ;;
    esac
done
[[ "$(readlink "$prefix/bin/quillon")" == ../lib*/quillon/quillon ]] ||
    fail "bin/quillon does not lead to the program beside it: $(readlink "$prefix/bin/quillon")"
[[ -z "$(find "$work/a stage" -name '*quillon_drive*')" ]] || fail "the driver was installed"
diff -r "$build/delivered" "$prefix/share/quillon" || fail "not all that is delivered was installed"
odd="$(find "$prefix"/{lib*,share}/quillon "$prefix/share/doc/quillon" -type d ! -perm 755)
$(find "$prefix" -type f ! -perm 644 ! -perm 755)"
[[ "$odd" == $'\n' ]] || fail "odd modes: $odd"

# --- what a desktop reads of it --------------------------------------------------------------------

desktop-file-validate "$prefix/share/applications/quillon.desktop"
appstreamcli validate --no-net "$prefix/share/metainfo/quillon.metainfo.xml" >"$work/log" ||
    fail "$(cat "$work/log")"
gunzip -c "$prefix/share/man/man1/quillon.1.gz" >"$work/quillon.1"
complaints="$(groff -man -Tutf8 -ww -z "$work/quillon.1" 2>&1)"
[[ -z "$complaints" ]] || fail "the manual page: $complaints"

# --- the program -----------------------------------------------------------------------------------

# Links are followed, wherever the folders were moved to together.
mkdir "$work/moved été"
mv "$prefix" "$work/moved été/Quillon 6"
ln -s "../moved été/Quillon 6/bin/quillon" "$work/a stage/my quillon"
run=(env -i HOME="$work/home" PATH=/usr/bin:/bin LSAN_OPTIONS="${LSAN_OPTIONS:-}")
[[ "$("${run[@]}" LC_ALL=C "$work/a stage/my quillon" --version 2>&1)" == "Quillon "[0-9]* ]] ||
    fail "--version without a display: $("${run[@]}" LC_ALL=C "$work/a stage/my quillon" --version 2>&1)"
[[ "$("${run[@]}" "$work/a stage/my quillon" --help)" == *--version* ]] || fail "--help without a display"
status=0
"${run[@]}" "$work/a stage/my quillon" --nonsense 2>"$work/log" || status=$?
[[ $status -eq 2 && "$(cat "$work/log")" == *nonsense* ]] || fail "an unknown option: status $status"

# Starts the program $1 for a user with the data folder $3, and waits until the file $2 is there.
start_until() {
    "${run[@]}" QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 XDG_DATA_HOME="$3" "$1" \
        >"$work/log" 2>&1 &
    program=$!
    local count
    for ((count = 0; count < 300; ++count)); do
        [[ ! -e "$2" ]] || break
        kill -0 "$program" 2>/dev/null || fail "the program ended: $(cat "$work/log")"
        sleep 0.1
    done
    [[ -e "$2" ]] || fail "no $2 after half a minute: $(cat "$work/log")"
    kill "$program"
    wait "$program" 2>/dev/null || true
    program=
}

# On a stick: the settings that a start leaves tell that it got on its way.
mkdir "$work/stick"
cp -r "$build/delivered/." "$work/moved été/Quillon 6/"lib*/quillon/* "$work/stick/"
rm "$work/stick/HistPrices.mdb" # made anew by a start, where it works
start_until "$work/stick/quillon" "$work/stick/HistPrices.mdb" "$work/dätä home"
[[ ! -e "$work/dätä home" ]] || fail "a program on a stick made a folder for the user"

start_until "$work/a stage/my quillon" "$work/dätä home/Quillon/Template.xxx" "$work/dätä home/"
own="$work/dätä home/Quillon"
[[ "$(stat -c %a "$own")" == 700 && "$(stat -c %a "$own/Sample Portfolio.mdb")" == 600 ]] ||
    fail "others may look into the user's folder"
[[ ! -e "$own/help" && ! -e "$own/icons" ]] || fail "the program's own folders were copied"
# A relative one would be another folder wherever the program is started.
cd "$work"
start_until "$work/a stage/my quillon" "$work/home/.local/share/Quillon/Template.xxx" "relative"
diff -r "$build/delivered" "$work/moved été/Quillon 6/share/quillon" || fail "a start changed what is installed"
echo "passed"
