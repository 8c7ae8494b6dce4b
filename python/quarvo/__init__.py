"""Tandem repeats (microsatellites and minisatellites, perfect and imperfect) in DNA sequences.

    import quarvo

    for repeat in quarvo.search("ACGTTACACACACACACGGT", maxUnitLen=6, minScore=8):
        print(repeat.start, repeat.end, repeat.unit, repeat.copies)

    results = quarvo.read("genome.results")

Positions count as Python does: from 0, and the end is exclusive, so ``sequence[repeat.start:repeat.end]`` is the repeat.
"""

from __future__ import annotations

import os
from dataclasses import dataclass
from typing import Any

from . import _quarvo

__all__ = ["Edit", "Option", "Repeat", "Results", "Sequence", "options", "read", "search"]
__version__: str = _quarvo.version


@dataclass(frozen=True, slots=True)
class Edit:
    """A difference between a repeat and copies of its unit."""

    position: int
    """From 0 at the repeat's start. Edits of N's that were cut off the repeat's ends lie outside of it."""
    kind: str
    """'M' mismatch, 'I' symbol inserted into the sequence, 'D' symbol deleted from it."""


@dataclass(frozen=True, slots=True)
class Repeat:
    """A tandem repeat. What a results file does not tell is None."""

    start: int
    """From 0, inclusive."""
    end: int
    """From 0, exclusive."""
    unit: str
    """The unit (motif), in the form of the option reportUnit."""
    normal_form: str
    """The alphabetically smallest rotation of the unit and of its reverse complement: equal for equal repeats."""
    length: int
    """Base pairs of the perfect repeat that is aligned to it: its span without insertions and with deletions."""
    score: int
    """+1 for each match after the first unit, and the penalties."""
    perfection: float
    """Share of matches in percent (purity); not a number where there is nothing but N's to judge by."""
    mismatches: int | None
    insertions: int | None
    deletions: int | None
    Ns: int | None
    edits: tuple[Edit, ...] | None
    sequence: str | None
    """Its symbols, with the option printRepeatSeqMode."""
    left_flank: str | None
    right_flank: str | None
    alignment: tuple[str, str, str] | None
    """Three lines of equal length: the sequence, markers ('|' match, '*' N, ' ' edit), the unit; '-' is a gap."""

    @property
    def unit_length(self) -> int:
        """The period, in base pairs."""
        return len(self.unit)

    @property
    def span(self) -> int:
        """Base pairs of the sequence that it covers."""
        return self.end - self.start

    @property
    def copies(self) -> float:
        """How many times the unit is repeated."""
        return self.length / self.unit_length


@dataclass(frozen=True, slots=True)
class Sequence:
    """A sequence of a results file and its repeats, by start and end."""

    name: str
    """The header up to its first blank."""
    header: str | None
    length: int | None
    """In base pairs."""
    repeats: list[Repeat]


@dataclass(frozen=True, slots=True)
class Results:
    """What a results file tells."""

    version: str
    """Of the program that wrote it."""
    settings: dict[str, str]
    """Each setting of the run by its label."""
    sequences: list[Sequence]


@dataclass(frozen=True, slots=True)
class Option:
    """An option of search()."""

    name: str
    short_name: str
    """Of the command line; here options have their long names."""
    default: Any
    values: tuple[str, ...]
    """The only ones that it takes; empty where any number does."""
    help: str


def search(sequence: str | bytes, *, name: str = "sequence", **options: Any) -> list[Repeat]:
    """Find the tandem repeats of one sequence, as the program quarvo does.

    The sequence holds A, C, G, T or U and the codes of ambiguity, which count as N, in either case. The options are
    those of quarvo by their long names, with its defaults and checks; ``quarvo.options()`` lists them. Other threads run
    meanwhile, and searches in several threads use several cores.

    Raises ValueError for a sequence with other symbols and for values that an option does not take, and TypeError for
    unknown options.
    """
    _, _, [(_, _, _, found)] = _quarvo.search(sequence, name, options)
    return [_repeat(fields) for fields in found]


def read(results: str | os.PathLike[str]) -> Results:
    """Read a results file of quarvo, output formats 0, 1 and 3, plain or compressed by gzip.

    Raises OSError when it cannot be read, and ValueError, with the line, when it is no results file, was changed, or
    ends before its closing line.
    """
    version, settings, sequences = _quarvo.read(os.fspath(results))
    return Results(
        version,
        settings,
        [Sequence(name, header, length, [_repeat(fields) for fields in found])
         for name, header, length, found in sequences],
    )


def options() -> list[Option]:
    """The options of search()."""
    return [Option(*fields) for fields in _quarvo.options()]


def _repeat(fields: dict[str, Any]) -> Repeat:
    if fields["edits"] is not None:
        fields["edits"] = tuple(Edit(*edit) for edit in fields["edits"])
    return Repeat(**fields)
