#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Delmast Time authors
# SPDX-License-Identifier: BSD-3-Clause
"""Feeds lint.py small trees with one fault each, and trees that only look faulty."""

import contextlib
import io
import subprocess
import tempfile
import unittest
from pathlib import Path

import lint

HEAD = "// SPDX-" "FileCopyrightText: 2026 Somebody\n// SPDX-" "License-Identifier: BSD-3-Clause\n"
SPEC = "sp" "ec"

# File, what follows its head, the kind that must be found, and its line.
BAD = [
    ("src/model/a.cpp", '#include "formats/b.h"', "include", 3),
    ("src/model/a.cpp", '\n#  include "views/b.h"', "include", 4),
    ("src/formats/a.h", '#include "ical/b.h"', "include", 3),
    ("src/ical/a.h", '#include "document/b.h"', "include", 3),
    ("src/document/a.h", '#include "hub/b.h"', "include", 3),
    ("src/document/a.h", '#include "widgets/b.h"', "include", 3),
    ("src/widgets/a.h", '#include "model/b.h"', "include", 3),
    ("src/hub/a.h", '#include "views/b.h"', "include", 3),
    ("src/views/a.h", '#include "dialogs/b.h"', "include", 3),
    ("src/views/a.h", '#include "net/b.h"', "include", 3),
    ("src/dialogs/a.h", '#include "app/b.h"', "include", 3),
    ("src/net/a.h", '#include "widgets/b.h"', "include", 3),
    ("src/server/a.h", '#include "document/b.h"', "include", 3),
    ("src/app/a.h", '#include "support/b.h"', "include", 3),
    ("src/attic/a.h", "", "include", 1),
    ("src/model/a.h", "#include <QColor>", "include", 3),
    ("src/formats/a.h", "#include <QtGui/QFont>", "include", 3),
    ("src/formats/a.h", "#include <KConfigGroup>", "include", 3),
    ("src/model/a.cpp", "QRegExp x;", "idiom", 3),
    ("tests/model/a.cpp", "QTextCodec *x;", "idiom", 3),
    ("src/views/a.cpp", "QSound::play(x);", "idiom", 3),
    ("src/app/a.cpp", 'c->group("View");', "idiom", 3),
    ("src/app/a.cpp", 'KConfigGroup g(c, "View");', "idiom", 3),
    ("src/app/a.cpp", 'KConfigGroup g(config(), "View");', "idiom", 3),
    ("src/app/a.cpp", "connect(a, SIGNAL (b()), c, SLOT(d()));", "idiom", 3),
    ("src/app/a.cpp", "\n\nauto w = qApp->activeWindow();", "idiom", 5),
    ("src/views/a.cpp", "#if QT_VERSION >= 1", "version", 3),
    ("src/views/compat.h", "#if QT_VERSION >= 1", "version", 3),
    ("tests/model/a.cpp", "QTest::qWait(100);", "sleep", 3),
    ("tests/model/a.cpp", "QThread::msleep(1);", "sleep", 3),
    ("tests/model/a.cpp", "std::this_thread::sleep_for(1s);", "sleep", 3),
    ("docs/a.md", f"As the {SPEC} says", "words", 3),
    ("docs/a.md", f"as this {SPEC}ification says", "words", 3),
    ("src/model/a.cpp", f"// {SPEC}.md", "words", 3),
    ("src/model/a.cpp", "// see Part " "1.2", "words", 3),
    ("scripts/a", "# from Qt" " 3", "words", 3),
    ("data/a.txt", "KDE" "3", "words", 3),
    ("docs/" + SPEC + ".md", "", "words", 1),
    ("src/model/a.cpp", "x;\n" * 999, "length", 1001),
]

# A missing head.
BARE = ["src/model/a.h", "src/model/a.cpp", "cmake/A.cmake", "CMakeLists.txt", "scripts/a.py", "scripts/a"]

GOOD = [
    ("src/model/a.cpp", '#include "model/b.h"\n#include <QString>\n#include <KLocalizedString>'),
    ("src/widgets/a.cpp", '#include "model/compat.h"\n#include "model/veltyped.h"\n#include "widgets/a.h"\n#include <QColor>'),
    ("src/views/a.cpp", '#include "document/a.h"\n#include "ical/a.h"\n#include "hub/a.h"\n#include <KConfig>'),
    ("src/app/a.cpp", '#include "net/a.h"\n#include "dialogs/a.h"'),
    ("src/app/a.cpp", 'c->group(QStringLiteral("View")); KConfigGroup g(c, QStringLiteral("View"));'),
    ("src/app/a.cpp", '// QRegExp\nauto x = "SLOT("; /* activeWindow( */ QSoundEffect s; auto c = \'"\'; isActiveWindow();'),
    ("src/model/compat.h", "#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)\n#endif"),
    ("tests/model/a.cpp", "QTRY_VERIFY(x); QTest::qWaitFor([] { return true; });"),
    ("src/app/a.cpp", "QThread::msleep(1);"),
    ("src/formats/a.cpp", "s.setVersion(QDataStream::Qt_3_3); // the whole spectrum"),
    ("docs/a.md", "QRegExp " * 5 + "\n" * 2000),
    ("LICENSES/a.txt", f"the {SPEC}ification"),
    ("data/a.bin", "\0 KDE" " 3"),
]


class Tree:
    """A tree of files for as long as a with block lasts."""

    def __enter__(self) -> "Tree":
        self.folder = tempfile.TemporaryDirectory()
        self.root = Path(self.folder.name)
        return self

    def __exit__(self, *_: object) -> None:
        self.folder.cleanup()

    def write(self, path: str, text: str) -> None:
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def lint(self) -> list[lint.Finding]:
        with contextlib.redirect_stdout(io.StringIO()):
            return [finding for finding in lint.lint(self.root) if finding.kind != "format"]


def head_for(path: str) -> str:
    return HEAD if path.endswith((".h", ".cpp")) else HEAD.replace("//", "#")


class LintTest(unittest.TestCase):
    def test_finds_each_fault_and_where_it_is(self) -> None:
        for path, text, kind, line in BAD:
            with self.subTest(path=path, text=text[:60]), Tree() as tree:
                tree.write(path, head_for(path) + text + "\n")
                found = tree.lint()
                self.assertTrue(found)
                self.assertEqual({(path, line, kind)}, {finding[:3] for finding in found})

    def test_finds_files_without_licence(self) -> None:
        for path in BARE:
            with self.subTest(path=path), Tree() as tree:
                tree.write(path, "#!/bin/sh\n")
                self.assertEqual([(path, "spdx")] * 2, [(finding.path, finding.kind) for finding in tree.lint()])

    def test_lets_good_files_be(self) -> None:
        for path, text in GOOD:
            with self.subTest(path=path, text=text[:60]), Tree() as tree:
                tree.write(path, head_for(path) + text + "\n")
                self.assertEqual([], tree.lint())

    def test_passes_over_what_is_not_under_version_control(self) -> None:
        with Tree() as tree:
            subprocess.run(["git", "init", "-q", str(tree.root)], check=True)
            tree.write(".gitignore", "/out/\n")
            tree.write("out/a.md", "KDE" " 3\n")
            tree.write("new.md", "KDE" " 3\n")
            self.assertEqual(["new.md"], [finding.path for finding in tree.lint()])

    def test_passes_over_what_was_built_where_there_is_no_git(self) -> None:
        with Tree() as tree:
            tree.write("build/a.md", "KDE" " 3\n")
            tree.write("src/building.md", "KDE" " 3\n")
            self.assertEqual(["src/building.md"], [finding.path for finding in tree.lint()])

    @unittest.skipUnless(lint.find_clang_format(), "no clang-format of the version that the tree uses")
    def test_finds_what_is_not_formatted(self) -> None:
        with Tree() as tree:
            tree.write(".clang-format", "BasedOnStyle: WebKit\n")
            tree.write("src/app/bad.cpp", "int  a ;\nint  b ;\n")
            tree.write("src/app/good.cpp", "int a;\n")
            found = list(lint.check_format(tree.root, ["src/app/bad.cpp", "src/app/good.cpp"]))
            self.assertEqual([("src/app/bad.cpp", 1, "format")], [finding[:3] for finding in found])


if __name__ == "__main__":
    unittest.main()
