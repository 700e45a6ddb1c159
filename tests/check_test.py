"""The real quorvel-check on networks with and without faults: check_test.py PROGRAM-FOLDER."""

import json, os, pathlib, signal, socket, subprocess, sys, tempfile

from support.programs import HOST, PORT, check, in_private_network, packet, run
from waiting import wait_for

PROGRAM = os.path.join(sys.argv[1], "quorvel-check")
GROUP = "239.1.2.5"
KEY = ["--key", GROUP]

# What nft and iptables show, and the start of the rule that may keep datagrams out.
INPUT = "table inet f {\n chain in {\n  type filter hook input priority 0; policy %s;\n%s }\n%s}\n"
UDP = " chain udp {\n  udp dport { 53, 5560-5570 } accept\n }\n"
RULES = [
    (INPUT % ("drop", "tcp dport 22 accept\n", UDP), "", "type filter hook input"),
    (INPUT % ("drop", "jump udp\n", UDP), "", ""),
    (INPUT % ("accept", "tcp flags syn drop\nudp dport 25 drop\n", ""), "", ""),
    (INPUT % ("accept", "ct state established accept\nreject with icmp type admin-prohibited\n", ""),
     "", "reject with"),
    (INPUT.replace("inet", "ip6") % ("drop", "", ""), "-P INPUT ACCEPT\n-A INPUT -j DROP\n", "-A INPUT"),
    ("", "-P INPUT DROP\n-A INPUT -j own\n-A own -p udp -m udp --dport 5563 -j ACCEPT\n", ""),
]


def expect(codes, *before, **more):
    """The findings that keep from hearing, in both forms of the report; returns the facts."""
    command = [*before, PROGRAM, *KEY, "--seconds", "0"]
    plain, coded = run(*command, **more), run(*command, "--json", **more)
    facts = json.loads(coded.stdout)
    found = [each["code"] for each in facts["findings"] if each["keeps_from_hearing"]]
    check(found == codes and facts["hears"] == (not codes), codes, facts)
    check(plain.returncode == coded.returncode == (1 if codes else 0), plain, coded)
    check(all(each["text"] in plain.stdout for each in facts["findings"]), plain.stdout, facts)
    check(plain.stdout.endswith(facts["next"] + "\n") and not plain.stderr + coded.stderr, plain)
    return facts


def report_during(action):
    """The status and the facts of a check that hears all that `action` sends."""
    with subprocess.Popen([PROGRAM, *KEY, "--seconds", "60", "--json"], text=True,
                          stdout=subprocess.PIPE) as program:
        joined, groups = socket.inet_aton(GROUP)[::-1].hex().upper(), pathlib.Path("/proc/net/igmp")
        wait_for("the membership", lambda: joined in groups.read_text())
        action()
        program.send_signal(signal.SIGINT)
        facts = json.load(program.stdout)
    return program.returncode, facts


def check_healthy_network():
    facts = expect([])
    probes = {each["name"]: each["probe"] for each in facts["interfaces"] if each["joined"]}
    check(probes == {"v0": "came back"}, facts)
    check(facts["group"] == GROUP and facts["port"] == PORT and not facts["senders"], facts)
    check(facts["receive_buffer"]["granted"] > 0 and not facts["port_users"], facts)


def check_faults():
    expect(["no network card", "not joined"], "unshare", "-n")
    expect(["no network card"], "unshare", "-n", "sh", "-c", 'ip link set lo up; exec "$@"', "sh")
    # A policy that drops what comes to the group; some systems let no test make policies.
    policy = ["dir", "in", "dst", GROUP + "/32"]
    if run("ip", "xfrm", "policy", "add", *policy, "action", "block").returncode == 0:
        expect(["probe lost", "datagrams dropped"])
        run("ip", "xfrm", "policy", "delete", *policy)
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as holder:
        holder.bind((HOST, PORT))
        facts = expect(["port held"])
        check(facts["port_users"][0]["pid"] == os.getpid() and "python" in facts["next"], facts)


def check_senders():
    whole = packet(b"z")
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as sender:
        for packets, status, stuck in [([whole, whole], 0, None),
                                       ([whole, whole[:8]], 1, {"held": 8, "announced": 9})]:
            code, facts = report_during(
                lambda: [sender.sendto(each, (GROUP, PORT)) for each in packets])
            heard = {"address": HOST, "own": True, "datagrams": 2, "messages": 1 if stuck else 2,
                     "interfaces": ["v0"], "stuck": stuck}
            check(code == status and facts["senders"] == [heard], facts)
            check(set(facts["dropped"].values()) == {0}, facts)


def check_firewalls(folder):
    """Programs that show rules stand before the real programs in PATH."""
    more = {"env": {**os.environ, "PATH": folder + ":" + os.environ["PATH"]}}
    nft, iptables = (pathlib.Path(folder) / name for name in ("nft", "iptables"))
    for program in nft, iptables:
        program.touch(0o700)
    for rules, legacy_rules, dropping in RULES:
        nft.write_text(f"#!/bin/sh\ncat <<X\n{rules}X\n")
        iptables.write_text(f"#!/bin/sh\ncat <<X\n{legacy_rules}X\n")
        done = run(PROGRAM, *KEY, "--seconds", "0", "--json", **more)
        rule = json.loads(done.stdout)["firewall"]["rule"] or ""
        check(rule.startswith(dropping) and bool(rule) == bool(dropping), rules, rule)
    nft.write_text("#!/bin/sh\nexec sleep 60\n")
    check(expect([], **more)["firewall"] is None, "a firewall program that never ends")


def check_keys(home):
    """The user's key file, and wrong uses."""
    more = {"env": {**os.environ, "HOME": home, "XDG_CONFIG_HOME": home}}
    file = pathlib.Path(home) / "Documents" / "Quorvel" / "QuorvelKeyFile"
    refused = [["--key", "Salé"], ["--seconds", "86401"], ["--seconds", "x"], ["--json=1"], ["text"]]
    for content in None, "1.0.5\nKey", "1.0.5\nMaple-Room-7":
        if content:
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(content)
        done = run(PROGRAM, "--seconds", "0", **more)
        good = content is not None and content.endswith("7")
        check(done.returncode == (0 if good else 2) and ("224.195.13.122" in done.stdout) == good
              and (str(file) in done.stderr) != good, done)
    for arguments in refused:
        done = run(PROGRAM, *arguments, **more)
        check(done.returncode == 2 and done.stderr.startswith("quorvel-check: ")
              and done.stderr.count("\n") == 1 and not done.stdout, done)


def main():
    check_healthy_network()
    check_faults()
    check_senders()
    with tempfile.TemporaryDirectory(prefix="quorvel-") as folder:
        check_firewalls(folder)
        check_keys(folder)


in_private_network(main)
