"""Waiting for what other processes bring about."""

import sys
import time


def wait_for(what, reached, seconds=20):
    """The first true value of `reached`. Ends this process after the seconds."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if value := reached():
            return value
        time.sleep(0.01)
    sys.exit(f"never came about: {what}")
