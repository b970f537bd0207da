"""What the tests and the long runs said last, each with the state of the sources that it was said of.

A result counts for the present sources only where nothing that goes into a program or a test has changed since.
"""
import glob
import os
import re
import subprocess
import xml.etree.ElementTree as ElementTree

from dossier_parts.files import TOP, pairs, read

# What makes a difference to programs and tests.
CODE = ("src", "sim", "desk", "tools", "tests", "lessons", "samples", "cmake", "CMakeLists.txt")
HERE, ELSEWHERE, NONE = "of these sources", "of other sources", "not run"

# Runs by hand that scripts/keep-result keeps: name, what it is, and the lines that sum it up.
RUNS = (
    ("coverage", "Lines and branches that the tests run", r"lines, .* all$"),
    ("mutate", "Changes of the code that the tests notice", r"mutants killed"),
    ("soak", "Search for a state that must not be, faults of the line, thirty days",
     r"situations|reached|: \d+ rounds|^timer|days? |grows|drifts"),
    ("fuzz", "Inputs from an engine", r"runs|DONE|exec/s"),
    ("unplug", "The cable pulled in the middle of a workflow, in a real window", r"ok|FAILED|back"),
)


def sources_now():
    commit = subprocess.run(["git", "rev-parse", "HEAD"], cwd=TOP, capture_output=True, text=True, check=False)
    if commit.returncode:
        return {"commit": "none", "changes": "unknown"}
    changed = subprocess.run(["git", "status", "--porcelain"], cwd=TOP, capture_output=True, text=True, check=True).stdout
    return {"commit": commit.stdout.strip(), "changes": "some" if changed else "none"}


def age_of(stamp):
    """Whether what bears the stamp was made of the sources as they are now."""
    if not stamp:
        return NONE
    if stamp.get("changes") != "none":
        return ELSEWHERE
    same = subprocess.run(["git", "diff", "--quiet", stamp["commit"], "--", *CODE], cwd=TOP, capture_output=True, check=False)
    unknown = subprocess.run(["git", "ls-files", "--others", "--exclude-standard", "--", *CODE], cwd=TOP,
                             capture_output=True, text=True, check=False)
    return HERE if same.returncode == 0 and not unknown.stdout else ELSEWHERE


def stamped(stamp):
    if not stamp:
        return NONE
    changed = "" if stamp.get("changes") == "none" else " with changes that were not committed"
    return f"commit {stamp.get('commit', 'unknown')[:12]}{changed}, {stamp.get('time', 'at an unknown time')}"


class TestRun:
    """One run of ctest: what became of each test."""

    def __init__(self, title, path, stamp):
        self.title, self.path, self.stamp, self.age = title, path, stamp, age_of(stamp)
        self.cases, self.said = {}, {}
        for case in ElementTree.fromstring(read(path)).iter("testcase"):
            outcome = {"run": "passed", "fail": "FAILED"}.get(case.get("status"), "skipped")
            if case.find("failure") is not None:
                outcome = "FAILED"
            self.cases[case.get("name")] = outcome
            self.said[case.get("name")] = case.findtext("system-out") or ""

    def count(self, outcome):
        return sum(one == outcome for one in self.cases.values())

    def search(self):
        """What the share of the search in this run has reached, a line a search."""
        return [line for name, said in sorted(self.said.items()) if name.startswith("explore.")
                for line in said.splitlines() if " reached " in line]


def test_runs():
    places = [("with the sanitizers (./test)", "build/results.xml", "build/results.tsv")]
    for path in sorted(glob.glob(os.path.join(TOP, "build-package", "*", "test-results.xml"))):
        folder = os.path.relpath(os.path.dirname(path), TOP)
        places.append((f"while the package was built in {os.path.basename(folder)}", f"{folder}/test-results.xml",
                       f"{folder}/result.tsv"))
    return [TestRun(title, path, pairs(stamp)) for title, path, stamp in places if os.path.exists(os.path.join(TOP, path))]


def kept_runs():
    """The long runs, by name: their stamp, what they said, and the lines that sum it up."""
    runs = {}
    for name, title, lines in RUNS:
        stamp, said = pairs(f"build-results/{name}.tsv"), ""
        if stamp:
            said = "".join(read(f"build-results/{name}.{part}") for part in ("txt", "errors"))
        runs[name] = {"title": title, "stamp": stamp, "age": age_of(stamp), "said": said,
                      "passed": stamp.get("status") == "0",
                      "lines": [line for line in said.splitlines() if re.search(lines, line)][-24:]}
    return runs


def tests_of(guard):
    """The names by which ctest knows a guard."""
    if guard.startswith("Invariant."):
        return [f"explore.{ground}" for ground in ("ready", "simulated", "scenes", "starts")]
    found = re.fullmatch(r"tests/(scenarios|end_to_end|fuzz)/(.*)\.(?:scn|sh|cpp)", guard)
    if found:
        return [{"scenarios": "scenario", "end_to_end": "end_to_end", "fuzz": "fuzz"}[found[1]] + "." + found[2]]
    return [guard.split(".")[0]]


def result_of(guard, runs, kept):
    """What became of a guard, by the runs of these sources alone: passed, FAILED, skipped or not run."""
    if guard.startswith("scripts/"):
        run = kept.get(guard.removeprefix("scripts/"))
        return ("passed" if run["passed"] else "FAILED") if run and run["age"] == HERE else NONE
    outcomes = {run.cases[name] for run in runs if run.age == HERE for name in tests_of(guard) if name in run.cases}
    known = all(any(name in run.cases for run in runs if run.age == HERE) for name in tests_of(guard))
    for outcome in ("FAILED", "passed", "skipped"):
        if outcome in outcomes and known:
            return outcome
    return NONE
