#!/usr/bin/env bash
# Quick start: installs what is missing, builds, starts the reference service and opens the app.
#   ./run.sh [--port N] [--maintenance] [--popup on|off]   (extra options go to the service)
set -euo pipefail
cd "$(dirname "$0")"
bash scripts/install-deps.sh
bash scripts/build.sh

port=8470
args=()
while [ $# -gt 0 ]; do
  case "$1" in
    --port) port="$2"; shift 2 ;;
    *) args+=("$1"); shift ;;
  esac
done

mkdir -p build/demo
./build/server/ekinora-server --port "$port" --db build/demo/ekinora-server.db --quiet "${args[@]}" &
server=$!
trap 'kill $server 2>/dev/null || true' EXIT
for _ in $(seq 50); do
  (exec 3<>/dev/tcp/127.0.0.1/"$port") 2>/dev/null && break
  sleep 0.1
done

# No camera on the desktop: the scanners read the printed demo codes, shown in turn every few seconds.
app=(./build/src/ekinora --service-base "http://127.0.0.1:$port" --settings-dir build/demo/settings
     --camera-source demo/codes)
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "No display: the app runs under Xvfb (screen :99 is virtual)."
  xvfb-run -a -s "-screen 0 390x844x24" "${app[@]}"
else
  "${app[@]}"
fi
