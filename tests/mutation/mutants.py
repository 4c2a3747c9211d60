#!/usr/bin/python3
"""Shows that the tests can fail: changes one place of the sources at a time and runs the tests.

    tests/mutation/mutants.py                  every mutant
    tests/mutation/mutants.py --sample 12      so many of the quick ones, spread over all folders
    tests/mutation/mutants.py --only 'image/*' those of these names; may be repeated
    tests/mutation/mutants.py --list           their names and what each breaks; nothing is built

A mutant is a pattern of patterns/*.toml: a file, a snippet that stands in it once, what takes its
place. It is killed when one of its test programs fails, crashes or does not come to an end. A
mutant that survives fails the run unless it carries the reason why it is no fault ("equivalent");
then it must survive. Works on a copy of the tree in build/mutation.
"""

import argparse
import fcntl
import fnmatch
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import time
import tomllib

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
PATTERN_KEYS = {"file", "find", "replace", "breaks", "tests", "equivalent"}


class Mutant:
    def __init__(self, group, key, pattern, defaults):
        unknown = set(pattern) - PATTERN_KEYS
        if unknown:
            sys.exit(f"{group}/{key}: unknown {', '.join(sorted(unknown))}")
        self.name = f"{group}/{key}"
        self.file = f"{defaults['folder']}/{pattern['file']}"
        self.find = pattern["find"]
        self.replace = pattern["replace"]
        self.breaks = pattern["breaks"]
        self.equivalent = pattern.get("equivalent")
        # each "PROGRAM" or "PROGRAM FILTER"
        self.tests = [tuple(test.split(" ", 1)) for test in pattern.get("tests", defaults["tests"])]
        # its tests are the unit tests that other mutants of its folder need as well
        self.is_quick = defaults.get("quick", True) and "tests" not in pattern

    def programs(self):
        return [test[0] for test in self.tests]

    def mutated(self, text):
        return text.replace(self.find, self.replace)

    def fault(self):
        """What is wrong with the pattern, or nothing."""
        path = ROOT / self.file
        if not path.is_file():
            return f"{self.name}: {self.file} is not there"
        matches = path.read_text().count(self.find)
        if matches != 1:
            return f"{self.name}: stands {matches} times in {self.file}: {self.find!r}"
        if self.find == self.replace:
            return f"{self.name}: changes nothing"
        return None


def load():
    mutants = []
    for path in sorted((HERE / "patterns").glob("*.toml")):
        with path.open("rb") as stream:
            content = tomllib.load(stream)
        defaults = {key: value for key, value in content.items() if not isinstance(value, dict)}
        for key, pattern in content.items():
            if isinstance(pattern, dict):
                mutants.append(Mutant(path.stem, key, pattern, defaults))
    # One file after the other: what was changed before is then compiled again only once.
    mutants.sort(key=lambda mutant: mutant.file)
    return mutants


def copy_tree(source, target):
    """Makes the target the same without touching what already is."""
    wanted = set()
    for folder, folders, files in os.walk(source):
        relative = pathlib.Path(folder).relative_to(source)
        folders[:] = [
            name for name in folders
            if name not in ("build", "out", "__pycache__") and not name.startswith(".")
        ]
        (target / relative).mkdir(parents=True, exist_ok=True)
        for name in files:
            original, copy = source / relative / name, target / relative / name
            wanted.add(copy)
            if not copy.is_file() or copy.read_bytes() != original.read_bytes():
                shutil.copy(original, copy)
    for path in target.rglob("*"):
        if path.is_file() and path not in wanted:
            path.unlink()


class Workshop:
    def __init__(self, folder):
        folder.mkdir(parents=True, exist_ok=True)
        self.lock = (folder / "lock").open("w")
        try:
            fcntl.flock(self.lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            sys.exit(f"another run is at work in {folder}")
        self.tree = folder / "tree"
        self.build = folder / "build"
        self.log = folder / "log.txt"
        self.seconds = {}

    def prepare(self, tests):
        copy_tree(ROOT, self.tree)
        self.build.mkdir(exist_ok=True)
        self.log.write_text("")
        configured = self.run([
            "cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
            "-DCMAKE_CXX_FLAGS=-O1", "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"])
        if configured != 0 or not self.compile(sorted({test[0] for test in tests})):
            sys.exit(f"the sources do not build: see {self.log}")
        for test in tests:
            began = time.monotonic()
            failed = self.failed_test(test, 1200)
            if failed is not None:
                sys.exit(f"{failed} fails without any change: see {self.log}")
            self.seconds[test] = time.monotonic() - began

    def compile(self, programs):
        return self.run(["ninja", "-C", self.build, *programs]) == 0

    def run(self, command, limit=None):
        """The exit status, None where the time was up; what it prints ends in the log."""
        with self.log.open("ab") as log:
            self.log_begins = log.tell()
            # A session of its own: with a program that hangs, those that it started are ended too.
            with subprocess.Popen(
                    command, stdin=subprocess.DEVNULL, stdout=log, stderr=log, cwd=self.build.parent,
                    start_new_session=True) as process:
                try:
                    return process.wait(limit)
                except subprocess.TimeoutExpired:
                    os.killpg(process.pid, signal.SIGKILL)
                    process.wait()
                    return None
                except BaseException:
                    os.killpg(process.pid, signal.SIGKILL)
                    raise

    def failed_test(self, test, limit):
        """The name of the test that failed; None when all passed."""
        command = [self.build / "bin" / test[0], "--gtest_fail_fast", "--gtest_color=no"]
        if len(test) > 1:
            command.append(f"--gtest_filter={test[1]}")
        status = self.run(command, limit)
        with self.log.open("rb") as log:
            log.seek(self.log_begins)
            printed = log.read().decode(errors="replace").splitlines()
        if status == 0:
            if any(line.startswith("[==========] 0 tests") for line in printed):
                sys.exit(f"no such tests: {' '.join(test)}")
            return None
        begun, how = "before the first test", "crashed"
        for line in printed:
            if line.startswith("[ RUN      ] "):
                begun = line[13:]
            elif line.startswith("[  FAILED  ] "):
                begun, how = line[13:].split(",")[0].split(" (")[0], ""
                break
        how = "does not end" if status is None else how
        return f"{test[0]}: {begun}" + (f" ({how})" if how else "")

    def try_out(self, mutant):
        """Its fate, and the test that killed it or why it does not compile."""
        path = self.tree / mutant.file
        original = path.read_text()
        path.write_text(mutant.mutated(original))
        try:
            if not self.compile(mutant.programs()):
                return "does not compile", f"see {self.log}"
            for test in mutant.tests:
                failed = self.failed_test(test, 20 + 5 * self.seconds[test])
                if failed is not None:
                    return "killed", failed
            return "survived", ""
        finally:
            path.write_text(original)


def chosen(mutants, arguments):
    if arguments.only:
        mutants = [
            mutant for mutant in mutants
            if any(fnmatch.fnmatch(mutant.name, pattern) for pattern in arguments.only)
        ]
    if arguments.sample:
        quick = [mutant for mutant in mutants if mutant.is_quick]
        count = min(arguments.sample, len(quick))
        mutants = [quick[(2 * i + 1) * len(quick) // (2 * count)] for i in range(count)]
    if not mutants:
        sys.exit("no such mutant")
    return mutants


def verdict(mutant, fate):
    """Why the fate fails the run; None when it is as it should be."""
    if fate == "does not compile":
        return "shows nothing"
    if fate == "survived" and not mutant.equivalent:
        return "no test sees it: " + mutant.breaks
    if fate == "killed" and mutant.equivalent:
        return "its reason is wrong: " + mutant.equivalent
    return None


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--only", action="append", metavar="NAME")
    parser.add_argument("--sample", type=int, metavar="N")
    parser.add_argument("--folder", type=pathlib.Path, default=ROOT / "build" / "mutation",
                        help="where to build")
    arguments = parser.parse_args()

    every = load()
    stale = [fault for mutant in every if (fault := mutant.fault())]
    if stale:
        sys.exit("stale patterns:\n  " + "\n  ".join(stale))
    mutants = chosen(every, arguments)
    if arguments.list:
        for mutant in mutants:
            print(f"{mutant.name}\n    {mutant.file}: {mutant.breaks}")
        print(f"{len(mutants)} mutants")
        return

    began = time.monotonic()
    workshop = Workshop(arguments.folder.resolve())
    workshop.prepare(sorted({test for mutant in mutants for test in mutant.tests}))
    print(f"built, every test passes; after {time.monotonic() - began:.0f} s", flush=True)
    fates, faults = {}, []
    for mutant in mutants:
        fate, detail = workshop.try_out(mutant)
        if fate == "survived" and mutant.equivalent:
            fate, detail = "equivalent", mutant.equivalent
        fates[fate] = fates.get(fate, 0) + 1
        print(f"{fate:16} {mutant.name}  {detail}", flush=True)
        fault = verdict(mutant, "survived" if fate == "equivalent" else fate)
        if fault:
            faults.append(f"{mutant.name} ({mutant.file}) {fate}: {fault}")
    counts = ", ".join(f"{count} {fate}" for fate, count in sorted(fates.items()))
    print(f"{len(mutants)} mutants: {counts}; {time.monotonic() - began:.0f} s")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
