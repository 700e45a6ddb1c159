"""Network namespaces that stand for computers."""

import ctypes
import os
import subprocess
import threading
import time

LIBC = ctypes.CDLL(None, use_errno=True)


class Host:
    """A network namespace, which lives as long as a process in the namespace."""

    def __init__(self, cores=None):
        """The programs of the host run on these cores of the machine; on all without a word."""
        self.cores, self.started = cores or os.sched_getaffinity(0), []
        self.holder = subprocess.Popen(["unshare", "-n", "sleep", "infinity"],
                                       stdout=subprocess.DEVNULL)
        while os.readlink(f"/proc/{self.holder.pid}/ns/net") == os.readlink("/proc/self/ns/net"):
            time.sleep(0.001)
        self.namespace = os.open(f"/proc/{self.holder.pid}/ns/net", os.O_RDONLY)
        self.ip("link set lo up")

    def enter(self):
        """Moves the calling thread into the namespace."""
        LIBC.setns(self.namespace, 0)

    def start(self, *command, **options):
        def prepare():
            self.enter()
            os.sched_setaffinity(0, self.cores)
        self.started.append(subprocess.Popen([str(part) for part in command], preexec_fn=prepare,
                                             **options))
        return self.started[-1]

    def within(self, action):
        """Runs the action in a thread of the namespace; returns the running thread."""
        def run():
            self.enter()
            action()
        thread = threading.Thread(target=run, daemon=True)
        thread.start()
        return thread

    def ip(self, *commands):
        batch = self.start("ip", "-batch", "-", stdin=subprocess.PIPE, text=True)
        batch.communicate("\n".join(commands))
        assert batch.returncode == 0, commands

    def end(self):
        """Ends all that runs on the host."""
        os.close(self.namespace)
        for process in [*self.started, self.holder]:
            process.kill()
            process.wait()
