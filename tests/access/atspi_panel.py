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

BUS_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"


def find_app(name, timeout=60):
    deadline = time.monotonic() + timeout
    seen = set()
    while time.monotonic() < deadline:
        desktop = pyatspi.Registry.getDesktop(0)
        for app in desktop:
            if app is None:
                continue
            seen.add(app.name)
            if app.name == name:
                return app
        time.sleep(0.2)
    print("applications on the bus:", sorted(seen))
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


def main():
    panelview, panel = sys.argv[1], sys.argv[2]
    env = dict(os.environ, QT_ACCESSIBILITY="1", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
               QT_QPA_PLATFORM="xcb", QT_FONT_DPI="96")
    bus = subprocess.Popen([BUS_LAUNCHER, "--launch-immediately"], env=env)
    app_proc = None
    try:
        time.sleep(1)
        app_proc = subprocess.Popen([panelview, panel], env=env)
        app = find_app("panelview")
        if app is None:
            print("FAIL: panelview never appeared on the AT-SPI bus")
            return 1
        # The window is built after the application registers.
        nodes = []
        deadline = time.monotonic() + 30
        while time.monotonic() < deadline:
            nodes = []
            walk(app, nodes)
            if sum(1 for n in nodes if n.getRoleName() == "slider") >= 1:
                break
            time.sleep(0.3)

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
                    time.sleep(0.1)
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
    finally:
        if app_proc is not None:
            app_proc.terminate()
            app_proc.wait(10)
        bus.terminate()


if __name__ == "__main__":
    sys.exit(main())
