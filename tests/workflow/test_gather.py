"""What gather.py refuses, and that it leaves no file behind when it fails."""

from __future__ import annotations

import resource
import subprocess
import sys
from pathlib import Path

import gather
import genomes
import pytest
import shards

PLAN = "# sha256 ab 1 2 3 4\nshard\tbytes\tlines\trecords\n0\t9\t2\t1\n1\t9\t2\t1\n"


def table(*lines: str, head: str = "# version 1") -> str:
    return (
        f"{head}\n# Input file name:                         \trecords.fa\n# Output file name:                        "
        "\tresults\n" + "".join(f"{line}\n" for line in lines) + "## Finished successfully. ##\n"
    )


def gather_texts(directory: Path, layout: str, *texts: str) -> bytes:
    (directory / "plan.tsv").write_text(PLAN)
    for shard, text in enumerate(texts):
        (directory / f"results-{shard}").write_text(text)
    return shards.gather_files(directory, "results", layout, len(texts), directory / "out")


def test_lines_come_in_the_order_of_the_plan_without_tags(tmp_path: Path) -> None:
    whole = gather_texts(tmp_path, "3", table("1/x\t5", "1/x\t9"), table("2/2/x\t5"))
    assert whole == (
        b"# version 1\n# Input file name:                         \tgenome.fa\n"
        b"# Output file name:                        \tresults.txt\nx\t5\nx\t9\n2/x\t5\n## Finished successfully. ##\n"
    )


@pytest.mark.parametrize(
    ("layout", "texts", "message"),
    [
        ("3", (table("1/x"), table("2/x", head="# version 2")), "not searched by the same version"),
        ("3", (table("1/x"), table("3/x")), "results-1 does not end after its last record"),
        ("3", (table("1/x"), table("2/x").replace("##", "")), "results-1 does not end after its last record"),
        ("3", (table("1/x"), table("2/x") + "more\n"), "results-1 does not end after its last record"),
        ("3", (table("1/x"), table("2/x")[:-30]), "results-1 ends within a line"),
        ("1", (table(">1/x"), table()), "results-1 does not hold record 2 of the plan"),
        ("1", (table(">1/x", ">1/y"), table(">2/x")), "results-0 does not hold record 1 of the plan"),
        ("3", (table("1/x").replace("Input", "Other"), table("2/x")), "not searched by the same version"),
        ("3", (table("1/x").replace("recor", "r"), table("2/x").replace("recor", "r")), "0 lines for the Input file"),
    ],
)
def test_shards_that_do_not_fit_are_refused(tmp_path: Path, layout: str, texts: tuple[str, ...], message: str) -> None:
    with pytest.raises(gather.GatherError, match=message):
        gather_texts(tmp_path, layout, *texts)
    assert not list(tmp_path.glob("out*"))


def test_a_full_disk_leaves_no_results(tmp_path: Path, program: Path) -> None:
    (tmp_path / "genome.fa").write_bytes(genomes.many_records())
    shards.search_in_shards(program, tmp_path / "genome.fa", tmp_path, [], 2)
    (tmp_path / "results.txt").unlink()
    command = "gather.py --layout 1 --plan plan.tsv --output out results-0 results-1".split()
    done = subprocess.run(
        [str(shards.SCRIPTS / command[0]), *command[1:]],
        cwd=tmp_path,
        preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (100_000, 100_000)),
        capture_output=True,
        text=True,
        check=False,
    )
    assert done.returncode == 1
    assert f"Sorry! Failed to write out: " in done.stderr
    assert not list(tmp_path.glob("out*"))


def test_memory_does_not_grow_with_the_results(tmp_path: Path) -> None:
    """Lines of 30 megabytes are put together within 20 megabytes more than it takes to start."""
    line = "A" * 30_000_000
    (tmp_path / "plan.tsv").write_text(PLAN)
    for shard in range(2):
        (tmp_path / f"masked-{shard}").write_text(f">{shard + 1}/x\n{line}\n")
    code = (
        "import resource, sys; from pathlib import Path; import gather\n"
        "peak = lambda: resource.getrusage(resource.RUSAGE_SELF).ru_maxrss\n"
        "before = peak(); place = Path(sys.argv[1]); paths = [place / 'masked-0', place / 'masked-1']\n"
        "gather.gather(place / 'plan.tsv', gather.LAYOUTS['masked'], (b'', b''), paths, place / 'out')\n"
        "print(peak() - before)"
    )
    done = subprocess.run(
        [sys.executable, "-c", code, tmp_path], cwd=shards.SCRIPTS, capture_output=True, text=True, check=True
    )
    assert (tmp_path / "out").read_text() == f">x\n{line}\n" * 2
    assert int(done.stdout) < 20_000
