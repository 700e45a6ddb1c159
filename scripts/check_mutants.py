#!/usr/bin/env python3
"""Makes one fault after the other in a copy of the tree and tells which tests notice.

Usage: check_mutants.py [NAME...], with words that the names of the wanted mutants contain. Ends
with 1 when a mutant survives, or when the list of mutants does not fit the sources any more.

tests/mutants.txt is the list; its head tells the form. Mutants of the Qt side are built with the
preset release, all others with headless. Outcomes are kept in build/mutants, so that a run that was
interrupted goes on where it ended, until a source, a test or the mutant changes.
"""

import dataclasses
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutants"
TREE = WORK / "tree"
OUTCOMES = WORK / "outcomes.json"
HEADLESS = ["unit_tests", "contract_tests_headless"]
QT = ["contract_tests_qt", "qt_tests"]
SECONDS = 60  # a test program that takes longer has noticed


@dataclasses.dataclass
class Mutant:
    name: str
    path: str
    old: str = ""
    new: str = ""
    tests: list = dataclasses.field(default_factory=list)
    accepted: str = ""

    def preset(self):
        return "release" if any("qt" in test for test in self.programs()) else "headless"

    def programs(self):
        return self.tests or (QT if self.path.startswith("src/native/qt/") else HEADLESS)


class ListFault(Exception):
    """The list of mutants is wrong, or does not fit the sources."""


def read_list(path):
    mutants = []
    for line in path.read_text().splitlines():
        mark, text = line[:2], line[2:]
        if not line or line[0] == "#":
            continue
        if mark in ("- ", "+ ") or line in ("-", "+"):
            part = "old" if mark[0] == "-" else "new"
            before = getattr(mutants[-1], part)
            setattr(mutants[-1], part, before + ("\n" if before else "") + text)
        elif line.startswith("tests: "):
            mutants[-1].tests = line[7:].split()
        elif line.startswith("accepted: "):
            mutants[-1].accepted = line[10:]
        else:
            name, separator, file = line.partition(": ")
            if not separator:
                raise ListFault(f"{path.name}: cannot read the line: {line}")
            mutants.append(Mutant(name, file))
    return mutants


def copy_tree():
    """Brings the copy up to date without touching what is unchanged; returns a hash of all of it."""
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                            cwd=ROOT, capture_output=True, check=True).stdout.decode()
    names = sorted(name for name in listed.split("\0") if name and (ROOT / name).is_file())
    digest = hashlib.sha256()
    for name in names:
        content = (ROOT / name).read_bytes()
        if re.match(r"src/|tests/(?!mutants)|tools/|cmake/|CMake", name):
            digest.update(name.encode() + b"\0" + content)
        copy = TREE / name
        if not copy.is_file() or copy.read_bytes() != content:
            copy.parent.mkdir(parents=True, exist_ok=True)
            copy.write_bytes(content)
    for folder in "src", "tests":
        for copy in (TREE / folder).rglob("*"):
            if copy.is_file() and str(copy.relative_to(TREE)) not in names:
                copy.unlink()
    return digest.hexdigest()


def build(preset, programs):
    """The end of the output of a build that fails."""
    folder = TREE / "build" / preset
    environment = dict(os.environ, CCACHE_BASEDIR=str(TREE), CCACHE_NOHASHDIR="1")
    commands = [["cmake", "--build", folder, "--target", *programs]]
    if not (folder / "build.ninja").is_file():
        commands.insert(0, ["cmake", "--preset", preset, "-DQUORVEL_WERROR=OFF"])
    for command in commands:
        done = subprocess.run(command, cwd=TREE, env=environment, capture_output=True, text=True)
        if done.returncode != 0:
            return "\n".join((done.stdout + done.stderr).splitlines()[-20:])
    return ""


def first_failure(preset, programs):
    """The first test that fails, or nothing."""
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    for program in programs:
        command = [TREE / "build" / preset / "bin" / program, "--gtest_fail_fast"]
        try:
            done = subprocess.run(command, cwd=WORK, env=environment, capture_output=True,
                                  timeout=SECONDS)
        except subprocess.TimeoutExpired:
            return f"{program}, which did not end"
        output = done.stdout.decode(errors="replace")
        if done.returncode != 0:
            failed = re.findall(r"^\[  FAILED  \] (\S+) \(", output, re.MULTILINE)
            running = re.findall(r"^\[ RUN      \] (\S+)", output, re.MULTILINE)
            return (failed[:1] or running[-1:] or [f"{program}, which did not start"])[0]
        if "[  SKIPPED ]" in output:
            raise ListFault(f"{program} skips tests; a private network is needed")
    return ""


def try_mutant(mutant):
    file = TREE / mutant.path
    before = file.read_text() if file.is_file() else ""
    count = before.count(mutant.old) if mutant.old else 0
    if count != 1:
        return f"FAULT: the old text is found {count} times in {mutant.path}"
    file.write_text(before.replace(mutant.old, mutant.new))
    try:
        if trouble := build(mutant.preset(), mutant.programs()):
            return "FAULT: does not compile\n" + trouble
        killer = first_failure(mutant.preset(), mutant.programs())
    finally:
        file.write_text(before)
    if killer:
        return f"killed by {killer}" + (": no longer to be accepted" if mutant.accepted else "")
    return f"accepted: {mutant.accepted}" if mutant.accepted else "SURVIVED"


def check_unchanged(mutants):
    """Without a fault, all tests have to pass."""
    for preset in sorted({mutant.preset() for mutant in mutants}):
        programs = sorted({program for mutant in mutants if mutant.preset() == preset
                           for program in mutant.programs()})
        if trouble := build(preset, programs):
            raise ListFault(trouble)
        if failure := first_failure(preset, programs):
            raise ListFault(f"{failure} fails without a mutant")


def main(words):
    mutants = [mutant for mutant in read_list(ROOT / "tests" / "mutants.txt")
               if not words or any(word in mutant.name for word in words)]
    state = copy_tree()
    known = json.loads(OUTCOMES.read_text()) if OUTCOMES.is_file() else {}
    keys = {mutant.name: hashlib.sha256(f"{state}{mutant}".encode()).hexdigest()
            for mutant in mutants}
    if len(keys) != len(mutants):
        raise ListFault("two mutants have the same name")
    todo = [mutant for mutant in mutants if keys[mutant.name] not in known]
    check_unchanged(todo)
    width = max((len(mutant.name) for mutant in mutants), default=0)
    faults = 0
    for mutant in mutants:
        outcome = known.get(keys[mutant.name]) or try_mutant(mutant)
        known[keys[mutant.name]] = outcome
        OUTCOMES.write_text(json.dumps(known))
        faults += not outcome.startswith(("killed", "accepted")) or "no longer" in outcome
        print(f"{mutant.name:{width}}  {outcome}", flush=True)
    print(f"{len(mutants)} mutants, {faults} of them a reason to fail")
    return 1 if faults else 0


def in_private_network():
    script = "source scripts/lib.sh; in_private_network \"$@\""
    os.chdir(ROOT)
    os.execvp("bash", ["bash", "-c", script, "check_mutants", sys.executable, __file__,
                       *sys.argv[1:]])


if __name__ == "__main__":
    if "QUORVEL_PRIVATE_NETWORK" not in os.environ:
        if "QUORVEL_MUTANTS" in os.environ:
            sys.exit("check_mutants.py: no private network can be made here")
        os.environ["QUORVEL_MUTANTS"] = "entering the private network"
        in_private_network()
    try:
        sys.exit(main(sys.argv[1:]))
    except ListFault as fault:
        sys.exit(f"check_mutants.py: {fault}")
