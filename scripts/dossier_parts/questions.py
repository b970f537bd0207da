"""The questions of docs/dossier/questions.tsv. Each place that an answer names must be there, its section too."""
import os

from dossier_parts.files import table


def questions(folder, documents, sections):
    """The questions with their places as (file, section), and the places that are nowhere."""
    found, faults = [], []
    for row in table("docs/dossier/questions.tsv"):
        where = []
        for place in filter(None, row["where"].split("; ")):
            path, _, section = place.partition("#")
            name = os.path.basename(path)
            if path == "index.html":
                if section not in sections:
                    faults.append(f"questions.tsv: the index has no section {section!r}")
            elif not os.path.exists(os.path.join(folder, path)):
                faults.append(f"questions.tsv: there is no {path}")
            elif section and section not in documents.get(name, {}).get("headings", ()):
                faults.append(f"questions.tsv: {path} has no section {section!r}")
            where.append((path, section))
        if bool(where) == row["answer"].startswith("Not answered"):
            faults.append(f"questions.tsv: {row['question']!r} has a place, or \"Not answered\", but not both")
        found.append({**row, "where": where})
    return found, faults
