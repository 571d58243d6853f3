# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads the program's windows as a screen reader does, through AT-SPI.

    dbus-run-session -- python3 readers.py PROGRAM

Starts PROGRAM with the simulated bench on a display of its own, opens every window by its menu entry
or button, and walks it. Prints what a reader would miss, a line each; the exit code is 0 when that
is nothing, 77 when something that it needs is not installed.
"""

import os
import shutil
import subprocess
import sys
import tempfile
import time

try:
    import gi

    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi
except (ImportError, ValueError):
    sys.exit(77)
if shutil.which("Xvfb") is None:
    sys.exit(77)

PATIENCE = 60
MENUS = (Atspi.Role.MENU_BAR, Atspi.Role.MENU, Atspi.Role.MENU_ITEM, Atspi.Role.POPUP_MENU)
faults = []


def children(thing):
    for index in range(thing.get_child_count()):
        child = thing.get_child_at_index(index)
        if child is not None:
            yield child


def states(thing):
    return thing.get_state_set()


def is_shown(thing):
    return states(thing).contains(Atspi.StateType.SHOWING)


def walk(thing, depth=0):
    """The things that are shown. Of a long list or table the first ones."""
    yield thing
    if depth > 40:
        return
    for index, child in enumerate(children(thing)):
        if index == 80:
            return
        if is_shown(child) or child.get_role() in MENUS:
            yield from walk(child, depth + 1)


def text_of(thing):
    if "Text" not in thing.get_interfaces():
        return ""
    return Atspi.Text.get_text(thing, 0, Atspi.Text.get_character_count(thing))


def await_(what, ask):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            found = ask()
        except Exception:  # it has gone meanwhile
            found = None
        if found:
            return found
        time.sleep(0.1)
    raise SystemExit(f"gave up waiting for {what}")


def find(where, name, roles=None):
    for thing in walk(where):
        if thing.get_name() == name and (roles is None or thing.get_role_name() in roles):
            return thing
    return None


def press(where, name, roles=("push button", "button", "menu item", "check menu item", "page tab")):
    thing = await_(name, lambda: find(where, name, roles))
    actions = [Atspi.Action.get_action_name(thing, index) for index in range(Atspi.Action.get_n_actions(thing))]
    wanted = next((word for word in ("Press", "Toggle", "SetFocus") if word in actions), None)
    if wanted is None:
        raise SystemExit(f"{name} can only be {actions}")
    Atspi.Action.do_action(thing, actions.index(wanted))


def label_of(thing):
    """What a reader says first: its name, or that of the label that stands for it."""
    if thing.get_name():
        return thing.get_name()
    for relation in thing.get_relation_set():
        if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY and relation.get_n_targets():
            return relation.get_target(0).get_name()
    return thing.get_description()


def is_captioned(box):
    labelled = any(each.get_relation_type() == Atspi.RelationType.LABELLED_BY for each in box.get_relation_set())
    return labelled or ": " in box.get_name() or not text_in(box)


def text_in(box):
    """What is chosen or typed in it."""
    return next((text_of(child) for child in children(box) if text_of(child)), "")


# Their own parts are read, not they themselves.
CONTAINERS = {"filler", "panel", "split pane", "layered pane", "page tab list", "list item", "table cell",
              "frame", "dialog", "window", "scroll pane", "viewport"}


def judge(window):
    title = window.get_name()
    for thing in walk(window):
        role = thing.get_role_name()
        if role in CONTAINERS or not is_shown(thing):
            continue
        text = text_of(thing)
        if role == "label":  # of the guide the text alone is read
            if text not in thing.get_name() and len(text) < 1000:
                faults.append(f"{title}: {thing.get_name()!r} keeps {text!r} to itself")
        elif states(thing).contains(Atspi.StateType.FOCUSABLE) and not label_of(thing):
            faults.append(f"{title}: a {role} has no name")
        elif role == "combo box" and not is_captioned(thing):
            faults.append(f"{title}: a box says {thing.get_name()!r} alone")


def windows(application):
    return {window.get_name(): window for window in children(application) if is_shown(window)}


def open_window(application, title, press_it):
    press_it()
    window = await_(title, lambda: next((w for name, w in windows(application).items() if name.startswith(title)), None))
    judge(window)
    return window


def read(application):
    main = await_("the main window", lambda: windows(application).get("Corvane"))
    for channel in ("RS-485", "RS-232", "IEEE 488", "TCP/IP-2", "TCP/IP-1"):
        press(main, channel)
        judge(main)
    press(main, "Connect")
    await_("the status", lambda: find(main, "Status: Socket Connected"))
    press(main, "Identify")
    await_("the reply", lambda: "BRENNICK" in text_of(await_("the response", lambda: find(main, "Response", ("text",)))))

    board = open_window(application, "VXM250", lambda: press(main, "VXM250E"))
    for page in ("Digital I/O", "DAC and ADC", "Calibration"):
        press(board, page)
        judge(board)
    press(board, "DAC and ADC")
    press(board, "Read ADC 3")
    await_("the exchange", lambda: any(thing.get_name().startswith("Last command: ") for thing in walk(board)))
    press(board, "Calibration")
    open_window(application, "VXM250 Calibration File", lambda: press(board, "Calibration report"))
    open_window(application, "Corvane - Traffic", lambda: press(main, "Traffic"))
    open_window(application, "Corvane - Trend", lambda: press(main, "Trend"))
    open_window(application, "Corvane - User's Guide", lambda: press(main, "Help"))
    open_window(application, "About", lambda: press(main, "About Corvane"))
    open_window(application, "Simulated bench", lambda: press(main, "Simulated Bench"))
    press(main, "RS-485")
    open_window(application, "Port Configuration", lambda: press(main, "Configure the port"))
    press(main, "IEEE 488")
    open_window(application, "GPIB Adapters", lambda: press(main, "Choose the GPIB adapter"))
    open_window(application, "GPIB Address Search", lambda: press(main, "Search for an instrument"))
    open_window(application, "Edit List", lambda: press(main, "Edit the list as text"))


def application_of(process):
    def ask():
        desktop = Atspi.get_desktop(0)
        return next((each for each in children(desktop) if each.get_process_id() == process.pid), None)

    return await_("the program", ask)


def main():
    with tempfile.TemporaryDirectory() as folder:
        reading, writing = os.pipe()
        display = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1600x1200x24", "-nolisten", "tcp"],
            pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        environment = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                           XDG_CONFIG_HOME=folder, XDG_RUNTIME_DIR=folder,
                           DISPLAY=":" + os.read(reading, 20).decode().strip())
        environment.pop("WAYLAND_DISPLAY", None)
        program = subprocess.Popen([sys.argv[1], "--demo"], env=environment)
        try:
            read(application_of(program))
        finally:
            program.terminate()
            program.wait()
            display.terminate()
            display.wait()
    for fault in dict.fromkeys(faults):
        print(fault)
    return 1 if faults else 0


sys.exit(main())
