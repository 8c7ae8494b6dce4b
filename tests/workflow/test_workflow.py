"""The workflow as users run it, by snakemake on this machine: the bytes of one run, and what becomes of failures."""

from __future__ import annotations

import gzip
import json
import os
import signal
import subprocess
from pathlib import Path

import genomes
import pytest

ROOT = Path(__file__).resolve().parents[2]
CONVERSIONS = {
    "bed": "bed",
    "gff3": "gff3",
    "json": "jsonl",
    "tsv": "summary.tsv",
    "multiqc": "quarvo_mqc.json",
}
SUFFIXES = ("txt", "txt", "gff", "tsv", "fa")


class Project:
    """A directory in which a user keeps genomes and runs the workflow."""

    def __init__(self, directory: Path, program: Path) -> None:
        self.directory = directory
        self.program = program
        self.converter = program.with_name("quarvo-convert")
        self.scanner = program.with_name("quarvo-scan")
        self.command: list[str | Path] = ["snakemake", "--snakefile", ROOT / "workflow/Snakefile"]
        self.command += ["--directory", directory]
        (directory / "config").mkdir(parents=True)
        (directory / "genomes").mkdir()

    def configure(self, **config: object) -> None:
        """YAML is a superset of JSON."""
        text = json.dumps({"program": str(self.program), "converter": str(self.converter), "scanner": str(self.scanner), **config})
        (self.directory / "config/config.yaml").write_text(text)

    def snakemake(self, *arguments: str) -> subprocess.CompletedProcess[str]:
        return subprocess.run(
            [*self.command, "--profile", ROOT / "profiles/local", "--cores", "2", *arguments],
            capture_output=True,
            text=True,
            check=False,
            env={**os.environ, "XDG_CACHE_HOME": str(self.directory / "cache")},
        )

    def run(self) -> str:
        """What a run that must succeed says."""
        done = self.snakemake()
        assert done.returncode == 0, done.stderr
        return done.stderr

    def fail(self) -> str:
        """What a run that must fail says."""
        done = self.snakemake()
        assert done.returncode != 0
        return done.stderr

    def files(self, place: str) -> list[str]:
        return sorted(path.name for path in self.directory.glob(f"{place}/*"))

    def read(self, path: str) -> bytes:
        return (self.directory / path).read_bytes()

    def one_run(self, genome: str, results: str, options: list[str]) -> bytes:
        """The results of one run in a directory where the files have the same names."""
        place = self.directory / "one"
        (place / "results").mkdir(parents=True, exist_ok=True)
        if not (place / "genomes").exists():
            (place / "genomes").symlink_to(self.directory / "genomes")
        subprocess.run([self.program, *options, genome, results], cwd=place, check=True, stderr=subprocess.DEVNULL)
        return (place / results).read_bytes()

    def convert(self, conversion: str, results: str) -> bytes:
        command = [str(self.converter), "-t", conversion, results]
        return subprocess.run(command, cwd=self.directory, check=True, capture_output=True).stdout


@pytest.fixture
def project(tmp_path: Path, program: Path) -> Project:
    return Project(tmp_path / "a project", program)


def replace_program(project: Project, text: str) -> Path:
    """A program in front of the real one: it notes each call, then runs the text with the real one as $quarvo."""
    path = project.directory / "program"
    calls = project.directory / "calls"
    shard = '"$(basename "$PWD" .part)"'
    path.write_text(f"#!/bin/bash\nquarvo='{project.program}'\nshard={shard}\necho $shard >>'{calls}'\n{text}\n")
    path.chmod(0o755)
    return path


def calls(project: Project) -> list[str]:
    """The shards for which the program was called since this was asked last, sorted."""
    path = project.directory / "calls"
    lines = sorted(path.read_text().split()) if path.exists() else []
    path.unlink(missing_ok=True)
    return lines


@pytest.mark.parametrize(("form", "shards", "threads"), [(0, 3, 1), (1, 16, 2), (2, 1, 3), (3, 3, 1), (4, 16, 1)])
def test_same_bytes_as_one_run(project: Project, form: int, shards: int, threads: int) -> None:
    names = ("genomes/many.fa", "./genomes/large genome.fasta.gz")
    project.directory.joinpath(names[0]).write_bytes(genomes.many_records())
    project.directory.joinpath(names[1]).write_bytes(gzip.compress(genomes.large_records()))
    options = {"outputFormat": form, "maxUnitLen": 8, "flanking": 5, "maskX": True, "minScore_b": 1.5}
    conversions = {} if form in (2, 4) else CONVERSIONS
    project.configure(genomes=names, shards=shards, threads=threads, options=options, convert=list(conversions))
    project.run()

    words = f"--outputFormat {form} --maxUnitLen 8 --flanking 5 --maskX --minScore_b 1.5".split()
    for path, name in zip(names, ("many", "large genome")):
        results = f"results/{name}.{SUFFIXES[form]}"
        assert project.read(results) == project.one_run(path, results, words)
        assert project.read(f"results/{name}.masked") == project.read(f"{path}.masked")
        for conversion, suffix in conversions.items():
            assert project.read(f"results/{name}.{suffix}") == project.convert(conversion, f"one/{results}")
    suffixes = (SUFFIXES[form], "masked", *conversions.values())
    assert project.files("results") == sorted(
        f"{name}.{suffix}" for name in ("many", "large genome") for suffix in suffixes
    )


def test_a_complete_project_is_left_alone_until_an_option_changes(project: Project) -> None:
    project.directory.joinpath("genomes/g.fa").write_bytes(genomes.many_records(30))
    project.configure(genomes=["genomes/g.fa"], shards=2, options={"maxUnitLen": 10})
    project.run()
    assert "Nothing to be done" in project.run()
    project.configure(genomes=["genomes/g.fa"], shards=2, options={"maxUnitLen": 3})
    project.run()
    assert project.read("results/g.txt") == project.one_run("genomes/g.fa", "results/g.txt", ["--maxUnitLen", "3"])


def test_the_content_of_a_genome_decides_and_not_its_time(project: Project) -> None:
    genome = project.directory / "genomes/g.fa"
    text = genomes.large_records()
    genome.write_bytes(text)
    project.configure(genomes=["genomes/g.fa"], shards=2)
    project.run()
    then = genome.stat().st_mtime_ns

    genome.touch()
    assert "Nothing to be done" in project.run()
    for time in (then, then - 10**15):
        text = text.replace(b"CACACACA", b"CTCTCTCT", 7)
        genome.write_bytes(text)
        os.utime(genome, ns=(time, time))
        project.run()
        assert project.read("results/g.txt") == project.one_run("genomes/g.fa", "results/g.txt", [])
        assert "Nothing to be done" in project.run()


# Quotes, what shells and options begin with, and what shells and regular expressions read as patterns.
@pytest.mark.parametrize("name", ["-l", "--help", "it's", 'a "b" $c;&', "[ab]*+"])
def test_names_are_taken_as_they_are(project: Project, name: str) -> None:
    project.directory.joinpath(f"{name}.fa").write_bytes(genomes.many_records(5))
    one = project.directory / "one"
    (one / "results").mkdir(parents=True)
    (one / f"{name}.fa").symlink_to(project.directory / f"{name}.fa")
    project.configure(genomes=[f"{name}.fa"], shards=2, options={"maskX": True}, convert=["bed"])
    project.run()
    assert project.files("results") == sorted(f"{name}.{suffix}" for suffix in ("bed", "masked", "txt"))
    words = ["--maskX", "--", f"{name}.fa", f"results/{name}.txt"]
    subprocess.run([project.program, *words], cwd=one, check=True, stderr=subprocess.DEVNULL)
    assert project.read(f"results/{name}.txt") == (one / f"results/{name}.txt").read_bytes()
    assert project.read(f"results/{name}.masked") == (one / f"{name}.fa.masked").read_bytes()


def test_a_bad_record_fails_the_workflow_with_its_line(project: Project) -> None:
    text = genomes.fasta([300, 200, 100]) + b">bad\nACGT\nAC9T\n" + genomes.fasta([250])
    project.directory.joinpath("genomes/g.fa").write_bytes(text)
    project.configure(genomes=["genomes/g.fa"], shards=2)
    said = project.fail()
    line = text[: text.index(b"9")].count(b"\n") + 1
    log = project.read("logs/g/search-0.log").decode()
    assert "An error occurred while reading the input file." in log
    assert "ended with status 231" in log
    assert f"In the input this is line {line}." in log
    assert log in said
    assert project.files("results") == []

    project.directory.joinpath("genomes/g.fa").write_bytes(text.replace(b"9", b"G"))
    project.run()


@pytest.mark.parametrize("text", [b"", b"\n \n", b"no FASTA\n>a\nACGT\n"])
def test_what_is_no_fasta_is_refused_by_the_program(project: Project, text: bytes) -> None:
    project.directory.joinpath("genomes/g.fa").write_bytes(text)
    project.configure(genomes=["genomes/g.fa"])
    assert "It might not be a valid fasta file." in project.fail()
    assert project.files("results") == []


def test_a_damaged_compressed_file_is_told(project: Project) -> None:
    project.directory.joinpath("genomes/g.fa.gz").write_bytes(gzip.compress(genomes.many_records(50))[:-20])
    project.configure(genomes=["genomes/g.fa.gz"])
    assert "Sorry! Failed to deal genomes/g.fa.gz to shards: " in project.fail()
    assert project.files("results") == []


def test_after_a_killed_job_only_that_shard_is_searched_again(project: Project) -> None:
    project.directory.joinpath("genomes/g.fa").write_bytes(genomes.many_records(100))
    mark = project.directory / "killed"
    program = replace_program(
        project,
        f"[ $shard != 1 ] || [ -e '{mark}' ] || {{ touch '{mark}'; $quarvo \"$@\"; kill -KILL $$; }}\n"
        'exec $quarvo "$@"',
    )
    project.configure(genomes=["genomes/g.fa"], shards=3, program=str(program), options={"maskX": True})
    said = project.snakemake("--keep-going").stderr
    assert "ended with status 137" in said
    assert (calls(project), project.files("results")) == (["0", "1", "2"], [])
    assert (project.files("work/g/results"), project.files("work/g/masked")) == (["0", "2"], ["0", "2"])

    project.run()
    assert calls(project) == ["1"]
    assert project.read("results/g.txt") == project.one_run("genomes/g.fa", "results/g.txt", ["--maskX"])


def test_a_full_disk_fails_the_workflow(project: Project) -> None:
    project.directory.joinpath("genomes/g.fa").write_bytes(genomes.many_records(300))
    program = replace_program(project, '[ $shard != 1 ] || ulimit -f 8\nexec $quarvo "$@"')
    project.configure(genomes=["genomes/g.fa"], shards=3, program=str(program))
    said = project.snakemake("--keep-going").stderr
    assert "Sorry! Failed to write file" in said
    assert "ended with status 152" in said
    assert (project.files("results"), project.files("work/g/results")) == ([], ["0", "2"])


def test_after_the_end_of_snakemake_itself_the_rest_is_done(project: Project) -> None:
    project.directory.joinpath("genomes/g.fa").write_bytes(genomes.many_records(100))
    mark = project.directory / "killed"
    # The whole process group, snakemake and the job, is killed with it, so that nothing is left to tidy up.
    program = replace_program(
        project,
        f"""[ $shard != 1 ] || [ -e '{mark}' ] || {{
  touch '{mark}'
  $quarvo "$@" >/dev/null
  kill -KILL 0
}}
exec $quarvo "$@\"""",
    )
    project.configure(genomes=["genomes/g.fa"], shards=3, program=str(program))
    done = subprocess.run([*project.command, "--cores", "1"], check=False, capture_output=True, start_new_session=True)
    assert done.returncode == -signal.SIGKILL
    assert (project.files("results"), "1" in project.files("work/g/results")) == ([], False)
    before = calls(project)

    assert project.snakemake("--unlock").returncode == 0
    project.run()
    assert sorted(before + calls(project)) == ["0", "1", "1", "2"]
    assert project.read("results/g.txt") == project.one_run("genomes/g.fa", "results/g.txt", [])


@pytest.mark.parametrize(
    ("config", "message"),
    [
        ({"options": {"firstSeq": 2}}, "The option firstSeq counts the records of the whole file"),
        ({"options": {"lastSeq": 2}}, "The option lastSeq counts the records of the whole file"),
        (
            {"options": {"outputFormat": 2}, "convert": ["bed"]},
            "Only results in output format 0, 1 or 3 can be converted",
        ),
        ({"options": {"maxUnit": 2}}, "Additional properties are not allowed ('maxUnit' was unexpected)"),
        ({"shards": 0}, "0 is less than the minimum of 1"),
        ({"genomes": ["genomes/50%s.fa"]}, "'genomes/50%s.fa' does not match"),
        ({"genomes": ["a/g.fa", "b/g.fasta.gz"]}, "a/g.fa and b/g.fasta.gz would both write results named g."),
        ({"genomes": ["genomes/none.fa"]}, "genomes/none.fa"),
        ({"genomes": ["genomes/{x}.fa"]}, "The file name genomes/{x}.fa has a brace in it"),
        ({"genomes": ["{a}/g.fa"]}, "The file name {a}/g.fa has a brace in it"),
        ({"genomes": ["genomes/.fa"]}, "The file name genomes/.fa leaves no name for its results."),
        ({"program": "no-such-program"}, "There is no program no-such-program here."),
    ],
)
def test_bad_configuration_is_told(project: Project, config: dict[str, object], message: str) -> None:
    project.directory.joinpath("genomes/g.fa").write_bytes(genomes.many_records(3))
    usual: dict[str, object] = {"genomes": ["genomes/g.fa"]}
    project.configure(**usual | config)
    assert message in project.fail()
