# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Reads the bodies of control requests."""

import json


class ControlError(Exception):
    def __init__(self, text, status=400):
        super().__init__(text)
        self.status = status


def _no_constant(name):
    raise ValueError(f"{name} is not JSON")


def body_of(request):
    try:
        body = json.loads(request.body or b"{}", parse_constant=_no_constant)
    except (ValueError, RecursionError):
        raise ControlError("The body is not JSON.") from None
    if not isinstance(body, dict):
        raise ControlError("The body must be a JSON object.")
    return body


def take(body, **kinds):
    """The values of these keys, None for a missing one; any other key is an error."""
    extra = set(body) - set(kinds)
    if extra:
        raise ControlError(f"This request does not take {', '.join(sorted(extra))}.")
    for key, kind in kinds.items():
        if kind is float and type(body.get(key)) is int:
            body[key] = float(body[key])
        if key in body and type(body[key]) is not kind:
            raise ControlError(f"{key} is of the wrong JSON type.")
    return [body.get(key) for key in kinds]


def within(value, low, high, name):
    if value is not None and not low <= value <= high:
        raise ControlError(f"{name} must be a number from {low} to {high}.")
