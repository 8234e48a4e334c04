#!/usr/bin/env bash
# Runs every test: installs what is missing, builds, then CTest (unit, service and end-to-end tests).
set -euo pipefail
cd "$(dirname "$0")"
bash scripts/install-deps.sh
bash scripts/build.sh
cd build
QT_QPA_PLATFORM=offscreen ctest --output-on-failure --timeout 300 "$@"
