"""What is known of the libraries: docs/dossier/libraries.tsv, held against those that the package is really linked with."""
import re

from dossier_parts.files import table

# What the operator or the generator can bring; a weakness there is judged by its own name.
NEAR = {"line", "files"}


def upstream(version):
    """The version without Debian's own parts: 2:1.2.3+dfsg-4+deb12u1 is 1.2.3."""
    return re.sub(r"(\.|\+)(dfsg|ds).*?(?=\+really|$)", "", re.sub(r"^\d+:", "", version).rsplit("-", 1)[0])


def judged(builds):
    """The sources of the libraries of all builds, each with its row, its versions and what was mended in one of them
    alone; and what the table lacks. A library without a row, or of a version that nobody has looked at, is a fault."""
    rows, faults, found = {row["source"]: row for row in table("docs/dossier/libraries.tsv")}, [], {}
    for facts in builds:
        for one in facts["components"]:
            source = found.setdefault(one["source"], {"versions": {}, "fixed": {}, "roles": set()})
            source["versions"][facts["system"]] = one["source version"]
            source["fixed"].setdefault(facts["system"], set()).update(one["fixed"])
            source["roles"].add(one["role"])
    for name, one in sorted(found.items()):
        row = rows.get(name)
        if row is None:
            faults.append(f"docs/dossier/libraries.tsv has no row for {name}, which the package is linked with")
            continue
        one["row"] = row
        faults += [f"docs/dossier/libraries.tsv: {name} {upstream(version)} ({system}) was not looked at, only {row['versions']}"
                   for system, version in one["versions"].items() if upstream(version) not in row["versions"].split()]
        every = set().union(*one["fixed"].values())
        one["open"] = {system: sorted(every - mended) for system, mended in one["fixed"].items()}
        if NEAR & set(row["input"].split(", ")):
            faults += [f"docs/dossier/libraries.tsv: {weakness} of {name} is not judged" for system, names in one["open"].items()
                       for weakness in names if weakness not in row["judged"]
                       and len(one["fixed"]) > 1 and upstream(one["versions"][system]) != ""]
    unused = sorted(set(rows) - set(found))
    return found, faults, unused
