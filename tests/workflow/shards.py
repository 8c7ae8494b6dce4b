"""The two ways to the same results: one run over the whole file, and the scripts of the workflow over its shards."""

from __future__ import annotations

import subprocess
from dataclasses import dataclass
from pathlib import Path

import gather
import split

SCRIPTS = Path(split.__file__).parent


@dataclass
class Written:
    """What a search of `genome.fa` left in its directory; no masked file is None."""

    results: bytes
    masked: bytes | None


def read_if_there(path: Path) -> bytes | None:
    return path.read_bytes() if path.exists() else None


def search_whole(program: Path, directory: Path, options: list[str], output: str = "results.txt") -> Written:
    command = [str(program), *options, "genome.fa", output]
    subprocess.run(command, cwd=directory, check=True, stderr=subprocess.DEVNULL)
    return Written((directory / output).read_bytes(), read_if_there(directory / "genome.fa.masked"))


def search_shard(program: Path, directory: Path, shard: int, options: list[str], threads: int = 1) -> int:
    """The exit status; the log is `directory`/shard.log."""
    masked = f"masked-{shard}" if "--maskX" in options else "-"
    searcher = program if threads == 1 else program.with_name("quarvo-scan")
    command = [str(SCRIPTS / "search-shard"), str(searcher), str(threads), "plan.tsv", f"shards/{shard}.fa"]
    command += [f"results-{shard}", masked, f"{shard}.log", *options]
    return subprocess.run(command, cwd=directory, check=False).returncode


def split_genome(genome: Path, directory: Path, shards: int) -> int:
    """The number of shards made."""
    split.split(genome, shards, directory / "plan.tsv", directory / "shards.tsv", directory / "shards")
    return len(list((directory / "shards").iterdir()))


def gather_files(directory: Path, kind: str, layout: str, count: int, output: Path) -> bytes:
    paths = [directory / f"{kind}-{shard}" for shard in range(count)]
    names = b"genome.fa", b"results.txt"
    gather.gather(directory / "plan.tsv", gather.LAYOUTS[layout], names, paths, output)
    return output.read_bytes()


def output_format(options: list[str]) -> str:
    return options[options.index("--outputFormat") + 1] if "--outputFormat" in options else "1"


def search_in_shards(
    program: Path, genome: Path, directory: Path, options: list[str], shards: int, threads: int = 1
) -> Written:
    count = split_genome(genome, directory, shards)
    for shard in range(count):
        assert search_shard(program, directory, shard, options, threads) == 0
    results = gather_files(directory, "results", output_format(options), count, directory / "results.txt")
    if "--maskX" not in options:
        return Written(results, None)
    return Written(results, gather_files(directory, "masked", "masked", count, directory / "genome.masked"))
