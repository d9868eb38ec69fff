#!/usr/bin/env bash
# The tray icon in the real program, on Xvfb (the offscreen platform has no tray of either kind), on a
# private session bus: with the switch on and
# no tray nothing is registered; a tray that starts after the panel gets the icon, whose tooltip
# says how many pull requests wait for the viewer's review and that a check of the viewer's failed,
# with the menu "Show Velmar", "Refresh", "Quit"; the launcher gets the same count; a tray that
# goes and comes back gets the icon again; the switch clicked a dozen times in a row leaves one icon
# on the bus, or none.
set -uo pipefail
[ -n "${DISPLAY:-}" ] || exec xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$@"
velmar=$1 tray=$2
. "$(dirname "$0")/../support/script.sh"
. "$(dirname "$0")/../support/private_bus.sh"
private_bus "$work" && started+=("$bus")
trap 'exec 3>&- 2>/dev/null; kill -9 "${started[@]}" 2>/dev/null; wait 2>/dev/null; rm -rf "$work"' EXIT
home "$work/home"
printf 'acme/web\t\n' >"$work/home/.config/velmar/repos.tsv"
printf 'checks\t1\ntray\t1\n' >"$work/home/.config/velmar/extras.tsv"
export QT_QPA_PLATFORM=xcb VELMAR_HOME="$work/home"

# One answer of the batched query: the viewer "ana", her pull request with failing checks, and three
# pull requests waiting for her review.
answer=$(python3 - <<'EOF'
import json
def pr(n, author, state, repo="acme/web"):
    return {"id": "PR_%d" % n, "number": n, "title": "T%d" % n, "url": "https://github.com/%s/pull/%d" % (repo, n),
            "headRefName": "b%d" % n, "headRefOid": "o%d" % n, "isDraft": False, "updatedAt": "2026-01-01T00:00:00Z",
            "author": {"login": author}, "reviewDecision": None, "mergeable": "MERGEABLE",
            "statusCheckRollup": {"state": state}}
review = [dict(pr(n, "bo", "SUCCESS", "acme/api"), repository={"nameWithOwner": "acme/api"}) for n in (1, 2, 3)]
data = {"viewer": {"login": "ana"}, "r0": {"pullRequests": {"nodes": [pr(7, "ana", "FAILURE")]}},
        "review": {"nodes": review}}
print(json.dumps([{"msg": "batch_fetched", "repos": ["acme/web"], "output": json.dumps({"data": data}), "ok": True}]))
EOF
)

# lines FILE PATTERN: waits up to ten seconds for a line matching PATTERN in FILE.
lines() { within 10 grep -q "$2" "$1"; }
# count PATTERN [FROM]: the fake tray's lines matching PATTERN, after line FROM.
count() { tail -n +$((${2:-0} + 1)) "$work/tray.out" | grep -c "$1"; }
# more PATTERN N: more than N such lines; counted N [FROM]: N "registered" lines after line FROM.
more() { [ "$(count "$1")" -gt "$2" ]; }
counted() { [ "$(count '^registered' "${2:-0}")" -eq "$1" ]; }
# ask COMMAND REPLY: sends the fake tray COMMAND and prints its next line starting with REPLY.
ask() {
    local before
    before=$(count "^$2")
    echo "$1" >&3
    within 10 more "^$2" "$before" && grep "^$2" "$work/tray.out" | tail -1
}
# owned N: the fake tray says N registered items still have a name on the bus.
owned() { [ "$(ask owned owned)" = "owned $1" ]; }

# probe: the last item registered shows the answer's count, mark and menu.
probe() {
    local item
    item=$(ask probe '{') || { fail "no answer to the probe"; return; }
    python3 - "$item" <<'EOF' || failures=$((failures + 1))
import json, sys
item = json.loads(sys.argv[1])
expected_tooltip = "3 pull requests wait for your review\nChecks failed on 1 of your pull requests"
problems = []
if expected_tooltip not in item["tooltip"]:
    problems.append("tooltip %r" % item["tooltip"])
if item["menu"] != ["Show Velmar", "Refresh", "[Check for Updates\u2026]", "-", "Quit"]:
    problems.append("menu %r" % item["menu"])
if not item["sizes"]:
    problems.append("no pixmaps")
for p in problems:
    print("FAIL:", p)
sys.exit(1 if problems else 0)
EOF
}

# The tray starts after the panel has looked for one: the bus sees it ask.
dbus-monitor "member='NameHasOwner'" >"$work/monitor" 2>&1 &
started+=($!)
asked() {
    dbus-send --dest=org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus.NameHasOwner string:"$1"
    grep -q "\"$1\"" "$work/monitor"
}
within 10 asked probe || fail "the monitor did not start"
VELMAR_DEBUG_SEND="$answer" VELMAR_DEBUG_SEND_DELAY=4 timeout 60 "$velmar" 2>"$work/velmar.err" &
panel=$! && started+=("$panel")
lines "$work/monitor" '"org.kde.StatusNotifierWatcher"' || fail "the panel never looked for a tray"
mkfifo "$work/tray.in"
/usr/bin/python3 "$tray" <"$work/tray.in" >"$work/tray.out" &
fake=$! && started+=("$fake")
exec 3>"$work/tray.in"
lines "$work/tray.out" ready || fail "the fake tray did not start"
lines "$work/tray.out" '^registered' || fail "no item registered with a tray that came late"
lines "$work/tray.out" '^launcher 3 1' || fail "the launcher was not told the count: $(cat "$work/tray.out")"
probe

# The tray goes away and comes back: the icon registers again.
exec 3>&-
wait "$fake"
: >"$work/tray.out"
/usr/bin/python3 "$tray" <"$work/tray.in" >"$work/tray.out" &
started+=($!)
exec 3>"$work/tray.in"
lines "$work/tray.out" '^registered' || fail "no item registered with a tray that came back"
kill "$panel" && wait "$panel"

# The switch clicked a dozen times in a row, ending on and ending off, the tray there from the start:
# the icon made at start and one more each time on registered, and at the end the last one's name
# alone is left on the bus, showing the answer, or none is.
for flips in 12 13; do
    from=$(wc -l <"$work/tray.out")
    send=$(python3 -c 'import json, sys
print(json.dumps(json.loads(sys.argv[1]) + [{"msg": "set_tray", "on": i % 2 == 1} for i in range(int(sys.argv[2]))]))' \
        "$answer" "$flips")
    VELMAR_DEBUG_SEND="$send" VELMAR_DEBUG_SEND_DELAY=2 timeout 60 "$velmar" 2>>"$work/velmar.err" &
    panel=$! && started+=("$panel")
    icons=$((1 + flips / 2)) left=$((1 - flips % 2))
    within 10 counted $icons "$from" ||
        fail "$flips flips: $(count '^registered' "$from") registrations, not $icons"
    within 10 owned $left ||
        fail "$flips flips: $(ask owned owned) items left on the bus, not $left"
    [ $left -eq 0 ] || probe
    counted $icons "$from" || fail "$flips flips: $(count '^registered' "$from") registrations once settled"
    kill "$panel" && wait "$panel"
done

finish tray "$work/velmar.err" "$work/tray.out"
