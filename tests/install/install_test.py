#!/usr/bin/env python3
"""Installs a build into an empty prefix and runs what was installed, as a user would: nothing of
the build tree may be needed. usage: install_test.py CMAKE BUILD_FOLDER WORK_FOLDER"""

import configparser
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest
import xml.etree.ElementTree

CMAKE, BUILD, WORK = sys.argv[1:4]
PREFIX = pathlib.Path(WORK) / "prefix"
MOVED = pathlib.Path(WORK) / "moved elsewhere"


def run(command, **options):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True,
                          timeout=100, check=False, **options)


def setUpModule():
    shutil.rmtree(WORK, ignore_errors=True)
    installed = run([CMAKE, "--install", BUILD, "--prefix", PREFIX])
    assert installed.returncode == 0, installed.stdout + installed.stderr


def library_folder(prefix=PREFIX):
    (bundle,) = prefix.glob("lib*/**/Tarnwick.bundle")
    return bundle.parent


def binaries():
    found = []
    for file in PREFIX.rglob("*"):
        if file.is_file() and file.read_bytes()[:4] == b"\x7fELF":
            found.append(file)
    return found


class Installation(unittest.TestCase):
    def setUp(self):
        self.home = pathlib.Path(WORK) / "home" / self._testMethodName
        self.home.mkdir(parents=True)
        kept = {name: value for name, value in os.environ.items()
                if name.endswith("SAN_OPTIONS") or name in ("PATH", "LC_ALL")}
        # No display, no session bus, and a sound server that is not there.
        self.environment = dict(kept, HOME=str(self.home), PULSE_SERVER="unix:/nowhere")

    def run_program(self, program, *arguments, **options):
        return run([program, *arguments], env=self.environment, cwd="/", **options)

    def test_holds_programs_modules_bundle_icon_and_desktop_entry(self):
        library = library_folder()
        for file in (PREFIX / "bin/tarnwick", PREFIX / "bin/tarnwick-headless",
                     PREFIX / "bin/tarnwick-settings",
                     library / "libtarnwick-platform.so", library / "tarnwick-pulse.so",
                     library / "tarnwick-accessibility.so",
                     library / "Tarnwick.bundle/Tarnwick", library / "Tarnwick.bundle/Info.plist",
                     library / "Tarnwick.bundle/thumb_default@2x.png",
                     PREFIX / "share/icons/hicolor/scalable/apps/org.tarnwick.mixer.svg",
                     PREFIX / "share/icons/hicolor/48x48/apps/org.tarnwick.mixer.png",
                     PREFIX / "share/applications/org.tarnwick.mixer.desktop",
                     PREFIX / "share/applications/org.tarnwick.Settings.desktop"):
            self.assertTrue(file.is_file(), file)

    def test_holds_the_lock_screens_plugin_which_brings_nothing_else_into_the_shell(self):
        (plugin,) = PREFIX.glob("lib*/**/phosh/plugins/libphosh-plugin-tarnwick.so")
        symbols = run(["nm", "-D", "--defined-only", plugin]).stdout
        self.assertEqual({line.split()[-1] for line in symbols.splitlines()},
                         {"g_io_module_load", "g_io_module_unload",
                          "g_io_phosh_plugin_tarnwick_query"})
        entry = (plugin.parent / "tarnwick.plugin").read_text()
        values = dict(line.split("=", 1) for line in entry.splitlines() if "=" in line)
        self.assertEqual(values["Id"], "tarnwick")
        self.assertIn("lockscreen", values["Types"])
        self.assertTrue(values["Plugin"].endswith(str(plugin.relative_to(PREFIX))), values)
        icons = PREFIX / "share/icons/hicolor/scalable/apps"
        self.assertTrue((icons / (values["Icon"] + ".svg")).is_file())

    def test_desktop_entries_start_what_is_installed_with_an_icon_that_is_there(self):
        icons = PREFIX / "share/icons/hicolor/scalable/apps"
        for name in ("mixer", "Settings"):
            entry = configparser.ConfigParser(interpolation=None)
            entry.optionxform = str
            entry.read(PREFIX / f"share/applications/org.tarnwick.{name}.desktop")
            self.assertTrue((icons / (entry["Desktop Entry"]["Icon"] + ".svg")).is_file())
            for section in entry.sections():  # The entry itself and its actions.
                program = entry[section]["Exec"].split()[0]
                self.assertTrue((PREFIX / "bin" / program).is_file(), section)

    def test_bus_service_starts_what_is_installed_under_the_desktop_entrys_name(self):
        entry = (PREFIX / "share/applications/org.tarnwick.mixer.desktop").read_text()
        self.assertIn("\nDBusActivatable=true\n", entry)
        service = (PREFIX / "share/dbus-1/services/org.tarnwick.mixer.service").read_text()
        values = dict(line.split("=", 1) for line in service.splitlines() if "=" in line)
        self.assertEqual(values["Name"], "org.tarnwick.mixer")
        self.assertRegex(values["Exec"], "^/.*/bin/tarnwick --service$")

    def test_unit_begins_with_the_session_and_not_beside_the_autostart_file(self):
        units = PREFIX / "lib/systemd/user"
        wanted = units / "graphical-session.target.wants/tarnwick.service"
        self.assertEqual(os.readlink(wanted), "../tarnwick.service")
        text = wanted.read_text()
        for line in ("After=graphical-session.target", "PartOf=graphical-session.target",
                     "WantedBy=graphical-session.target"):
            self.assertIn(line + "\n", text)
        (autostart,) = PREFIX.glob("**/xdg/autostart/org.tarnwick.mixer-autostart.desktop")
        self.assertIn("\nX-systemd-skip=true\n", autostart.read_text() + "\n")
        self.assertIn("\nX-GNOME-HiddenUnderSystemd=true\n", autostart.read_text() + "\n")
        # Where it is installed now; the prefix that was built for holds nothing yet.
        unit = self.home / "tarnwick.service"
        unit.write_text(re.sub("^ExecStart=\\S+", f"ExecStart={PREFIX}/bin/tarnwick", text,
                               flags=re.MULTILINE))
        verified = run(["systemd-analyze", "--user", "--man=no", "verify", unit],
                       env=dict(self.environment, XDG_RUNTIME_DIR=str(self.home)))
        self.assertEqual(verified.returncode, 0, verified.stderr)
        # It also complains about the machine's own units, whose sockets would be below this folder.
        self.assertNotIn("tarnwick.service", verified.stderr)

    def test_software_centres_find_the_projects_pages_and_pictures_that_exist(self):
        component = xml.etree.ElementTree.parse(
            PREFIX / "share/metainfo/org.tarnwick.mixer.metainfo.xml").getroot()
        addresses = {url.get("type"): url.text for url in component.findall("url")}
        self.assertLessEqual({"homepage", "vcs-browser"}, set(addresses))
        pictures = [image.text for image in component.findall("screenshots/screenshot/image")]
        self.assertGreaterEqual(len(pictures), 1)
        images = pathlib.Path(__file__).resolve().parents[2] / "docs/images"
        for picture in pictures:
            self.assertTrue((images / picture.rsplit("/", 1)[1]).is_file(), picture)
        for address in [*addresses.values(), *pictures]:
            self.assertTrue(address.startswith("https://tarnwick.org/"), address)
        for release in component.findall("releases/release"):
            self.assertIsNotNone(release.find("description"), release.get("version"))

    def test_manual_pages_are_installed(self):
        for page in ("man1/tarnwick.1", "man1/tarnwickctl.1", "man1/tarnwick-headless.1",
                     "man5/tarnwick.5"):
            self.assertTrue((PREFIX / "share/man" / page).is_file(), page)

    def test_finds_its_libraries_relative_to_itself_alone(self):
        self.assertGreaterEqual(len(binaries()), 6)
        for file in binaries():
            dynamic = run(["readelf", "-d", file]).stdout
            self.assertNotIn("(RPATH)", dynamic, file)
            for paths in re.findall(r"\(RUNPATH\).*\[(.*)\]", dynamic):
                for path in paths.split(":"):
                    self.assertTrue(path.startswith("$ORIGIN"), f"{file}: {path}")

    def test_every_library_is_found_and_ours_within_the_prefix(self):
        for file in binaries():
            listed = run(["ldd", file]).stdout
            self.assertNotIn("not found", listed, file)
            for place in re.findall(r"libtarnwick\S* => (\S+)", listed):
                self.assertTrue(pathlib.Path(place).resolve().is_relative_to(PREFIX.resolve()),
                                place)

    def test_headless_program_hosts_the_installed_widget(self):
        commands = 'create\ncall view\ncall hostWillPresent\ntree\nquit\n'
        ended = self.run_program(PREFIX / "bin/tarnwick-headless", "--parent-width", "320",
                                 input=commands)
        self.assertEqual(ended.returncode, 0, ended.stderr)
        answers = [json.loads(line) for line in ended.stdout.splitlines()]
        results = [answer for answer in answers if "ok" in answer]
        self.assertEqual([answer["ok"] for answer in results], [True] * 5, ended.stdout)
        self.assertIn("UISlider", ended.stdout)
        self.assertIn("thumb_default", ended.stdout)

    def test_loads_the_widget_from_the_prefix(self):
        process = subprocess.Popen([PREFIX / "bin/tarnwick-headless"], stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, text=True, env=self.environment, cwd="/")
        with process:
            process.stdin.write("create\n")
            process.stdin.flush()
            while '"ok"' not in process.stdout.readline():
                pass
            maps = pathlib.Path(f"/proc/{process.pid}/maps").read_text()
            process.stdin.close()
        ours = {line.split(None, 5)[5] for line in maps.splitlines() if "arnwick" in line}
        self.assertTrue(any(path.endswith("Tarnwick.bundle/Tarnwick") for path in ours), ours)
        for path in ours:
            self.assertTrue(pathlib.Path(path).is_relative_to(PREFIX.resolve()), path)

    def test_program_paints_and_reports_without_a_display(self):
        ended = self.run_program(PREFIX / "bin/tarnwick", "--simulate")
        self.assertEqual(ended.returncode, 0, ended.stderr)
        self.assertIn("Ringtone: 50%", ended.stdout)
        self.assertTrue((self.home / ".cache/tarnwick/widget.png").is_file())
        self.assertTrue((self.home / ".config/tarnwick").is_dir(), "the list of categories")

    def test_program_loads_the_sound_servers_module(self):
        ended = self.run_program(PREFIX / "bin/tarnwick")
        self.assertEqual(ended.returncode, 0, ended.stderr)
        self.assertIn("no sound server answers", ended.stderr)
        self.assertNotIn("cannot be loaded", ended.stderr)

    def test_works_where_it_was_moved_to(self):
        shutil.copytree(PREFIX, MOVED, symlinks=True)
        self.addCleanup(shutil.rmtree, MOVED)
        picture = self.home / "picture.png"
        ended = self.run_program(MOVED / "bin/tarnwick", "--simulate", "--paint", picture)
        self.assertEqual(ended.returncode, 0, ended.stderr)
        self.assertTrue(picture.is_file())
        listed = run(["ldd", library_folder(MOVED) / "tarnwick-pulse.so"]).stdout
        self.assertIn(str(MOVED), listed)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "--verbose"])
