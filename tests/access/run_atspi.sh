#!/usr/bin/env bash
# Runs atspi_panel.py, which starts its own X server and D-Bus session.
# Exits 77 (skipped) when a tool it needs is not installed.
# Usage: run_atspi.sh PANELVIEW PANEL.xml
set -eu
here="$(cd "$(dirname "$0")" && pwd)"
# The Debian python, which python3-pyatspi installs into.
python=/usr/bin/python3
for tool in Xvfb xprop dbus-run-session dbus-send $python; do
    command -v "$tool" >/dev/null || { echo "SKIP: $tool is not installed"; exit 77; }
done
$python -c "import pyatspi" 2>/dev/null || { echo "SKIP: python3-pyatspi is not installed"; exit 77; }
[ -f /usr/share/dbus-1/services/org.a11y.Bus.service ] || { echo "SKIP: at-spi2-core is not installed"; exit 77; }
exec $python "$here/atspi_panel.py" "$1" "$2"
