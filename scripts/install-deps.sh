#!/usr/bin/env bash
# Installs, from Debian 12's packages, whatever the build, the reference service and the tests need and
# this machine lacks.
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-declarative-dev qt6-svg-dev libqt6svg6 libgl-dev
  qml6-module-qtqml qml6-module-qtqml-models
  qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-templates
  qml6-module-qtquick-layouts qml6-module-qtquick-window qml6-module-qtqml-workerscript
  qt6-webengine-dev qml6-module-qtwebengine qml6-module-qtwebchannel
  qt6-multimedia-dev qml6-module-qtmultimedia gstreamer1.0-plugins-base gstreamer1.0-plugins-good
  libzxing-dev libcpp-httplib-dev nlohmann-json3-dev libsqlite3-dev libssl-dev zlib1g-dev libbrotli-dev
  xvfb xauth
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
echo "Installing: ${missing[*]}"
$sudo apt-get update -q
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
