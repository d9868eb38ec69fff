#!/usr/bin/env bash
# "Auto" appearance in the real program, offscreen, against a fake desktop portal on a private
# session bus: a portal that answers dark gives a dark panel; one that answers dark and turns
# light while the panel runs gives a light one; high contrast changes the picture; without a
# portal the palette decides (light, offscreen).
set -uo pipefail
velmar=$1 probe=$2 portal=$3
. "$(dirname "$0")/../support/script.sh"
. "$(dirname "$0")/../support/private_bus.sh"
private_bus "$work" && started+=("$bus")
home "$work/home" 'auto\t1\nview\tlist\nonboarded\t1\nappearance\tsystem\n'
printf 'x\t40\ny\t30\nwidth\t360\nheight\t480\n' >"$work/home/.config/velmar/window.tsv"
export QT_QPA_PLATFORM=offscreen VELMAR_HOME="$work/home"

# shot NAME [PORTAL ARGUMENTS...]: one run that saves $work/NAME.png, beside a fake portal with
# those arguments (none: no portal at all).
shot() {
    local name=$1 fake=""
    shift
    if [ $# -gt 0 ]; then
        # The portal runs until its input ends: a pipe held open by this shell.
        mkfifo "$work/$name.in"
        /usr/bin/python3 "$portal" "$@" <"$work/$name.in" >"$work/$name.portal" &
        fake=$!
        exec 3>"$work/$name.in"
        within 10 grep -q ready "$work/$name.portal" || fail "$name: the fake portal did not start"
    fi
    VELMAR_SNAPSHOT="$work/$name.png" VELMAR_SNAPSHOT_DELAY=2.5 timeout 60 "$velmar" 2>"$work/$name.err"
    [ -z "$fake" ] || { exec 3>&-; wait "$fake"; }
}
# luminance NAME: the picture's mean luminance, 0 to 255.
luminance() { "$probe" "$work/$1.png" | cut -d' ' -f4; }

shot dark 1
shot switched --switch 0.5 1
shot contrast 1 1
shot none
dark=$(luminance dark) switched=$(luminance switched) none=$(luminance none)
[ "${none:-0}" -gt $((${dark:-255} + 100)) ] || fail "portal dark: luminance $dark, without a portal $none"
[ "${switched:-0}" -gt $((${dark:-255} + 100)) ] || fail "turned light: luminance $switched, dark was $dark"
differ=$("$probe" "$work/contrast.png" "$work/dark.png" | cut -d' ' -f5)
[ "${differ:-0}" -gt 0 ] || fail "high contrast: the picture is the same as without"

finish portal "$work"/*.err
