"""Files and commands that the parts of the dossier read."""
import os
import subprocess

TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def read(path):
    with open(os.path.join(TOP, path), encoding="utf-8") as file:
        return file.read()


def table(path):
    """The rows of a file with tabs, each by the names in its first line. A row of another length is an error."""
    head, *lines = read(path).rstrip("\n").split("\n")
    names = head.split("\t")
    rows = []
    for number, line in enumerate(lines, 2):
        cells = line.split("\t")
        if len(cells) != len(names):
            raise SystemExit(f"{path}:{number}: {len(cells)} cells, {len(names)} are wanted")
        rows.append(dict(zip(names, cells)))
    return rows


def pairs(path):
    """The lines "KEY<tab>VALUE" of a file; empty where there is none."""
    if not os.path.exists(os.path.join(TOP, path)):
        return {}
    return dict(line.split("\t", 1) for line in read(path).splitlines() if "\t" in line)


def told(*command, check=True):
    """What a command says on its standard output."""
    return subprocess.run(command, cwd=TOP, check=check, capture_output=True, text=True).stdout
