# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""Every link, picture, path and command in the documents leads somewhere."""

import os
import re
import shlex
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ["PTZ_BUILD_DIR"])
TOP = {entry.name for entry in ROOT.iterdir()} - {"build"}
DOCUMENTS = [file for file in ROOT.rglob("*.md")
             if not {"build", ".git", "node_modules"} & set(file.relative_to(ROOT).parts)]
PICTURES = re.compile(rb"\x89PNG\r\n\x1a\n|RIFF....WEBP|<svg|<\?xml", re.S)
FENCE = re.compile(r"^```(\w*)\n(.*?)^```$", re.M | re.S)


def without_code(text):
    return re.sub(r"`[^`\n]*`", "", FENCE.sub("", text))


def anchors(document):
    """What GitHub and others make of the headings."""
    headings = re.findall(r"^#+ (.*)$", FENCE.sub("", document.read_text(encoding="utf-8")), re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def commands(document):
    """Every command in a block of shell, as words."""
    for language, block in FENCE.findall(document.read_text(encoding="utf-8")):
        if language != "sh":
            continue
        for line in block.replace("\\\n", " ").splitlines():
            words = []
            for word in shlex.split(line, comments=True) + ["&&"]:
                if word in ("&&", "||", "|", "&", ";"):
                    if words:
                        yield words
                    words = []
                elif words or not re.match(r"[A-Z_]+=|sudo$", word):
                    words.append(word)


class Documents(unittest.TestCase):
    def check_each(self, pattern, check, least, prepare=without_code):
        """Calls check for everything that the pattern finds, which must be a few."""
        found = [(document, match) for document in DOCUMENTS for match in
                 re.findall(pattern, prepare(document.read_text(encoding="utf-8")))]
        self.assertGreaterEqual(len(found), least)
        for document, match in found:
            with self.subTest(f"{document.relative_to(ROOT)}: {match}"):
                check(document, match)

    def test_links_lead_to_files_and_headings(self):
        def check(document, target):
            path, _, heading = target.partition("#")
            file = (document.parent / path).resolve() if path else document
            self.assertTrue(file.exists(), f"{target} does not exist")
            if heading:
                self.assertIn(heading, anchors(file))
        self.check_each(r"\]\((?!https://)([^)\s]+)\)", check, 20)

    def test_pictures_are_pictures_and_have_words(self):
        def check(document, picture):
            words, target = picture
            self.assertRegex((document.parent / target).read_bytes()[:12], PICTURES)
            self.assertTrue(words)
        self.check_each(r"!\[([^\]]*)\]\(([^)\s]+)\)", check, 10)

    def test_paths_exist(self):
        """Words in code that begin with a file or folder of the project."""
        def check(document, word):
            for folder in document.parent, ROOT:
                if word.split("/")[0] in {entry.name for entry in folder.iterdir()} - {"build"}:
                    self.assertTrue(list(folder.glob(word.rstrip("/"))), f"{word} does not exist")
        self.check_each(r"`([\w.][\w./-]*/[\w./*-]*)`", check, 20, lambda text: FENCE.sub("", text))

    def test_commands_can_be_typed(self):
        seen = 0
        for document in DOCUMENTS:
            for words in commands(document):
                with self.subTest(f"{document.relative_to(ROOT)}: {shlex.join(words)}"):
                    seen += 1
                    self.check_program(words[0])
                    self.check_words(words)
        self.assertGreater(seen, 20)

    def check_program(self, program):
        built = {"virtual-camera", "virtual-camera-view", "ptz-panel"}
        if program.startswith("build/release/bin/") or program in built:
            self.assertIn(Path(program).name, built)
        elif "/" in program:
            self.assertTrue(os.access(ROOT / program, os.X_OK), f"{program} cannot be run")
        else:
            self.assertTrue(shutil.which(program, path="/usr/bin:/bin:/usr/sbin:/sbin"),
                            f"{program} is not installed")

    def check_words(self, words):
        program, presets = words[0], (ROOT / "CMakePresets.json").read_text(encoding="utf-8")
        options = [word.split("=")[0] for word in words[1:] if word.startswith("--")]
        if program.startswith(("./", "packaging/", "tests/")):
            text = (ROOT / program).read_text(encoding="utf-8")
            for option in options:
                self.assertIn(option, text, f"{program} does not know {option}")
        if program == "virtual-camera":
            known = subprocess.run([BUILD / "bin/virtual-camera", "--help"], capture_output=True,
                                   text=True, check=True).stdout
            for option in options[:options.index("--")] if "--" in options else options:
                self.assertIn(option, known)
        for option, value in zip(words, words[1:]):
            if option == "--preset":
                self.assertIn(f'"name": "{value}"', presets)
            if option == "--target" and program == "cmake":
                found = subprocess.run(["ninja", "-C", BUILD, "-t", "query", value], check=False,
                                       capture_output=True)
                self.assertEqual(found.returncode, 0, f"there is no target {value}")
            if option in ("-R", "-L") and program == "ctest":
                found = subprocess.run(["ctest", "--test-dir", BUILD, "-N", option, value],
                                       capture_output=True, text=True, check=True).stdout
                self.assertNotIn("Total Tests: 0", found)
        for word in words[1:]:
            if "/" in word and word.split("/")[0] in TOP:
                self.assertTrue((ROOT / word).exists(), f"{word} does not exist")


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
