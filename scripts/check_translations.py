# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

"""Checks that every text for users can be translated, and that each translation is complete."""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

from find_texts import untranslated_texts

SOURCE, HELPER, TRANSLATIONS, LOCALES = (pathlib.Path(name) for name in ("src", "helper", "translations", "data/locale"))
TEMPLATE, ENGLISH = "tallyforge.ts", "en-US.ini"

# Sentences that no user of OBS reads: file, beginning of the text, reason.
EXCEPTIONS = [
    ("helper/main.cpp", "This program belongs to", "for a shell, not for OBS"),
    ("helper/main.cpp", "The plug-in's port", "an argument's description"),
    ("helper/main.cpp", "What proves this program", "an argument's description"),
    ("src/platform/BluetoothHelper_macos.cpp", "Tallyforge Bluetooth Helper.app", "a file's name"),
    ("src/module.cpp", "Live Tallyforge scoreboard data,", "OBS shows it nowhere"),
    ("src/sources/GraphicsSource.cpp", "Tallyforge graphics", "a private source's name"),
    ("src/device/ControllerCatalog.cpp", "Wireless Bridge", "a key that the portal knows"),
    ("src/device/ControllerCatalog.cpp", "Ethernet Bridge", "a key that the portal knows"),
    ("src/sources/TextSource.cpp", "Tallyforge text", "a private source's name"),
    ("src/sources/TextSource.cpp", "home_score, away_score,", "names of fields"),
]

PLACEHOLDER = re.compile(r"%(?:L?\d+|n)")
INI_LINE = re.compile(r'^([\w.]+)="(.*)"$')


def placeholders(text):
    return sorted(set(PLACEHOLDER.findall(text)))


def stale_files(ts_files):
    """A file that lupdate would change doesn't hold the texts of the sources."""
    with tempfile.TemporaryDirectory() as folder:
        copies = [pathlib.Path(shutil.copy(file, folder)) for file in ts_files]
        subprocess.run(["scripts/translations.sh", *copies], check=True, stdout=subprocess.DEVNULL)
        return [f"{file}: not up to date with {SOURCE}/ and {HELPER}/ (make translations, then translate)"
                for file, copy in zip(ts_files, copies) if file.read_bytes() != copy.read_bytes()]


def faults_in_translation(file):
    faults = []
    for context in ElementTree.parse(file).getroot().iter("context"):
        for message in context.iter("message"):
            source, translation = message.findtext("source"), message.find("translation")
            forms = [form.text or "" for form in translation.iter("numerusform")]
            texts = forms or [translation.text or ""]
            where = f'{file}: {context.findtext("name")}: "{source}"'
            if translation.get("type") or not all(texts):
                faults.append(f"{where} is not translated")
            elif any(placeholders(text) != placeholders(source) for text in texts):
                faults.append(f'{where} has other placeholders than "{translation.text}"')
    return faults


def locale_texts(file):
    lines = filter(None, map(str.strip, file.read_text(encoding="utf-8").splitlines()))
    matches = [INI_LINE.match(line) for line in lines]
    if not matches or not all(matches):
        raise SystemExit(f'{file}: a line is not KEY="text"')
    texts = [match.groups() for match in matches]
    if len(dict(texts)) != len(texts):
        raise SystemExit(f"{file}: a key stands there twice")
    return dict(texts)


def faults_in_locales():
    english = locale_texts(LOCALES / ENGLISH)
    faults = []
    for file in sorted(LOCALES.glob("*.ini")):
        texts = locale_texts(file)
        faults += [f"{file}: {key} stands only here or only in {ENGLISH}"
                   for key in sorted(texts.keys() ^ english.keys())]
        faults += [f"{file}: {key} is empty or has other placeholders than in {ENGLISH}"
                   for key in sorted(texts.keys() & english.keys())
                   if not texts[key] or placeholders(texts[key]) != placeholders(english[key])]
    return faults


def faults_in_languages():
    """The dock's texts and those that OBS shows come from two places: a language needs both."""
    qt = {file.stem.removeprefix("tallyforge_") for file in TRANSLATIONS.glob("tallyforge_*.ts")}
    obs = {file.stem.split("-")[0] for file in LOCALES.glob("*.ini") if file.name != ENGLISH}
    return [f"{language}: stands only in {TRANSLATIONS}/ or only in {LOCALES}/" for language in sorted(qt ^ obs)]


def faults_in_sources(files):
    faults, excused = [], set()
    for file in files:
        for line, text in untranslated_texts(file.read_text(encoding="utf-8")):
            excuse = next((entry for entry in EXCEPTIONS
                           if file.as_posix() == entry[0] and text.startswith(entry[1])), None)
            if excuse:
                excused.add(excuse)
            else:
                faults.append(f'{file}:{line}: "{text}" bypasses tr() and is neither logged nor excepted')
    faults += [f'{file}: the exception "{text}" is needed no more'
               for file, text, reason in set(EXCEPTIONS) - excused]
    return faults


def main():
    sources = sorted(file for folder in (SOURCE, HELPER) for file in folder.rglob("*") if file.suffix in (".h", ".cpp"))
    template = TRANSLATIONS / TEMPLATE
    languages = sorted(TRANSLATIONS.glob("tallyforge_*.ts"))
    count = len(ElementTree.parse(template).getroot().findall("context/message"))
    if not sources or not languages or not count:
        return "no sources, no texts or no translations were found"
    faults = (stale_files([template, *languages]) + faults_in_locales() + faults_in_languages()
              + faults_in_sources(sources))
    for file in languages:
        faults += faults_in_translation(file)
    if faults:
        return "\n".join(faults)
    print(f"check: translations: {count} texts in {len(sources)} files, {len(languages)} complete translation(s)")
    return None


if __name__ == "__main__":
    sys.exit(main())
