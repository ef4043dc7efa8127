# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

"""Compiles every Python file of the project, without leaving anything behind."""

import pathlib
import subprocess
import sys


def main():
    listed = subprocess.run(["scripts/sources.sh", "python"], check=True, capture_output=True, text=True)
    files = listed.stdout.split()
    if not files:
        return "no Python files were found"
    for file in files:
        try:
            compile(pathlib.Path(file).read_bytes(), file, "exec")
        except (SyntaxError, ValueError) as error:
            return f"{file}: {error}"
    print(f"check: python: {len(files)} files compile")
    return None


if __name__ == "__main__":
    sys.exit(main())
