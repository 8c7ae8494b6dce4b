"""The plan of one genome: which shard each record of a FASTA file went to.

Its first line is the fingerprint of the file. Then follows a table with a head line and one row a record, in the order of
the input. A row also says how many bytes and lines the record takes, so that places in a shard can be told as places in
the input. Rows are read and written one by one: a plan never stands in memory as a whole.
"""

from __future__ import annotations

from collections.abc import Iterable, Iterator
from dataclasses import astuple, dataclass, fields
from pathlib import Path

from fingerprint import Fingerprint, State

@dataclass(frozen=True)
class Row:
    """One record; shards are numbered from 0.

    `records` is 1, or 2 where a header without a name and without a line end closes the file: such a record takes the
    short name of the one before it and therefore stays with it.
    """

    shard: int
    bytes: int
    lines: int
    records: int


HEAD = "\t".join(field.name for field in fields(Row)) + "\n"
FINGERPRINT = "# sha256 "


def write_plan(path: Path, genome: Fingerprint, rows: Iterable[Row]) -> None:
    with path.open("w", encoding="ascii") as plan:
        plan.write(" ".join([FINGERPRINT.rstrip(), genome.sha256, *map(str, astuple(genome.state))]) + "\n")
        plan.write(HEAD)
        plan.writelines("\t".join(map(str, astuple(row))) + "\n" for row in rows)


def read_fingerprint(path: Path) -> Fingerprint | None:
    """The fingerprint of the genome that was dealt, or None if there is no plan that has one."""
    try:
        with path.open(encoding="ascii") as plan:
            line = plan.readline()
        if not line.startswith(FINGERPRINT):
            return None
        sha256, *state = line.removeprefix(FINGERPRINT).split()
        return Fingerprint(sha256, State(*map(int, state)))
    except (FileNotFoundError, ValueError, TypeError):
        return None


def read_plan(path: Path) -> Iterator[Row]:
    """Yields the rows in the order of the input; a ValueError says that the file is no plan."""
    with path.open(encoding="ascii") as plan:
        if not plan.readline().startswith(FINGERPRINT) or plan.readline() != HEAD:
            raise ValueError(f"{path} is not a plan of shards; please remove it and run again")
        for line in plan:
            yield Row(*map(int, line.split("\t")))


def input_line(rows: Iterable[Row], shard: int, shard_line: int) -> int:
    """The line of the input that became line `shard_line` of the shard; both are counted from 1.

    A line after the shard's last one is counted on from there, since the end of a file can be where a fault shows.
    """
    first_in_input, first_in_shard, found = 1, 1, shard_line
    for row in rows:
        if row.shard == shard:
            if first_in_shard <= shard_line:
                found = first_in_input + shard_line - first_in_shard
            first_in_shard += row.lines
        first_in_input += row.lines
    return found
