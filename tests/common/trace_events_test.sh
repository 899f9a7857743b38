#!/bin/sh
# Records both trace providers of the upgrader with LTTng and checks what a
# trace reader and a log reader find after a run of trace_events_app.
#
# Usage: trace_events_test.sh <trace_events_app> [sim|node [process-name]]
#
# With the simulated node (the default) the persistent log is checked too.
# Only events of processes named <process-name> are recorded; by default the
# name of <trace_events_app>. Under an emulator the process bears the
# emulator's name instead (qemu-aarch64), so a cross build names that.
# The test starts a root session daemon of its own (user space only) and
# always stops it again. It exits 77 (skipped) where that cannot be done:
# without root, without lttng-tools or babeltrace2, or while another root
# session daemon runs. Every wait is bounded.
set -u

app=${1:?usage: trace_events_test.sh <trace_events_app> [sim|node [process-name]]}
platform=${2:-sim}
procname=${3:-$(basename "$app")}
session="vosk-trace-test-$$"
rundir=/var/run/lttng
daemon=""
work=""

say() { echo "trace_events_test: $*"; }
skip() { say "SKIPPED: $*"; exit 77; }
fail() { say "FAILED: $*"; exit 1; }

# A zombie still answers kill -0; it counts as gone.
alive() {
    [ -n "$1" ] && [ -r "/proc/$1/stat" ] && ! sed 's/^.*) //' "/proc/$1/stat" | grep -q '^Z'
}

stop_daemon() {
    [ -n "$daemon" ] || return 0
    kill -TERM "$daemon" 2>/dev/null
    i=0
    while alive "$daemon" && [ $i -lt 100 ]; do sleep 0.1; i=$((i + 1)); done
    if alive "$daemon"; then
        say "session daemon $daemon did not stop in 10 s; killing it"
        kill -KILL "$daemon" 2>/dev/null
    fi
    daemon=""
}

cleanup() {
    stop_daemon
    [ -n "$work" ] && rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 1' INT TERM HUP

# Runs an lttng command with a time limit; its output goes to the log.
ctl() {
    timeout 60 lttng "$@" >>"$work/lttng.log" 2>&1 || { cat "$work/lttng.log"; fail "lttng $*"; }
}

[ -x "$app" ] || fail "no test program at $app"
[ "$(id -u)" -eq 0 ] || skip "running a session daemon of its own needs root"
for tool in lttng lttng-sessiond babeltrace2 timeout flock; do
    command -v "$tool" >/dev/null 2>&1 || skip "$tool is not installed (packages lttng-tools, babeltrace2)"
done

# The root daemon's run directory is fixed, so only one such test at a time.
exec 9>/tmp/vosk-trace-events-test.lock
flock -w 120 9 || skip "another trace test held the lock for 2 minutes"
if [ -f "$rundir/lttng-sessiond.pid" ] && alive "$(cat "$rundir/lttng-sessiond.pid")"; then
    skip "a root session daemon (pid $(cat "$rundir/lttng-sessiond.pid")) is already running; not touching it"
fi

work=$(mktemp -d /tmp/vosk-trace-test-XXXXXX)
mkdir -p "$work/home" "$work/no-sessions" "$work/node"
# The client's and the daemon's per-user files stay in the work folder.
export LTTNG_HOME="$work/home"

lttng-sessiond --daemonize --no-kernel --load="$work/no-sessions" >"$work/sessiond.log" 2>&1 ||
    { cat "$work/sessiond.log"; skip "lttng-sessiond does not start here"; }
i=0
while [ ! -s "$rundir/lttng-sessiond.pid" ] && [ $i -lt 50 ]; do sleep 0.1; i=$((i + 1)); done
daemon=$(cat "$rundir/lttng-sessiond.pid" 2>/dev/null)
alive "$daemon" || fail "the session daemon did not come up"
say "session daemon $daemon started"

ctl create "$session" --output="$work/trace"
# Buffers of its own for each process: with per-user buffers, the first
# process that registers sets the layout of the events of all of them, and an
# emulated aarch64 program lays its events out differently from the host's
# x86-64 programs that may register beside it.
ctl enable-channel --userspace --buffers-pid --session="$session" events
# Only the test program's events: test programs running beside it (ctest -j)
# use the same providers. A process name is cut to 15 characters.
only_app="\$ctx.procname == \"$(printf %s "$procname" | cut -c1-15)\""
ctl enable-event --userspace --session="$session" --channel=events --filter="$only_app" 'com_talvora_upgrade:*'
ctl enable-event --userspace --session="$session" --channel=events --filter="$only_app" 'com_talvora_yd_vosk_oam_upgrader:*'
ctl start "$session"

# The application waits for the daemon to hand it the enabled events.
LTTNG_UST_REGISTER_TIMEOUT=5000 VOSK_SIM_ROOT="$work/node" VOSK_SIM_OUT="" VOSK_SIM_FAULTS="" \
    timeout 60 "$app" >"$work/expected" || fail "$app failed"

ctl stop "$session"
ctl destroy "$session"
stop_daemon

timeout 60 babeltrace2 "$work/trace" >"$work/babeltrace" 2>"$work/babeltrace.err" ||
    { cat "$work/babeltrace.err"; fail "babeltrace2 cannot read the trace"; }

# "[time] (+delta) host provider:EVENT: { cpu_id = N }, { fields }" ->
# "provider:EVENT: { fields }"; framework-internal lines are not known.
sed -e 's/^\[[^]]*\] ([^)]*) [^ ]* //' -e 's/{ cpu_id = [0-9]* }, //' \
    -e '/file = "common\//s/line = [1-9][0-9]*,/line = ANY,/' "$work/babeltrace" >"$work/traced"
sed -n 's/^trace: //p' "$work/expected" >"$work/expected-trace"
diff -u "$work/expected-trace" "$work/traced" || fail "the recorded events differ (- expected, + recorded)"

if [ "$platform" != sim ]; then
    say "$(wc -l <"$work/traced") events as expected; the node's own log service is not checked"
    exit 0
fi
log="$work/node/out/log/saLogUpgrade/upgrade.log"
[ -f "$log" ] || fail "no persistent log at $log"
sed 's/^\[[^]]*\] [0-9]* //' "$log" >"$work/logged"
sed -n 's/^log: //p' "$work/expected" >"$work/expected-log"
diff -u "$work/expected-log" "$work/logged" || fail "the persistent log differs (- expected, + logged)"

say "$(wc -l <"$work/traced") events and $(wc -l <"$work/logged") log records as expected"
