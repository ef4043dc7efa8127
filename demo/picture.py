# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Pictures that OBS hands out as PNG, compared pixel for pixel."""

import subprocess
from dataclasses import dataclass
from functools import cached_property
from pathlib import Path


@dataclass(frozen=True)
class Picture:
    png: bytes

    @property
    def size(self):
        """Width and height, from the PNG's first chunk."""
        return int.from_bytes(self.png[16:20]), int.from_bytes(self.png[20:24])

    @cached_property
    def pixels(self):
        """Four bytes a pixel, row after row: red, green, blue, alpha."""
        decoded = subprocess.run(["convert", "png:-", "-depth", "8", "rgba:-"], input=self.png,
                                 capture_output=True, check=True).stdout
        width, height = self.size
        if len(decoded) != width * height * 4:
            raise ValueError(f"A picture of {width}x{height} came as {len(decoded)} bytes.")
        return decoded

    @property
    def is_blank(self):
        """Whether all its pixels are alike: nothing is drawn in it."""
        return self.pixels == self.pixels[:4] * (len(self.pixels) // 4)

    def same_as(self, other):
        # The same encoder writes the same bytes for the same pixels, which spares the decoding.
        return self.png == other.png or (self.size == other.size and self.pixels == other.pixels)

    def save(self, path):
        Path(path).parent.mkdir(parents=True, exist_ok=True)
        Path(path).write_bytes(self.png)
