#!/usr/bin/env python3
"""Puts the results of the shards of one genome together, as one run over the whole file would have written them.

What a record added to the results or to the masked file is told by its tag: each name was given the number of its
record and a slash by split.py, and stands only in certain places of a line. Lines without a tag belong to the record
of the line above. The records are put back in the order of the input, without their tags; the head is that of any
shard, but for the lines that name the input and the results; the closing line is written once.

The file appears under its name when it is complete. Lines are read in pieces: memory does not grow with the input.
"""

from __future__ import annotations

import argparse
import os
import re
import sys
from collections.abc import Iterator
from contextlib import ExitStack, contextmanager, suppress
from dataclasses import dataclass, field
from pathlib import Path
from typing import BinaryIO

from shard_plan import Row, read_plan

PIECE = 1 << 16
BUFFER = 1 << 18

# The names under which search-shard gives its files to the program.
SHARD_INPUT = b"records.fa"
SHARD_OUTPUT = b"results"

# The one line of a record that stands before the first line with its name.
FIRST_OF_COMMENT = b"# Full sequence name:\n"

CLOSED = b"## Finished successfully. ##\n"
CLOSED_GFF = b"# End tandem repeats\n"


class GatherError(Exception):
    """The shards do not fit together; the text says why."""


@dataclass(frozen=True)
class Layout:
    """What a kind of file looks like: after which texts a tag may stand, whether it has a head, its closing line."""

    before_tag: tuple[bytes, ...]
    has_head: bool = True
    closing_line: bytes = b""
    opening: bytes = b""
    tag: re.Pattern[bytes] = field(init=False)

    def __post_init__(self) -> None:
        before = b"|".join(map(re.escape, self.before_tag))
        object.__setattr__(self, "tag", re.compile(rb"(%s)([0-9]+)/" % before))


COMMENTS = (b"#>", b"##sequence-region ", b'# Analysis of sequence "')
FRAMED = Layout((b">", b'# Analysis of sequence "'), closing_line=CLOSED, opening=b">")
LAYOUTS = {
    "0": FRAMED,
    "1": FRAMED,
    "2": Layout((b"", *COMMENTS), closing_line=CLOSED_GFF),
    "3": Layout((b"", *COMMENTS), closing_line=CLOSED),
    "4": Layout((b">",)),
    "masked": Layout((b">",), has_head=False, opening=b">"),
}


class Shard:
    """What the program wrote for one shard, read line by line; a line longer than a piece is read in several.

    `_line` is the line to come, or its first piece, empty at the end; `_before` a line that belongs to it.
    """

    def __init__(self, path: Path, layout: Layout, file: BinaryIO) -> None:
        self._path = path
        self._layout = layout
        self._file = file
        self._next_line()

    def _next_line(self) -> None:
        self._before = b""
        self._line = self._file.readline(PIECE)
        if self._line == FIRST_OF_COMMENT:
            self._before = self._line
            self._line = self._file.readline(PIECE)

    def _is_at_end(self) -> bool:
        return self._line in (b"", self._layout.closing_line)

    def head(self) -> bytes:
        """The lines in front of the first record."""
        lines = []
        while self._layout.has_head and not (self._is_at_end() or self._before or self._layout.tag.match(self._line)):
            lines.append(self._line)
            self._next_line()
        return b"".join(lines)

    def copy_record(self, number: int, records: int, out: BinaryIO) -> None:
        """Copies what belongs to record `number`, counted from 1 in the input, and to a bare header after it."""
        opened = 0
        while not self._is_at_end():
            match = self._layout.tag.match(self._line)
            if match and int(match[2]) != number:
                break
            opened += self._line.startswith(self._layout.opening)
            self._copy_line(match, out)
        if self._layout.opening and opened != records:
            raise GatherError(f"{self._path} does not hold record {number} of the plan")

    def _copy_line(self, match: re.Match[bytes] | None, out: BinaryIO) -> None:
        out.write(self._before)
        if match:
            out.write(match[1])
        piece = self._line[match.end() :] if match else self._line
        out.write(piece)
        while not piece.endswith(b"\n"):
            piece = self._file.readline(PIECE)
            if not piece:
                raise GatherError(f"{self._path} ends within a line")
            out.write(piece)
        self._next_line()

    def check_end(self) -> None:
        if self._line != self._layout.closing_line or self._file.read(1):
            raise GatherError(f"{self._path} does not end after its last record")


def name_files(head: bytes, input_name: bytes, output_name: bytes) -> bytes:
    """The head with the names that one run over the whole file would have been given."""
    for label, shard_name, name in (
        (b"Input file name:", SHARD_INPUT, input_name),
        (b"Output file name:", SHARD_OUTPUT, output_name),
    ):
        line = re.compile(rb"^(# %s[ \t]+)%s$" % (re.escape(label), re.escape(shard_name)), re.MULTILINE)
        found = list(line.finditer(head))
        if len(found) != 1:
            raise GatherError(f"the head of the results has {len(found)} lines for the {label.decode()}")
        head = head[: found[0].end(1)] + name + head[found[0].end() :]
    return head


def common_head(shards: list[Shard]) -> bytes:
    heads = {shard.head() for shard in shards}
    if len(heads) != 1:
        raise GatherError(
            "the shards were not searched by the same version of the program with the same options;"
            " please remove them and run again"
        )
    return heads.pop()


@contextmanager
def complete_file(path: Path) -> Iterator[BinaryIO]:
    """A file that appears under its name only if all was written."""
    partial = path.with_name(path.name + ".part")
    try:
        with partial.open("wb", buffering=BUFFER) as out:
            yield out
            out.flush()
            os.fsync(out.fileno())
        partial.replace(path)
    finally:
        with suppress(FileNotFoundError):
            partial.unlink()


def copy_records(rows: Iterator[Row], shards: list[Shard], out: BinaryIO) -> None:
    for number, row in enumerate(rows, start=1):
        shards[row.shard].copy_record(number, row.records, out)
    for shard in shards:
        shard.check_end()


def gather(plan: Path, layout: Layout, names: tuple[bytes, bytes], paths: list[Path], output: Path) -> None:
    with ExitStack() as files:
        shards = [Shard(path, layout, files.enter_context(path.open("rb", buffering=BUFFER))) for path in paths]
        out = files.enter_context(complete_file(output))
        if layout.has_head:
            out.write(name_files(common_head(shards), *names))
        copy_records(read_plan(plan), shards, out)
        out.write(layout.closing_line)


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Puts the results of shards together.")
    parser.add_argument("--layout", choices=LAYOUTS, required=True, help="the output format, or masked")
    parser.add_argument("--plan", type=Path, required=True, help="the plan that split.py wrote")
    parser.add_argument("--input-name", default="", help="the input file as the head names it")
    parser.add_argument("--output", type=Path, required=True, help="written; the head names it as given here")
    parser.add_argument("shards", nargs="+", type=Path, help="what was written for the shards, in their order")
    return parser.parse_args()


def main() -> int:
    arguments = parse_arguments()
    names = os.fsencode(arguments.input_name), os.fsencode(arguments.output)
    try:
        gather(arguments.plan, LAYOUTS[arguments.layout], names, arguments.shards, arguments.output)
    except (OSError, ValueError, GatherError) as error:
        print(f"Sorry! Failed to write {arguments.output}: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
