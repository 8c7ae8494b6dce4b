"""FASTA files for the tests, the same in every run."""

from __future__ import annotations

import random
from functools import cache

# Units that repeat often enough, and with enough faults, to be found by every search mode.
UNITS = ("A", "CA", "GAA", "ACGT", "TTAGGG", "ACCGTCT")


def sequence(size: int, source: random.Random) -> str:
    """Random symbols with repeats among them, some of them broken by a symbol or by N."""
    parts: list[str] = []
    length = 0
    while length < size:
        part = "".join(source.choices("ACGT", k=source.randrange(5, 60)))
        part += source.choice(UNITS) * source.randrange(1, 14) + source.choice(("", "N", "NNNN", "T"))
        parts.append(part)
        length += len(part)
    return "".join(parts)[:size]


def fasta(sizes: list[int], seed: int = 1, width: int = 70) -> bytes:
    """One record for each size."""
    source = random.Random(seed)
    lines = []
    for number, size in enumerate(sizes):
        symbols = sequence(size, source)
        lines.append(f">record{number} of {size} symbols")
        lines += (symbols[i : i + width] for i in range(0, size, width))
    return ("\n".join(lines) + "\n").encode()


@cache
def many_records(count: int = 3000) -> bytes:
    """Thousands of records of 0 to 400 symbols, many of them without any repeat."""
    source = random.Random(2)
    return fasta([source.choice((0, 10, 30, 100, 400)) for _ in range(count)], seed=3)


@cache
def large_records() -> bytes:
    """A few records that differ much in size, an empty one among them."""
    return fasta([200_000, 1_000, 0, 50_000, 120_000, 7, 90_000], seed=4)


REPEAT = b"ACGTTGCACACACACACACACAGTTC"
LONG_NAME = b"n" * 1_200_000

# What a FASTA file can look like, each a thing that parsers tend to change or to stumble on.
ODD_LAYOUTS: dict[str, bytes] = {
    "comments in front": b"# one > two\n#\n \t\v\f\n  >a\n%b\n>b\n%b\n" % (REPEAT, REPEAT),
    "CR LF": b"#x\r\n>a d\r\n%b\r\n>b\r\n\r\n>c\r\n%b\r\n" % (REPEAT, REPEAT),
    "lone CR": b"#x\r>a d\r%b\r>b\r\r>c\r%b\r" % (REPEAT, REPEAT),
    "mixed line ends": b">a\r%b\r\n>b\n%b\r\r\n\n>c\r%b" % (REPEAT, REPEAT, REPEAT),
    "lower case, gaps and blanks": b">a\nacgt-ACAC acacacac*\nACACU\n\n>b\n  RYKM?xnCACACACACACACA\n>c\n%b\n" % REPEAT,
    "headers of odd bytes": b">a\tb c\td\n%b\n>\xff\xfe\xc3 \xe4\n%b\n>p%%s%%n%%\n%b\n>x\0y\n%b\n>\x0b\x0c z\n%b\n"
    % (REPEAT, REPEAT, REPEAT, REPEAT, REPEAT),
    "headers like results": b">#>1/a\n%b\n># Full sequence name:\n%b\n>2/\n%b\n>>3/x\n%b\n>## Finished successfully. ##\n%b\n"
    % (REPEAT, REPEAT, REPEAT, REPEAT, REPEAT),
    "headers of a megabyte": b">%b\n%b\n>%b b\n%b\n>c %b\n%b\n"
    % (LONG_NAME, REPEAT, LONG_NAME, REPEAT, LONG_NAME, REPEAT),
    "a long header that ends like a line of results": b"".join(
        b">%b# Full sequence name:\n%b\n" % (b"n" * size, REPEAT) for size in range(65_530, 65_537)
    ),
    "the same name": b">a\n%b\n" % REPEAT * 40 + b">a\nACGT\n" * 40 + b">a 2\n%b\n" % REPEAT * 40,
    "no names": b">\n%b\n" % REPEAT * 20 + b"> d\n%b\n" % REPEAT * 20,
    "no symbols": b">a\n>b\n\n>c\n-\n>d\n>e",
    "no repeats": b">a\nACGT\n>b\nTTGA\n>c\nACTG\n",
    "no line end at the end": b">a\n%b\n>b\n%b" % (REPEAT, REPEAT),
    "a bare header at the end": b">a x\n%b\n>b y\n%b\n>" % (REPEAT, REPEAT),
    "a bare header behind a bare line": b">a x\n%b\n>\n>" % REPEAT,
    "a bare header alone": b">",
    "one record": b">a\n%b\n" % REPEAT,
    "runs of N": b">a\n%b%b%b\n>b\n%b\n" % (REPEAT, b"N" * 5000, REPEAT, b"N" * 300),
    "a line of a hundred thousand symbols": b">a\n%b\n>b\n%b\n" % (b"CA" * 50_000, b"G" * 70_000),
}


def odd_genome(seed: int) -> bytes:
    """A few records with names and line ends that are apt to be mistaken for something else."""
    source = random.Random(seed)
    line_end = source.choice((b"\n", b"\r\n", b"\r"))
    text = b"# a\xff>" + line_end if seed % 3 == 0 else b""
    for _ in range(source.randrange(1, 12)):
        name = bytes(source.choices(b'a1/# >|"\t\0\xff\v', k=source.randrange(5)))
        text += b">" + name + (source.choice((b"\n", b"\r\n", b"\r")) if seed % 2 else line_end)
        for _ in range(source.randrange(4)):
            unit = bytes(source.choices(b"ACGT", k=source.randrange(1, 6)))
            text += unit * source.randrange(1, 12) + bytes(source.choices(b"acgtNn-* RYX", k=7)) + line_end
    return text + b">" if seed % 5 == 0 else text
