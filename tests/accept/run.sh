#!/usr/bin/env bash
# run.sh QUILLON_DRIVE APPDIR SCRIPT: runs a driver script on a fresh copy of the application
# folder, with settings of its own, in a temporary folder that is gone afterwards. The output is
# shown when the script fails, and the driver's exit status is passed on. A file SCRIPT.sql beside
# the script prepares the sample account; with a first line "-- starts from OTHER.sql" that file
# comes before it, and so on.
set -euo pipefail

drive="$(realpath "$1")"
app="$(realpath "$2")"
script="$(realpath "$3")"

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir -m 700 "$work/home"
cp -r "$app" "$work/app"
cd "$work"
prepare() {
    local base
    base="$(sed -n '1s/^-- starts from //p' "$1")"
    [[ -z "$base" ]] || prepare "$(dirname "$1")/$base"
    "$(dirname "$drive")/tests/prepare_account" "$work/app/Sample Portfolio.mdb" "$1"
}
statements="${script%.drive}.sql"
[[ ! -f "$statements" ]] || prepare "$statements"

status=0
HOME="$work/home" XDG_CONFIG_HOME="$work/home" XDG_RUNTIME_DIR="$work/home" \
    "$drive" --app "$work/app" --settings "$work/settings.ini" "$script" >output 2>&1 || status=$?
if ((status != 0)); then
    cat output
    echo "$(basename "$script"): exit status $status"
fi
exit "$status"
