"""Shards searched and gathered give the bytes of one run, whatever the file and the output look like."""

from __future__ import annotations

import itertools
import random
from pathlib import Path

import genomes
import pytest
import shards

# Every output format with every kind of text that it can hold, and all formats with flanks and masked.
OUTPUTS = [
    *(f"--outputFormat {form} --printRepeatSeqMode {mode}" for form, mode in itertools.product("01", "012")),
    *(f"--outputFormat {form}{comment}" for form in "23" for comment in ("", " --sequenceInfoAsComment")),
    "--outputFormat 4",
]
WITH_FLANKS = [f"--outputFormat {form} --flanking 7 --maskX" for form in range(5)]

FILES = {"many": genomes.many_records, "large": genomes.large_records}


def compare(
    program: Path, directory: Path, text: bytes, options: list[str], counts: tuple[int, ...], threads: int = 1
) -> None:
    genome = directory / "genome.fa"
    genome.write_bytes(text)
    whole = shards.search_whole(program, directory, options)
    for count in counts:
        place = directory / str(count)
        place.mkdir()
        assert shards.search_in_shards(program, genome, place, options, count, threads) == whole, (options, count)


@pytest.mark.parametrize("options", OUTPUTS + WITH_FLANKS)
@pytest.mark.parametrize("name", FILES)
def test_every_output(program: Path, tmp_path: Path, name: str, options: str) -> None:
    compare(program, tmp_path, FILES[name](), options.split(), (1, 3, 16))


@pytest.mark.parametrize("mode", ["exact", "extendExact"])
def test_other_search_modes(program: Path, tmp_path: Path, mode: str) -> None:
    options = ["--searchMode", mode, "--NsAsMissense", "--dontRemoveMostlyOverlapping", "--maskX"]
    compare(program, tmp_path, genomes.many_records(), options, (3,))


@pytest.mark.parametrize("name", genomes.ODD_LAYOUTS)
def test_odd_files(program: Path, tmp_path: Path, name: str) -> None:
    for number, options in enumerate(["--outputFormat 0 --maskX", *OUTPUTS[6:]]):
        directory = tmp_path / str(number)
        directory.mkdir()
        compare(program, directory, genomes.ODD_LAYOUTS[name], options.split(), (1, 3))


@pytest.mark.parametrize("seed", range(30))
def test_random_files_and_options(program: Path, tmp_path: Path, seed: int) -> None:
    threads = 1 + seed % 3
    source = random.Random(seed)
    switches = ("--sequenceInfoAsComment", "--maskX", "--NsAsMissense", "--preferShorterRepeats")
    options = source.choice(OUTPUTS + WITH_FLANKS).split() + ["--minScore", source.choice("36")]
    options += [switch for switch in switches if switch not in options and source.random() < 0.4]
    compare(program, tmp_path, genomes.odd_genome(seed), options, (source.choice((1, 2, 3, 16)),), threads)
