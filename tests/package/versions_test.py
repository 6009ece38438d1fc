"""The version of the project, wherever it stands.

usage: versions_test.py VERSION BUILD_FOLDER     VERSION is what CMake says
"""
import json
import re
import struct
import sys
import unittest
import zipfile
from pathlib import Path

VERSION, BUILD = sys.argv.pop(1), Path(sys.argv.pop(1))
SOURCE = Path(__file__).resolve().parents[2]
NAME = f"kvutils-{VERSION}-win64"
MAJOR = VERSION.split(".")[0]


def packed(path: str) -> bytes:
    with zipfile.ZipFile(BUILD / "package" / (NAME + ".zip")) as archive:
        return archive.read(f"{NAME}/{path}")


def found(pattern: str, text: str) -> str:
    match = re.search(pattern, text, re.MULTILINE)
    if match is None:
        raise AssertionError(f"nothing matches {pattern}")
    return match.group(1)


class Resource:
    """The version resource of a DLL: numbers behind a signature, then texts in UTF-16 behind their names."""

    def __init__(self, dll: bytes):
        start = dll.index("VS_VERSION_INFO\0".encode("utf-16-le"))
        self.data = dll[start:start + 2048]

    def numbers(self, offset: int) -> str:
        start = self.data.index(struct.pack("<I", 0xFEEF04BD)) + offset
        low, high = struct.unpack("<II", self.data[start:start + 8])
        return f"{low >> 16}.{low & 0xFFFF}.{high >> 16}.{high & 0xFFFF}"

    def text(self, name: str) -> str:
        key = (name + "\0").encode("utf-16-le")
        text = self.data[self.data.index(key) + len(key):].decode("utf-16-le", "replace")
        return text.lstrip("\0").split("\0")[0]


class Version(unittest.TestCase):
    def test_of_the_project_is_stated_once(self):
        text = (SOURCE / "CMakeLists.txt").read_text()
        self.assertEqual(re.findall(r"\bVERSION (\d\S*)", text)[1:], [VERSION])

    def test_is_in_the_resource_of_the_dll(self):
        resource = Resource(packed("bin/kvutils.dll"))
        self.assertEqual(resource.numbers(8), VERSION + ".0")
        self.assertEqual(resource.numbers(16), VERSION + ".0")
        self.assertEqual(resource.text("FileVersion"), VERSION)
        self.assertEqual(resource.text("ProductVersion"), VERSION)
        self.assertEqual(resource.text("OriginalFilename"), "kvutils.dll")

    def test_is_in_what_cmake_reads(self):
        text = packed("lib/cmake/kvutils/kvutils-config-version.cmake").decode()
        self.assertEqual(found(r'^set\(PACKAGE_VERSION "(.*)"\)', text), VERSION)
        text = packed("lib/cmake/kvutils/kvutils-config.cmake").decode()
        self.assertEqual(found(r"^# kvutils (\S+) for CMake", text), VERSION)

    def test_is_in_what_pkg_config_reads(self):
        self.assertEqual(found("^Version: (.*)$", packed("lib/pkgconfig/kvutils.pc").decode()), VERSION)

    def test_is_in_the_list_of_components(self):
        document = json.loads(packed("share/kvutils/kvutils.spdx.json"))
        self.assertEqual(document["packages"][0]["name"], "kvutils")
        self.assertEqual(document["packages"][0]["versionInfo"], VERSION)
        self.assertEqual(document["name"], "kvutils-" + VERSION)
        self.assertIn(f"/kvutils-{VERSION}-", document["documentNamespace"])

    def test_heads_the_texts(self):
        self.assertEqual(found(r"^## (\d\S*?)(, not yet released)?$", (SOURCE / "CHANGELOG.md").read_text()), VERSION)
        self.assertEqual(found(r"^# kvutils (.*)$", packed("README.md").decode()), VERSION)
        self.assertEqual(set(re.findall(r"kvutils-([\d.]+)-win64", (SOURCE / "README.md").read_text())), {VERSION})

    def test_is_asked_for_by_its_first_number(self):
        for file in ("README.md", "examples/consumer/CMakeLists.txt"):
            self.assertEqual(found(r"find_package\(kvutils (\S+) REQUIRED\)", (SOURCE / file).read_text()), MAJOR)

    # What GetVersionString gives belongs to the interface and stays, whatever the version of the project.
    def test_of_the_interface_is_its_own(self):
        source = (SOURCE / "utils/platform/application.cpp").read_text()
        self.assertEqual(found(r'GetVersionString\(\) \{ return "(.*)"; \}', source), "9.0.0")
        self.assertEqual((SOURCE / "tests/package/stargazer.txt").read_text().split("\n")[0], "kvutils 9.0.0")


unittest.main()
