# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

"""Makes packages for the updater's tests, good and hostile. Usage: make_packages.py FOLDER

What tries to get out of the folder that it is unpacked into is named "escaped".
"""

import pathlib
import stat
import sys
import warnings
import zipfile

FILE, LINK, FOLDER = stat.S_IFREG | 0o644, stat.S_IFLNK | 0o777, stat.S_IFDIR | 0o755
BINARY = ("bundle/bin/tallyforge.so", b"binary", FILE)
DATA = ("bundle/data/text.ini", b"text", FILE)


def link(name, to):
    return (name, to.encode(), LINK)


def packages(top):
    """The entries of each package: name, content, mode."""
    good = [BINARY, DATA]
    yield "good", good
    yield "mac-metadata", [*good, ("__MACOSX/._bundle", b"", FILE)]
    yield "hidden-inside", [*good, ("bundle/.hidden/.file", b"", FILE)]
    yield "two-cases", [*good, ("bundle/BIN/Tallyforge.so", b"other", FILE)]
    yield "odd-modes", [("bundle/", b"", stat.S_IFDIR | 0o1777), ("bundle/data/", b"", stat.S_IFDIR),
                        (BINARY[0], b"binary", stat.S_IFREG | 0o6777), (DATA[0], b"text", stat.S_IFREG)]
    yield "empty", []
    yield "two-folders", [*good, ("second/file", b"", FILE)]
    yield "file-beside", [*good, ("file", b"", FILE)]
    yield "hidden-beside", [*good, (".file", b"", FILE)]
    yield "file-alone", [("bundle", b"", FILE)]
    yield "name-of-an-old-file", [*good, ("bundle/data/text.ini.old", b"", FILE)]
    yield "link-alone", [link("bundle", "/usr")]
    yield "no-binary", [DATA]
    yield "binary-is-folder", [DATA, (BINARY[0] + "/", b"", FOLDER)]
    yield "link-inside", [*good, link("bundle/data/link", "text.ini")]
    yield "link-absolute", [*good, link("bundle/link", "/etc/passwd")]
    yield "link-to-nothing", [*good, link("bundle/link", "nothing")]
    yield "link-out", [*good, link("bundle/link", "../../package.zip")]
    yield "link-to-folder", [*good, link("bundle/link", "data")]
    yield "binary-is-link", [DATA, link(BINARY[0], "../data/text.ini")]
    yield "through-link", [*good, link("bundle/link", top), ("bundle/link/escaped", b"", FILE)]
    yield "through-relative-link", [*good, link("bundle/up", ".."), link("bundle/up/up", ".."),
                                    ("bundle/up/up/escaped", b"", FILE)]
    yield "dots", [*good, ("../escaped", b"", FILE)]
    yield "dots-inside", [*good, ("bundle/../../escaped", b"", FILE)]
    yield "absolute", [*good, (f"{top}/escaped", b"", FILE)]
    yield "device", [*good, ("bundle/device", b"", stat.S_IFCHR | 0o644)]
    yield "long-name", [*good, ("bundle/" + "x" * 300, b"", FILE)]
    yield "one-bomb", [*good, ("bundle/bomb", bytes(8 << 20), FILE)]
    yield "many-bombs", [*good, *((f"bundle/bomb{number}", bytes(1 << 20), FILE) for number in range(8))]
    deep = "bundle/" + ("x" * 200 + "/") * 30   # longer than a path may be
    yield "deep-bombs", [*good, *((f"{deep}bomb{number}", bytes(1 << 20), FILE) for number in range(8))]
    yield "countless", [*good, *((f"bundle/{number}", b"", FILE) for number in range(500))]


def main():
    folder = pathlib.Path(sys.argv[1])
    warnings.simplefilter("ignore")
    for package, entries in packages(str(folder)):
        with zipfile.ZipFile(folder / f"{package}.zip", "w", zipfile.ZIP_DEFLATED) as archive:
            for name, content, mode in entries:
                info = zipfile.ZipInfo(name)
                info.create_system = 3  # Unix
                info.external_attr = mode << 16
                info.compress_type = zipfile.ZIP_DEFLATED
                archive.writestr(info, content)
    good = (folder / "good.zip").read_bytes()
    encrypted = bytearray(good)
    encrypted[6] |= 1
    encrypted[good.index(b"PK\1\2") + 8] |= 1
    for package, content in {"truncated": good[:-30], "half": good[: len(good) // 3], "junk": b"junk" * 99,
                             "nothing": b"", "encrypted": encrypted}.items():
        (folder / f"{package}.zip").write_bytes(content)


main()
