"""The hazards of docs/safety.md with what docs/dossier/hazards.tsv says of each: how severe, how probable, and which code
stands against it. The two are held together by the first guard of each row.
"""
import os
import re

from dossier_parts.files import TOP, read, table

SEVERITY = {
    1: "time is lost",
    2: "service work fails, and is seen to have failed",
    3: "a machine is handed over in a wrong state, or data of it are lost",
    4: "radiation that nobody meant, or another dose than the one meant",
}
PROBABILITY = {
    1: "not to be expected: nothing that tests and searches have tried leads to it",
    2: "once in a thousand visits or less",
    3: "once in a hundred visits",
    4: "once in ten visits",
    5: "at most visits",
}
GUARD = re.compile(r"`([A-Za-z_]+\.[A-Za-z]+|(?:tests|scripts)/[A-Za-z_/.]+)`")


def rows_of(document):
    """Hazard, measure and guards of each row of the document's table of hazards."""
    for line in document.split("## Hazards", 1)[1].split("\n## ", 1)[0].splitlines():
        cells = [cell.strip() for cell in line.strip().strip("|").split(" | ")]
        if line.startswith("| ") and cells[0] != "Hazard":
            yield {"hazard": cells[0], "measure": "" if len(cells) < 3 else cells[1].strip("| "),
                   "guards": GUARD.findall(cells[-1])}


def grade(row, name, scale, faults):
    value = int(row[name]) if row[name].isdigit() else 0
    if value not in scale:
        faults.append(f"{row['guard']}: {name} is {row[name]!r}")
    return value


def hazards():
    """The hazards, numbered in the order of the document, and what is wrong with the two tables."""
    faults, found = [], []
    ratings = {}
    for row in table("docs/dossier/hazards.tsv"):
        if row["guard"] in ratings:
            faults.append(f"{row['guard']} has two rows")
        ratings[row["guard"]] = row
    for number, one in enumerate(rows_of(read("docs/safety.md")), 1):
        if not one["guards"] or one["guards"][0] not in ratings:
            faults.append(f"not rated: {one['hazard']}")
            continue
        rating = ratings.pop(one["guards"][0])
        one["id"] = f"H{number:02}"
        one.update({key: rating[key] for key in ("harm", "remark")}, code=rating["code"].split())
        for key, scale in (("severity", SEVERITY), ("probability", PROBABILITY)):
            for when in ("before", "after"):
                one[f"{key} {when}"] = grade(rating, f"{key} {when}", scale, faults)
            if one[f"{key} after"] > one[f"{key} before"]:
                faults.append(f"{rating['guard']}: {key} is higher after than before")
        faults += [f"{rating['guard']}: there is no {path}" for path in one["code"]
                   if not os.path.exists(os.path.join(TOP, path))]
        if not one["harm"] or not one["code"]:
            faults.append(f"{rating['guard']}: harm or code is missing")
        found.append(one)
    faults += [f"rated, and no first guard of any hazard: {guard}" for guard in ratings]
    return found, faults
