"""The real program on a screen of its own, under a user's hands: smoke_test.py PROGRAM-FOLDER."""

import os, pathlib, socket, subprocess, sys, tempfile

from support.programs import HOST, PORT, check, in_private_network
from virtual_screen import keys, output, start_screen, window
from waiting import wait_for

PROGRAMS = pathlib.Path(sys.argv[1]).resolve()
TITLE = "Quorvel v1.0.5 -  Listening..."
KEY, GROUP = "Maple-Room-7", "224.195.13.122"


def log_text(window_id):
    """What a user gets who selects the whole log and copies it."""
    output("xdotool", "mousemove", "--window", window_id, "300", "200", "click", "1")
    keys(window_id, "ctrl+a", "ctrl+c")
    return output("xclip", "-o", "-selection", "clipboard")


def expect_end(program):
    check(program.wait(timeout=20) == 0, "the program ended with", program.returncode)


def first_run(started):
    """Type a key, accept what the dialog offers, and listen."""
    started.append(program := subprocess.Popen([PROGRAMS / "quorvel"]))
    window_id = window("Getting Started")
    keys(window_id)
    output("xdotool", "type", KEY)
    keys(window_id, "Return")  # presses nothing
    output("xdotool", "mousemove", "--window", window_id, "384", "463", "click", "1")
    keys(window("Save As"), "Return")
    window_id = window(TITLE)
    maps = pathlib.Path(f"/proc/{program.pid}/maps")
    wait_for("what plays the sound", lambda: "quorvel_sound" in maps.read_text())
    keys(window_id, "alt+F4")
    expect_end(program)


def second_run(home, started):
    """The key is in the key file: listen to the group, show, print, end by a signal."""
    started.append(program := subprocess.Popen([PROGRAMS / "quorvel"]))
    window_id = window(TITLE)
    # The mirrored text, sent without any code of the program.
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as sender:
        sender.sendto(b"\0\0\0\x19\0\0\0\0Svool, Dliow 7992", (GROUP, PORT))
    subprocess.run([PROGRAMS / "quorvel-send", "--key", KEY, "--", "Marks: 9 of 10", "-2"], check=True)
    expected = "".join(f"IP Address: {HOST} Sent: {text}\n"
                       for text in ("Hello, World 2007", "Marks: 9 of 10", "-2"))
    wait_for("the three lines in the log", lambda: log_text(window_id) == expected.strip())
    check_print(home, window_id, expected)
    program.terminate()
    expect_end(program)


def check_print(home, window_id, expected):
    """With no printer, the dialogs' own offer is a PDF."""
    keys(window_id, "ctrl+p")
    keys(window("Page Setup"), "Return")
    keys(window("^Print$"), "Return")
    pages = wait_for("a PDF", lambda: [pdf for pdf in home.rglob("*.pdf") if pdf.stat().st_size])
    text = wait_for("the text in the PDF", lambda: output("pdftotext", "-layout", str(pages[0]), "-"))
    found = [line.strip() for line in text.split("\n") if line.strip()]
    check(found == expected.strip().split("\n") + ["Page: 1"], "the PDF holds", found)


def run(home, started):
    (home / "Documents").mkdir()
    os.environ.update(HOME=str(home), XDG_RUNTIME_DIR=str(home), XDG_CONFIG_HOME=str(home),
                      QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8", LANGUAGE="")
    home.chmod(0o700)
    os.chdir(home)

    def start(*command, **options):
        started.append(subprocess.Popen(command, **options))
    start_screen(start)
    first_run(started)
    second_run(home, started)


def main():
    started = []
    with tempfile.TemporaryDirectory(prefix="quorvel-") as home:
        try:
            run(pathlib.Path(home), started)
        finally:
            for process in reversed(started):
                process.terminate()
                process.wait()


in_private_network(main)
