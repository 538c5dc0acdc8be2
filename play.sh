#!/bin/sh
# Installs what is missing, builds, and starts the game.
set -e
cd "$(dirname "$0")"
sh scripts/setup.sh
sh scripts/build.sh build
cd build
exec ./orane
