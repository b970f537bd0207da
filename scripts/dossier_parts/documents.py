"""The project's documents as PDF, by pandoc and WeasyPrint, with links among themselves."""
import glob
import os
import re
import subprocess
import tempfile

from dossier_parts.files import TOP, read, told

LINE = 115  # letters that a line of a table holds
LONGEST = 11  # words up to this length stay whole

STYLE = """
@page { size: A4; margin: 18mm 16mm 20mm; @bottom-left { content: "TITLE"; font: 8pt "DejaVu Sans", sans-serif; color: #525c66 }
  @bottom-right { content: counter(page) " of " counter(pages); font: 8pt "DejaVu Sans", sans-serif; color: #525c66 } }
body { font: 9pt/1.45 "DejaVu Sans", sans-serif; color: #14202b }
h1 { font-size: 17pt; margin: 0 0 4mm } h2 { font-size: 12.5pt; margin: 7mm 0 2mm; border-bottom: 0.5pt solid #a3adb6 }
h3 { font-size: 10.5pt; margin: 5mm 0 1mm } h1, h2, h3 { break-after: avoid; line-height: 1.25 }
p, li { orphans: 2; widows: 2 } a { color: #0b57d0; text-decoration: none }
table { border-collapse: collapse; width: 100%; table-layout: fixed; font-size: 7.5pt; line-height: 1.35; margin: 2mm 0 4mm }
th, td { border: 0.4pt solid #a3adb6; padding: 1mm 1.5mm; vertical-align: top; text-align: left; overflow-wrap: break-word }
th { background: #e6ebef } tr { break-inside: avoid } thead { display: table-header-group }
code { font-family: "DejaVu Sans Mono", monospace; font-size: 92%; overflow-wrap: break-word }
pre { background: #f5f7f9; padding: 2mm; white-space: pre-wrap; font-size: 8pt; break-inside: avoid }
img { max-width: 100%; max-height: 95mm } .bad { color: #8e0f0f; font-weight: bold } .good { color: #17652d }
.note { background: #f5f7f9; border-left: 1.2mm solid #1f3b57; padding: 2mm 3mm }
"""


def with_widths(body):
    """Gives the columns of each table widths by what stands in them: text of any length in a few lines, words whole as
    far as that goes."""

    def widths(found):
        rows = [re.findall(r"<t[hd][^>]*>(.*?)</t[hd]>", row, re.S) for row in re.findall(r"<tr[^>]*>(.*?)</tr>", found[0], re.S)]
        columns = zip(*([re.sub(r"<br */?>", " ", cell) for cell in row] for row in rows))
        texts = [[re.sub(r"<[^>]*>", "", cell) for cell in column] for column in columns]
        words = [max(min(len(word), LONGEST) for cell in column for word in [*cell.split(), ""]) for column in texts]
        least = [word + 3 for word in words]
        weights = [max(sum(map(len, column)) / len(column), 0.3 * max(map(len, column))) for column in texts]
        left = max(0, LINE - sum(least))
        share = [few + left * weight / max(sum(weights), 1) for few, weight in zip(least, weights)]
        columns = "".join(f'<col style="width: {100 * one / sum(share):.1f}%">' for one in share)
        return re.sub(r"<colgroup>.*?</colgroup>", "", found[0], flags=re.S).replace("<table>", f"<table><colgroup>{columns}</colgroup>", 1)

    return re.sub(r"<table>.*?</table>", widths, body, flags=re.S)


def page_of(title, body):
    head = STYLE.replace("TITLE", title.replace('"', "'"))
    return (f'<!DOCTYPE html>\n<html lang="en"><head><meta charset="utf-8"><title>{title}</title>'
            f"<style>{head}</style></head>\n<body>\n{with_widths(body)}\n</body></html>\n")


def print_page(html, target, base):
    """Makes a PDF of a page; its pictures lie relative to `base`. Whatever WeasyPrint complains of is an error."""
    with tempfile.NamedTemporaryFile("w", suffix=".html", encoding="utf-8") as file:
        file.write(html)
        file.flush()
        done = subprocess.run(["weasyprint", "--quiet", "--base-url", os.path.join(TOP, base, ""), file.name, target],
                              capture_output=True, text=True, check=False)
    errors = [line for line in done.stderr.splitlines() if line.startswith("ERROR")]
    if done.returncode or errors:
        raise SystemExit("dossier: " + "\n".join([f"{target} was not made", *errors, done.stderr[-500:]]))


def headings(path):
    return re.findall(r"^#+ +(.*)$", re.sub(r"^```.*?^```", "", read(path), flags=re.S | re.M), re.M)


def sources():
    """The documents, by the name of their PDF."""
    paths = ["README.md", "CONTRIBUTING.md", *sorted(os.path.relpath(path, TOP) for path in glob.glob(f"{TOP}/docs/*.md"))]
    return {os.path.basename(path).removesuffix(".md") + ".pdf": path for path in paths}


def write(folder):
    """Makes all of them in the folder; gives name, title and heading of each."""
    os.makedirs(folder, exist_ok=True)
    made = {}
    for name, path in sources().items():
        body = told("pandoc", "--from", "gfm", "--to", "html5", "--wrap", "none", path)
        # What is a document here is one beside it there; what lies in the project only is told by its name.
        body = re.sub(r'href="(?![a-z]+:)([^"#]*/)?([\w-]+)\.md(#[^"]*)?"', r'href="\2.pdf\3"', body)
        titles = headings(path)
        print_page(page_of(titles[0], body), os.path.join(folder, name), os.path.dirname(path))
        made[name] = {"path": path, "title": titles[0], "headings": titles}
    return made
