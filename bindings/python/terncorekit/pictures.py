"""Answers as pictures.

Names and drawings come from services that nobody here knows. A name is escaped wherever it is
written; a floor's drawing, and the whole picture in a notebook, is shown as an image, in which
nothing runs and which loads nothing.
"""

from __future__ import annotations

import re
from base64 import b64encode
from html import escape
from typing import Iterable, Sequence

from terncorekit.floors import Floor, Floors, Frame

Point = tuple[float, float]

WIDTH = 640
TALLEST = 640
TITLE = 28
LINE = 22
# Readers of XML refuse larger values.
LONGEST_DRAWING = 7 << 20

_INK = "#1f2933"
_WAY = "#1463c8"
_NEAR, _FAR = (20, 99, 200), (240, 180, 60)
_NOT_IN_XML = re.compile("[^\t\n\r\x20-\ud7ff\ue000-\ufffd\U00010000-\U0010ffff]")


def text_of(text: str) -> str:
    """A text as markup takes it, in elements and in attributes."""
    return escape(_NOT_IN_XML.sub("\ufffd", text), quote=True)


def figure(svg: str, says: str) -> str:
    """A picture as an element of a page."""
    image = b64encode(svg.encode("utf-8")).decode("ascii")
    return (
        f'<img style="max-width:100%" alt="{text_of(says)}" '
        f'src="data:image/svg+xml;base64,{image}">'
    )


def table(head: Sequence[str], rows: Iterable[Sequence[object]]) -> str:
    """A table as an element of a page."""
    lines = [_row("th", head), *(_row("td", map(_cell, row)) for row in rows)]
    return "<table>" + "".join(lines) + "</table>"


def _row(tag: str, cells: Iterable[str]) -> str:
    return "<tr>" + "".join(f"<{tag}>{text_of(cell)}</{tag}>" for cell in cells) + "</tr>"


def _cell(value: object) -> str:
    return ", ".join(map(str, value)) if isinstance(value, (list, tuple)) else str(value)


class Drawing:
    """Floors below one another, in the order in which something is drawn on them."""

    def __init__(self, floors: Floors) -> None:
        self._floors = floors
        self._panels: dict[int, _Panel] = {}
        self._lines: list[str] = []

    def route(self, stretches: Iterable[tuple[int, Sequence[Point]]]) -> None:
        """A way, a line on each map."""
        for map_id, points in stretches:
            self._panel(map_id).ways.append(points)

    def mark(self, map_id: int, at: Point, letter: str) -> None:
        """A pin with a letter."""
        self._panel(map_id).marks.append((at, letter))

    def waypoint(self, waypoint: int, letter: str) -> None:
        """A pin at a waypoint, where it is known where that is."""
        found = self._floors.where(waypoint)
        if found:
            self.mark(found[0], found[1], letter)

    def dot(self, waypoint: int, far: float) -> None:
        """A waypoint in a colour between near, 0, and far, 1."""
        found = self._floors.where(waypoint)
        if found:
            self._panel(found[0]).dots.append((found[1], far))

    def lines(self, lines: Iterable[str]) -> None:
        """Lines of text below the floors."""
        self._lines += lines

    def svg(self) -> str:
        """All of it, as the text of an SVG file."""
        body, top = [], 0.0
        for panel in self._panels.values():
            markup, height = panel.markup(top)
            body.append(markup)
            top += height
        for number, line in enumerate(self._lines, 1):
            top += LINE
            body.append(_text(4, top - 6, f"{number}. {line}", "14px"))
        return (
            f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{_n(top or LINE)}" '
            f'font-family="sans-serif" fill="{_INK}">'
            f'<rect width="100%" height="100%" fill="white"/>{"".join(body)}</svg>'
        )

    def _panel(self, map_id: int) -> _Panel:
        if map_id not in self._panels:
            self._panels[map_id] = _Panel(map_id, self._floors.get(map_id))
        return self._panels[map_id]


class _Panel:
    """A floor and what is drawn on it."""

    def __init__(self, map_id: int, floor: Floor | None) -> None:
        self.title = (floor and floor.title) or f"Map {map_id}"
        self.floor = floor
        self.ways: list[Sequence[Point]] = []
        self.marks: list[tuple[Point, str]] = []
        self.dots: list[tuple[Point, float]] = []

    def markup(self, top: float) -> tuple[str, float]:
        """The panel from there on, and how high it is."""
        frame = (self.floor and self.floor.frame) or self._around()
        height = max(1.0, min(WIDTH * (frame.height / frame.width), TALLEST))
        unit = max(frame.width / WIDTH, frame.height / height)
        inner = "".join([self._background(), *self._shapes(unit)])
        view = " ".join(map(_n, frame))
        return (
            _text(4, top + 19, self.title, "bold 15px")
            + f'<svg y="{_n(top + TITLE)}" width="{WIDTH}" height="{_n(height)}" '
            f'viewBox="{view}">{inner}</svg>',
            TITLE + height,
        )

    def _around(self) -> Frame:
        """What holds everything that is drawn, and some room beside it."""
        points = [at for way in self.ways for at in way]
        points += [at for at, _ in self.marks] + [at for at, _ in self.dots]
        left, right = min(x for x, _ in points), max(x for x, _ in points)
        top, bottom = min(y for _, y in points), max(y for _, y in points)
        room = max(right - left, bottom - top, 1.0) / 8
        return Frame(left - room, top - room, right - left + 2 * room, bottom - top + 2 * room)

    def _background(self) -> str:
        if self.floor is None or self.floor.frame is None:
            return ""
        drawing = self.floor.drawing.encode("utf-8", "replace")
        if len(drawing) > LONGEST_DRAWING:
            return ""
        x, y, width, height = map(_n, self.floor.frame)
        return (
            f'<image x="{x}" y="{y}" width="{width}" height="{height}" '
            f'href="data:image/svg+xml;base64,{b64encode(drawing).decode("ascii")}"/>'
        )

    def _shapes(self, unit: float) -> Iterable[str]:
        for way in self.ways:
            points = " ".join(f"{_n(x)},{_n(y)}" for x, y in way)
            for colour, width in (("white", 8), (_WAY, 5)):
                yield (
                    f'<polyline points="{points}" fill="none" stroke="{colour}" '
                    f'stroke-width="{_n(width * unit)}" stroke-linecap="round" '
                    'stroke-linejoin="round"/>'
                )
        for at, far in self.dots:
            yield _circle(at, 4 * unit, _between(far))
        for at, letter in self.marks:
            yield _circle(at, 11 * unit, _INK) + (
                f'<text x="{_n(at[0])}" y="{_n(at[1] + 4.5 * unit)}" fill="white" '
                f'text-anchor="middle" font-size="{_n(13 * unit)}">{text_of(letter)}</text>'
            )


def _circle(at: Point, radius: float, colour: str) -> str:
    return f'<circle cx="{_n(at[0])}" cy="{_n(at[1])}" r="{_n(radius)}" fill="{colour}"/>'


def _between(far: float) -> str:
    parts = (near + (end - near) * far for near, end in zip(_NEAR, _FAR))
    return "#" + "".join(f"{round(part):02x}" for part in parts)


def _text(x: float, y: float, text: str, font: str) -> str:
    return f'<text x="{_n(x)}" y="{_n(y)}" style="font:{font} sans-serif">{text_of(text)}</text>'


def _n(number: float) -> str:
    return f"{number:.6g}"
