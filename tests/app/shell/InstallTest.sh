#!/usr/bin/env bash
# `cmake --install` into a scratch prefix puts every file of the application in place; the desktop
# entry and the metainfo pass their validators and agree with each other, with the icon and with
# the project's version; the icons have their sizes; and the Debian package carries the same files,
# needs Qt and recommends gh without needing it.
set -uo pipefail
build=$1 probe=$2 version=$3
. "$(dirname "$0")/../support/script.sh"
export LC_ALL=C
prefix=$work/prefix
expected="bin/velmar
share/applications/velmar.desktop
share/icons/hicolor/128x128/apps/velmar.png
share/icons/hicolor/256x256/apps/velmar.png
share/icons/hicolor/48x48/apps/velmar.png
share/icons/hicolor/64x64/apps/velmar.png
share/icons/hicolor/scalable/apps/velmar.svg
share/metainfo/velmar.metainfo.xml"

cmake --install "$build" --prefix "$prefix" >"$work/install.log" 2>&1 || fail "install: $(cat "$work/install.log")"
installed=$(cd "$prefix" && find . -type f | sed 's|^\./||' | sort)
[ "$installed" = "$expected" ] || fail "installed files differ:"$'\n'"$installed"

desktop=$prefix/share/applications/velmar.desktop metainfo=$prefix/share/metainfo/velmar.metainfo.xml
desktop-file-validate "$desktop" || fail "desktop-file-validate"
appstreamcli validate --no-net "$metainfo" >"$work/appstream.log" 2>&1 || fail "appstreamcli: $(cat "$work/appstream.log")"

key() { sed -n "s/^$1=//p" "$desktop"; }
[ "$(key Exec)" = velmar ] && [ -x "$prefix/bin/velmar" ] || fail "Exec=$(key Exec) is not the installed program"
[ "$(key Icon)" = velmar ] || fail "Icon=$(key Icon) is not the installed icon's name"
grep -q '<launchable type="desktop-id">velmar.desktop</launchable>' "$metainfo" || fail "metainfo: launchable"
release=$(grep -o '<release version="[^"]*"' "$metainfo" | head -n 1 | cut -d'"' -f2)
[ "$release" = "$version" ] || fail "metainfo: newest release $release, project version $version"
for size in 48 64 128 256; do
    read -r w h colours _ < <("$probe" "$prefix/share/icons/hicolor/${size}x$size/apps/velmar.png")
    [ "$w $h" = "$size $size" ] && [ "${colours:-0}" -gt 16 ] || fail "icon $size: ${w}x$h, $colours colours"
done

cpack -G DEB -B "$work/deb" --config "$build/CPackConfig.cmake" >"$work/cpack.log" 2>&1 || fail "cpack: $(cat "$work/cpack.log")"
deb=$(ls "$work"/deb/*.deb 2>/dev/null | head -n 1)
packaged=$(dpkg-deb -c "$deb" | awk '$1 ~ /^-/ {print $6}' | sed 's|^\./usr/||' | sort)
[ "$packaged" = "$expected" ] || fail "packaged files differ:"$'\n'"$packaged"
depends=$(dpkg-deb -f "$deb" Depends) recommends=$(dpkg-deb -f "$deb" Recommends)
[[ $depends == *libqt6gui6* && $depends == *qml6-module-qtquick-controls* ]] || fail "Depends: $depends"
[[ $recommends == *gh* && ! $depends =~ (^|[ ,])gh([ ,]|$) ]] || fail "gh: Depends '$depends', Recommends '$recommends'"
[[ $recommends == *fonts-noto-color-emoji* ]] || fail "no colour emoji font recommended: '$recommends'"

finish install
