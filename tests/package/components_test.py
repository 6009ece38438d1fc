"""The list of components: a document as SPDX 2.3 has it, and true of the zip that it is in.

usage: components_test.py ZIP IMPORTS     IMPORTS lists what the DLL imports
"""
import hashlib
import json
import re
import sys
import unittest
import zipfile
from pathlib import Path

ZIP, IMPORTS = zipfile.ZipFile(sys.argv.pop(1)), Path(sys.argv.pop(1))
ROOT = ZIP.namelist()[0].split("/")[0]
DOCUMENT = json.loads(ZIP.read(f"{ROOT}/share/kvutils/kvutils.spdx.json"))

ID = r"SPDXRef-[A-Za-z0-9.-]+"
# What the schema of SPDX 2.3 asks of each object, as far as it is used: names, whether needed, form.
DOCUMENT_FORM = {
    "spdxVersion": "SPDX-2\\.3",
    "dataLicense": "CC0-1\\.0",
    "SPDXID": "SPDXRef-DOCUMENT",
    "name": ".+",
    "documentNamespace": r"https://[^#\s]+",
    "creationInfo": dict,
    "packages": list,
    "relationships": list,
    "hasExtractedLicensingInfos": list,
}
CREATION_FORM = {
    "created": r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ",
    "creators": list,
}
PACKAGE_FORM = {
    "SPDXID": ID,
    "name": ".+",
    "versionInfo": ".+",
    "summary": ".+",
    "downloadLocation": "NOASSERTION|NONE|https://.+",
    "filesAnalyzed": bool,
    "licenseConcluded": ".+",
    "licenseDeclared": ".+",
    "licenseComments": "?The text is in .+",
    "copyrightText": ".+",
    "primaryPackagePurpose": "LIBRARY|APPLICATION",
    "packageFileName": "?bin/.+",
    "checksums": [list],
}
RELATIONSHIP_FORM = {
    "spdxElementId": ID,
    "relationshipType": "DESCRIBES|CONTAINS|STATIC_LINK|DYNAMIC_LINK",
    "relatedSpdxElement": ID,
}
LICENCE_FORM = {
    "licenseId": r"LicenseRef-[A-Za-z0-9.-]+",
    "name": ".+",
    "extractedText": r"[\s\S]{50,}",
}
CHECKSUM_FORM = {
    "algorithm": "SHA256",
    "checksumValue": "[0-9a-f]{64}",
}
# Of the SPDX list of licences, those in use.
LICENCES = {"BSD-3-Clause", "GPL-3.0-or-later", "ICU", "MIT", "Unicode-DFS-2016", "ZPL-2.1"}
EXCEPTIONS = {"GCC-exception-3.1"}


def licences(expression: str):
    """The names in an expression of licences; fails where it is none."""
    for part in expression.split(" AND "):
        name, *exception = part.split(" WITH ")
        yield name
        if len(exception) > 1 or set(exception) - EXCEPTIONS:
            raise AssertionError(f"{part} is no licence")


class Components(unittest.TestCase):
    def assert_form(self, value: dict, form: dict):
        """The value has the names of the form, and what they hold looks as it says; ? and [] may be missing."""
        self.assertEqual(set(value) - set(form), set())
        for name, kind in form.items():
            optional = isinstance(kind, list) or (isinstance(kind, str) and kind.startswith("?"))
            if name not in value:
                self.assertTrue(optional, f"{name} is missing in {value}")
            elif isinstance(kind, str):
                self.assertRegex(value[name], rf"\A({kind.removeprefix('?')})\Z", name)
            else:
                self.assertIsInstance(value[name], kind[0] if isinstance(kind, list) else kind)

    def test_have_the_form_of_spdx(self):
        self.assert_form(DOCUMENT, DOCUMENT_FORM)
        self.assert_form(DOCUMENT["creationInfo"], CREATION_FORM)
        for creator in DOCUMENT["creationInfo"]["creators"]:
            self.assertRegex(creator, r"^(Tool|Person|Organization): \S")
        for package in DOCUMENT["packages"]:
            self.assert_form(package, PACKAGE_FORM)
            self.assertFalse(package["filesAnalyzed"])
            for checksum in package.get("checksums", []):
                self.assert_form(checksum, CHECKSUM_FORM)
        for relationship in DOCUMENT["relationships"]:
            self.assert_form(relationship, RELATIONSHIP_FORM)
        for licence in DOCUMENT["hasExtractedLicensingInfos"]:
            self.assert_form(licence, LICENCE_FORM)

    def test_have_one_identifier_each_and_hang_together(self):
        identifiers = [package["SPDXID"] for package in DOCUMENT["packages"]]
        self.assertEqual(len(identifiers), len(set(identifiers)))
        self.assertGreaterEqual(len(identifiers), 8)
        reached = {DOCUMENT["SPDXID"]}
        for relationship in DOCUMENT["relationships"]:
            self.assertIn(relationship["spdxElementId"], reached)
            reached.add(relationship["relatedSpdxElement"])
        self.assertEqual(reached, {DOCUMENT["SPDXID"], *identifiers})

    def test_name_licences_that_are_known_or_quoted(self):
        quoted = {licence["licenseId"] for licence in DOCUMENT["hasExtractedLicensingInfos"]}
        used = set()
        for package in DOCUMENT["packages"]:
            if package["licenseDeclared"] not in ("NONE", "NOASSERTION"):
                used.update(licences(package["licenseDeclared"]))
        self.assertEqual(used, LICENCES | quoted)

    def test_have_their_licences_in_the_zip(self):
        folder = f"{ROOT}/share/kvutils/"
        there = {name.removeprefix(folder) for name in ZIP.namelist() if name.startswith(folder + "licences/")}
        named = set()
        for package in DOCUMENT["packages"]:
            texts = re.findall(r"licences/[\w.-]+", package.get("licenseComments", ""))
            self.assertTrue(texts or package["name"] == "kvutils", f"{package['name']} has no licence")
            named.update(texts)
        self.assertEqual(named, there)

    def test_are_all_programs_of_the_zip(self):
        programs = {name.removeprefix(ROOT + "/") for name in ZIP.namelist() if name.endswith((".dll", ".exe"))}
        named = {package.get("packageFileName"): package for package in DOCUMENT["packages"]}
        self.assertEqual(programs, set(named) - {None})
        for program in programs:
            value = hashlib.sha256(ZIP.read(f"{ROOT}/{program}")).hexdigest()
            self.assertEqual(named[program]["checksums"][0]["checksumValue"], value)

    def test_are_all_that_is_imported_besides_the_system(self):
        system = {"ADVAPI32.dll", "KERNEL32.dll", "SHELL32.dll", "USER32.dll", "msvcrt.dll"}
        imported = {"bin/" + name for name in set(IMPORTS.read_text().split()) - system}
        linked = {relationship["relatedSpdxElement"] for relationship in DOCUMENT["relationships"]
                  if relationship["relationshipType"] == "DYNAMIC_LINK"}
        files = {package["packageFileName"] for package in DOCUMENT["packages"] if package["SPDXID"] in linked}
        self.assertEqual(files, imported)

    def test_name_the_time_zone_rules_that_are_in_the_dll(self):
        rules = next(package for package in DOCUMENT["packages"] if package["name"] == "Time Zone Database")
        self.assertRegex(rules["versionInfo"], r"^20\d\d[a-z]+$")
        self.assertIn(rules["versionInfo"].encode("utf-16-le"), ZIP.read(f"{ROOT}/bin/kvutils.dll"))


unittest.main()
