#!/usr/bin/env python3
"""Opens a panel in panelview on the AT-SPI bus and checks what a screen
reader sees: every control is named, has the role of its family, and value
controls give their value text and position.

Usage: atspi_panel.py PANELVIEW PANEL.xml

Starts its own X server and D-Bus session and ends every process they
started when it is done, whether the walk passes or not.
"""
import ctypes
import os
import re
import signal
import subprocess
import sys
import tempfile
import time

# Seconds the whole walk may take inside its session.
SESSION_TIMEOUT = 90


def end_with_parent():
    # Runs in the child before exec: if the runner is killed outright (a
    # test driver's SIGKILL), the child gets SIGTERM instead of living on.
    PR_SET_PDEATHSIG = 1
    ctypes.CDLL(None, use_errno=True).prctl(PR_SET_PDEATHSIG, signal.SIGTERM)


def start_x_server(workdir):
    # Xvfb picks a free display itself and writes its number once it
    # accepts clients. Without -noreset it resets when its last client
    # goes, which wipes the root window's properties, AT_SPI_BUS among them.
    read_fd, write_fd = os.pipe()
    xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(write_fd), "-noreset", "-nolisten", "tcp",
                             "-screen", "0", "1280x1024x24"],
                            pass_fds=(write_fd,), cwd=workdir, start_new_session=True,
                            preexec_fn=end_with_parent,
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(write_fd)
    with os.fdopen(read_fd) as pipe:
        display = pipe.readline().strip()
    if not display.isdigit():
        xvfb.kill()
        xvfb.wait()
        return None, None
    return xvfb, ":" + display


def end_group(proc, grace=5.0):
    """Ends proc and every process left in its process group."""
    pgid = proc.pid
    for sig, wait in ((signal.SIGTERM, grace), (signal.SIGKILL, grace)):
        try:
            os.killpg(pgid, sig)
        except ProcessLookupError:
            break
        deadline = time.monotonic() + wait
        while time.monotonic() < deadline:
            if proc.poll() is None:
                time.sleep(0.05)
                continue
            try:
                # Daemons the bus started outlive their parent, in the group.
                os.killpg(pgid, 0)
            except ProcessLookupError:
                return
            time.sleep(0.05)
    proc.poll()


def run(panelview, panel):
    # SIGTERM (a test driver giving up) still ends the session below.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    with tempfile.TemporaryDirectory(prefix="corvane-atspi-") as workdir:
        # The accessibility bus puts its socket under XDG_RUNTIME_DIR, named
        # after the display: a directory per run keeps runs apart.
        env = dict(os.environ, XDG_RUNTIME_DIR=workdir)
        # Not the desktop's: the launcher leaves the root window alone under
        # Wayland, and the reader's library would go to the desktop's bus.
        for name in ("WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS"):
            env.pop(name, None)
        xvfb, display = start_x_server(workdir)
        if xvfb is None:
            print("FAIL: Xvfb did not start")
            return 1
        session = None
        try:
            env["DISPLAY"] = display
            session = subprocess.Popen(["dbus-run-session", "--", sys.executable, os.path.abspath(__file__),
                                        "--session", os.path.abspath(panelview), os.path.abspath(panel)],
                                       env=env, cwd=workdir, start_new_session=True,
                                       preexec_fn=end_with_parent)
            try:
                return session.wait(SESSION_TIMEOUT)
            except subprocess.TimeoutExpired:
                print("FAIL: the walk took longer than %d s" % SESSION_TIMEOUT)
                return 1
        finally:
            if session is not None:
                end_group(session)
            end_group(xvfb)


def session(panelview, panel):
    # Asking for the address starts the accessibility bus, whose launcher
    # also puts the address on the X root window (AT_SPI_BUS).
    bus = subprocess.run(["dbus-send", "--session", "--dest=org.a11y.Bus", "--print-reply=literal",
                          "/org/a11y/bus", "org.a11y.Bus.GetAddress"],
                         capture_output=True, text=True)
    address = bus.stdout.strip()
    if bus.returncode != 0 or not address:
        print("FAIL: the accessibility bus did not start:", bus.stderr.strip())
        return 1
    # Qt 5.15 connects to the bus at start only when it finds the address
    # on the root window; asked over D-Bus instead, its bridge may register
    # before the connection is up, and then never does.
    prop = subprocess.run(["xprop", "-root", "AT_SPI_BUS"], capture_output=True, text=True).stdout
    if address not in prop:
        print("FAIL: the root window does not carry the accessibility bus address:", prop.strip())
        return 1

    import pyatspi
    from gi.repository import GLib

    def pause(seconds):
        # The library learns of new applications and changes through
        # D-Bus signals, which only a running main context delivers.
        deadline = time.monotonic() + seconds
        context = GLib.MainContext.default()
        while time.monotonic() < deadline:
            while context.iteration(False):
                pass
            time.sleep(0.02)

    # As on a desktop with a screen reader, the registry runs before the
    # application starts (asking for the desktop starts it).
    desktop = pyatspi.Registry.getDesktop(0)
    desktop.childCount

    env = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb",
               QT_FONT_DPI="96")
    app_proc = subprocess.Popen([panelview, panel], env=env)
    try:
        app = None
        deadline = time.monotonic() + 20
        while app is None and time.monotonic() < deadline:
            if app_proc.poll() is not None:
                print("FAIL: panelview exited with %d" % app_proc.returncode)
                return 1
            app = next((a for a in desktop if a is not None and a.name == "panelview"), None)
            if app is None:
                pause(0.1)
        if app is None:
            print("FAIL: panelview did not register on the AT-SPI bus")
            return 1
        return check(app, pause)
    finally:
        app_proc.terminate()
        try:
            app_proc.wait(10)
        except subprocess.TimeoutExpired:
            app_proc.kill()
            app_proc.wait()


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


# What the demo panel reads when it opens, by (role, name): the value text
# of each control of that role and name, in panel order.
TEXTS = {
    ("label", "Ch 1 Name"): ["Ch 1"],
    ("label", "Head amp"): ["Head amp"],
    ("combo box", "Ch 1 Input"): ["Mic"],
    ("dial", "Ch 1 HA Gain"): ["20 dB"],
    ("spin button", "Ch 1 HA Gain"): ["20 dB"],
    ("check box", "Ch 1 HA Phantom"): ["Off"],
    ("check box", "Ch 1 HA Phase"): ["Normal"],
    ("check box", "Ch 1 Comp On"): ["On"],
    ("dial", "Ch 1 Comp Threshold"): ["-20.0 dB"],
    ("spin button", "Ch 1 Comp Threshold"): ["-20.0 dB"],
    ("combo box", "Ch 1 Comp Ratio"): ["3:1"],
    ("spin button", "Ch 1 Comp Attack"): ["10.0 ms"],
    # The box for metres drops its blanks (SpaceDelete).
    ("spin button", "Ch 1 Delay Time"): ["0.00 ms", "0.00ms", "0.00 ms"],
    ("dial", "Ch 1 Pan"): ["0"],
    ("slider", "Ch 1 Fader"): ["0.0 dB"],
    ("spin button", "Ch 1 Fader"): ["0.0 dB"],
    ("check box", "Ch 1 Mute"): ["Off"],
    ("image", "Band 2"): ["500 Hz  -4.5 dB"],
    ("image", "Low-pass"): ["16000 Hz"],
    ("spin button", "Ch 1 HPF Freq"): ["80.0 Hz"],
    ("combo box", "Ch 1 HPF Slope"): ["12 dB/oct"],
    ("combo box", "Ch 1 EQ Band 4 Type"): ["High Shelf"],
    ("dial", "Ch 1 EQ Band 2 Gain"): ["-4.5 dB"],
    ("spin button", "Ch 1 EQ Band 2 Q"): ["2.00"],
    ("spin button", "Ch 1 EQ Band 3 Freq"): ["2500 Hz"],
}

# Positions (0 to 1) that follow from the texts above.
POSITIONS = {
    ("slider", "Ch 1 Fader"): 0.84375,
    ("dial", "Ch 1 Pan"): 0.5,
    ("dial", "Ch 1 EQ Band 2 Gain"): 0.375,
    ("spin button", "Ch 1 Comp Attack"): 0.5,
}

# The check boxes that are on; the other check boxes are off.
CHECKED = {"Ch 1 Comp On", "Ch 1 EQ On", "Ch 1 EQ Sum", "Ch 1 HPF On", "Ch 1 LPF On",
           "Ch 1 EQ Band 1 On", "Ch 1 EQ Band 2 On", "Ch 1 EQ Band 3 On", "Ch 1 EQ Band 4 On"}

# How many nodes of each role the panel has: a family that reports the
# wrong role moves a count.
ROLES = {"check box": 12, "combo box": 8, "dial": 7, "filler": 1, "image": 12, "label": 43,
         "progress bar": 2, "slider": 1, "spin button": 22}

NAMED_ROLES = {"slider", "dial", "spin button", "check box", "push button", "radio button",
               "combo box", "progress bar", "label", "text", "image", "table"}


def check(app, pause):
    import pyatspi

    def wait_for(test, seconds=10):
        deadline = time.monotonic() + seconds
        while not test() and time.monotonic() < deadline:
            pause(0.05)
        return test()

    # The window is built after the application registers.
    nodes = []
    deadline = time.monotonic() + 30
    while time.monotonic() < deadline:
        nodes = []
        walk(app, nodes)
        if any(n.getRoleName() == "slider" for n in nodes):
            break
        pause(0.3)

    failures = []
    by_key = {}
    counts = {}
    for n in nodes:
        role = n.getRoleName()
        counts[role] = counts.get(role, 0) + 1
        by_key.setdefault((role, n.name), []).append(n)
    if counts != ROLES:
        failures.append("roles %s, expected %s" % (sorted(counts.items()), sorted(ROLES.items())))

    unnamed = [n.getRoleName() for n in nodes if n.getRoleName() in NAMED_ROLES and not n.name]
    if unnamed:
        failures.append("%d controls without a name: %s" % (len(unnamed), unnamed))

    for key, texts in TEXTS.items():
        seen = [text_of(n) for n in by_key.get(key, [])]
        if seen != texts:
            failures.append("%s %r reads %r, expected %r" % (key[0], key[1], seen, texts))
    for key, position in POSITIONS.items():
        seen = [value_of(n) for n in by_key.get(key, [])]
        if len(seen) != 1 or seen[0] is None or abs(seen[0] - position) > 1e-4:
            failures.append("%s %r is at %r, expected %r" % (key[0], key[1], seen, position))

    boxes = [n for n in nodes if n.getRoleName() == "check box"]
    checked = {n.name for n in boxes if n.getState().contains(pyatspi.STATE_CHECKED)}
    if checked != CHECKED:
        failures.append("checked: %s, expected %s" % (sorted(checked), sorted(CHECKED)))

    # Meters move with the signal: their text has the database's form.
    meters = [n for n in nodes if n.getRoleName() == "progress bar"]
    for n in meters:
        t, v = text_of(n), value_of(n)
        if not t or not re.fullmatch(r"-?\d+\.\d dB", t) or v is None or not 0.0 <= v <= 1.0:
            failures.append("meter %r reads %r at %r" % (n.name, t, v))
        if not n.getState().contains(pyatspi.STATE_READ_ONLY):
            failures.append("meter %r is not read only" % n.name)
    if sorted(n.description for n in meters) != ["Meter:Ch1/GR, Dev/Online",
                                                  "Meter:Ch1/Level, Ch1/Meter/PeakHold, Dev/Online"]:
        failures.append("meter descriptions %r" % [n.description for n in meters])

    fader = by_key.get(("slider", "Ch 1 Fader"), [None])[0]
    if fader is not None:
        if fader.description != "Ch1/Fader":
            failures.append("the fader's description is %r" % fader.description)
        # Actions take the keyboard's path: the database answers and the
        # new value reaches the reader.
        action = fader.queryAction()
        names = [action.getName(i).lower() for i in range(action.nActions)]
        for name, text in (("increase", "1.0 dB"), ("decrease", "0.0 dB")):
            if name not in names:
                failures.append("the fader offers no %s action: %s" % (name, names))
                continue
            before = value_of(fader)
            action.doAction(names.index(name))
            if not wait_for(lambda: text_of(fader) == text):
                failures.append("%s left the fader at %r, expected %r" % (name, text_of(fader), text))
            elif (value_of(fader) > before) != (name == "increase"):
                failures.append("%s moved the fader from %r to %r" % (name, before, value_of(fader)))

    mute = by_key.get(("check box", "Ch 1 Mute"), [None])[0]
    if mute is not None:
        action = mute.queryAction()
        names = [action.getName(i).lower() for i in range(action.nActions)]
        if "press" not in names:
            failures.append("the mute switch offers no press action: %s" % names)
        else:
            action.doAction(names.index("press"))
            if not wait_for(lambda: text_of(mute) == "On"
                            and mute.getState().contains(pyatspi.STATE_CHECKED)):
                failures.append("press left the mute switch at %r, checked %s"
                                % (text_of(mute), mute.getState().contains(pyatspi.STATE_CHECKED)))

    if failures:
        for f in failures:
            print("FAIL:", f)
        return 1
    print("PASS: %d nodes named, roles, texts and actions as expected" % len(nodes))
    return 0


def main():
    if len(sys.argv) == 4 and sys.argv[1] == "--session":
        return session(sys.argv[2], sys.argv[3])
    if len(sys.argv) != 3:
        print(__doc__.strip())
        return 2
    return run(sys.argv[1], sys.argv[2])


if __name__ == "__main__":
    sys.exit(main())
