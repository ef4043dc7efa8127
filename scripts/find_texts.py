# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

"""Finds texts for users in C++ that don't go through translation."""

import re

TOKEN = re.compile(r"""
    (?P<skipped>//[^\n]*|/\*.*?\*/|\s+|^[ \t]*\#[ \t]*(?:include|error|pragma)\b[^\n]*|'(?:\\.|[^'\\])+')
  | (?:u8|u|U|L)?R"(?P<mark>[^()\s\\]*)\((?P<raw>.*?)\)(?P=mark)"(?P<raw_suffix>\w*)
  | (?:u8|u|U|L)?"(?P<text>(?:\\.|[^"\\\n])*)"(?P<suffix>\w*)
  | (?P<name>[A-Za-z_][\w]*(?:\s*(?:::|->|\.)\s*[A-Za-z_]\w*)*)
  | (?P<other>\d[\w.']*|.)""", re.VERBOSE | re.DOTALL | re.MULTILINE)

# A word with a blank between it and another, or a value.
SENTENCE = re.compile(r"[^\W\d_]{2,}[,.:;!?…]* +[\w(%{'„“]|%L?\d[,.:;!?…)]* +[^\W\d_]{2,}")
WORD = re.compile(r"[^\W\d_]{2,}")

# Style sheets, and the mark-up of rich text.
STYLE = re.compile(r"""(\s*[\w-]+: [^;:]+;)+|[\w\s#.,*:%="\\\[\]-]+\{([^{}:]+:[^{}]+;)+\s*\}(\\n)?""")
MARKUP = re.compile(r"<[^<>]*>|&\w+;|#[0-9a-f]{3,8}\b")

TRANSLATES = {"tr", "translate", "QT_TR_NOOP", "QT_TR_N_NOOP", "QT_TRANSLATE_NOOP"}
# For developers and for Qt: never on the screen.
UNSEEN = {"setObjectName", "setStyleSheet", "static_assert", "Q_ASSERT_X", "deprecated", "nodiscard"}
LOGS = re.compile(r"(^|::)(log::\w+|blog)$")
# A text in one of these calls is seen, even if it is a single word.
SHOWS = re.compile(r"^(set(Text|Title|WindowTitle|ToolTip|StatusTip|WhatsThis|PlaceholderText|Prefix|"
                   r"Suffix|Accessible(Name|Description)|ItemText|LabelText|TabText|SpecialValueText)|"
                   r"add(Item|Items|Row|Tab|Action)|insertItem|hint|addHeading|"
                   r"showText|Group|Wrapping(Button|CheckBox)|"
                   r"Q(Label|PushButton|ToolButton|CheckBox|RadioButton|GroupBox|Action|MessageBox))$")


def _calls_and_texts(code):
    """Each text with its line and the names of the calls around it, the innermost last."""
    calls, name, text, start = [], "", None, 0
    for token in TOKEN.finditer(code):
        kind = token.lastgroup
        if kind == "skipped":
            continue
        if kind in ("suffix", "raw_suffix"):   # every literal has one, if an empty one
            part = token["raw"] if token["raw"] is not None else token["text"]
            start = token.start() if text is None else start
            text = (text or "") + part         # neighbours are one text
            continue
        if text is not None:
            yield code.count("\n", 0, start) + 1, text, tuple(calls)
            text = None
        if token[0] in "([{":
            calls.append(name)
        elif token[0] in ")]}" and calls:
            calls.pop()
        name = re.sub(r"\s", "", token[0]) if kind == "name" else ""


def untranslated_texts(code):
    """Line and text of each sentence outside tr(), and of each word that is put on the screen so."""
    for line, text, calls in _calls_and_texts(code):
        last_names = [re.split(r"::|->|\.", call)[-1] for call in calls]
        if TRANSLATES & set(last_names) or UNSEEN & set(last_names):
            continue
        if any(LOGS.search(call) for call in calls) or STYLE.fullmatch(text):
            continue
        read = MARKUP.sub(" ", text)
        shown = any(SHOWS.match(name) for name in last_names) and WORD.search(read)
        if SENTENCE.search(read) or shown:
            yield line, text
