#!/usr/bin/env python3
"""check_placeholders.py LANGUAGE CATALOG.mo: every translation fills in what the text does: the same
"{name}"s."""

import gettext
import re
import sys

NAME = re.compile(r"\{[a-z]*\}")


def main(language: str, catalog: str) -> int:
    with open(catalog, "rb") as file:
        translations = gettext.GNUTranslations(file)
    wrong = []
    for key, translation in translations._catalog.items():
        text = key[0] if isinstance(key, tuple) else key
        # A form for one or two may leave the number to the words.
        needed = set(NAME.findall(text)) - ({"{count}"} if isinstance(key, tuple) else set())
        found = set(NAME.findall(translation))
        if not needed <= found or not found <= set(NAME.findall(text)):
            wrong.append(f"po/{language}.po: other names in braces: {translation}")
    print("\n".join(wrong), end="\n" if wrong else "")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
