#!/usr/bin/env bash
# scripts/setup against stand-ins for dpkg-query, id, sudo and apt-get on a PATH that holds nothing
# else but the few tools it uses: a line per step with apt's output in the log, sudo only when not
# root, and without root or sudo the command to run as root, with nothing installed.
#   setup_test.sh SETUP WORKDIR
set -euo pipefail
setup=$1 work=$2
rm -rf "$work"
mkdir -p "$work/bin"
for tool in bash dirname grep mkdir tail env cat; do ln -s "$(command -v "$tool")" "$work/bin/$tool"; done
cat >"$work/bin/dpkg-query" <<'STUB'
#!/bin/bash
for p in $MISSING; do [ "${!#}" = "$p" ] && exit 1; done
printf 'install ok installed'
STUB
printf '#!/bin/bash\necho "$UID_SEEN"\n' >"$work/bin/id"
printf '#!/bin/bash\necho sudo >>"$CALLS"\nexec "$@"\n' >"$work/sudo"
cat >"$work/bin/apt-get" <<'STUB'
#!/bin/bash
echo "apt-get $* DEBIAN_FRONTEND=$DEBIAN_FRONTEND" >>"$CALLS"
for ((i = 0; i < 150; ++i)); do echo "Setting up package $i ..."; done
[ -z "${APT_FAILS:-}" ]
STUB
chmod +x "$work/bin/"* "$work/sudo"

failed=0
# run NAME UID MISSING [SETUP ARGS]: runs setup, keeping its status, output, log and the calls made.
run() {
  local name=$1
  export UID_SEEN=$2 MISSING=$3 CALLS=$work/$name.calls QUILLON_SETUP_LOG=$work/$name.log
  shift 3
  : >"$CALLS"
  status=0
  PATH=$work/bin "$setup" "$@" >"$work/$name.out" 2>"$work/$name.err" || status=$?
  out=$(cat "$work/$name.out") err=$(cat "$work/$name.err") calls=$(cat "$CALLS")
}
expect() { # expect WHAT ACTUAL EXPECTED
  if [ "$2" != "$3" ]; then
    printf 'FAIL: %s\n--- expected\n%s\n--- actual\n%s\n' "$1" "$3" "$2"
    failed=1
  fi
}

run present 1000 ""
expect "all present: status" "$status" 0
expect "all present: one line" "$out$err" "setup: all 19 packages are installed"
expect "all present: nothing run" "$calls" ""

run as_root 0 "libpng-dev xvfb"
expect "as root: status" "$status" 0
expect "as root: a line per step" "$out" "setup: 2 of 19 packages to install: libpng-dev xvfb
setup: updating the package lists (output in $work/as_root.log)
setup: installing 2 packages (output in $work/as_root.log)
setup: done"
expect "as root: apt's output in the log" "$(grep -c 'Setting up' "$work/as_root.log")" 300
expect "as root: apt, not sudo" "$calls" "apt-get update DEBIAN_FRONTEND=noninteractive
apt-get install -y -q --no-install-recommends libpng-dev xvfb DEBIAN_FRONTEND=noninteractive"

run no_sudo 1000 "duktape-dev"
expect "no sudo: status" "$status" 1
expect "no sudo: the command for root" "$err" "setup: installing needs root, and there is no sudo; as root, run:
  apt-get update && apt-get install -y -q --no-install-recommends duktape-dev"
expect "no sudo: nothing run" "$calls" ""

ln -s "$work/sudo" "$work/bin/sudo"
run with_sudo 1000 "clang" fuzz
expect "sudo: clang for fuzzing" "$(echo "$calls" | grep -c '^sudo$') $(echo "$calls" | grep -c 'install.* clang ')" "2 1"

APT_FAILS=1 run apt_fails 0 "cmake"
expect "apt fails: status" "$status" 1
expect "apt fails: the step named" "$(echo "$err" | head -1)" "setup: updating the package lists failed; the end of $work/apt_fails.log:"
expect "apt fails: the end of the log shown" "$(echo "$err" | tail -1)" "Setting up package 149 ..."

exit $failed
