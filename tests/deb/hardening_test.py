#!/usr/bin/env python3
"""Every program, library and plugin in the packages is hardened as Debian hardens its own.
usage: hardening_test.py PACKAGES_FOLDER"""

import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

PACKAGES = pathlib.Path(sys.argv[1])

# What has a twin that knows the size of what it writes to, or the kind of what it formats, and whose
# call the compiler always turns into the twin's.
FORTIFIED = {"asprintf", "dprintf", "fprintf", "printf", "snprintf", "sprintf", "syslog",
             "vasprintf", "vfprintf", "vprintf", "vsnprintf", "vsprintf", "vsyslog"}

# A stack to protect, a text to format, nothing linked that is not needed.
PROGRAM = """
#include <cstdio>
#include <cstring>
int main(int count, char** words)
{
    char text[16];
    std::strncpy(text, words[0], sizeof text);
    std::fprintf(stderr, words[count - 1], text);
}
"""


def said_of(path, *options):
    return subprocess.run(["readelf", "--wide", *options, path], check=True, capture_output=True,
                          text=True, timeout=60).stdout


def places_for_indirect_jumps(path):
    """How many instructions the file has of those that alone an indirect jump may lead to. What the
    compiler itself links to every file brings a few."""
    return subprocess.run(["objdump", "--disassemble", "--no-show-raw-insn", path], check=True,
                          capture_output=True, text=True, timeout=60).stdout.count("endbr64")


def weaknesses(path):
    """What the flags would have given the file, and it lacks."""
    header = said_of(path, "--file-header")
    segments = said_of(path, "--program-headers")
    dynamic = said_of(path, "--dynamic")
    called = set(re.findall(r" UND (\w+)", said_of(path, "--dyn-syms")))
    found = {
        "position independent": re.search(r"Type:\s+DYN", header),
        "relocations read-only": "GNU_RELRO" in segments,
        "bound at once": "BIND_NOW" in dynamic,
        "code read-only": "TEXTREL" not in dynamic,
        "stack not executable": re.search(r"GNU_STACK .* RW +0x", segments),
        "stack protector": "__stack_chk_fail" in called,
        "fortified": not called & FORTIFIED,
    }
    return sorted(name for name, there in found.items() if not there)


def given(option):
    """The release's own flags of that kind."""
    return subprocess.run(["dpkg-buildflags", "--get", option], check=True, capture_output=True,
                          text=True, timeout=60,
                          env={"PATH": "/usr/bin:/bin",
                               "DEB_BUILD_MAINT_OPTIONS": "hardening=+all"}).stdout.split()


class Hardening(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        for package in PACKAGES.glob("*.deb"):
            if "-dbgsym_" not in package.name:
                subprocess.run(["dpkg-deb", "--extract", package, cls.folder / "packed"],
                               check=True, timeout=60)
        cls.files = [path for path in cls.folder.glob("packed/**/*")
                     if path.is_file() and path.read_bytes()[:4] == b"\x7fELF"]

    def built(self, *flags):
        program = self.folder / "program"
        subprocess.run(["c++", "-x", "c++", "-", "-o", program, *flags], input=PROGRAM, text=True,
                       check=True, stderr=subprocess.DEVNULL, timeout=60)
        return weaknesses(program)

    def test_all_that_is_packed_is_hardened(self):
        self.assertGreaterEqual(len(self.files), 8)
        for path in self.files:
            with self.subTest(path=path.name):
                self.assertEqual(weaknesses(path), [])

    def test_formatted_text_is_checked_somewhere(self):
        called = "".join(said_of(path, "--dyn-syms") for path in self.files)
        self.assertRegex(called, r"UND __\w*printf_chk")

    def test_indirect_jumps_are_checked_where_the_release_does(self):
        if "-fcf-protection" not in given("CXXFLAGS"):
            self.skipTest("this release does not")
        for path in self.files:
            with self.subTest(path=path.name):
                self.assertGreater(places_for_indirect_jumps(path), 20)

    def test_program_without_the_flags_lacks_what_they_give(self):
        self.assertEqual(
            self.built("-O2", "-no-pie", "-fno-stack-protector", "-U_FORTIFY_SOURCE",
                       "-Wl,-z,lazy,-z,norelro,-z,execstack"),
            ["bound at once", "fortified", "position independent", "relocations read-only",
             "stack not executable", "stack protector"])

    def test_program_with_them_lacks_nothing(self):
        flags = [flag for kind in ("CPPFLAGS", "CXXFLAGS", "LDFLAGS") for flag in given(kind)
                 if flag != "-Werror=format-security"]
        self.assertEqual(self.built(*flags), [])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "--verbose"])
