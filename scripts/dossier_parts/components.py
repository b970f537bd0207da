#!/usr/bin/env python3
"""What the programs of a Debian package are made of, as JSON: components.py PACKAGE.deb [BUILDINFO]

Runs in the system that the package was built in: the libraries that the programs name (ELF's NEEDED), those that these
name, and the plugin by which Qt reaches the screen, which no file names; each with the package that it belongs to here.
"""
import glob
import gzip
import hashlib
import json
import os
import re
import subprocess
import sys
import tempfile

ROLES = ("linked by the programs", "linked by another library", "loaded at run time")
# Qt's window to the X server, and what that loads.
PLUGINS = "/usr/lib/*/qt6/plugins/platforms/libqxcb.so"


def told(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def needed(path):
    return re.findall(r"^ +NEEDED +(\S+)$", told("objdump", "-p", path), re.M)


def resolved(path):
    """Where the loader finds each library that the file needs, directly or not."""
    places = dict(re.findall(r"^\t(\S+) => (/\S+) \(", told("ldd", path), re.M))
    for loader in re.findall(r"^\t(/\S+) \(", told("ldd", path), re.M):
        places[os.path.basename(loader)] = loader
    return places


def owner(path):
    """The package of a file. Where /lib is a link to /usr/lib, dpkg may know it by either name."""
    real = os.path.realpath(path)
    for name in (real, real.removeprefix("/usr"), path, "/usr" + path):
        found = subprocess.run(["dpkg-query", "-S", name], capture_output=True, text=True, check=False).stdout
        if found and "diversion" not in found:
            return found.rsplit(": ", 1)[0].split(",")[0]
    raise SystemExit(f"components: {path} belongs to no package")


def licences(package):
    """The names of licences that the package's copyright file tells, where it tells them in Debian's form."""
    try:
        with open(f"/usr/share/doc/{package.split(':')[0]}/copyright", encoding="utf-8") as file:
            text = file.read()
    except FileNotFoundError:
        return []
    # What stands for the packaging alone is not in the library.
    stanzas = [one for one in re.split(r"\n\s*\n", text) if not re.search(r"^Files: *debian/\*$", one, re.M)]
    names = {name.strip() for one in stanzas if re.search(r"^Files:", one, re.M)
             for name in re.findall(r"^License: *(.+)$", one, re.M)}
    return sorted(names)


def fixed(package):
    """The published weaknesses that Debian's changelog of the package names as mended."""
    found = set()
    for path in glob.glob(f"/usr/share/doc/{package.split(':')[0]}/changelog.Debian*.gz"):
        with gzip.open(path, "rt", encoding="utf-8", errors="replace") as file:
            found.update(re.findall(r"CVE-\d{4}-\d{4,}", file.read()))
    return sorted(found, key=lambda name: [int(part) for part in name.split("-")[1:]])


def fields(package):
    names = ("binary:Package", "Version", "source:Package", "source:Version", "Architecture", "Homepage", "Maintainer")
    values = told("dpkg-query", "-W", "-f", "\t".join(f"${{{name}}}" for name in names), package).split("\t")
    return dict(zip(("package", "version", "source", "source version", "architecture", "homepage", "supplier"), values))


def sum_of(path):
    with open(path, "rb") as file:
        return hashlib.sha256(file.read()).hexdigest()


class Found:
    """Libraries and who needs them, as they are come upon."""

    def __init__(self):
        self.packages = {}

    def take(self, path, role):
        """Takes a library and all that it needs; gives its package."""
        package = owner(path)
        one = self.packages.setdefault(package, {**fields(package), "role": role, "files": {}, "depends": set()})
        one["role"] = min(one["role"], role, key=ROLES.index)
        real = os.path.realpath(path)
        if real not in one["files"]:
            one["files"][real] = sum_of(real)
            places = resolved(path)
            inner = ROLES[2] if role == ROLES[2] else ROLES[1]
            one["depends"] |= {self.take(places[name], inner) for name in needed(path)} - {package}
        return package


def main():
    with tempfile.TemporaryDirectory() as folder:
        told("dpkg-deb", "-x", sys.argv[1], folder)
        programs, found = [], Found()
        for path in sorted(glob.glob(f"{folder}/usr/bin/*")):
            places = resolved(path)
            direct = sorted({found.take(places[name], ROLES[0]) for name in needed(path)})
            programs.append({"path": path.removeprefix(folder), "sha256": sum_of(path), "needed": needed(path),
                             "depends": direct})
    for plugin in sorted(glob.glob(PLUGINS)):
        found.take(plugin, ROLES[2])
    if not programs or len(found.packages) < 5:
        raise SystemExit("components: the package holds no programs that are linked with anything")
    components = []
    for name, one in sorted(found.packages.items()):
        components.append({**one, "depends": sorted(one["depends"]), "licences": licences(name), "fixed": fixed(name)})
    with open("/etc/os-release", encoding="utf-8") as file:
        system = re.search(r'^PRETTY_NAME="(.*)"$', file.read(), re.M)[1]
    tools = re.findall(r"^ (\S+) \(= (\S+?)\),?$", open(sys.argv[2], encoding="utf-8").read(), re.M) if sys.argv[2:] else []
    json.dump({"system": system, "package": os.path.basename(sys.argv[1]), "sha256": sum_of(sys.argv[1]),
               "fields": dict(re.findall(r"^(\S+): (.*)$", told("dpkg-deb", "-f", sys.argv[1]), re.M)),
               "programs": programs, "components": components, "tools": tools}, sys.stdout, indent=1)
    print()


if __name__ == "__main__":
    main()
