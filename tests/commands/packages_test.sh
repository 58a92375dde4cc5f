#!/usr/bin/env bash
# How the commands install packages: nothing is asked of the network when nothing is missing, and a
# failure names the package and what to do. The package servers are on the loopback address.
#
#   packages_test.sh PROJECT
set -euo pipefail

project="$1"
work="$(mktemp -d)"
server=
finish() {
    [[ -z "$server" ]] || kill "$server" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT
trap 'exit 1' INT TERM HUP
fail() {
    printf 'FAILED: %s\n%s\n' "$*" "$(cat "$work/said" 2>/dev/null)"
    exit 1
}
says() { grep -qF -- "$1" "$work/said" || fail "it does not say \"$1\""; }

# Runs $1 in a shell that has the commands' functions. What it says is in the file `said`.
run() {
    status=0
    (cd "$work" && timeout 60 "${as[@]}" bash -c "set -euo pipefail; source '$project/scripts/common.sh'; $1") \
        >"$work/said" 2>&1 || status=$?
}
as=(env)

# apt with lists and packages of its own, from the server at port $1.
use_server() {
    rm -rf "$work/apt"
    mkdir -p "$work/apt"/{lists/partial,archives/partial}
    : >"$work/apt/status"
    echo "deb [trusted=yes] http://127.0.0.1:$1/debian stable main" >"$work/apt/sources.list"
    cat >"$work/apt/apt.conf" <<EOF
Dir::State "$work/apt";
Dir::State::status "$work/apt/status";
Dir::Cache "$work/apt";
Dir::Etc::sourcelist "$work/apt/sources.list";
Dir::Etc::sourceparts "-";
Dir::Etc::main "-";
Dir::Etc::parts "-";
Debug::NoLocking "true";
Acquire::http::Proxy "DIRECT";
APT::Sandbox::User "root";
EOF
    export APT_CONFIG="$work/apt/apt.conf" QUILLON_APT_TIMEOUT=2
}

# --- nothing is missing ----------------------------------------------------------------------------

mkdir "$work/bin"
printf '#!/bin/sh\necho called >>"%s/calls"\nexit 1\n' "$work" | tee "$work/bin/apt-get" >"$work/bin/sudo"
chmod 755 "$work" "$work/bin" "$work/bin"/*
as=(env "PATH=$work/bin:$PATH")
run 'install_packages bash coreutils'
[[ $status -eq 0 && ! -s "$work/said" && ! -e "$work/calls" ]] || fail "installed packages were asked for"

# --- a user who may not install ----------------------------------------------------------------------

if [[ $EUID -eq 0 ]]; then
    as=(env "PATH=$work/bin:$PATH" setpriv --reuid 65534 --regid 65534 --clear-groups)
fi
run 'install_packages bash no-such-package-one no-such-package-two'
[[ $status -eq 2 ]] || fail "that the user may not install is not reported: status $status"
says 'apt-get install --no-install-recommends no-such-package-one no-such-package-two'
! grep -q 'recommends bash' "$work/said" || fail "an installed package is named as missing"

# --- servers that fail -------------------------------------------------------------------------------

as=(env)
if [[ $EUID -eq 0 ]]; then # only root gets as far as apt
    use_server 9 # nobody listens there
    run 'install_packages bash no-such-package'
    [[ $status -ne 0 ]] || fail "a server that cannot be reached is no failure"
    says 'could not install: no-such-package'
    says 'Check the network'

    python3 -c '
import socket, time
s = socket.socket(); s.bind(("127.0.0.1", 0)); s.listen(8)
print(s.getsockname()[1], flush=True)
end = time.time() + 100
s.settimeout(100)
held = []
while time.time() < end:
    held.append(s.accept())' >"$work/port" 2>/dev/null &
    server=$!
    for ((count = 0; count < 100 && $(wc -c <"$work/port") == 0; ++count)); do sleep 0.1; done
    use_server "$(cat "$work/port")"
    start=$SECONDS
    run 'install_packages bash no-such-package'
    [[ $status -ne 0 ]] || fail "a silent server is no failure"
    ((SECONDS - start < 50)) || fail "a silent server holds it up for $((SECONDS - start)) seconds"
    says 'could not install: no-such-package'
    says 'apt-get update && apt-get install --no-install-recommends no-such-package'
fi

# --- progress ----------------------------------------------------------------------------------------

unset APT_CONFIG
run 'news_seconds=1; sleep 3 & wait_and_report $! echo "[3/9] working"'
[[ $status -eq 0 ]] || fail "a process that ends well is reported as failed"
says '[3/9] working'
run 'false & wait_and_report $! echo'
[[ $status -ne 0 ]] || fail "a process that fails is reported as ended well"
echo "passed"
