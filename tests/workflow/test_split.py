"""Where split.py finds records, and how it deals them."""

from __future__ import annotations

import gzip
import hashlib
import itertools
import os
from pathlib import Path

import fingerprint
import genomes
import pytest
import split
from shard_plan import Row, input_line, read_fingerprint, read_plan


def literal_records(text: bytes) -> tuple[list[int], list[int], bool]:
    """Starts and headers by reading as the program does: one byte after the other, with one notion of a line end."""
    position = 0
    while position < len(text) and text[position : position + 1] in (b" ", b"\t", b"\n", b"\r", b"\v", b"\f", b"#"):
        if text[position : position + 1] == b"#":
            while position < len(text) and text[position : position + 1] not in (b"\n", b"\r"):
                position += 1
        position += 1
    begins_well = text[position : position + 1] == b">"
    headers = [position if begins_well else -1]
    for i in range(max(1, position + 1), len(text)):
        if text[i : i + 1] == b">" and text[i - 1 : i] in (b"\n", b"\r"):
            headers.append(i)
    bare = len(headers) > 1 and headers[-1] == len(text) - 1
    if bare:
        headers.pop()
    return [0] + headers[1:] + [len(text)], headers, bare


def literal_lines(text: bytes) -> int:
    return text.replace(b"\r\n", b"\n").replace(b"\r", b"\n").count(b"\n")


def index_of(text: bytes, block: int) -> split.Index:
    indexer = split.Indexer()
    for begin in range(0, len(text), block):
        indexer.read(text[begin : begin + block])
    return indexer.finish()


def check_index(text: bytes, block: int) -> None:
    index = index_of(text, block)
    starts, headers, bare = literal_records(text)
    assert (list(index.starts), list(index.headers), index.ends_with_bare_header) == (starts, headers, bare), text
    assert [literal_lines(text[:start]) for start in starts] == list(index.lines), text


@pytest.mark.parametrize("block", [1, 2, 3, 100])
def test_every_short_file_in_blocks_of_every_kind(block: int) -> None:
    for size in range(6):
        for symbols in itertools.product(b">#\r\n A", repeat=size):
            check_index(bytes(symbols), block)


@pytest.mark.parametrize("name", genomes.ODD_LAYOUTS)
def test_odd_files(name: str) -> None:
    check_index(genomes.ODD_LAYOUTS[name][:70_000], 1000)


def test_the_largest_record_goes_first_to_the_emptiest_shard() -> None:
    assert list(split.deal([3, 9, 4, 4, 5], 2)) == [1, 0, 1, 0, 1]
    assert list(split.deal([5, 5, 5], 2)) == [0, 1, 0]
    assert list(split.deal([1, 2], 16)) == [1, 0]
    assert list(split.deal([0], 3)) == [0]


def test_shards_are_as_even_as_the_largest_record_lets_them() -> None:
    sizes = [len(genomes.REPEAT) * (i % 37 + 1) for i in range(1000)]
    loads = [0] * 16
    for size, shard in zip(sizes, split.deal(sizes, 16)):
        loads[shard] += size
    assert max(loads) - min(loads) <= max(sizes)


def test_shards_hold_the_bytes_of_the_records_in_the_order_of_the_input(tmp_path: Path) -> None:
    genome = tmp_path / "genome.fa"
    genome.write_bytes(b"#c\r\n >a\tx\r\nACGTACGT\r\n>b\nac gt\n>c\n>")
    split.split(genome, 2, tmp_path / "plan", tmp_path / "summary", tmp_path / "shards")
    assert (tmp_path / "shards/0.fa").read_bytes() == b"#c\r\n >1/a\tx\r\nACGTACGT\r\n"
    assert (tmp_path / "shards/1.fa").read_bytes() == b">2/b\nac gt\n>3/c\n>"
    assert list(read_plan(tmp_path / "plan")) == [Row(0, 21, 3, 1), Row(1, 9, 2, 1), Row(1, 4, 1, 2)]
    assert (tmp_path / "summary").read_text() == "shard\trecords\tbytes\tlargest_record\n0\t1\t21\t21\n1\t2\t13\t9\n"


def test_compressed_files_are_told_by_their_bytes(tmp_path: Path) -> None:
    text = genomes.many_records(50)
    (tmp_path / "plain.gz").write_bytes(text)
    half = len(text) // 2
    (tmp_path / "packed.fa").write_bytes(gzip.compress(text[:half]) + gzip.compress(text[half:]))
    for name in ("plain.gz", "packed.fa"):
        directory = tmp_path / f"{name}.shards"
        split.split(tmp_path / name, 3, tmp_path / f"{name}.plan", tmp_path / "summary", directory)
    for shard in range(3):
        assert (tmp_path / f"plain.gz.shards/{shard}.fa").read_bytes() == (
            tmp_path / f"packed.fa.shards/{shard}.fa"
        ).read_bytes()


def test_lines_of_a_shard_are_found_in_the_input() -> None:
    rows = [Row(0, 9, 3, 1), Row(1, 9, 2, 1), Row(0, 9, 4, 1)]
    assert [input_line(rows, 0, line) for line in (1, 3, 4, 7, 8)] == [1, 3, 6, 9, 10]
    assert [input_line(rows, 1, line) for line in (1, 2, 3)] == [4, 5, 6]


def deal_to_two(directory: Path) -> Path:
    """The plan."""
    plan = directory / "plan"
    split.split(directory / "genome.fa", 2, plan, directory / "summary", directory / "shards")
    return plan


def test_the_plan_holds_the_checksum_of_the_file_as_it_lies_there(tmp_path: Path) -> None:
    packed = gzip.compress(genomes.many_records(5))
    (tmp_path / "genome.fa").write_bytes(packed)
    recorded = read_fingerprint(deal_to_two(tmp_path))
    assert recorded is not None
    assert recorded.sha256 == hashlib.sha256(packed).hexdigest()


def test_a_file_is_read_again_only_when_its_state_is_another(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    genome = tmp_path / "genome.fa"
    genome.write_bytes(b">a\nACGT\n")
    recorded = read_fingerprint(deal_to_two(tmp_path))
    state = genome.stat()
    with monkeypatch.context() as patched:
        patched.setattr(fingerprint, "checksum", lambda path: pytest.fail(f"{path} was read"))
        assert recorded is not None
        assert fingerprint.current_checksum(genome, recorded) == recorded.sha256

    genome.write_bytes(b">a\nACGA\n")
    os.utime(genome, ns=(state.st_atime_ns, state.st_mtime_ns))
    assert fingerprint.current_checksum(genome, recorded) == hashlib.sha256(b">a\nACGA\n").hexdigest()
    assert fingerprint.current_checksum(genome, None) == hashlib.sha256(b">a\nACGA\n").hexdigest()


def test_a_file_that_changes_while_it_is_dealt_is_refused(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    genome = tmp_path / "genome.fa"
    genome.write_bytes(b">a\nACGT\n")
    make_index = split.make_index

    def grow_behind(path: Path) -> split.Index:
        index = make_index(path)
        path.write_bytes(b">a\nACGT\n>b\nACGT\n")
        return index

    monkeypatch.setattr(split, "make_index", grow_behind)
    with pytest.raises(OSError, match="it was changed while it was read"):
        deal_to_two(tmp_path)
    assert read_fingerprint(tmp_path / "plan") is None


@pytest.mark.parametrize("text", ["", "shard\tbytes\n", "# sha256 \n", "# sha256 ab 1 2\n", "# sha256 ab 1 2 3 x\n", "\xff"])
def test_a_plan_without_a_fingerprint_has_none(tmp_path: Path, text: str) -> None:
    (tmp_path / "plan").write_text(text, encoding="latin-1")
    assert read_fingerprint(tmp_path / "plan") is None


def test_a_plan_that_is_none_is_refused(tmp_path: Path) -> None:
    (tmp_path / "plan").write_text("1\t2\t3\t4\n")
    with pytest.raises(ValueError, match="is not a plan of shards"):
        list(read_plan(tmp_path / "plan"))
