"""Writes the list of what is inside the package, as an SPDX 2.3 document, from components.json.

A component names the file that it is, if it is one, its licence with the texts in licences/, how the
library comes by it, and where its version is told: by the project, by ICU's headers, by the time zone
rules that were built in, or by the Debian package of that name.
"""

import argparse
import datetime
import hashlib
import json
import pathlib
import re
import subprocess

HERE = pathlib.Path(__file__).parent


def find(pattern, text):
    return re.search(pattern, text, re.MULTILINE).group(1)


class Versions:
    def __init__(self, project, dependencies):
        self.project = project
        self.dependencies = dependencies

    def of(self, source):
        if source == "project":
            return self.project
        if source == "icu":
            header = self.dependencies / "include/unicode/uvernum.h"
            return find(r'^#define U_ICU_VERSION "(.*)"', header.read_text())
        if source == "tzdata":
            return find(r"^icudata-([^-]+)-", (self.dependencies / ".icudata").read_text())
        query = ["dpkg-query", "--show", "--showformat", "${Version}", source]
        return subprocess.run(query, check=True, capture_output=True, text=True).stdout


def spdx_id(component):
    return "SPDXRef-Package-" + component["id"]


def checksum(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def package(component, versions, binaries):
    result = {
        "SPDXID": spdx_id(component),
        "name": component["name"],
        "versionInfo": versions.of(component["version"]),
        "summary": component["summary"],
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": False,
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": component["licence"],
        "copyrightText": "NOASSERTION",
        "primaryPackagePurpose": "LIBRARY",
    }
    texts = component.get("texts", [])
    if texts:
        result["licenseComments"] = "The text is in " + ", ".join("licences/" + text for text in texts)
    if "file" in component:
        result["packageFileName"] = "bin/" + component["file"]
        value = checksum(binaries / component["file"])
        result["checksums"] = [{"algorithm": "SHA256", "checksumValue": value}]
    return result


def relationships(components):
    library = spdx_id(components[0])
    yield "SPDXRef-DOCUMENT", "DESCRIBES", library
    for component in components[1:]:
        user = "SPDXRef-Package-" + component.get("of", components[0]["id"])
        yield user, component["relation"], spdx_id(component)


def licence_texts(components):
    """The texts of the licences that SPDX has no name for."""
    for component in components:
        for name in re.findall(r"LicenseRef-([\w.-]+)", component["licence"]):
            yield name, (HERE / "licences" / (name + ".txt")).read_text(encoding="utf-8")


def document(components, versions, binaries, date):
    library = components[0]
    identity = checksum(binaries / library["file"])[:32]
    name = f"{library['name']}-{versions.project}"
    created = datetime.datetime.fromtimestamp(date, datetime.timezone.utc)
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": name,
        "documentNamespace": f"https://spdx.org/spdxdocs/{name}-{identity}",
        "creationInfo": {
            "created": created.strftime("%Y-%m-%dT%H:%M:%SZ"),
            "creators": ["Tool: kvutils-spdx.py"],
        },
        "packages": [package(component, versions, binaries) for component in components],
        "hasExtractedLicensingInfos": [
            {"licenseId": "LicenseRef-" + name, "name": name, "extractedText": text}
            for name, text in sorted(dict(licence_texts(components)).items())
        ],
        "relationships": [
            {"spdxElementId": one, "relationshipType": relation, "relatedSpdxElement": other}
            for one, relation, other in relationships(components)
        ],
    }


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--version", required=True)
    parser.add_argument("--date", type=pathlib.Path, required=True, help="file with seconds since 1970")
    parser.add_argument("--binaries", type=pathlib.Path, required=True)
    parser.add_argument("--dependencies", type=pathlib.Path, required=True)
    parser.add_argument("--output", type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    components = json.loads((HERE / "components.json").read_text())
    versions = Versions(arguments.version, arguments.dependencies)
    date = int(arguments.date.read_text())
    content = document(components, versions, arguments.binaries, date)
    arguments.output.write_text(json.dumps(content, indent=2, ensure_ascii=False) + "\n", encoding="utf-8")


main()
