"""The datagrams and error messages of the real quorvel-send: send_test.py PROGRAM-FOLDER."""

import os, socket, sys

from support.programs import HOST, PORT, check, in_private_network, packet, run

PROGRAM = os.path.join(sys.argv[1], "quorvel-send")
GROUP = "239.1.2.4"
KEY, TO = ["--key", GROUP], ["--to", HOST]

# Arguments, standard input, and the commands and texts of the datagrams.
SENT = [
    (KEY + ["--interface", "v0", "Marks: 9 of 10"], "", [(0, "Nziph: 0 lu 89")]),
    (TO + ["--command", "-2", "--raw", "Zoë"], "", [(-2, "Zoë")]),
    (TO + ["--command=510", "a", "", "[b,c]"], "", [(510, "z"), (510, ""), (510, "[y,x]")]),
    (KEY + ["--", "-2", "--raw"], "", [(0, "-7"), (0, "--izd")]),
    (KEY + ["--stdin", "a"], "b\r\nc\n\r\nd", [(0, "z"), (0, "y"), (0, "x"), (0, ""), (0, "w")]),
    (TO + ["--stdin"], "x" * 65499 + "\r\n", [(0, "c" * 65499)]),
]

# Arguments, standard input, the status, and what the message has to contain.
REFUSED = [
    ([], "", 2, "--key"),
    (["--key", "Salé", "text"], "", 2, "5 characters"),
    (["--key", "224.1..3", "text"], "", 2, "number is missing"),
    (KEY + TO + ["text"], "", 2, "neither --key"),
    (KEY + ["--interface", "none0", "text"], "", 2, "'none0'"),
    *[(["--to", to, "text"], "", 2, "dotted IPv4 address")
      for to in ("", "224...", "224.1.2", "1.2.3.4.5", "1.2.3.256", "1.2.3.4 ", " 1.2.3.4",
                 "a.b.c.d", "1.2.3.99999999999")],
    (KEY + ["-2"], "", 2, "put --"),
    (KEY + ["two\nlines", "--two\nlines"], "", 2, "--two"),
    (KEY + KEY + ["text"], "", 2, "twice"),
    (["text", "--key"], "", 2, "--key needs a value"),
    (KEY + ["--raw=yes", "text"], "", 2, "takes no value"),
    (KEY + ["--command=", "510", "text"], "", 2, "nothing follows"),
    (KEY + ["--command", "2147483648", "text"], "", 2, "'2147483648'"),
    (KEY + ["x" * 65500], "", 1, "text 1 is too long: a text has at most 65,499 bytes"),
    (["--to", "255.255.255.255", "--stdin"], "text\n", 1, "line 1: cannot send: "),
]


def check_refusal(arguments, status, word, **streams):
    """One line in the tool's own form, and the status."""
    done = run(PROGRAM, *arguments, **streams)
    line, end, more = done.stderr.partition("\n")
    check(done.returncode == status and line.startswith("quorvel-send: ") and word in line
          and end and not more, arguments, done)


def main():
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as receiver:
        receiver.settimeout(20)
        receiver.bind(("", PORT))
        receiver.setsockopt(socket.IPPROTO_IP, socket.IP_ADD_MEMBERSHIP,
                            socket.inet_aton(GROUP) + socket.inet_aton(HOST))
        for arguments, lines, status, word in REFUSED:
            check_refusal(arguments, status, word, input=lines)
        for reason, stdin in [("Is a directory", {"stdin": os.open("/", os.O_RDONLY)}),
                              ("Bad file descriptor", {"preexec_fn": lambda: os.close(0)})]:
            check_refusal(TO + ["--stdin"], 1, "cannot read standard input: " + reason, **stdin)
        # The first datagram to arrive shows that the refused command lines sent nothing.
        for arguments, lines, datagrams in SENT:
            done = run(PROGRAM, *arguments, input=lines)
            check(done.returncode == 0 and not done.stderr, done)
            for command, text in datagrams:
                check(receiver.recv(70000) == packet(text.encode(), command), arguments)
        check_refusal(TO + ["--stdin"], 1, "line 2 is too long", input="a\n" + "x" * 65500)
    loopback = ["unshare", "-n", "sh", "-c", 'ip link set lo up; exec "$@"', "sh"]
    check(run(*loopback, PROGRAM, *KEY, "text").returncode == 0, "without a network")
    read, write = os.pipe()
    os.close(read)
    for unwritable in write, os.open("/dev/full", os.O_WRONLY):
        check_refusal(["--help"], 1, "output", stdout=unwritable)
        check(run(PROGRAM, stderr=unwritable).returncode == 2, "standard error that takes nothing")
    check(run(PROGRAM, "--version").stdout == "quorvel-send 1.0.5\n", "--version")
    check(run(PROGRAM, "--help").stdout.startswith("Usage: quorvel-send --key KEY "), "--help")


in_private_network(main)
