"""The index of the dossier: what it is, what it is not, and everything that it holds."""
from html import escape

from dossier_parts.hazards import PROBABILITY, SEVERITY
from dossier_parts.results import HERE, result_of, stamped


class Page:
    """HTML, a piece after the other, and the titles of its sections. Cells of tables are HTML already."""

    def __init__(self):
        self.text, self.sections = [], []

    def title(self, level, words):
        self.sections.append(words)
        self.text.append(f"<h{level}>{escape(words)}</h{level}>")

    def say(self, html, kind=""):
        self.text.append(f'<p class="{kind}">{html}</p>' if kind else f"<p>{html}</p>")

    def table(self, names, rows):
        self.text.append("<table><thead><tr>" + "".join(f"<th>{escape(name)}</th>" for name in names) + "</tr></thead><tbody>")
        self.text += ["<tr>" + "".join(f"<td>{cell}</td>" for cell in row) + "</tr>" for row in rows]
        self.text.append("</tbody></table>")


def link(path, words=None):
    return f'<a href="{escape(path)}">{escape(words or path)}</a>'


def outcome(word):
    kind = {"passed": "good", "FAILED": "bad"}.get(word, "")
    return f'<span class="{kind}">{escape(word)}</span>'


def code(names):
    return "<br>".join(f"<code>{escape(name)}</code>" for name in names)


def introduce(page, version, now):
    page.title(1, f"Dossier of Quillon {version}")
    page.say(f"Made by <code>scripts/dossier</code> of the sources at commit <code>{escape(now['commit'])}</code>"
             + ("." if now["changes"] == "none" else ', <span class="bad">with changes that were not committed</span>.')
             + " Everything here is derived from files of the project and from what its scripts wrote last; the ratings"
             " of the hazards, the judgements of the libraries and the answers to the questions are kept by hand in"
             " <code>docs/dossier</code>.")
    page.title(2, "What this is not")
    page.say("It is no certificate and no declaration of conformity. Nobody but its developers has looked at it: there is no"
             " assessment by a notified body, a laboratory or any other third party, and none of its severities and probabilities"
             " comes from data of the field. Quillon is a service tool for an engineer at an X-ray generator, used when no patient"
             " is there. It is no alarm system: that something is shown does not mean that anybody sees it, and what is not"
             " shown is not thereby safe. It is no interlock either: what may expose is decided by the generator alone.", "note")


def tell_builds(page, builds):
    page.title(2, "The package")
    rows = []
    for build in builds:
        result = build["result"]
        rows.append((escape(build["facts"]["system"]), link(build["package"]), f"{build['bytes']:,} bytes",
                     f"<code>{build['facts']['sha256']}</code>", escape(result.get("second build", "not built twice")),
                     escape(result.get("compiler", "")), escape(stamped(result))))
    page.table(("System", "Package", "Size", "SHA-256", "Second build", "Compiler", "Sources"), rows)
    page.say("The second build is made in another folder, 400 days later, in another time zone, language and umask, without"
             " a network, and compared byte for byte (<code>scripts/clean-package</code>). What was installed when it was"
             " built stands in the <code>.buildinfo</code> beside each package.")
    for build in builds:
        tried = build["tried"]
        same = tried.get("sha256") == build["facts"]["sha256"]
        page.say(f"{escape(build['facts']['system'])}: installed in a fresh system, looked at and removed again"
                 f" (<code>scripts/try-package</code>): "
                 + (outcome("passed") + f", {escape(stamped(tried))}" if same else "not run with this package") + ".")


def tell_components(page, builds, libraries):
    page.title(2, "What it is made of")
    for build in builds:
        page.say(f"{escape(build['facts']['system'])}: {len(build['facts']['components'])} packages. "
                 + ", ".join(link(path) for path in build["sboms"]) + ", and as it was found: " + link(build["components"]) + ".")
    page.say("The list is what the loader finds for the programs of the package, and for Qt's plugin for the X server, which is"
             " loaded at run time. Other plugins (Wayland, themes, methods of input) and what the graphics driver loads"
             " depend on the PC and are not in it. Licences are those that Debian's copyright files name for any file of a"
             " package; which of them applies to what is linked was not judged. The two documents are checked for references"
             " that lead nowhere and for what each entry must have; the schemas of CycloneDX and SPDX are in no package of"
             " Debian 12, and the script does not fetch them.")
    rows = []
    for name, one in sorted(libraries.items()):
        open_ones = "<br>".join(f"{escape(system)}: {escape(' '.join(names))}" for system, names in one["open"].items() if names)
        rows.append((escape(name), "<br>".join(f"{escape(system.split(' (')[0])}: {escape(version)}"
                                               for system, version in one["versions"].items()),
                     escape(one["row"]["use"]), escape(one["row"]["input"]), escape(one["row"]["judged"]), open_ones or "none"))
    page.table(("Source", "Versions", "What for", "What reaches it", "Known anomalies, as judged by the developers",
                "Named as mended in the other release alone"), rows)
    page.say("The source of the last column is Debian's changelog of each package, as installed at the build. The trackers of the"
             " libraries themselves and Debian's security tracker were not read.")


def tell_hazards(page, hazards):
    page.title(2, "Hazards")
    page.say("S is the severity, P the probability at a visit, each without and with what stands against it. They are estimates.")
    page.table(("S", "Meaning"), [(str(value), escape(words)) for value, words in SEVERITY.items()])
    page.table(("P", "Meaning"), [(str(value), escape(words)) for value, words in PROBABILITY.items()])
    page.table(("", "Hazard", "Harm", "S, P before", "Measure", "S, P after", "Remark"), [
        (one["id"], escape(one["hazard"]), escape(one["harm"]), f"S{one['severity before']} P{one['probability before']}",
         escape(one["measure"]), f"S{one['severity after']} P{one['probability after']}", escape(one["remark"])) for one in hazards])
    page.say("What is left stands in " + link("documents/safety.pdf") + ", \"What remains\".")


def tell_trace(page, hazards, runs, kept):
    page.title(2, "From the hazard to the last result")
    rows, counts = [], {}
    for one in hazards:
        results = [(guard, result_of(guard, runs, kept)) for guard in one["guards"]]
        for _, result in results:
            counts[result] = counts.get(result, 0) + 1
        rows.append((one["id"], escape(one["hazard"]), code(one["code"]), "<br>".join(
            f"<code>{escape(guard)}</code> {outcome(result)}" for guard, result in results)))
    page.say("Guards: " + ", ".join(f"{count} {outcome(name)}" for name, count in sorted(counts.items())) + ". A guard has passed when its"
             " whole suite has, in a run of these sources; \"not run\" means that no run of these sources is at hand.")
    page.table(("", "Hazard", "Code", "Guards and their last result"), rows)


def tell_results(page, runs, kept, checks):
    page.title(2, "Results and figures")
    page.table(("Tests", "Passed", "Failed", "Skipped", "Sources", "Are they these?"), [
        (escape(run.title) + ": " + link(run.file), run.count("passed"), run.count("FAILED"), run.count("skipped"),
         escape(stamped(run.stamp)), run.age) for run in runs] or [("not run", "", "", "", "", "")])
    for run in runs:
        if run.search():
            page.say(f"Share of the search {escape(run.title)} ({run.age}):<br>" + "<br>".join(map(escape, run.search())))
    rows = []
    for name, run in kept.items():
        if not run["stamp"]:
            rows.append((escape(run["title"]), f"<code>scripts/{name}</code>", "not run on this commit", ""))
            continue
        state = "" if run["age"] == HERE else ' <span class="bad">of other sources than these</span>'
        rows.append((escape(run["title"]), link(run["file"]) + f"<br>{'ended well' if run['passed'] else 'ended with ' + escape(run['stamp'].get('status', '?'))}",
                     escape(stamped(run["stamp"])) + state, "<br>".join(map(escape, run["lines"]))))
    page.table(("Run by hand", "", "Sources", "What it said"), rows)
    page.table(("Check of the sources, run for this dossier", ""), [(f"<code>{escape(name)}</code>", outcome(result))
                                                                    for name, result in checks])


def tell_documents(page, documents):
    page.title(2, "Documents")
    page.table(("PDF", "Title", "Made of"), [(link(f"documents/{name}"), escape(one["title"]), f"<code>{escape(one['path'])}</code>")
                                            for name, one in documents.items()])


def tell_questions(page, questions):
    page.title(2, "An auditor's questions")
    open_ones = sum(not one["where"] for one in questions)
    page.say(f"{len(questions)} questions; {open_ones} of them are not answered by anything here.")
    page.table(("", "Question", "Answer", "Where"), [
        (str(number), escape(one["question"]), escape(one["answer"]),
         "<br>".join(link(path, f"{path}{', ' + chr(34) + section + chr(34) if section else ''}") for path, section in one["where"])
         or '<span class="bad">not answered</span>') for number, one in enumerate(questions, 1)])
