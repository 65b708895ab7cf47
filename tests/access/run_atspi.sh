#!/usr/bin/env bash
# Runs atspi_panel.py in its own X server and D-Bus session.
# Usage: run_atspi.sh PANELVIEW PANEL.xml
set -eu
here="$(cd "$(dirname "$0")" && pwd)"
# The Debian python, which python3-pyatspi installs into.
python=/usr/bin/python3
for tool in xvfb-run dbus-run-session $python; do
    command -v "$tool" >/dev/null || { echo "SKIP: $tool is not installed"; exit 77; }
done
$python -c "import pyatspi" 2>/dev/null || { echo "SKIP: python3-pyatspi is not installed"; exit 77; }
[ -f /usr/share/dbus-1/services/org.a11y.Bus.service ] || { echo "SKIP: at-spi2-core is not installed"; exit 77; }
exec xvfb-run -a -s "-screen 0 1280x1024x24" dbus-run-session -- $python "$here/atspi_panel.py" "$1" "$2"
