#!/usr/bin/env bash
# floors.sh SRC QTHEADERS: the rules of the house that no compiler checks. Prints each line of the
# sources that breaks one, as file:line: reason, and fails when there is any.
#
# Floors, ground first; a file includes only from its own floor or below:
#   base < platform < store < engines < platform/widgets < program < frm_ screens < shell < driver,
#   browser_plugin
# Engines and the floors below know nothing of widgets and pictures: of Qt they use the modules
# Core and Network. No screen knows another one; a screen of several files
# (frm_x.h, frm_x_columns.cpp) is one screen. Time, waits and boxes go through the clock and the
# dialogs alone.
set -euo pipefail

src="$(realpath "$1")"
qt_headers="$(realpath "$2")"
cd "$src"

mapfile -d '' -t files < <(find . -type f \( -name '*.h' -o -name '*.cpp' \) -printf '%P\0' | sort -z)
((${#files[@]})) || { echo "no sources in $src"; exit 1; }

(
    cd "$qt_headers"
    for header in Qt*/*; do
        [[ -d "$header" ]] || echo "$header"
    done
) | awk '
    function floor(path) {
        if (path ~ /^base\//) return 0
        if (path ~ /^platform\/widgets\//) return 4
        if (path ~ /^platform\//) return 1
        if (path ~ /^store\//) return 2
        if (path ~ /^(tracking|transactions|marketdata|lists|charts|reports|aids)\//)
            return path ~ /\/frm_[^\/]*$/ ? 6 : 3
        if (path ~ /^program\//) return 5
        if (path ~ /^shell\//) return 7
        if (path ~ /^(browser_plugin|driver|datamaker)\//) return 8
        return -1
    }
    function stem(path) {
        sub(/\.[a-z]+$/, "", path)
        return path
    }
    function is_same_screen(path, other) {
        return path == other || index(path, other "_") == 1 || index(other, path "_") == 1
    }
    function report(reason) {
        print FILENAME ":" FNR ": " reason
        broken = 1
    }

    # First the Qt headers from standard input: which names belong to a module that engines may use?
    FILENAME == "-" {
        split($0, part, "/")
        module_is_known[part[1]] = 1
        if (part[1] ~ /^Qt(Core|Network)$/) may_use[part[1]] = may_use[part[2]] = 1
        else is_above[part[2]] = 1
        next
    }

    FNR == 1 {
        here = floor(FILENAME)
        if (here < 0) report("the folder is no floor of the house")
        keeps_time_and_boxes = FILENAME ~ /^platform\/(widgets\/)?[^\/]*(dialogs|clock)[^\/]*$/ ||
                               FILENAME ~ /^driver\//
    }

    { sub(/\/\/.*/, "") }

    /^[ \t]*#[ \t]*include[ \t]*"/ {
        split($0, part, "\"")
        path = part[2]
        if (path !~ /\//) {
            folder = FILENAME
            sub(/[^\/]*$/, "", folder)
            path = folder path
        }
        there = floor(path)
        if (there > here)
            report("includes upward: " path)
        else if (here == 6 && there == 6 && !is_same_screen(stem(FILENAME), stem(path)))
            report("a screen includes another screen: " path)
    }

    here <= 3 && /^[ \t]*#[ \t]*include[ \t]*</ {
        name = $0
        sub(/^[^<]*</, "", name)
        sub(/>.*/, "", name)
        module = name
        sub(/\/.*/, "", module)
        if (name ~ /\// ? module_is_known[module] && !may_use[module] : is_above[name] && !may_use[name])
            report("an engine floor includes a header of widgets or pictures: <" name ">")
    }

    !keeps_time_and_boxes && \
    match($0, /QMessageBox|QFileDialog|QColorDialog|QInputDialog|QTimer[^E]|QTimer$|QBasicTimer|QDate::currentDate|QDateTime::current|QTime::currentTime|QThread::[mu]?sleep|this_thread::sleep|system_clock::now/) {
        report(substr($0, RSTART, RLENGTH) " belongs to the clock or the dialogs")
    }

    END { exit broken }
' - "${files[@]}"
