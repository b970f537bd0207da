"""The parts of the package as CycloneDX 1.5 and SPDX 2.3, and what each of the two asks for, checked."""
import re
import uuid

# Names of licences in Debian's copyright files, and what SPDX calls the same. All others become a LicenseRef.
SPDX = {
    "MIT": "MIT", "Expat": "MIT", "Zlib": "Zlib", "zlib": "Zlib", "zlib/libpng": "Zlib", "ISC": "ISC", "CC0": "CC0-1.0",
    "Apache-2.0": "Apache-2.0", "BSD-2-clause": "BSD-2-Clause", "BSD-3-clause": "BSD-3-Clause", "LGPL-2": "LGPL-2.0-only",
    "LGPL-2+": "LGPL-2.0-or-later", "LGPL-2.1": "LGPL-2.1-only", "LGPL-2.1+": "LGPL-2.1-or-later", "LGPL-3": "LGPL-3.0-only",
    "LGPL-3+": "LGPL-3.0-or-later", "GPL-2": "GPL-2.0-only", "GPL-2+": "GPL-2.0-or-later", "GPL-3": "GPL-3.0-only",
    "GPL-3+": "GPL-3.0-or-later", "FTL": "FTL", "MPL-1.1": "MPL-1.1", "AFL-2.1": "AFL-2.1", "GFDL-1.3": "GFDL-1.3-only",
    "BSL-1.0": "BSL-1.0", "OFL-1.1": "OFL-1.1", "Unicode": "Unicode-TOU",
}
OWN = "MIT"


def purl(name, version, system, architecture):
    codename = re.search(r"\((\w+)\)", system)[1]
    escaped = version.replace(":", "%3A").replace("+", "%2B")
    return f"pkg:deb/debian/{name}@{escaped}?arch={architecture}&distro={codename}"


def plain(one):
    return one["package"].split(":")[0]


def scope(one):
    return "optional" if one["role"] == "loaded at run time" else "required"


def cyclonedx(facts, time):
    """The components as a CycloneDX document."""
    fields, system = facts["fields"], facts["system"]
    own = purl("quillon", fields["Version"], system, fields["Architecture"])
    refs = {one["package"]: purl(plain(one), one["version"], system, one["architecture"]) for one in facts["components"]}

    def licences(one):
        return [{"license": {"id": SPDX[name]} if name in SPDX else {"name": name}} for name in one["licences"]]

    components = [{
        "type": "library", "bom-ref": refs[one["package"]], "name": plain(one), "version": one["version"],
        "supplier": {"name": re.sub(r" *<.*", "", one["supplier"])}, "purl": refs[one["package"]], "scope": scope(one),
        **({"licenses": licences(one)} if one["licences"] else {}),
        **({"externalReferences": [{"type": "website", "url": one["homepage"]}]} if one["homepage"] else {}),
        "properties": [{"name": "quillon:role", "value": one["role"]},
                       {"name": "debian:source", "value": f"{one['source']} {one['source version']}"}],
        "components": [{"type": "file", "bom-ref": f"{refs[one['package']]}#{path}", "name": path,
                        "hashes": [{"alg": "SHA-256", "content": value}]} for path, value in sorted(one["files"].items())],
    } for one in facts["components"]]
    programs = [{"type": "application", "bom-ref": f"{own}#{one['path']}", "name": one["path"],
                 "version": fields["Version"], "hashes": [{"alg": "SHA-256", "content": one["sha256"]}],
                 "licenses": [{"license": {"id": OWN}}]} for one in facts["programs"]]
    dependencies = [{"ref": own, "dependsOn": [one["bom-ref"] for one in programs]}]
    dependencies += [{"ref": f"{own}#{one['path']}", "dependsOn": [refs[name] for name in one["depends"]]}
                     for one in facts["programs"]]
    dependencies += [{"ref": refs[one["package"]], "dependsOn": [refs[name] for name in one["depends"]]}
                     for one in facts["components"]]
    return {
        "bomFormat": "CycloneDX", "specVersion": "1.5", "version": 1,
        "serialNumber": f"urn:uuid:{uuid.uuid5(uuid.NAMESPACE_URL, facts['sha256'])}",
        "metadata": {
            "timestamp": time,
            "tools": {"components": [{"type": "application", "name": "scripts/dossier", "version": fields["Version"]}]},
            "component": {"type": "application", "bom-ref": own, "name": "quillon", "version": fields["Version"],
                          "purl": own, "licenses": [{"license": {"id": OWN}}],
                          "hashes": [{"alg": "SHA-256", "content": facts["sha256"]}]},
        },
        "components": programs + components, "dependencies": dependencies,
    }


def spdx(facts, time):
    """The components as an SPDX document. What nobody has judged is NOASSERTION."""
    fields, system = facts["fields"], facts["system"]
    extracted = {}

    def reference(text):
        return "SPDXRef-" + re.sub(r"[^A-Za-z0-9.-]", "-", text)

    def declared(one):
        names = []
        for name in one["licences"]:
            if name not in SPDX:
                licence = "LicenseRef-Debian-" + re.sub(r"[^A-Za-z0-9.-]", "-", name)
                extracted[licence] = {
                    "licenseId": licence, "name": name,
                    "extractedText": f"{name}, as told in Debian's copyright file /usr/share/doc/{plain(one)}/copyright"}
                names.append(licence)
            else:
                names.append(SPDX[name])
        return " AND ".join(sorted(set(names))) or "NOASSERTION"

    own = reference("Package-quillon")
    packages = [{
        "SPDXID": own, "name": "quillon", "versionInfo": fields["Version"], "packageFileName": facts["package"],
        "downloadLocation": "NOASSERTION", "filesAnalyzed": False, "licenseConcluded": OWN, "licenseDeclared": OWN,
        "copyrightText": "2026 The generator service console authors", "primaryPackagePurpose": "APPLICATION",
        "checksums": [{"algorithm": "SHA256", "checksumValue": facts["sha256"]}],
        "externalRefs": [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                          "referenceLocator": purl("quillon", fields["Version"], system, fields["Architecture"])}],
    }]
    relations = [{"spdxElementId": "SPDXRef-DOCUMENT", "relationshipType": "DESCRIBES", "relatedSpdxElement": own}]
    ids = {one["package"]: reference("Package-" + plain(one)) for one in facts["components"]}
    for one in facts["components"]:
        packages.append({
            "SPDXID": ids[one["package"]], "name": plain(one), "versionInfo": one["version"],
            "supplier": "Organization: Debian", "originator": "NOASSERTION", "downloadLocation": "NOASSERTION",
            **({"homepage": one["homepage"]} if one["homepage"] else {}), "filesAnalyzed": False,
            "licenseConcluded": "NOASSERTION", "licenseDeclared": declared(one), "copyrightText": "NOASSERTION",
            "primaryPackagePurpose": "LIBRARY", "comment": one["role"],
            "sourceInfo": f"built by Debian from {one['source']} {one['source version']}",
            "externalRefs": [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                              "referenceLocator": purl(plain(one), one["version"], system, one["architecture"])}],
        })
        relations += [{"spdxElementId": ids[one["package"]], "relationshipType": "DYNAMIC_LINK",
                       "relatedSpdxElement": ids[name]} for name in one["depends"]]
        if scope(one) == "optional":
            relations.append({"spdxElementId": ids[one["package"]], "relationshipType": "OPTIONAL_COMPONENT_OF",
                              "relatedSpdxElement": own})
    direct = sorted({ids[name] for one in facts["programs"] for name in one["depends"]})
    relations += [{"spdxElementId": own, "relationshipType": "DYNAMIC_LINK", "relatedSpdxElement": one} for one in direct]
    return {
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"quillon {fields['Version']} for {system}",
        "documentNamespace": f"https://quillon.invalid/spdx/{uuid.uuid5(uuid.NAMESPACE_URL, facts['sha256'])}",
        "creationInfo": {"created": time, "creators": ["Tool: scripts/dossier", "Organization: The generator service console authors"]},
        "packages": packages, "relationships": relations,
        **({"hasExtractedLicensingInfos": [extracted[name] for name in sorted(extracted)]} if extracted else {}),
    }


def faults_of(bom, document):
    """What the two documents lack: references that lead nowhere, names that stand twice, hashes of a wrong length."""
    faults = []
    refs = [bom["metadata"]["component"]["bom-ref"], *(one["bom-ref"] for one in bom["components"])]
    faults += [f"CycloneDX: {ref} stands twice" for ref in set(refs) if refs.count(ref) > 1]
    for one in bom["dependencies"]:
        faults += [f"CycloneDX: {ref} is nowhere" for ref in (one["ref"], *one["dependsOn"]) if ref not in refs]
    hashes = [each["content"] for one in bom["components"] for each in one.get("hashes", [])]
    faults += [f"CycloneDX: {value} is no SHA-256" for value in hashes if not re.fullmatch("[0-9a-f]{64}", value)]
    ids = ["SPDXRef-DOCUMENT", *(one["SPDXID"] for one in document["packages"])]
    faults += [f"SPDX: {name} stands twice" for name in set(ids) if ids.count(name) > 1]
    for one in document["relationships"]:
        faults += [f"SPDX: {name} is nowhere" for name in (one["spdxElementId"], one["relatedSpdxElement"]) if name not in ids]
    known = {one["licenseId"] for one in document.get("hasExtractedLicensingInfos", [])}
    for one in document["packages"]:
        faults += [f"SPDX: {name} has no text" for name in re.findall(r"LicenseRef[\w.-]+", one["licenseDeclared"])
                   if name not in known]
        if not one["versionInfo"]:
            faults.append(f"SPDX: {one['name']} has no version")
    return faults
