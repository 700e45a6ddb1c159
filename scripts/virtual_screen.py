"""A screen without a monitor, and the hands of a user."""

import os
import subprocess

from waiting import wait_for


def output(*command):
    """What a command prints; one that hangs or fails prints nothing."""
    try:
        return subprocess.run(command, capture_output=True, text=True, timeout=5).stdout.strip()
    except subprocess.TimeoutExpired:
        return ""


def start_screen(start):
    """An X server with a window manager. `start(*command, **options)` starts a process."""
    read, write = os.pipe()
    # Without the option the server begins anew whenever the last program leaves, be it one that
    # only looks for the window manager, and ends the window manager's start.
    start("Xvfb", "-noreset", "-displayfd", str(write), "-screen", "0", "1024x768x24",
          pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    with os.fdopen(read) as number:
        os.environ["DISPLAY"] = ":" + number.readline().strip()
    start("openbox", stderr=subprocess.DEVNULL)
    # A window that is shown while the window manager starts may never come up.
    wait_for("a window manager", lambda: "window id" in output(
        "xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))


def window(title):
    return wait_for(f"a window {title}", lambda: output(
        "xdotool", "search", "--onlyvisible", "--name", title).split("\n")[0])


def keys(window_id, *names):
    output("xdotool", "windowactivate", window_id)
    wait_for("the focus", lambda: output("xdotool", "getactivewindow") == window_id)
    output("xdotool", "key", *names)
