"""The program side by side with other receivers of the same messages; see docs/performance.md.

Network namespaces stand for two computers with a wire between them: a listener's and a sender's.
"""
import argparse, datetime, json, os, pathlib, platform, re, shutil, signal, statistics
import subprocess, sys, tempfile, time

from virtual_host import Host
from virtual_screen import keys, output, start_screen, window
from waiting import wait_for

KEY, GROUP, PORT = "Maple-Room-7", "224.195.13.122", 5563
CARD, LISTENER = "c1", "10.77.0.1"
SOURCES = [f"10.77.0.{number}" for number in range(101, 151)]
TEXT_BYTES, HEADER_BYTES = 24, 8
# A line of 40 bytes: "IP Address: ", an address of 11 bytes, " Sent: ", the text and the line end.
LINE_BYTES = 40
SHORT_TEXT_BYTES = LINE_BYTES - len("IP Address:  Sent: \n") - len(SOURCES[0])
FAST = 0  # messages a second: as many as the sender can send
LOADS = [(20000, 1), (20000, 50), (100000, 1), (100000, 50), (FAST, 1)]
STARTS_A_ROUND = 3
UNPACED_A_SECOND = 100000  # sets the number of messages of the load without a rate
PAGE = pathlib.Path("docs/performance.md")
BEGIN, END = "<!-- figures: scripts/bench.sh writes the lines below -->", "<!-- figures: end -->"
CORES = sorted(os.sched_getaffinity(0))
SENDER_CORES, RECEIVER_CORES = {CORES[0]}, {CORES[1 % len(CORES)]}
OTHER_CORES = set(CORES[2:]) or {CORES[0]}


class Processes:
    """All processes and hosts that this run has started, which end with the run."""

    def __init__(self):
        self.started, self.hosts = [], []

    def start(self, *command, **options):
        self.started.append(subprocess.Popen([str(part) for part in command], **options))
        return self.started[-1]

    def end(self):
        for host in self.hosts:
            host.end()
        for process in reversed(self.started):
            process.terminate()
            process.wait()


class Network:
    """The listener's and the sender's computer."""

    def __init__(self, programs, processes):
        self.programs = programs
        self.listener, self.sender = Host(RECEIVER_CORES), Host(SENDER_CORES)
        processes.hosts += [self.listener, self.sender]
        self.listener.ip(f"link add {CARD} type veth peer name t0 netns {self.sender.holder.pid}",
                         f"addr add {LISTENER}/24 dev {CARD}", f"link set {CARD} up")
        self.sender.ip(*[f"addr add {a}/24 dev t0" for a in SOURCES],
                       "link set t0 up", "route add default dev t0")

    def flood(self, count, per_second, senders, text_bytes=TEXT_BYTES):
        """The number of messages sent, and their number a second."""
        flood = self.sender.start(self.programs / "bench_flood", GROUP, count, per_second, text_bytes,
                                  *SOURCES[:senders], stdout=subprocess.PIPE, text=True)
        report = json.loads(flood.communicate()[0])
        return report["sent"], report["sent"] / report["seconds"]


def watch_windows():
    """A process that prints the list of windows whenever a window comes or goes."""
    watch = subprocess.Popen(["timeout", "60", "xprop", "-root", "-spy", "_NET_CLIENT_LIST"],
                             stdout=subprocess.PIPE, text=True)
    watch.stdout.readline()  # the windows of before
    return watch


def cpu_seconds(process):
    """The processor time of all threads of the process, by the clock of the process."""
    return time.clock_gettime(~process.pid << 3 | 2)


def settle(process, pause=0.2):
    """Waits until the process takes less than a hundredth of a core's time."""
    used = [cpu_seconds(process)]

    def idle():
        time.sleep(pause)
        used.append(cpu_seconds(process))
        return used[-1] - used[-2] < pause / 100
    wait_for(f"idleness of {process.args[0]}", idle, seconds=600)


def socket_figures(process):
    """The bytes that wait in the receive buffer, and the datagrams that the kernel dropped."""
    for line in pathlib.Path(f"/proc/{process.pid}/net/udp").read_text().split("\n"):
        if f":{PORT:04X} " in line:
            words = line.split()
            return int(words[4].split(":")[1], 16), int(words[-1])
    sys.exit(f"{process.args[0]} has closed the socket")


def has_joined(process):
    """Whether the namespace of the process has joined the group: octets in reverse order."""
    octets = "".join(f"{int(octet):02X}" for octet in reversed(GROUP.split(".")))
    return octets in pathlib.Path(f"/proc/{process.pid}/net/igmp").read_text()


def memory_kib(process):
    """Resident memory, and the proportional share of it, as the system counts them."""
    folder = pathlib.Path(f"/proc/{process.pid}")
    figure = lambda file, name: int(re.search(rf"{name}:\s+(\d+)", (folder / file).read_text())[1])
    return figure("status", "VmRSS"), figure("smaps_rollup", "Pss")


class Receiver:
    """A program that hears the group, and ends with a report of its own."""

    def __init__(self, name, *command):
        self.name, self.command = name, command
        self.process = None

    def start(self, network, home):
        self.process = network.listener.start(*self.command, stdout=subprocess.PIPE, text=True,
                                              cwd=home)
        wait_for(f"{self.name} in the group", lambda: has_joined(self.process))

    def heard(self):
        self.process.terminate()
        return json.loads(self.process.communicate()[0])["messages"]


class Copier(Receiver):
    """A program that copies the bytes of all datagrams to a file."""

    def start(self, network, home):
        self.file = home / "datagrams"
        self.command = ("socat", "-u", f"UDP4-RECV:{PORT},ip-add-membership={GROUP}:{CARD},reuseaddr",
                        f"OPEN:{self.file},creat,trunc")
        super().start(network, home)

    def heard(self):
        self.process.terminate()
        self.process.communicate()
        return self.file.stat().st_size // (HEADER_BYTES + TEXT_BYTES)


class DesktopProgram(Receiver):
    """The program in a window; the messages are the lines of the saved log."""

    def start(self, network, home):
        self.folder = home / "Documents" / "Quorvel"
        for old in self.folder.glob("*.txt"):
            old.unlink()
        super().start(network, home)
        self.window = window("Listening")

    def saved(self):
        return [file for file in self.folder.glob("*.txt") if not file.name.startswith(".")]

    def heard(self):
        keys(self.window, "ctrl+s")
        keys(window("Save As"), "Return")
        lines = wait_for("the saved log", self.saved)[0].read_bytes().count(b"\n")
        self.process.terminate()
        self.process.communicate()
        return lines


def receivers(programs, with_screen):
    found = [Receiver("ideal loop", programs / "bench_ideal_loop", GROUP, LISTENER)]
    if (programs / "bench_plain_receiver").exists():
        found.append(Receiver("plain QUdpSocket", programs / "bench_plain_receiver", GROUP, CARD))
    if with_screen and shutil.which("socat"):
        found.append(Copier("socat"))
    found.append(Receiver("Quorvel without a screen", programs / "bench_headless_program"))
    if with_screen:
        found.append(DesktopProgram("Quorvel", programs / "quorvel"))
    return found


def sample(receiver, network, home, load, count, pause=0.2):
    """One row's figures of one round."""
    per_second, senders = load
    receiver.start(network, home)
    settle(receiver.process, pause)
    before = cpu_seconds(receiver.process)
    sent, rate = network.flood(count, per_second, senders)
    wait_for("an empty receive buffer", lambda: socket_figures(receiver.process)[0] == 0)
    settle(receiver.process, pause)
    cpu, drops = cpu_seconds(receiver.process) - before, socket_figures(receiver.process)[1]
    heard = receiver.heard()
    return {"us": cpu * 1e6 / max(heard, 1), "drops": drops, "heard": heard, "sent": sent, "rate": rate,
            "astray": sent - drops - heard}


def medians(samples):
    return {name: statistics.median(one[name] for one in samples) for name in samples[0]}


def load_name(per_second, senders):
    rate = f"{per_second:,} a second" if per_second else "as fast as the sender can"
    return f"{rate}, {senders} sender{'s' * (senders > 1)}"


def measure_loads(network, home, programs, rounds, seconds):
    rows = {(load, receiver.name): [] for load in LOADS for receiver in receivers(programs, True)}
    for number in range(rounds):
        for load in LOADS:
            for receiver in receivers(programs, True):
                count = int((load[0] or UNPACED_A_SECOND) * seconds)
                one = sample(receiver, network, home, load, count)
                rows[load, receiver.name].append(one)
                print(f"round {number + 1}, {load_name(*load)}: {receiver.name}: {one}",
                      file=sys.stderr)
    astray = sum(abs(one["astray"]) for samples in rows.values() for one in samples)
    return {row: medians(samples) for row, samples in rows.items()}, astray


def print_loads(rows, astray):
    yield "| Load | Receiver | CPU a message | of the ideal loop's | Drops | Heard of sent | Sent a second |"
    yield "|---|---|---|---|---|---|---|"
    for (load, name), row in rows.items():
        ideal = rows[load, "ideal loop"]["us"]
        yield (f"| {load_name(*load)} | {name} | {row['us']:.2f} µs | {row['us'] / ideal:.1f} "
               f"| {row['drops']:,.0f} | {row['heard']:,.0f} of {row['sent']:,.0f} | {row['rate']:,.0f} |")
    yield f"\nMessages neither heard nor dropped, or heard twice, in all rounds: {astray:,}."


def measure_start(network, home, command, title):
    """From the start of the process to the window; then the memory."""
    with watch_windows() as windows:
        start = time.monotonic()
        process = network.listener.start(*command, cwd=home)
        if not any("0x" in line for line in windows.stdout):
            sys.exit(f"no window of {command[0]}")
        seconds, cpu = time.monotonic() - start, cpu_seconds(process)
        windows.terminate()
    window(title)
    settle(process)
    resident, share = memory_kib(process)
    process.terminate()
    process.wait()
    return {"ms": seconds * 1e3, "cpu_ms": cpu * 1e3, "resident": resident / 1024, "share": share / 1024}


def measure_starts(network, home, programs, rounds):
    """As a user starts the programs: on all cores."""
    network.listener.cores = set(CORES)
    rows = {"empty window": [], "Quorvel": []}
    for _ in range(STARTS_A_ROUND * rounds):
        rows["empty window"].append(
            measure_start(network, home, [programs / "bench_empty_window"], "Listening"))
        rows["Quorvel"].append(measure_start(network, home, [programs / "quorvel"], "Listening"))
    return {name: medians(samples) for name, samples in rows.items()}


def print_starts(rows):
    yield ("| Program | From the start to the window | of the empty window's | CPU up to the window "
           "| VmRSS | of the empty window's | Pss |")
    yield "|---|---|---|---|---|---|---|"
    empty = rows["empty window"]
    for name, row in rows.items():
        yield (f"| {name} | {row['ms']:.0f} ms | {row['ms'] / empty['ms']:.2f} | {row['cpu_ms']:.0f} ms "
               f"| {row['resident']:.1f} MiB | {row['resident'] / empty['resident']:.2f} "
               f"| {row['share']:.1f} MiB |")


def measure_memory(network, home, programs, lines):
    """Resident memory before and after so many lines, in MiB, and the lines of the saved log."""
    program = DesktopProgram("Quorvel", programs / "quorvel")
    program.start(network, home)
    settle(program.process)
    empty = memory_kib(program.process)[0] / 1024
    network.flood(lines, 20000, 1, SHORT_TEXT_BYTES)
    settle(program.process)
    full = memory_kib(program.process)[0] / 1024
    return empty, full, program.heard()


def print_memory(empty, full, lines):
    text = lines * LINE_BYTES / 2**20
    yield "| Log | Text | VmRSS | VmRSS less that of the empty log | of the text |"
    yield "|---|---|---|---|---|"
    yield (f"| {lines:,} lines of {LINE_BYTES} bytes | {text:.1f} MiB | {full:.1f} MiB "
           f"| {full - empty:.1f} MiB | {(full - empty) / text:.1f} |")


def print_instructions(programs, folder):
    """The difference between two runs leaves out the start of the program."""
    def collected(messages):
        run = subprocess.run(
            ["valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/callgrind",
             programs / "bench_scripted_messages", str(messages)], capture_output=True, text=True)
        return int(re.search(r"Collected : (\d+)", run.stderr)[1])
    few, many = 51200, 204800
    if shutil.which("valgrind"):
        yield (f"{(collected(many) - collected(few)) / (many - few):,.0f} instructions a message from the "
               "datagram to the log, without a screen and without a network.")


def machine(rounds, seconds):
    model = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())[1]
    commit = output("git", "rev-parse", "--short", "HEAD")
    changed = output("git", "status", "--porcelain", "--untracked-files=no", "--", "src", "bench")
    state = " with changes" if changed else ""
    return (f"{datetime.date.today()}, commit {commit}{state}: {model.strip()}, {len(CORES)} cores, "
            f"{platform.system()} {platform.release()}, load average {os.getloadavg()[0]:.1f} at the "
            f"start. Rounds: {rounds}. Seconds of a load: {seconds:g}."
            + " **A quick look: too few rounds for figures to rely on.**" * (rounds < 5))


def write_page(page, figures):
    before, rest = page.read_text().split(BEGIN)
    page.write_text(before + BEGIN + "\n\n" + figures + "\n" + END + rest.split(END)[1])


def prepare(home):
    folder = home / "Documents" / "Quorvel"
    folder.mkdir(parents=True)
    (folder / "QuorvelKeyFile").write_text(f"1.0.5\n{KEY}")
    home.chmod(0o700)
    os.environ.update(HOME=str(home), XDG_RUNTIME_DIR=str(home), XDG_CONFIG_HOME=str(home),
                      LC_ALL="C.UTF-8", QT_QPA_PLATFORM="xcb")


def measure(options, network, home):
    programs = options.programs
    stock = programs / "libquorvel_stock_limits.so"
    parts = [[machine(options.rounds, options.seconds)]]
    os.environ["LD_PRELOAD"] = str(stock)
    parts.append(print_loads(*measure_loads(network, home, programs, options.rounds, options.seconds)))
    parts.append(print_starts(measure_starts(network, home, programs, options.rounds)))
    parts.append(print_memory(*measure_memory(network, home, programs, options.lines)))
    del os.environ["LD_PRELOAD"]
    parts.append(print_instructions(programs, home))
    figures = "\n\n".join("\n".join(part) for part in parts) + "\n"
    print(figures)
    if options.page:
        write_page(options.page, figures)


def check(options, network, home):
    """Each program of the comparison once, with messages that fit into a receive buffer."""
    for receiver in receivers(options.programs, False):
        one = sample(receiver, network, home, (20000, 50), 200, pause=0.05)
        if (one["heard"], one["sent"], one["drops"]) != (200, 200, 0):
            sys.exit(f"{receiver.name}: {one}")
    if (options.programs / "bench_empty_window").exists():
        window = network.listener.start(options.programs / "bench_empty_window",
                                        env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
        settle(window)
        if window.poll() is not None:
            sys.exit("the empty window has ended")
    if output(options.programs / "bench_scripted_messages", "512") != f"{512 * 52} bytes":
        sys.exit("the scripted messages are not in the log")


def parse():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("programs", type=lambda name: pathlib.Path(name).resolve())
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--seconds", type=float, default=5, help="of each load")
    parser.add_argument("--lines", type=int, default=1000000, help="of the log whose memory is measured")
    parser.add_argument("--page", type=lambda name: pathlib.Path(name).resolve(),
                        help="the page that takes the figures; without a page, they are printed alone")
    parser.add_argument("--check", action="store_true", help="only check that the programs run")
    return parser.parse_args()


def main():
    options = parse()
    if "QUORVEL_PRIVATE_NETWORK" not in os.environ:
        print("no private network: nothing is measured")
        sys.exit(77)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    os.sched_setaffinity(0, OTHER_CORES)
    processes = Processes()
    with tempfile.TemporaryDirectory(prefix="quorvel-") as home:
        try:
            home = pathlib.Path(home)
            prepare(home)
            network = Network(options.programs, processes)
            if options.check:
                check(options, network, home)
            else:
                start_screen(processes.start)
                measure(options, network, home)
        finally:
            processes.end()


main()
