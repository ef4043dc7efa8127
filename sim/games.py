# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Games as data: a script is a list of timed events, and a player walks along it."""

import json
import random
from dataclasses import dataclass


class GameError(Exception):
    """A game that cannot be played, told in a sentence for the user."""


@dataclass(frozen=True)
class Event:
    at: float      # seconds since the start of the game
    fields: dict   # what changes on the scoreboard
    play: bool     # False for a mere tick of the clock; a step goes from play to play


@dataclass(frozen=True)
class Script:
    sport: str
    start: dict
    events: list


class Tape:
    """Records a game while it is made up; only values that change become part of an event."""

    def __init__(self, **start):
        self.tenths = 0
        self.start = dict(start)
        self.now = dict(start)
        self.events = []

    def mark(self, play=True, **fields):
        changed = {name: value for name, value in fields.items() if self.now[name] != value}
        if changed or play:
            self.now.update(changed)
            self.events.append(Event(self.tenths / 10, changed, play))


def clock_text(tenths):
    """Minutes and seconds, and tenths within the last minute, as scoreboards show it."""
    if tenths < 600:
        return f"{tenths // 10}.{tenths % 10}"
    return f"{tenths // 600}:{tenths % 600 // 10:02d}"


def _run_clock(tape, left, tenths, shot):
    for passed in range(1, tenths + 1):
        tape.tenths += 1
        now = left - passed
        if now < 600 or now % 10 == 0:
            tape.mark(False, clock=clock_text(now), shot_clock=(shot - passed + 9) // 10)
    return left - tenths


def _possession(tape, rng, left):
    """Plays one possession and returns the seconds left on the clock."""
    shot = 300
    side = tape.now["possession"]
    other = "away" if side == "home" else "home"
    left = _run_clock(tape, left, min(left, rng.randint(60, 240)), shot)
    clock = {"clock": clock_text(left), "shot_clock": shot // 10}
    score = tape.now[side + "_score"]
    outcome = rng.choices(("two", "three", "foul", "lost"), (35, 12, 18, 35))[0]
    if outcome in ("two", "three"):
        points = 2 if outcome == "two" else 3
        tape.mark(**clock, **{side + "_score": score + points}, possession=other)
    elif outcome == "foul":
        tape.mark(**clock, **{other + "_fouls": tape.now[other + "_fouls"] + 1})
        tape.tenths += 80
        made = rng.randint(0, 2)
        if made:
            tape.mark(**{side + "_score": score + made}, possession=other)
        else:
            tape.mark(possession=other)
    else:
        tape.mark(**clock, possession=other)
    return left


def basketball(rng):
    """Four periods of eight minutes, and four minutes more while the score is level."""
    tape = Tape(home_score=0, away_score=0, period=1, clock="8:00", shot_clock=30,
                home_fouls=0, away_fouls=0, possession=rng.choice(("home", "away")))
    period = 0
    while period < 4 or tape.now["home_score"] == tape.now["away_score"]:
        period += 1
        left = 4800 if period <= 4 else 2400
        fouls = {"home_fouls": 0, "away_fouls": 0} if period == 3 else {}
        if period > 1:
            tape.mark(period=period, clock=clock_text(left), shot_clock=30, **fouls)
        tape.tenths += 30
        while left > 0:
            left = _possession(tape, rng, left)
        tape.tenths += 200
    return Script("basketball", tape.start, tape.events)


def volleyball(rng):
    """Best of five sets to 25 points, the fifth to 15, always with two points between."""
    tape = Tape(home_score=0, away_score=0, home_sets=0, away_sets=0, period=1,
                possession=rng.choice(("home", "away")))
    while max(tape.now["home_sets"], tape.now["away_sets"]) < 3:
        goal = 15 if tape.now["period"] == 5 else 25
        points = {"home": 0, "away": 0}
        while max(points.values()) < goal or abs(points["home"] - points["away"]) < 2:
            side = rng.choice(("home", "away"))
            points[side] += 1
            tape.tenths += rng.randint(80, 250)
            tape.mark(**{side + "_score": points[side]}, possession=side)
        won = max(points, key=points.get) + "_sets"
        tape.tenths += 50
        tape.mark(**{won: tape.now[won] + 1})
        if tape.now[won] < 3:
            tape.tenths += 300
            tape.mark(period=tape.now["period"] + 1, home_score=0, away_score=0)
    return Script("volleyball", tape.start, tape.events)


BUILT_IN = {"basketball": basketball, "volleyball": volleyball}


def load(name, seed):
    """A built-in game from its seed, or a script of the crew's own from a JSON file."""
    if name in BUILT_IN:
        return BUILT_IN[name](random.Random(seed))
    if not name.endswith(".json"):
        raise GameError(f"There is no game {name}. Choose {' or '.join(BUILT_IN)}, "
                        "or give a file that ends in .json.")
    try:
        with open(name, encoding="utf-8") as file:
            return _from_json(json.load(file))
    except (OSError, ValueError, RecursionError) as error:
        raise GameError(f"The game {name} could not be read: {error}.") from error


def _from_json(tree):
    if not isinstance(tree, dict) or not isinstance(tree.get("events"), list):
        raise ValueError("it must be an object with a list under \"events\"")
    sport, start = tree.get("sport", ""), tree.get("start", {})
    if not isinstance(sport, str) or not isinstance(start, dict):
        raise ValueError("\"sport\" must be a text and \"start\" an object")
    events, last = [], 0.0
    for entry in tree["events"]:
        if not (isinstance(entry, list) and len(entry) == 2 and type(entry[0]) in (int, float)
                and last <= entry[0] < 1e9 and isinstance(entry[1], dict)):
            raise ValueError("each event must be [seconds, {fields}], in order of time")
        last = entry[0]
        events.append(Event(last, entry[1], True))
    return Script(sport, start, events)


class Game:
    """One run of a script. It knows game time only; its caller decides how fast that goes."""

    def __init__(self, script):
        self.script = script
        self.position = 0
        self.elapsed = 0.0

    @property
    def finished(self):
        return self.position == len(self.script.events)

    def seconds_to_next(self):
        return max(0.0, self.script.events[self.position].at - self.elapsed)

    def advance(self, seconds):
        """Lets game time pass and returns the fields that changed meanwhile."""
        self.elapsed += seconds
        fields = {}
        while not self.finished and self.script.events[self.position].at <= self.elapsed:
            fields.update(self._take().fields)
        return fields

    def step(self, count):
        """Goes on by that many plays, ticks of the clock before them included."""
        fields = {}
        while count > 0 and not self.finished:
            event = self._take()
            fields.update(event.fields)
            self.elapsed = max(self.elapsed, event.at)
            count -= event.play
        return fields

    def _take(self):
        self.position += 1
        return self.script.events[self.position - 1]
