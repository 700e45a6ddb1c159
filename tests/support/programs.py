"""What the tests of the real programs share."""

import os, pathlib, struct, subprocess, sys

# For the modules that the tests share with the scripts.
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))

HOST, PORT = "10.77.0.1", 5563


def check(condition, *what):
    """Ends the test where the condition does not hold."""
    if not condition:
        sys.exit(f"failed: {what}"[:3000])


def run(*command, **more):
    return subprocess.run(command, text=True, timeout=20,
                          **{"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **more})


def packet(text, command=0):
    return struct.pack(">ii", 8 + len(text), command) + text


def in_private_network(test):
    """Runs the test. Ends with 77, which stands for a test left out, on a real network."""
    if "QUORVEL_PRIVATE_NETWORK" not in os.environ:
        print("no private network: nothing is tested")
        sys.exit(77)
    test()
