#!/usr/bin/env bash
# The real app offscreen, with a temporary home and a gh that reports nothing, saves pictures of
# itself: the list side, the settings side (replayed message), light, and an unwritable path.
set -uo pipefail
velmar=$1 probe=$2
. "$(dirname "$0")/../support/script.sh"
home "$work/home" 'auto\t1\nview\tlist\nonboarded\t1\nappearance\tdark\n'
printf 'x\t40\ny\t30\nwidth\t360\nheight\t480\n' >"$work/home/.config/velmar/window.tsv"
: >"$work/home/.config/velmar/repos.tsv"
export QT_QPA_PLATFORM=offscreen VELMAR_HOME="$work/home"

# shot NAME [VAR=VALUE...]: one run that saves $work/NAME.png and quits.
shot() {
    local name=$1
    shift
    env VELMAR_SNAPSHOT="$work/$name.png" VELMAR_SNAPSHOT_DELAY=2.5 "$@" timeout 60 "$velmar" 2>"$work/$name.err"
    [ $? -ne 124 ] || fail "$name: did not quit after its snapshot"
}
# describe NAME: "width height colours luminance pixels-differing-from-the-list-side".
describe() { "$probe" "$work/$1.png" "$work/list.png"; }

shot list
read -r w h colours lum_dark _ < <(describe list)
[ "$w $h" = "360 480" ] || fail "list: size '${w}x${h}', want the saved 360x480; $(cat "$work/list.err")"
[ "${colours:-0}" -ge 16 ] || fail "list: only ${colours:-0} colours, looks blank"

shot settings VELMAR_DEBUG_SEND='[{"msg":"navigate","screen":"manage"}]' VELMAR_DEBUG_SEND_DELAY=0.3
read -r w h colours _ differ < <(describe settings)
[ "$w $h" = "360 480" ] || fail "settings: size '${w}x${h}'; $(cat "$work/settings.err")"
[ "${colours:-0}" -ge 8 ] || fail "settings: looks blank"
[ "${differ:-0}" -gt 200 ] || fail "settings: only ${differ:-0} pixels differ from the list side"

shot light VELMAR_APPEARANCE=LIGHT
read -r _ _ _ lum_light _ < <(describe light)
[ "${lum_light:-0}" -gt $((${lum_dark:-255} + 100)) ] || fail "light: mean luminance $lum_light, dark was $lum_dark"

shot bad VELMAR_SNAPSHOT="$work/missing/dir/x.png" VELMAR_SNAPSHOT_DELAY=0.2
grep -q '^velmar: snapshot failed: ' "$work/bad.err" || fail "bad path: no failure line"

finish snapshot
