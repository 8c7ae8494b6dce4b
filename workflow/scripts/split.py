#!/usr/bin/env python3
"""Deals the records of a FASTA file, plain or compressed by gzip, to shards of nearly equal size.

The largest record goes first, each to the shard that has least so far, so that the same file is always dealt alike.
Within a shard the records keep the order of the input. They are cut as raw bytes at their starts, since parsers of
FASTA change what the program must see as it is: line ends, blanks, lines of comments, and the bytes of the headers. One
thing is added: the number of the record and a slash in front of each name ("17/chr5 ..."), by which gather.py knows
whose results it reads, whatever the names are.

Memory: some hundred bytes a record, whatever their size.
"""

from __future__ import annotations

import argparse
import gzip
import heapq
import re
import sys
import zlib
from array import array
from collections.abc import Iterator, Sequence
from contextlib import ExitStack
from dataclasses import dataclass
from pathlib import Path
from typing import BinaryIO, cast

from fingerprint import state_of, take_fingerprint
from shard_plan import Row, write_plan

BLOCK = 1 << 20
GZIP_MAGIC = b"\x1f\x8b"

# White space as the program skips it in front of the first record, and the comment lines among it.
LEADING_SPACE = b" \t\n\v\f\r"


def open_input(path: Path) -> BinaryIO:
    """Opens the file for reading what it holds when decompressed; told by its first bytes, not by its name."""
    with path.open("rb") as file:
        is_compressed = file.read(len(GZIP_MAGIC)) == GZIP_MAGIC
    return cast(BinaryIO, gzip.open(path, "rb")) if is_compressed else path.open("rb")


class Lead:
    """What stands in front of the first record: white space and lines that begin with '#'.

    `header` becomes the offset of the first record's '>', and stays None in a file that has none there, which the
    program will refuse.
    """

    def __init__(self) -> None:
        self.header: int | None = None
        self.is_over = False
        self._in_comment = False

    def read(self, block: bytes, offset: int) -> None:
        """Looks at the next block of the input, which begins at `offset`."""
        position = 0
        while not self.is_over and position < len(block):
            position = self._skip_comment(block, position) if self._in_comment else self._step(block, position, offset)

    def _step(self, block: bytes, position: int, offset: int) -> int:
        byte = block[position : position + 1]
        self._in_comment = byte == b"#"
        if byte not in LEADING_SPACE and not self._in_comment:
            self.is_over = True
            self.header = offset + position if byte == b">" else None
        return position + 1

    def _skip_comment(self, block: bytes, position: int) -> int:
        end = re.compile(rb"[\r\n]").search(block, position)
        self._in_comment = end is None
        return len(block) if end is None else end.end()


@dataclass
class Index:
    """Where the records lie: record i takes the bytes from starts[i] up to starts[i + 1], the first from 0 on.

    `headers[i]` is the offset of the '>' of record i, or -1 in a file that does not begin with a record.
    """

    starts: array[int]
    headers: array[int]
    lines: array[int]
    ends_with_bare_header: bool


class Indexer:
    """Finds the records of a file that is read block by block."""

    def __init__(self) -> None:
        self._lead = Lead()
        self._headers = array("q")
        self._lines = array("q")
        self._lines_before = 0
        self._offset = 0
        self._last = b"\n"

    def read(self, block: bytes) -> None:
        if not self._lead.is_over:
            self._lead.read(block, self._offset)
            self._note_first()
        counted = 0
        for position in self._line_starts(block):
            if self._lead.is_over and self._offset + position > self._headers[0]:
                counted = self._count_lines(block, counted, position)
                self._headers.append(self._offset + position)
                self._lines.append(self._lines_before)
        self._count_lines(block, counted, len(block))
        self._offset += len(block)
        self._last = block[-1:]

    def _note_first(self) -> None:
        if self._lead.is_over:
            self._headers.append(-1 if self._lead.header is None else self._lead.header)
            self._lines.append(0)

    def _line_starts(self, block: bytes) -> Iterator[int]:
        """The positions of every '>' at the start of a line."""
        position = block.find(b">")
        while position >= 0:
            before = block[position - 1 : position] if position > 0 else self._last
            if before in (b"\n", b"\r"):
                yield position
            position = block.find(b">", position + 1)

    def _count_lines(self, block: bytes, begin: int, end: int) -> int:
        """Adds the line ends in block[begin:end]; CR LF is one, also where it was cut in two."""
        ends = block.count(b"\n", begin, end) + block.count(b"\r", begin, end) - block.count(b"\r\n", begin, end)
        before = block[begin - 1 : begin] if begin > 0 else self._last
        if before == b"\r" and block[begin : begin + 1] == b"\n" and begin < end:
            ends -= 1
        self._lines_before += ends
        return end

    def finish(self) -> Index:
        """The index of a file without any record has one entry: the whole file, for the program to refuse."""
        headers = self._headers or array("q", [-1])
        lines = (self._lines or array("q", [0])) + array("q", [self._lines_before])
        bare = len(headers) > 1 and headers[-1] == self._offset - 1
        if bare:
            headers.pop()
            lines.pop(-2)
        starts = array("q", [0]) + headers[1:] + array("q", [self._offset])
        return Index(starts, headers, lines, bare)


def make_index(path: Path) -> Index:
    indexer = Indexer()
    with open_input(path) as file:
        while block := file.read(BLOCK):
            indexer.read(block)
    return indexer.finish()


def deal(sizes: Sequence[int], shards: int) -> Sequence[int]:
    """The shard of each record: the largest record first, each to the shard with the fewest bytes, then the first."""
    loads = [(0, shard) for shard in range(min(shards, len(sizes)))]
    dealt = array("q", bytes(8 * len(sizes)))
    # Sorting backwards leaves records of one size in the order of the input.
    for record in sorted(range(len(sizes)), key=sizes.__getitem__, reverse=True):
        load, shard = loads[0]
        dealt[record] = shard
        heapq.heapreplace(loads, (load + sizes[record], shard))
    return dealt


def plan_rows(index: Index, dealt: Sequence[int]) -> Iterator[Row]:
    last = len(dealt) - 1
    for i, shard in enumerate(dealt):
        yield Row(
            shard=shard,
            bytes=index.starts[i + 1] - index.starts[i],
            lines=index.lines[i + 1] - index.lines[i],
            records=2 if index.ends_with_bare_header and i == last else 1,
        )


def copy(source: BinaryIO, size: int, target: BinaryIO) -> None:
    while size > 0:
        block = source.read(min(size, BLOCK))
        if not block:
            raise OSError("it became shorter while it was read")
        target.write(block)
        size -= len(block)


def write_record(source: BinaryIO, index: Index, i: int, shard: BinaryIO) -> None:
    """Copies record i, with its tag after the '>'; the source stands at its first byte."""
    begin, end, header = index.starts[i], index.starts[i + 1], index.headers[i]
    if header >= 0:
        copy(source, header + 1 - begin, shard)
        shard.write(b"%d/" % (i + 1))
        begin = header + 1
    copy(source, end - begin, shard)


def write_shards(path: Path, index: Index, dealt: Sequence[int], directory: Path) -> None:
    directory.mkdir(parents=True, exist_ok=True)
    with ExitStack() as files:
        source = files.enter_context(open_input(path))
        shards = [files.enter_context((directory / f"{i}.fa").open("wb")) for i in range(max(dealt) + 1)]
        for i, shard in enumerate(dealt):
            write_record(source, index, i, shards[shard])


def write_summary(path: Path, sizes: Sequence[int], dealt: Sequence[int]) -> None:
    """One row a shard: what the resources of its job are reckoned from."""
    records, total, largest = ([0] * (max(dealt) + 1) for _ in range(3))
    for size, shard in zip(sizes, dealt):
        records[shard] += 1
        total[shard] += size
        largest[shard] = max(largest[shard], size)
    with path.open("w", encoding="ascii") as summary:
        summary.write("shard\trecords\tbytes\tlargest_record\n")
        for row in zip(range(len(records)), records, total, largest):
            summary.write("\t".join(map(str, row)) + "\n")


def split(path: Path, shards: int, plan: Path, summary: Path, directory: Path) -> None:
    genome = take_fingerprint(path)
    index = make_index(path)
    sizes = array("q", (end - begin for begin, end in zip(index.starts, index.starts[1:])))
    dealt = deal(sizes, shards)
    write_shards(path, index, dealt, directory)
    if state_of(path) != genome.state:
        raise OSError("it was changed while it was read")
    write_summary(summary, sizes, dealt)
    write_plan(plan, genome, plan_rows(index, dealt))


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Deals the records of a FASTA file to shards.")
    parser.add_argument("--shards", type=int, required=True, help="at most so many shards")
    parser.add_argument("--plan", type=Path, required=True, help="written: the shard of each record")
    parser.add_argument("--summary", type=Path, required=True, help="written: the size of each shard")
    parser.add_argument("--directory", type=Path, required=True, help="written: the shards, 0.fa, 1.fa and so on")
    parser.add_argument("input", type=Path)
    return parser.parse_args()


def main() -> int:
    arguments = parse_arguments()
    try:
        split(arguments.input, arguments.shards, arguments.plan, arguments.summary, arguments.directory)
    except (OSError, EOFError, zlib.error) as error:
        print(f"Sorry! Failed to deal {arguments.input} to shards: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
