#!/bin/sh
# Builds the Debian package from a build folder, checks it as Debian would, installs it, starts the
# installed game from another folder under a virtual display, removes it and checks that none of
# its files is left. Needs root (or sudo without a password) for apt.
#     tests/package/check.sh build
set -e
build_dir=$(cd "${1:-build}" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
out="$build_dir/package-output"
rm -rf "$out"
mkdir -p "$out"

if [ "$(id -u)" = "0" ]; then
    SUDO=""
elif command -v sudo >/dev/null 2>&1 && sudo -n true 2>/dev/null; then
    SUDO="sudo"
else
    echo "package: skipped, installing needs root"
    exit 0
fi

rm -f "$build_dir"/orane_*.deb
(cd "$build_dir" && cpack -G DEB >"$out/cpack.log" 2>&1) || { cat "$out/cpack.log"; exit 1; }
package=$(ls "$build_dir"/orane_*_amd64.deb)
echo "package: $(basename "$package")"

# Lintian warns when run as root; its findings go to the log, and any error fails the check.
lintian --fail-on error "$package" >"$out/lintian.log" 2>&1 || { cat "$out/lintian.log"; exit 1; }
dpkg-deb -x "$package" "$out/contents"
desktop-file-validate "$out"/contents/usr/share/applications/*.desktop
appstreamcli validate --no-net "$out"/contents/usr/share/metainfo/*.metainfo.xml >"$out/appstream.log" \
    || { cat "$out/appstream.log"; exit 1; }

remove() {
    DEBIAN_FRONTEND=noninteractive $SUDO apt-get remove -y -qq orane >/dev/null 2>&1 || true
}
trap remove EXIT
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq -o DPkg::Lock::Timeout=300 "$package" >"$out/apt-install.log" 2>&1 \
    || { cat "$out/apt-install.log"; exit 1; }
dpkg-query -L orane >"$out/files.txt"

ALSOFT_DRIVERS=null python3 "$here/first_page.py" orane "$out/first-page.png"

DEBIAN_FRONTEND=noninteractive $SUDO apt-get remove -y -qq -o DPkg::Lock::Timeout=300 orane >"$out/apt-remove.log" 2>&1
trap - EXIT
# Every file is gone; a folder may stay only when another package owns it or still holds files.
left=""
while IFS= read -r path; do
    [ -e "$path" ] || [ -L "$path" ] || continue
    if [ -d "$path" ] && { dpkg-query -S "$path" >/dev/null 2>&1 || [ -n "$(ls -A "$path")" ]; }; then
        continue
    fi
    left="$left $path"
done <"$out/files.txt"
if [ -n "$left" ]; then
    echo "package: left behind after removal:$left"
    exit 1
fi
echo "package: installed, played from another folder, removed without a trace ($(wc -l <"$out/files.txt") paths)"
