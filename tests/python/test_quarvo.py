"""The Python package: the same repeats as the program, and its errors."""

import dataclasses
import doctest
import importlib.metadata
import math
import os
import random
import subprocess
import sys
import threading
import time
from pathlib import Path

import pytest

import quarvo

tree = Path(__file__).resolve().parents[2]
program = os.environ["QUARVO_PROGRAM"]

microsatellite = "GATTCCGTAG" + "AC" * 12 + "TTGCATCGGA"


def searched_by_program(directory: Path, sequence: str, *words: str) -> list[quarvo.Repeat]:
    (directory / "in.fa").write_text(f">sequence\n{sequence}\n")
    subprocess.run(
        [program, *words, "--outputFormat", "1", "in.fa", "results"], cwd=directory, check=True, capture_output=True
    )
    [found] = quarvo.read(directory / "results").sequences
    return found.repeats


def random_sequence(numbers: random.Random) -> str:
    parts = []
    for _ in range(numbers.randint(1, 12)):
        unit = "".join(numbers.choices("ACGT", k=numbers.randint(1, 12)))
        copies = [symbol if numbers.random() < 0.97 else numbers.choice("ACGTN") for symbol in unit * numbers.randint(1, 15)]
        parts += copies + numbers.choices("ACGTacgtRYn", k=numbers.randint(0, 60))
    return "".join(parts)


def test_what_pip_installs_is_complete() -> None:
    distribution = importlib.metadata.distribution("quarvo")
    assert distribution.files is not None
    installed = {path.name for path in distribution.files if path.suffix != ".pyc"}
    assert {"__init__.py", "_quarvo.pyi", "py.typed", "LICENSE"} <= installed
    assert distribution.metadata["License"] == "MIT"
    assert (tree / "CITATION.cff").read_text().count(f"\nversion: {distribution.version}\n") == 1


def test_positions_are_those_of_python() -> None:
    [repeat] = quarvo.search(microsatellite, minScore=12)
    assert microsatellite[repeat.start : repeat.end] == "AC" * 12
    assert (repeat.unit, repeat.unit_length, repeat.copies, repeat.score) == ("AC", 2, 12.0, 22)
    assert (repeat.perfection, repeat.span, repeat.mismatches, repeat.edits) == (100.0, 24, 0, ())
    assert repeat.sequence == "AC" * 12
    [bare] = quarvo.search(microsatellite, minScore=12, printRepeatSeqMode=0)
    assert bare.sequence is None and bare.alignment is None


def test_edits_flanks_and_alignments_are_told() -> None:
    sequence = "GATTCCGTAT" + "ACG" * 8 + "ATG" + "ACG" * 8 + "TTGCATCGGA"
    [repeat] = quarvo.search(sequence.encode(), minScore=20, printRepeatSeqMode=2, flanking=4)
    assert repeat.edits == (quarvo.Edit(25, "M"),)
    assert (repeat.left_flank, repeat.right_flank) == ("GTAT", "TTGC")
    assert repeat.sequence == sequence[repeat.start : repeat.end]
    assert repeat.alignment is not None
    assert repeat.alignment[0] == repeat.sequence and repeat.alignment[1].count(" ") == 1


@pytest.mark.parametrize("mode", ["exact", "extendExact", "imperfect"])
def test_finds_what_the_program_finds(tmp_path: Path, mode: str) -> None:
    numbers = random.Random(mode)
    found = 0
    for _ in range(30):
        sequence = random_sequence(numbers)
        score = numbers.randint(6, 20)
        longest = numbers.randint(2, 15)
        repeats = quarvo.search(
            sequence, searchMode=mode, minScore=score, maxUnitLen=longest, reportUnit=1, succN=2, preferShorterRepeats=True
        )
        by_program = searched_by_program(
            tmp_path, sequence, "--searchMode", mode, "-s", str(score), "-U", str(longest),
            "--reportUnit", "1", "--succN", "2", "--preferShorterRepeats",
        )  # fmt: skip
        assert repr(repeats) == repr(by_program)
        found += len(repeats)
    assert found > 50


def test_settings_of_one_search_do_not_reach_the_next() -> None:
    by_default = quarvo.search(microsatellite * 3)
    quarvo.search(microsatellite * 3, maxUnitLen=3, minScore=5, preferShorterRepeats=True, NsAsMissense=True)
    assert quarvo.search(microsatellite * 3) == by_default


def test_searches_in_threads_find_what_they_find_alone() -> None:
    numbers = random.Random(7)
    cases = [(random_sequence(numbers) * 20, {"maxUnitLen": 3 + i, "minScore": 8 + i}) for i in range(8)]
    alone = [quarvo.search(sequence, **options) for sequence, options in cases]
    assert sum(map(len, alone)) > 50
    together: list[list[quarvo.Repeat]] = [[] for _ in cases]

    def search(i: int) -> None:
        for _ in range(5):
            together[i] = quarvo.search(cases[i][0], **cases[i][1])

    threads = [threading.Thread(target=search, args=(i,)) for i in range(len(cases))]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert together == alone


def test_other_threads_run_during_a_search() -> None:
    long = "".join(random.Random(1).choices("ACGT", k=400_000))
    counted = 0
    ended = threading.Event()

    def count() -> None:
        nonlocal counted
        while not ended.is_set():
            counted += 1
            time.sleep(0)

    thread = threading.Thread(target=count)
    thread.start()
    # The interpreter changes threads by itself only after this time.
    interval = sys.getswitchinterval()
    sys.setswitchinterval(1000)
    before = counted
    quarvo.search(long, maxUnitLen=50)
    sys.setswitchinterval(interval)
    ended.set()
    thread.join()
    assert counted > before


def test_a_sequence_may_be_empty_and_its_name_any_line() -> None:
    assert quarvo.search("") == []
    assert quarvo.search(microsatellite, name="chr1 of something \u03b1", minScore=12)
    with pytest.raises(ValueError, match="one line"):
        quarvo.search("ACGT", name="a\nb")


@pytest.mark.parametrize(
    ("sequence", "message"),
    [("ACGT ACGT", "position 4 .*' '"), ("ACGT-", "position 4 .*'-'"), ("AC*", "position 2"), ("ACGJ", "'J'"), ("\u00e9", "0")],
)
def test_other_symbols_are_refused(sequence: str, message: str) -> None:
    with pytest.raises(ValueError, match=message):
        quarvo.search(sequence)


def test_values_are_checked_as_by_the_program() -> None:
    with pytest.raises(ValueError, match="the minimum score or the minimum length must be larger"):
        quarvo.search("ACGT", minScore=0, minScore_a=0, minScore_b=0, minLength=0, minLength_a=0, minLength_b=0)
    with pytest.raises(ValueError, match="maximum unit length must be greater"):
        quarvo.search("ACGT", minUnitLen=5, maxUnitLen=4)
    with pytest.raises(ValueError, match="mismatch"):
        quarvo.search("ACGT", mismatchScore=1)
    with pytest.raises(ValueError, match="exact, extendExact, imperfect"):
        quarvo.search("ACGT", searchMode="fuzzy")
    with pytest.raises(TypeError, match="maxUnitLen takes .*'six'"):
        quarvo.search("ACGT", maxUnitLen="six")


@pytest.mark.parametrize("name", ["outputFormat", "maskX", "firstSeq", "iofiles", "no_such_option", "U"])
def test_other_options_are_refused(name: str) -> None:
    with pytest.raises(TypeError, match=name):
        quarvo.search("ACGT", **{name: 1})


def test_options_are_told_with_their_defaults() -> None:
    options = {option.name: option for option in quarvo.options()}
    assert options["maxUnitLen"].short_name == "U"
    assert options["searchMode"].values == ("exact", "extendExact", "imperfect")
    assert options["searchMode"].default == "imperfect"
    assert options["preferShorterRepeats"].default is False
    assert options["mismatchScore"].help
    defaults = {name: option.default for name, option in options.items()}
    assert quarvo.search(microsatellite, **defaults) == quarvo.search(microsatellite)


def test_results_of_every_format_are_read(tmp_path: Path) -> None:
    (tmp_path / "in.fa").write_text(f">one first\n{microsatellite}\n>two\nACGT\n")
    for form in ("0", "1", "3"):
        subprocess.run(
            [program, "-s", "12", "--outputFormat", form, "in.fa", form], cwd=tmp_path, check=True, capture_output=True
        )
        results = quarvo.read(tmp_path / form)
        assert results.version == quarvo.__version__
        assert results.sequences[0].name == "one"
        [repeat] = results.sequences[0].repeats
        assert (repeat.start, repeat.end, repeat.unit) == (10, 34, "AC")
        assert (repeat.edits is None) == (form != "1")
    assert [len(sequence.repeats) for sequence in quarvo.read(tmp_path / "0").sequences] == [1, 0]
    assert quarvo.read(tmp_path / "1").sequences[0].header == "one first"


def test_what_is_no_results_file_is_refused(tmp_path: Path) -> None:
    with pytest.raises(OSError, match="missing.results"):
        quarvo.read(tmp_path / "missing.results")
    (tmp_path / "in.fa").write_text(f">one\n{microsatellite}\n")
    with pytest.raises(ValueError, match="in.fa"):
        quarvo.read(tmp_path / "in.fa")
    subprocess.run([program, "in.fa", "results"], cwd=tmp_path, check=True, capture_output=True)
    lines = (tmp_path / "results").read_text().splitlines(keepends=True)
    (tmp_path / "cut").write_text("".join(lines[:-1]))
    with pytest.raises(ValueError, match="cut"):
        quarvo.read(tmp_path / "cut")


def test_repeats_are_rows_for_pandas() -> None:
    pandas = pytest.importorskip("pandas")
    table = pandas.DataFrame(quarvo.search(microsatellite, minScore=12))
    assert list(table.columns) == [field.name for field in dataclasses.fields(quarvo.Repeat)]
    assert table["unit"].tolist() == ["AC"]


def test_perfection_of_nothing_but_ns_is_no_number() -> None:
    repeats = quarvo.search("ACGT" + "N" * 40 + "ACGT", succN=1000, NPerfectionMode=1, minScore=1, minLength=8)
    assert all(math.isnan(repeat.perfection) or repeat.perfection <= 100 for repeat in repeats)


def test_examples_of_the_documents_hold(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    pytest.importorskip("pandas")
    text = (tree / "docs/python.md").read_text()
    examples = "".join("\n" if line.startswith("```") else line for line in text.splitlines(keepends=True))
    test = doctest.DocTestParser().get_doctest(examples, {}, "python.md", "docs/python.md", 0)
    (tmp_path / "examples").symlink_to(tree / "examples")
    monkeypatch.chdir(tmp_path)
    monkeypatch.setenv("PATH", str(Path(program).parent), prepend=os.pathsep)
    outcome = doctest.DocTestRunner(optionflags=doctest.NORMALIZE_WHITESPACE).run(test)
    assert outcome.attempted > 10 and outcome.failed == 0
