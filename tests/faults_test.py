"""Faults of networks, on virtual wires: what does a listener miss, what does a listener hear twice?

Usage: faults_test.py FOLDER-OF-THE-PROGRAMS [CASE...]. Ends with 77 where there is no private
network. SEED, STORM_SECONDS and BUSY_SECONDS in the environment change what is done.

Network namespaces stand for computers: the listener with cards c1 and c2, a sender, and a switch
that forwards a group to its members alone. Prints a row of docs/reliability.md for each case.
"""
import os, random, signal, socket, subprocess, sys, threading, time

from support.programs import PORT, in_private_network, packet
from virtual_host import Host

PROGRAMS = sys.argv[1]
STOCK_LIMITS = f"{PROGRAMS}/libquorvel_stock_limits.so"
KEY, GROUP = "Maple-Room-7", "224.195.13.122"
FIRST_CARD, SECOND_CARD = "10.77.0.1/24", "10.77.0.2/24"
failures = []


def query(host):
    """Asks all computers from this host, once, which groups they have joined, as a router does."""
    def send():
        with socket.socket(socket.AF_INET, socket.SOCK_RAW, socket.IPPROTO_IGMP) as wire:
            wire.setsockopt(socket.IPPROTO_IP, socket.IP_MULTICAST_IF, socket.inet_aton("10.77.0.9"))
            wire.sendto(bytes((0x11, 1, 0xEE, 0xFE, 0, 0, 0, 0)), ("224.0.0.1", 0))
    host.within(send).join()


class Net:
    """A switch, a sender, and a listener whose cards c1, c2 have these addresses."""

    def __init__(self, *addresses, querier=0):
        self.listener, self.switch, self.sender = Host(), Host(), Host()
        self.switch.ip("link add br0 type bridge mcast_snooping 1", "link set br0 up")
        self.cable(self.sender, "t0", "10.77.0.9/24")
        if querier:
            query(self.sender)
        # A switch that knows a querier and a member forwards the group to members alone.
        self.member = socket_on(self.sender, [(GROUP, "10.77.0.9")])
        time.sleep(0.3 * querier)
        self.program, self.stream, self.lines, self.times, self.go = None, None, [], [], True
        for number, address in enumerate(addresses, 1):
            self.cable(self.listener, f"c{number}", address)

    def cable(self, host, card, *addresses):
        self.switch.ip(f"link add {card} netns {host.holder.pid} type veth peer name port-{card}",
                       f"link set port-{card} master br0 up")
        host.ip(*[f"addr add {a} dev {card}" for a in addresses], f"link set {card} up")

    def plug(self, card, in_or_out):
        self.switch.ip(f"link set port-{card} {in_or_out}")

    def listen(self, per_second=500, stall_ms=0, **environment):
        """Starts a listener, then a stream of messages."""
        self.program = self.listener.start(f"{PROGRAMS}/quorvel_listener", KEY, str(stall_ms),
                                           stdout=subprocess.PIPE, text=True,
                                           env={**os.environ, **environment})
        self.program.stdout.readline()
        threading.Thread(target=self.read, daemon=True).start()
        time.sleep(0.05)
        self.stream = self.sender.within(lambda: self.send(1 / per_second))
        return self

    def read(self):
        for line in self.program.stdout:
            self.lines.append((time.monotonic(), line.split()[-1]))

    def new_card(self):
        """The seconds until the first message after the card was made anew."""
        self.listener.ip("link del c1")
        self.cable(self.listener, "c1", FIRST_CARD)
        return self.heard_after()

    def send(self, pause):
        """Sends numbered messages to the group until the end."""
        wire = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        wire.setsockopt(socket.IPPROTO_IP, socket.IP_MULTICAST_IF, socket.inet_aton("10.77.0.9"))
        due = time.monotonic()
        while self.go:
            message = packet(b"%d" % len(self.times))
            self.times.append(time.monotonic())
            wire.sendto(message, (GROUP, PORT))
            due += pause
            time.sleep(max(0, due - time.monotonic()))

    def heard_after(self, limit=10.0):
        """The seconds until the first message that is sent from this moment on; -1 for none."""
        moment = time.monotonic()
        first = sum(at < moment for at in list(self.times))
        while time.monotonic() < moment + limit:
            times = [at for at, text in list(self.lines) if text.isdigit() and int(text) >= first]
            if times:
                return times[0] - moment
            time.sleep(0.002)
        return -1

    def finish(self):
        """Numbers of lost, doubled and disordered messages, of all that were sent."""
        self.go = False
        self.stream.join()
        time.sleep(0.3)
        heard = [int(text) for _, text in self.lines if text.isdigit()]
        self.program.kill()
        self.program.wait()
        self.member.close()
        for host in (self.listener, self.switch, self.sender):
            host.end()
        disorder = sum(a > b for a, b in zip(heard, heard[1:]))
        sent, different = len(self.times), len(set(heard))
        return sent, sent - different, len(heard) - different, disorder


def row(name, ok, measured):
    print(f"| {name} | {measured} | {'passed' if ok else 'FAILED'} |", flush=True)
    if not ok:
        failures.append(name)


def first_messages(net, name, times, most=1.0):
    net.finish()
    worst = max(times) if min(times) >= 0 else -1
    row(name, 0 <= worst <= most, f"first message after {1000 * sorted(times)[len(times) // 2]:.0f} ms"
        f" (median of {len(times)}), {1000 * worst:.0f} ms at most")


def all_once(net, name):
    sent, lost, doubled, disorder = net.finish()
    row(name, lost == doubled == disorder == 0 and sent > 0,
        f"{sent} sent, {lost} lost, {doubled} doubled, {disorder} out of order")


def late_card():
    net = Net().listen()
    net.cable(net.listener, "c1")
    time.sleep(0.3)
    net.listener.ip(f"addr add {FIRST_CARD} dev c1")
    times = [net.heard_after()]
    net.listener.ip("route add default via 10.77.0.9")
    times.append(net.heard_after())
    first_messages(net, "started without a card; then card, address, route", times)


def tunnel():
    net = Net(FIRST_CARD)
    up = ["tuntap add vpn0 mode tun", "addr add 10.99.0.1/24 dev vpn0", "link set vpn0 up",
          "route add default dev vpn0"]
    down = ["tuntap del vpn0 mode tun"]
    net.listener.ip(*up)
    net.listen()
    for _ in range(20):
        net.listener.ip(*down)
        net.listener.ip(*up)
    all_once(net, "a tunnel with the default route, up at the start, then down and up 20 times")


def new_cards():
    net = Net(FIRST_CARD, querier=1).listen()
    times = [net.new_card() for _ in range(50)]
    first_messages(net, "card made anew 50 times", times)


def short_losses():
    for querier in (0, 1):
        for out in (0.02, 0.5):
            net = Net(FIRST_CARD, querier=querier).listen()
            times = []
            for _ in range(5):
                net.plug("c1", "down")
                time.sleep(out)
                net.plug("c1", "up")
                times.append(net.heard_after())
            first_messages(net, f"cable out for {1000 * out:.0f} ms 5 times, switch "
                                f"{'with' if querier else 'without'} a querier", times)


def pulled_cable():
    net = Net(FIRST_CARD, SECOND_CARD).listen(1000)
    for _ in range(5):
        for card in ("c1", "c2"):
            # Also on a busy machine, the other card is a member again by then.
            time.sleep(0.4)
            net.plug(card, "down")
            time.sleep(0.1)
            net.plug(card, "up")
    all_once(net, "two cards on one network, cables pulled in turn 10 times")


def strangers():
    net = Net(FIRST_CARD, SECOND_CARD)
    other = socket_on(net.listener, [("239.1.2.3", "10.77.0.1"), (GROUP, "10.77.0.2")])
    net.listen()
    for to in ("239.1.2.3", "10.77.0.255"):
        socket_on(net.sender, [], b"noise", to)
    time.sleep(0.5)
    alien = sum(text == "noise" for _, text in net.lines)
    other.close()
    all_once(net, "another program on another group, and on this group by the other card")
    row("datagrams to other groups and broadcasts", alien == 0, f"{alien} heard")


def socket_on(host, memberships, text=None, to=GROUP):
    """A socket on the port of Quorvel, with memberships of groups; sends one message."""
    made = []
    def make():
        wire = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        wire.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        wire.setsockopt(socket.SOL_SOCKET, socket.SO_BROADCAST, 1)
        wire.bind(("", PORT))
        if text:
            wire.setsockopt(socket.IPPROTO_IP, socket.IP_MULTICAST_IF, socket.inet_aton("10.77.0.9"))
            wire.sendto(packet(text), (to, PORT))
        for group, card in memberships:
            wire.setsockopt(socket.IPPROTO_IP, socket.IP_ADD_MEMBERSHIP,
                            socket.inet_aton(group) + socket.inet_aton(card))
        made.append(wire)
    host.within(make).join()
    return made[0]


def many_cards():
    for kind, address in (("without", None), ("with", "198.51.{}.1/24")):
        net = Net()
        for i in range(25):
            net.listener.ip(f"link add d{i} type veth peer name e{i}", f"link set e{i} up",
                            *([f"addr add {address.format(i)} dev d{i}"] if address else []),
                            f"link set d{i} up")
        net.cable(net.listener, "c1", FIRST_CARD)
        net.listen()
        first_messages(net, f"25 further interfaces {kind} an address", [net.heard_after()])


def lost_notices():
    net = Net(FIRST_CARD).listen()
    net.program.send_signal(signal.SIGSTOP)
    net.listener.ip("link add flood type bridge", *["link set flood up", "link set flood down"] * 400)
    net.listener.ip("link del c1")
    net.cable(net.listener, "c1", FIRST_CARD)
    net.program.send_signal(signal.SIGCONT)
    first_messages(net, "card made anew while notices overflowed", [net.heard_after()])


def busy():
    for stall, per_second in ((1000, 5000), (2000, 5000), (4000, 5000), (1000, 20000)):
        net = Net(FIRST_CARD).listen(per_second, stall, LD_PRELOAD=STOCK_LIMITS)
        time.sleep(0.2)
        socket_on(net.sender, [], b"stall")
        time.sleep(stall / 1000 + float(os.environ.get("BUSY_SECONDS", "0.5")))
        rate = len(net.times) / (net.times[-1] - net.times[0])
        all_once(net, f"stock limits, {rate:.0f} a second, busy for {stall / 1000:.0f} s")


def storm():
    seed = int(os.environ.get("SEED", time.time_ns() % 1000000))
    dice = random.Random(seed)
    cards = {"c1": FIRST_CARD, "c2": SECOND_CARD}
    net = Net(*cards.values()).listen(200)
    ip = net.listener.ip
    end = time.monotonic() + float(os.environ.get("STORM_SECONDS", "20"))
    faults = 0
    while time.monotonic() < end:
        card, address = dice.choice(list(cards.items()))
        fault, remedy = dice.choice((
            (lambda: net.plug(card, "down"), lambda: net.plug(card, "up")),
            (lambda: ip(f"link del {card}"), lambda: net.cable(net.listener, card, address)),
            (lambda: ip(f"addr del {address} dev {card}"),
             lambda: ip(f"addr add {address} dev {card}")),
            (lambda: ip(f"link set {card} down"), lambda: ip(f"link set {card} up"))))
        fault()
        time.sleep(dice.choice((0.005, 0.05, 0.3)))
        remedy()
        faults += 1
        # The other card is to hear before the next fault.
        time.sleep(0.3)
    all_once(net, f"storm of {faults} faults on two cards, seed {seed}")


def main():
    for case in (late_card, tunnel, new_cards, short_losses, pulled_cable, strangers, many_cards,
                 lost_notices, busy, storm):
        if len(sys.argv) < 3 or case.__name__ in sys.argv[2:]:
            case()
    sys.exit(f"failed: {failures}" if failures else 0)


in_private_network(main)
