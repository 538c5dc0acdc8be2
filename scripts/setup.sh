#!/bin/sh
# Installs, once, every Debian package the game, its tests and its tools need.
# Run by play.sh and test.sh (sh scripts/setup.sh); a second run finds everything and installs nothing.
set -e

ORANE_PACKAGES="build-essential cmake pkg-config libsfml-dev libgtest-dev libgmock-dev \
libbenchmark-dev xvfb xauth x11-utils xdotool imagemagick libgl1-mesa-dri \
fonts-dancingscript fonts-kaushanscript fonts-courier-prime graphviz sox \
libsox-fmt-all clang libclang-rt-14-dev python3 \
fonts-leckerli-one python3-fonttools libhunspell-dev hunspell-fr \
dpkg-dev file lintian desktop-file-utils appstream clang-format clang-tidy \
nlohmann-json3-dev neovim nodejs"
# npm comes with some builds of nodejs; Debian's own nodejs needs its npm package beside it.
command -v npm >/dev/null 2>&1 || ORANE_PACKAGES="$ORANE_PACKAGES npm"

missing=""
for package in $ORANE_PACKAGES; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing="$missing $package"
    fi
done

if [ -n "$missing" ]; then
    echo "Installing:$missing"
    if [ "$(id -u)" = "0" ]; then
        SUDO=""
    elif command -v sudo >/dev/null 2>&1 && sudo -n true 2>/dev/null; then
        SUDO="sudo"
    else
        echo "Missing packages. Run as root:"
        echo "  apt-get update && apt-get install -y$missing"
        exit 1
    fi
    export DEBIAN_FRONTEND=noninteractive
    $SUDO apt-get update -qq
    $SUDO apt-get install -y -qq --no-install-recommends $missing >/dev/null
fi
