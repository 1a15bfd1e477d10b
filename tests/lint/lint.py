#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Delmast Time authors
# SPDX-License-Identifier: BSD-3-Clause
"""House rules that no compiler checks: lint.py [TREE].

Prints one line per finding, "file:line: kind: what is wrong", and exits with 1 when there is any.
"""

import re
import shutil
import subprocess
import sys
from pathlib import Path
from typing import Iterator, NamedTuple


class Finding(NamedTuple):
    path: str
    line: int
    kind: str
    text: str

    def __str__(self) -> str:
        return f"{self.path}:{self.line}: {self.kind}: {self.text}"


# Which folders of src/ the files of a folder may include, apart from their own. A layer that is missing
# here is found too, so that nobody adds a folder without saying where it stands.
BELOW_HUB = {"document", "ical", "widgets", "formats", "model"}
BELOW_APP = BELOW_HUB | {"hub", "views", "dialogs", "net"}
MAY_INCLUDE = {
    "model": set(),
    "formats": {"model"},
    "ical": {"formats", "model"},
    "document": {"ical", "formats", "model"},
    "widgets": set(),
    "hub": {"document", "widgets", "formats", "model"},
    "views": BELOW_HUB | {"hub"},
    "dialogs": BELOW_HUB | {"hub", "views"},
    "app": BELOW_APP,
    "net": {"document", "formats", "model"},
    "server": {"formats", "model"},
}
# Headers that a layer may know without all of their folder: an input of a time shows and reads it as all else does, but
# knows no calendar.
ALSO_INCLUDE = {"widgets": {"model/veltext.h", "model/veltyped.h"}}
# The one header that every layer may know: it makes the toolkit's generations look alike.
COMPAT = "model/compat.h"

# Layers that stand on QtCore alone, and how the headers begin that would drag in a window system.
NO_WINDOW_LAYERS = {"model", "formats"}
WINDOW_HEADER = re.compile(
    r"(QtGui|QtWidgets|QtSvg|QtPrintSupport|QWidget|QPainter|QColor|QFont|QIcon|QPixmap|QImage|QBrush|QPen\b"
    r"|QPalette|QApplication|QGuiApplication|QMessageBox|QDialog|K(?!LocalizedString\b))"
)

FORBIDDEN_CODE = [
    (re.compile(r"\b(QRegExp|QTextCodec|QStringRef|QX11Info|QSound|QDesktopWidget)\b"),
     "is gone or dying in one of the toolkits that we build on"),
    (re.compile(r"(?:\.|->)(?:group|hasGroup|deleteGroup)\s*\(\s*\"|\bKConfigGroup\b[^;(){}]*[({](?:[^;(){},]|\(\))*,\s*\""),
     "names a configuration group by a plain literal, use QStringLiteral"),
    (re.compile(r"\b(?:SIGNAL|SLOT)\s*\("), "connect by function pointers"),
    (re.compile(r"\bactiveWindow\s*\("), "do not hunt for a window, hand it in"),
]
VERSION_CHECK = re.compile(r"\bQT_VERSION(?:_CHECK)?\b")
SLEEP = re.compile(
    r"\bQTest::(?:qWait|qSleep)\s*\(|\bQThread::(?:sleep|msleep|usleep)\b|\bthis_thread::sleep|\b(?:u|nano)sleep\s*\(")

# Written in pieces, or this file would find itself.
WORDS = re.compile("|".join([
    r"(?i:\bspecifi" r"cation\b)",
    r"(?i:\bthe sp" r"ec\b)",
    r"(?i:\bsp" r"ec\.md\b)",
    r"\bPart \d+" r"\.\d+",
    r"(?i:\bQt ?" r"3\b)",
    r"(?i:\bKDE ?" r"3\b)",
]))

CPP = {".h", ".cpp"}
MAX_LINES = 1000
CLANG_FORMAT_MAJOR = 14
INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)
SPDX = ["SPDX-" "FileCopyrightText: ", "SPDX-" "License-Identifier: "]

# Comments, raw strings, strings and characters. Digits may be grouped by the sign that starts a character.
TOKEN = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<delimiter>[^\s()\\]{0,16})\(.*?\)(?P=delimiter)"|"(?:\\.|[^"\\\n])*"'
    r"|(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])+'",
    re.DOTALL)


def code_only(text: str) -> str:
    """The text with comments and what strings hold blanked out; lines and columns stay where they are."""
    def blank(match: re.Match) -> str:
        token = match[0]
        inner = re.sub(r"[^\n]", " ", token)
        return '"' + inner[1:-1] + '"' if token.endswith('"') else inner
    return TOKEN.sub(blank, text)


def line_of(text: str, position: int) -> int:
    return text.count("\n", 0, position) + 1


def is_script(path: str, text: str) -> bool:
    return text.startswith("#!") or path.endswith((".py", ".sh"))


def is_code(path: str, text: str) -> bool:
    return path.endswith((".h", ".cpp", ".cmake", "CMakeLists.txt")) or is_script(path, text)


def check_includes(path: str, text: str) -> Iterator[Finding]:
    parts = path.split("/")
    if parts[0] != "src" or len(parts) < 3 or Path(path).suffix not in CPP:
        return
    layer = parts[1]
    if layer not in MAY_INCLUDE:
        yield Finding(path, 1, "include", f"src/{layer} has no place in the order of layers, see MAY_INCLUDE")
        return
    for match in INCLUDE.finditer(text):
        own, foreign = match[1], match[2]
        line = line_of(text, match.start(1) if own else match.start(2))
        if own and "/" in own and own != COMPAT:
            target = own.split("/")[0]
            may = target == layer or target in MAY_INCLUDE[layer] or own in ALSO_INCLUDE.get(layer, ())
            if not may:
                yield Finding(path, line, "include", f"{layer} must not include {own}")
        if foreign and layer in NO_WINDOW_LAYERS and WINDOW_HEADER.match(foreign):
            yield Finding(path, line, "include", f"{layer} stands on QtCore alone, without <{foreign}>")


def check_code(path: str, text: str) -> Iterator[Finding]:
    if not path.startswith(("src/", "tests/")) or Path(path).suffix not in CPP:
        return
    code = code_only(text)

    def find(pattern: re.Pattern, kind: str, why: str) -> Iterator[Finding]:
        for match in pattern.finditer(code):
            yield Finding(path, line_of(code, match.start()), kind, f"{match[0].strip()}: {why}")

    for pattern, why in FORBIDDEN_CODE:
        yield from find(pattern, "idiom", why)
    if path != f"src/{COMPAT}":
        yield from find(VERSION_CHECK, "version", f"only src/{COMPAT} knows the version")
    if path.startswith("tests/"):
        yield from find(SLEEP, "sleep", "wait for what must happen, QTRY_VERIFY or QSignalSpy, not for a time")


def check_spdx(path: str, text: str) -> Iterator[Finding]:
    if is_code(path, text):
        head = "\n".join(text.split("\n")[:8])
        for tag in SPDX:
            if tag not in head:
                yield Finding(path, 1, "spdx", f"no {tag.strip()} among the first lines")


def check_words(path: str, text: str) -> Iterator[Finding]:
    if path.startswith("LICENSES/"):
        return
    if match := WORDS.search(path):
        yield Finding(path, 1, "words", f"the file's name says {match[0]}")
    for match in WORDS.finditer(text):
        yield Finding(path, line_of(text, match.start()), "words", f"give the reason itself, not {match[0]!r}")


def check_length(path: str, text: str) -> Iterator[Finding]:
    lines = text.count("\n")
    if is_code(path, text) and lines > MAX_LINES:
        yield Finding(path, MAX_LINES + 1, "length", f"{lines} lines, over {MAX_LINES}")


TEXT_CHECKS = [check_includes, check_code, check_spdx, check_words, check_length]


def find_clang_format() -> str | None:
    """A clang-format of the version that the tree is formatted with; others lay out differently."""
    for name in (f"clang-format-{CLANG_FORMAT_MAJOR}", "clang-format"):
        if program := shutil.which(name):
            said = subprocess.run([program, "--version"], capture_output=True, text=True, check=True).stdout
            if re.search(rf"version {CLANG_FORMAT_MAJOR}\.", said):
                return program
    return None


def check_format(root: Path, paths: list[str]) -> Iterator[Finding]:
    sources = [path for path in paths if Path(path).suffix in CPP]
    program = find_clang_format()
    if program is None:
        print(f"note: the format is not checked, there is no clang-format {CLANG_FORMAT_MAJOR}")
        return
    if not sources:
        return
    result = subprocess.run([program, "--dry-run", "-Werror", "--style=file", *sources], cwd=root,
                            capture_output=True, text=True)
    seen = set()
    for match in re.finditer(r"^(\S+?):(\d+):\d+: error: (.*)$", result.stderr, re.MULTILINE):
        if match[1] not in seen:
            seen.add(match[1])
            yield Finding(match[1], int(match[2]), "format", "run clang-format -i")
    if result.returncode and not seen:
        yield Finding(".clang-format", 1, "format", result.stderr.strip() or "clang-format failed")


def list_files(root: Path) -> list[str]:
    """All files that are or could be in version control, or without it all that were not built."""
    if (root / ".git").exists() and shutil.which("git"):
        listed = subprocess.run(
            ["git", "-c", f"safe.directory={root}", "ls-files", "-z", "-co", "--exclude-standard"],
            cwd=root, capture_output=True, text=True, check=True).stdout.split("\0")
        paths = [path for path in listed if path]
    else:
        paths = [path.relative_to(root).as_posix() for path in root.rglob("*")]
        paths = [path for path in paths if not re.match(r"(build|\.git|\.cache)/|.*__pycache__/", path)]
    return sorted(path for path in set(paths) if (root / path).is_file())


def read_text(file: Path) -> str | None:
    """What a file holds, or None when that is no text."""
    data = file.read_bytes()
    if b"\0" in data:
        return None
    return data.decode("utf-8", errors="replace")


def lint(root: Path) -> list[Finding]:
    paths = list_files(root)
    findings = []
    for path in paths:
        text = read_text(root / path)
        if text is not None:
            for check in TEXT_CHECKS:
                findings.extend(check(path, text))
    findings.extend(check_format(root, paths))
    return findings


def main() -> int:
    root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parents[2]).resolve()
    findings = lint(root)
    for finding in findings:
        print(finding)
    print(f"{len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
