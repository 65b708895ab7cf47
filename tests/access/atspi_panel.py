#!/usr/bin/env python3
"""Opens a panel in panelview on the AT-SPI bus and checks what a screen
reader sees: every control is named, has the role of its family, and value
controls give their value text and position.

Usage: atspi_panel.py PANELVIEW PANEL.xml
Run inside an X server and a D-Bus session (xvfb-run, dbus-run-session).
"""
import os
import subprocess
import sys
import time

import pyatspi
from gi.repository import GLib



def pause(seconds):
    # The library learns of new applications and changes through D-Bus
    # signals, which only a running main context delivers.
    deadline = time.monotonic() + seconds
    context = GLib.MainContext.default()
    while time.monotonic() < deadline:
        while context.iteration(False):
            pass
        time.sleep(0.02)


def find_app(name, timeout=60):
    deadline = time.monotonic() + timeout
    while time.monotonic() < deadline:
        for app in pyatspi.Registry.getDesktop(0):
            if app is not None and app.name == name:
                return app
        pause(0.2)
    return None


def walk(node, found):
    for child in node:
        if child is None:
            continue
        found.append(child)
        walk(child, found)


def text_of(node):
    try:
        t = node.queryText()
        return t.getText(0, -1)
    except NotImplementedError:
        return None


def value_of(node):
    try:
        return node.queryValue().currentValue
    except NotImplementedError:
        return None


NOT_FOUND = 3


def launch(panelview, panel):
    env = dict(os.environ, QT_ACCESSIBILITY="1", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
               QT_QPA_PLATFORM="xcb", QT_FONT_DPI="96")
    # Qt looks for the accessibility bus once, at start: wait until it answers.
    deadline = time.monotonic() + 60
    while subprocess.run(["dbus-send", "--session", "--dest=org.a11y.Bus", "--print-reply",
                          "/org/a11y/bus", "org.a11y.Bus.GetAddress"],
                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode != 0:
        if time.monotonic() > deadline:
            print("FAIL: the accessibility bus did not start")
            return 1
        time.sleep(0.2)
    # As on a desktop with a screen reader, the registry runs before the
    # application starts (asking for the desktop starts it).
    subprocess.run([sys.executable, "-c", "import pyatspi; pyatspi.Registry.getDesktop(0).childCount"],
                   check=True)
    # Qt's bridge sometimes fails to register with the registry at start
    # (seen here in about half of the starts under Xvfb); a start that has
    # not registered within 15 s is retried, up to five starts.
    rc = NOT_FOUND
    for attempt in range(5):
        app_proc = subprocess.Popen([panelview, panel], env=env)
        try:
            deadline = time.monotonic() + 15
            while True:
                # Each look is a fresh process: the reader's library keeps
                # the list of applications it saw first.
                rc = subprocess.run([sys.executable, os.path.abspath(__file__), "--check"]).returncode
                if rc != NOT_FOUND or time.monotonic() > deadline:
                    break
                if app_proc.poll() is not None:
                    print("FAIL: panelview exited with %d" % app_proc.returncode)
                    return 1
                time.sleep(0.5)
        finally:
            app_proc.terminate()
            app_proc.wait(10)
        if rc != NOT_FOUND:
            return rc
        print("panelview start %d did not register on the AT-SPI bus" % (attempt + 1))
    print("FAIL: panelview never appeared on the AT-SPI bus")
    return 1

def check():
    app = find_app("panelview", timeout=3)
    if app is None:
        return NOT_FOUND
    # The window is built after the application registers.
    nodes = []
    deadline = time.monotonic() + 30
    while time.monotonic() < deadline:
        nodes = []
        walk(app, nodes)
        if sum(1 for n in nodes if n.getRoleName() == "slider") >= 1:
            break
        pause(0.3)

    failures = []
    by_role = {}
    for n in nodes:
        by_role.setdefault(n.getRoleName(), []).append(n)
    print("roles:", {r: len(v) for r, v in sorted(by_role.items())})

    controls = [n for n in nodes if n.getRoleName() in
                ("slider", "dial", "spin button", "check box", "push button", "radio button",
                 "combo box", "progress bar", "label", "text", "image", "table")]
    unnamed = [n for n in controls if not n.name]
    fillers = [n for n in nodes if n.getRoleName() == "filler" and not n.name]
    if unnamed:
        failures.append("%d controls without a name: %s" % (len(unnamed), [n.getRoleName() for n in unnamed]))
    if len(controls) < 90:
        failures.append("only %d controls seen" % len(controls))

    def one(role, name):
        for n in by_role.get(role, []):
            if n.name == name:
                return n
        failures.append("no %s named %r; %s are %s" % (role, name, role, [x.name for x in by_role.get(role, [])]))
        return None

    fader = one("slider", "Ch 1 Fader")
    if fader is not None:
        t = text_of(fader)
        if not t or not t.endswith("dB"):
            failures.append("the fader's value text is %r" % t)
        v = value_of(fader)
        if v is None or not 0.0 <= v <= 1.0:
            failures.append("the fader's position is %r" % v)
    if fader is not None:
        # Stepping through the bridge takes the keyboard's path: the
        # database answers and the new value reaches the reader.
        before_text, before_pos = text_of(fader), value_of(fader)
        action = fader.queryAction()
        names = [action.getName(i).lower() for i in range(action.nActions)]
        if "increase" not in names:
            failures.append("the fader offers no increase action: %s" % names)
        else:
            action.doAction(names.index("increase"))
            deadline = time.monotonic() + 10
            while time.monotonic() < deadline and text_of(fader) == before_text:
                pause(0.1)
            if text_of(fader) == before_text or not value_of(fader) > before_pos:
                failures.append("increase left the fader at %r (%r), it was %r (%r)"
                                % (text_of(fader), value_of(fader), before_text, before_pos))
    gain = one("dial", "Ch 1 HA Gain")
    if gain is not None and not text_of(gain):
        failures.append("the gain dial has no value text")
    box = one("spin button", "Ch 1 HA Gain")
    if gain is not None and box is not None and text_of(box) != text_of(gain):
        failures.append("the gain box reads %r, the dial %r" % (text_of(box), text_of(gain)))
    comp = one("check box", "Ch 1 Comp On")
    if comp is not None and not comp.getState().contains(pyatspi.STATE_CHECKED):
        failures.append("the compressor switch set On is not checked")
    one("label", "Head amp")
    combo = one("combo box", "Ch 1 Input")
    if combo is not None and not text_of(combo):
        failures.append("the input combo box has no value text")
    if not by_role.get("progress bar"):
        failures.append("no meter")
    print("unnamed fillers:", len(fillers))
    if failures:
        for f in failures:
            print("FAIL:", f)
        return 1
    print("PASS: %d controls named, roles and values as expected" % len(controls))
    return 0


def main():
    if sys.argv[1:] == ["--check"]:
        return check()
    return launch(sys.argv[1], sys.argv[2])


if __name__ == "__main__":
    sys.exit(main())
