#!/usr/bin/env python3
"""The house's dependency rule, read off the include lines: shells stand on backends, backends on
the platform, the widget on the platform alone, and a library's headers stay in its backend."""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
# Which rooms of the house a room may include; its own is always allowed.
MAY_INCLUDE = {
    "platform": set(),
    "config": {"platform"},
    "mixer": {"platform", "config"},
    "host": {"platform", "config", "mixer"},
    "backends": {"platform"},
    "shells": {"platform", "backends"},
}
# Some parts of the shells use the widget's code. To read the category file: the command-line tool,
# which shows no widget; shells/common, which maps rows to categories and looks for problems in both
# files; the settings program, which edits both; and the tray. To word what a row's caption says: the
# tool, the tray, and the panel's report of its rows. To know which skins take colours: the settings
# program.
FOLDER_MAY_INCLUDE = {
    "shells/common/": r"config/.*",
    "shells/desktop/tray/": r"config/CategoryList\.hpp|mixer/Caption\.hpp",
    "shells/panel/": r"mixer/Caption\.hpp",
    "shells/control/": r"config/.*|mixer/Caption\.hpp",
    "shells/settings/": r"config/.*|mixer/Skin\.hpp",
}
# Backends that stand on another one: a window shows what the canvas paints, both loops are GLib's, and
# a bus tells whether a screen reader wants to know what the window shows.
BACKEND_MAY_INCLUDE = {"gdk": {"bus", "cairo", "glib"}, "pulse": {"glib"}}
# Headers in angle brackets, beyond the language's own, by folder prefix: the longest wins.
LIBRARIES = {
    "platform/": r"(dlfcn|fcntl|unistd|syslog|pwd|errno|stdlib)\.h|sys/[a-z]+\.h",
    "config/": r"(?!)",
    "mixer/": r"(?!)",
    "host/": r"(?!)",
    "backends/plist/": r"locale\.h",
    "backends/glib/": r"glib.*\.h|unistd\.h|sys/inotify\.h",
    "backends/bus/": r"gio/.*",
    "backends/cairo/": r"cairo/.*|cairo.*\.h|pango/.*|fontconfig/.*|glib.*\.h|sys/stat\.h|(fcntl|unistd|png)\.h",
    "backends/pulse/": r"pulse/.*|glib.*\.h|unistd\.h",
    "backends/gdk/": r"gdk/.*|glib.*\.h|atk.*|cairo.*\.h|gmodule\.h|(dlfcn|unistd)\.h|wlr-layer-shell-.*",
    "shells/headless/": r"nlohmann/.*|glib.*\.h|(poll|unistd|fcntl|signal)\.h|sys/[a-z]+\.h",
    "shells/desktop/": r"gdk/.*|glib.*\.h|gio/.*|cairo.*\.h|(fcntl|unistd|getopt|signal|malloc)\.h|sys/[a-z]+\.h",
    "shells/panel/": r"glib\.h",
    "shells/phosh/": r"gtk/.*|gdk/.*|gio/.*|glib.*\.h|dlfcn\.h",
    "shells/common/": r"nlohmann/.*|(fcntl|unistd|getopt|libintl)\.h",
    "shells/control/": r"glib.*\.h|(unistd|fcntl)\.h",
    "shells/settings/": r"adwaita\.h|glib-unix\.h",
    "shells/settings/files/": r"glib\.h|unistd\.h|sys/stat\.h",
    "shells/sound/": r"(dlfcn|unistd)\.h|glib.*\.h",
}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
STANDARD = re.compile(r"[a-z_]+")  # The language's own headers have neither a dot nor a slash.


def room_allowed(path: str, header: str) -> bool:
    room, target = path.split("/")[0], header.split("/")[0]
    if target == room or target in MAY_INCLUDE[room]:
        return True
    return any(path.startswith(folder) and re.fullmatch(allowed, header)
               for folder, allowed in FOLDER_MAY_INCLUDE.items())


def backend_allowed(path: str, header: str) -> bool:
    own, other = path.split("/")[1], header.split("/")[1]
    return own == other or other in BACKEND_MAY_INCLUDE.get(own, set())


def violations(path: str, text: str):
    room = path.split("/")[0]
    prefix = max((p for p in LIBRARIES if path.startswith(p)), key=len, default="")
    for bracket, header in INCLUDE.findall(text):
        if bracket == '"':
            target = header.split("/")[0]
            if not room_allowed(path, header):
                yield f"{path}: includes {header}, but {room}/ may not stand on {target}/"
            elif room == target == "backends" and not backend_allowed(path, header):
                yield f"{path}: includes {header}, the folder of another backend"
            elif "/" not in header:
                yield f"{path}: includes {header} without its folder"
        elif not STANDARD.fullmatch(header) and not re.fullmatch(
            LIBRARIES.get(prefix, "(?!)"), header
        ):
            yield f"{path}: includes <{header}>, which does not belong into {prefix or room}"


def main() -> int:
    files = subprocess.run(
        ["git", "ls-files", "-co", "--exclude-standard", "*.cpp", "*.hpp"],
        cwd=ROOT, capture_output=True, text=True, check=True).stdout.split()
    found = []
    checked = 0
    for path in files:
        if path.split("/")[0] not in MAY_INCLUDE:
            continue
        checked += 1
        found += violations(path, (ROOT / path).read_text())
    if not checked:
        found.append("no source file was found to check")
    print("\n".join(found) or f"{checked} files keep the include rule")
    return 1 if found else 0


def self_test() -> int:
    """The rule itself: what it must refuse and what it must let pass."""
    refused = [
        ("platform/uikit/A.cpp", '#include "mixer/B.hpp"'),
        ("platform/uikit/A.cpp", "#include <cairo.h>"),
        ("mixer/A.cpp", '#include "backends/cairo/B.hpp"'),
        ("config/A.cpp", '#include "mixer/B.hpp"'),
        ("mixer/A.cpp", "#include <unistd.h>"),
        ("backends/cairo/A.cpp", "#include <gdk/gdk.h>"),
        ("backends/cairo/A.cpp", '#include "backends/gdk/B.hpp"'),
        ("backends/pulse/A.cpp", '#include "backends/cairo/B.hpp"'),
        ("backends/gdk/A.cpp", '#include "shells/common/B.hpp"'),
        ("shells/desktop/A.cpp", '#include "mixer/B.hpp"'),
        ("shells/desktop/A.cpp", '#include "config/B.hpp"'),
        ("shells/common/A.cpp", '#include "mixer/Caption.hpp"'),
        ("shells/desktop/A.cpp", "#include <gtk/gtk.h>"),
        ("shells/panel/A.cpp", "#include <gtk/gtk.h>"),
        ("shells/control/A.cpp", '#include "mixer/TarnwickView.hpp"'),
        ("shells/control/A.cpp", "#include <gdk/gdk.h>"),
        ("mixer/A.cpp", '#include "B.hpp"'),
    ]
    passed = [
        ("mixer/A.cpp", '#include "config/B.hpp"\n#include <vector>'),
        ("backends/plist/A.cpp", "#include <locale.h>"),
        ("backends/gdk/A.cpp", '#include "backends/cairo/B.hpp"'),
        ("shells/desktop/A.cpp", '#include "backends/gdk/B.hpp"'),
        ("shells/phosh/A.cpp", '#include <gtk/gtk.h>\n#include "backends/gdk/B.hpp"'),
        ("shells/control/A.cpp", '#include "config/B.hpp"\n#include "mixer/Caption.hpp"'),
        ("shells/desktop/tray/A.cpp", '#include "mixer/Caption.hpp"'),
        ("shells/panel/A.cpp", '#include "mixer/Caption.hpp"'),
        ("shells/common/A.cpp", '#include "config/B.hpp"'),
    ]
    wrong = [case for case in refused if not list(violations(*case))]
    wrong += [case for case in passed if list(violations(*case))]
    print(wrong or "the rule refuses and passes what it should")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(self_test() if "--self-test" in sys.argv else main())
