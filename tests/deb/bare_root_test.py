#!/usr/bin/env python3
"""Installs the packages in a bare root, uses what they brought, and removes them again. Runs as
root, while mmdebstrap has the root's package system at hand (MMDEBSTRAP_APT_CONFIG).
usage: bare_root_test.py ROOT PACKAGES_FOLDER"""

import gzip
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time
import unittest
import xml.etree.ElementTree

ROOT, PACKAGES = map(pathlib.Path, sys.argv[1:3])
NAMES = ["tarnwick", "tarnwick-phosh", "tarnwick-settings"]
DEBS = [path for path in PACKAGES.glob("*.deb") if "-dbgsym_" not in path.name]
HOME = "/tmp/home"


def run(command, **options):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True,
                          timeout=300, check=False, **options)


def in_root(*command, **variables):
    """What a user would run there: no display, no session bus, no sound server but a named one."""
    environment = {"PATH": "/usr/bin:/bin:/usr/sbin:/sbin", "HOME": HOME, "LC_ALL": "C.UTF-8",
                   "PULSE_SERVER": "unix:/nowhere", **variables}
    return run(["chroot", ROOT, *command], env=environment, stdin=subprocess.DEVNULL)


def apt_get(*arguments):
    environment = dict(os.environ, APT_CONFIG=os.environ["MMDEBSTRAP_APT_CONFIG"],
                       DEBIAN_FRONTEND="noninteractive")
    done = run(["apt-get", "-q", "-y", "--no-install-recommends", "-o",
                f"DPkg::Chroot-Directory={ROOT}", *arguments], env=environment)
    assert done.returncode == 0, done.stdout + done.stderr


def outside(path):
    """Where a path of the root is seen from here."""
    return ROOT / str(path).lstrip("/")


def files_of(package):
    return in_root("dpkg", "-L", package).stdout.splitlines()


def setUpModule():
    copies = [shutil.copy(package, ROOT / "tmp") for package in DEBS]
    outside(HOME).mkdir()
    apt_get("install", *copies)


class Installed(unittest.TestCase):
    def program(self, *command, **variables):
        ended = in_root(*command, **variables)
        self.assertEqual(ended.returncode, 0, ended.stdout + ended.stderr)
        return ended.stdout

    def test_all_packages_are_there(self):
        self.assertEqual(sorted(path.name.split("_")[0] for path in DEBS), NAMES)
        for name in NAMES:
            self.assertEqual(self.program("dpkg-query", "-W", "-f", "${db:Status-Status}", name),
                             "installed")

    def test_every_library_is_found(self):
        checked = 0
        for path in (path for name in NAMES for path in files_of(name)):
            if outside(path).is_file() and outside(path).read_bytes()[:4] == b"\x7fELF":
                self.assertNotIn("not found", self.program("ldd", path), path)
                checked += 1
        self.assertGreaterEqual(checked, 8)

    def test_mixer_paints_the_simulated_device(self):
        self.assertIn("Ringtone: 50%", self.program("tarnwick", "--simulate"))
        picture = outside(f"{HOME}/.cache/tarnwick/widget.png").read_bytes()
        self.assertEqual(picture[1:4], b"PNG")

    def test_mixer_loads_the_sound_servers_module(self):
        ended = in_root("tarnwick")
        self.assertEqual(ended.returncode, 0, ended.stderr)
        self.assertNotIn("cannot be loaded", ended.stderr)
        self.assertIn("unknown", ended.stdout)

    def test_headless_host_shows_the_widget(self):
        script = outside("/tmp/commands")
        script.write_text("create\ncall view\ncall hostWillPresent\ntree\nquit\n")
        text = self.program("sh", "-c", "tarnwick-headless < /tmp/commands")
        answers = [json.loads(line) for line in text.splitlines()]
        self.assertEqual([answer["ok"] for answer in answers if "ok" in answer], [True] * 5, text)
        self.assertIn("UISlider", text)

    def test_command_without_a_server_says_so_and_fails(self):
        ended = in_root("tarnwickctl", "--timeout", "0.2", "list")
        self.assertNotEqual(ended.returncode, 0)
        self.assertTrue(ended.stderr)

    def test_command_moves_a_real_servers_volume(self):
        socket = outside("/tmp/pulse")
        server = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
             "-L", "module-null-sink",
             "-L", f"module-native-protocol-unix socket={socket} auth-anonymous=1"],
            env={"PATH": os.environ["PATH"], "HOME": str(outside(HOME)),
                 "PULSE_RUNTIME_PATH": str(outside("/tmp/pulse-run"))},
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(server.wait)
        self.addCleanup(server.kill)
        deadline = time.monotonic() + 60
        while not socket.exists():
            self.assertIsNone(server.poll(), "the sound server ended")
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.02)
        address = {"PULSE_SERVER": "unix:/tmp/pulse"}
        self.program("tarnwickctl", "set", "Audio/Video", "37%", **address)
        self.assertIn("37%", self.program("tarnwickctl", "get", "Audio/Video", **address))
        text = self.program("tarnwick", **address)
        self.assertRegex(text, r"Audio/Video.*: 37%")

    def test_session_starts_the_program_that_is_there(self):
        entry = outside("/etc/xdg/autostart/org.tarnwick.mixer-autostart.desktop").read_text()
        program = re.search(r"^Exec=(\S+)", entry, re.MULTILINE).group(1)
        self.assertTrue(outside(f"/usr/bin/{program}").is_file())

    def test_versions_agree(self):
        version = self.program("dpkg-query", "-W", "-f", "${Version}", "tarnwick")
        for program in ("tarnwick", "tarnwick-headless", "tarnwick-settings", "tarnwickctl"):
            self.assertIn(version, self.program(program, "--version").split())
        metainfo = outside("/usr/share/metainfo/org.tarnwick.mixer.metainfo.xml")
        releases = xml.etree.ElementTree.parse(metainfo).findall("releases/release")
        self.assertEqual(releases[0].get("version"), version)

    def test_plugin_lies_where_the_shell_looks_and_tells_where_it_is(self):
        (folder,) = outside("/usr/lib").glob("*/phosh/plugins")
        self.assertTrue((folder / "libphosh-plugin-tarnwick.so").is_file())
        told = re.search(r"^Plugin=(\S+)$", (folder / "tarnwick.plugin").read_text(), re.MULTILINE)
        self.assertEqual(outside(told.group(1)), folder / "libphosh-plugin-tarnwick.so")

    def test_every_program_has_its_manual_page(self):
        for path in files_of("tarnwick") + files_of("tarnwick-settings"):
            if path.startswith("/usr/bin/"):
                name = path.rsplit("/", 1)[1]
                with gzip.open(outside(f"/usr/share/man/man1/{name}.1.gz"), "rt") as page:
                    self.assertIn(".SH NAME", page.read())

    def test_completions_lie_where_the_shells_look(self):
        for path in ("/usr/share/bash-completion/completions/tarnwickctl",
                     "/usr/share/zsh/site-functions/_tarnwickctl"):
            self.assertTrue(outside(path).is_file(), path)

    def test_metadata_icon_and_desktop_entry_fit_together(self):
        judged = run(["appstreamcli", "validate-tree", "--no-net", ROOT])
        self.assertEqual(judged.returncode, 0, judged.stdout)
        icons = outside("/usr/share/icons/hicolor/scalable/apps")
        for name in ("mixer", "Settings"):
            entry = outside(f"/usr/share/applications/org.tarnwick.{name}.desktop")
            self.assertEqual(run(["desktop-file-validate", entry]).stdout, "")
            text = entry.read_text()
            program = re.search(r"^Exec=(\S+)", text, re.MULTILINE).group(1)
            self.assertTrue(outside(f"/usr/bin/{program}").is_file())
            icon = re.search(r"^Icon=(\S+)", text, re.MULTILINE).group(1)
            self.assertTrue((icons / f"{icon}.svg").is_file())


class Removed(unittest.TestCase):
    """Stands behind Installed in the alphabet, and so runs after it."""

    @classmethod
    def setUpClass(cls):
        cls.paths = [path for name in NAMES for path in files_of(name)]
        apt_get("purge", *NAMES)

    def test_packages_are_unknown(self):
        for name in NAMES:
            self.assertNotEqual(in_root("dpkg-query", "-W", name).returncode, 0)

    def test_what_they_brought_is_gone(self):
        self.assertTrue(self.paths)
        for path in self.paths:
            if path != "/." and outside(path).exists():
                self.assertEqual(in_root("dpkg", "-S", path).returncode, 0, f"{path} is nobody's")

    def test_nothing_with_their_name_is_left_of_the_system(self):
        left = in_root("find", "/", "-xdev", "(", "-path", "/tmp", "-o", "-path", "/proc", ")",
                       "-prune", "-o", "-iname", "*tarnwick*", "-print").stdout
        self.assertEqual(left, "")

    def test_the_users_settings_stay(self):
        self.assertTrue(any(outside(f"{HOME}/.config/tarnwick").iterdir()))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "--verbose"])
