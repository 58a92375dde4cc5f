#!/usr/bin/env bash
# floors_selftest.sh QTHEADERS: floors.sh must pass a clean tree, and report each kind of breach.
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
qt_headers="$1"
tree="$(mktemp -d)"
trap 'rm -rf "$tree"' EXIT
failures=0

# Writes the lines $2… into the file $1 of the tree.
write() {
    mkdir -p "$tree/$(dirname "$1")"
    printf '%s\n' "${@:2}" >"$tree/$1"
}

clean_tree() {
    rm -rf "${tree:?}"/*
    write base/currency.h '#include <QString>' '#include <QtCore/QDate>' '#include <vector>'
    write platform/inet.cpp '#include "base/currency.h"' '#include <QNetworkAccessManager>'
    write platform/system_clock.cpp '#include <QTimer>' 'auto t = QDateTime::currentDateTime();'
    write platform/widgets/widget_dialogs.cpp '#include <QMessageBox>' '#include "platform/dialogs.h"'
    write platform/widgets/data_grid.h '#include <QTableView>' '#include "base/currency.h"'
    write store/account.cpp '#include "platform/inet.h"' '// never QMessageBox in here'
    write charts/chart_series.cpp '#include "lists/delete_rows.h"' '#include "store/account.h"'
    write marketdata/practice_quotes.cpp '#include <QHostAddress>' '#include <QtNetwork/QTcpServer>'
    write program/program.h '#include "tracking/valuation.h"' '#include "platform/widgets/data_grid.h"'
    write lists/frm_history_list.h '#include <QWidget>' '#include "program/program.h"'
    write lists/frm_history_list.cpp '#include "frm_history_list.h"' '#include "lists/delete_rows.h"'
    write lists/frm_history_list_columns.cpp '#include "lists/frm_history_list.h"'
    write shell/main.cpp '#include "lists/frm_history_list.h"'
    write driver/script.cpp '#include "shell/main_window.h"' 'QTimer::singleShot(0, f);'
}

clean_tree
if ! found="$("$here/floors.sh" "$tree" "$qt_headers")"; then
    echo "the clean tree was reported: $found"
    failures=1
fi

# The file $1 with the lines $2… must be reported, by its last line.
must_report() {
    clean_tree
    write "$@"
    local found
    if found="$("$here/floors.sh" "$tree" "$qt_headers")"; then
        echo "not reported: $1 with ${*:2}"
        failures=1
    elif [[ "$found" != "$1:$(($# - 1)): "* || "$found" == *$'\n'* ]]; then
        echo "reported wrongly: $1 with ${*:2}: $found"
        failures=1
    fi
}

# Widgets and pictures in the floors below the widgets.
must_report base/currency.h '#include <vector>' '#include <QWidget>'
must_report platform/status_line.h '#include <QtWidgets/QLabel>'
must_report store/schema.cpp '#include <QtWidgets>'
must_report charts/chart_series.cpp '#include <QColor>'
must_report charts/chart_series.h '#  include <qpainter.h>'
must_report reports/workbook.cpp '#include <QtCharts/QChart>'
must_report aids/tips.cpp '#include <QPrinter>'

# Upward.
must_report base/formats.cpp '#include "platform/clock.h"'
must_report platform/inet.cpp '#include "store/connection.h"'
must_report store/lots.cpp '#include "transactions/lots.h"'
must_report lists/delete_rows.cpp '#include "platform/widgets/data_grid.h"'
must_report lists/delete_rows.cpp '#include "lists/frm_history_list.h"'
must_report lists/delete_rows.cpp '#include "frm_history_list.h"'
must_report tracking/valuation.cpp '#include "program/program.h"'
must_report platform/widgets/data_grid.h '#include "program/program.h"'
must_report program/program.h '#include "lists/frm_history_list.h"'
must_report lists/frm_history_list.cpp '#include "shell/main_window.h"'
must_report shell/main_window.cpp '#include "driver/script.h"'

# From screen to screen.
must_report lists/frm_history_list.cpp '#include "tracking/frm_daily_tracker.h"'
must_report lists/frm_history_list.cpp '#include "lists/frm_purchase_list.h"'
must_report lists/frm_history_list.cpp '#include "lists/frm_history.h"' \
    '#include "lists/frm_historylist.h"'

# Time and boxes.
must_report shell/main_window.cpp '' 'QMessageBox::information(this, title, text);'
must_report shell/main_window.cpp '#include <QTimer>'
must_report shell/main_window.cpp '#include <QFileDialog>'
must_report tracking/day_roll.cpp 'const QDate today = QDate::currentDate();'
must_report tracking/day_roll.cpp 'const QDateTime now = QDateTime::currentDateTime();'
must_report tracking/day_roll.cpp 'const QTime now = QTime::currentTime();'
must_report tracking/day_roll.cpp 'QThread::sleep(3);'
must_report lists/clocks.cpp 'QThread::msleep(3);'

# A folder that nobody gave a floor.
must_report helpers/misc.h '#pragma once'

((failures == 0)) && echo "every breach is reported"
exit "$failures"
