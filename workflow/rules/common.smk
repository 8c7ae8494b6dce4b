# The configuration, checked, and what the rules ask of it.
import re
import shlex
import sys
from pathlib import Path

from snakemake.exceptions import WorkflowError
from snakemake.utils import validate

SCRIPTS = Path(workflow.basedir) / "scripts"
sys.path.insert(0, str(SCRIPTS))
from fingerprint import current_checksum
from shard_plan import read_fingerprint

# The ends of file names that do not belong to the name of a genome.
INPUT_SUFFIX = re.compile(r"(\.(fa|fas|fasta|fna|ffn|mfa|txt))?(\.(gz|bgz))?$", re.IGNORECASE)

# What the results are called, by output format.
RESULTS_SUFFIX = ("txt", "txt", "gff", "tsv", "fa")

# The formats of quarvo-convert, by what their files are called.
CONVERSIONS = {
    "bed": "bed",
    "gff3": "gff3",
    "jsonl": "json",
    "summary.tsv": "tsv",
    "quarvo_mqc.json": "multiqc",
}


def refuse_ranges():
    given = [name for name in ("firstSeq", "lastSeq") if name in (config.get("options") or {})]
    if given:
        raise WorkflowError(
            f"The option {given[0]} counts the records of the whole file, which no shard can do."
            " Please put the records you want into a file of their own."
        )


def refuse_name(path, name):
    if re.search("[{}]", path):
        raise WorkflowError(
            f"The file name {path} has a brace in it, which Snakemake takes for a wildcard."
            " Please rename the file, or name a link to it instead."
        )
    if not name:
        raise WorkflowError(f"The file name {path} leaves no name for its results. Please rename the file.")


def name_genomes():
    """The files by the name of their genome: the file name without its suffixes."""
    genomes = {}
    for path in config["genomes"]:
        name = INPUT_SUFFIX.sub("", Path(path).name)
        refuse_name(path, name)
        if name in genomes:
            raise WorkflowError(
                f"{genomes[name]} and {path} would both write results named {name}. Please rename one of them."
            )
        genomes[name] = path
    return genomes


def refuse_conversions():
    if config["convert"] and config["options"]["outputFormat"] in (2, 4):
        raise WorkflowError("Only results in output format 0, 1 or 3 can be converted. Please choose one of these.")


refuse_ranges()
validate(config, schema="../schemas/config.schema.yaml")
refuse_conversions()

GENOMES = name_genomes()
OPTIONS = config["options"]
SUFFIX = RESULTS_SUFFIX[OPTIONS["outputFormat"]]


wildcard_constraints:
    genome="|".join(map(re.escape, GENOMES)),
    conversion="|".join(map(re.escape, CONVERSIONS)),
    shard="[0-9]+",


# The scripts stand on the PATH of every rule, so that it does not matter where the workflow is installed.
shell.prefix(f"export PATH={shlex.quote(str(SCRIPTS))}:$PATH; set -euo pipefail; ")


def option_words():
    """The options as words of a command line; a switch is given or left out."""
    words = []
    for name, value in OPTIONS.items():
        if value is not False:
            words.append(f"--{name}")
        if not isinstance(value, bool):
            words.append(str(value))
    return words


def all_results():
    results = expand("results/{genome}.{suffix}", genome=GENOMES, suffix=SUFFIX)
    masked = expand("results/{genome}.masked", genome=GENOMES) if OPTIONS["maskX"] else []
    wanted = [suffix for suffix, name in CONVERSIONS.items() if name in config["convert"]]
    return results + masked + expand("results/{genome}.{suffix}", genome=GENOMES, suffix=wanted)


def genome_file(wildcards):
    return GENOMES[wildcards.genome]


def genome_checksum(wildcards):
    """As a parameter of the rule that deals the genome, it has other content dealt anew."""
    path = Path(genome_file(wildcards))
    if not path.exists():
        return ""
    return current_checksum(path, read_fingerprint(Path("work") / wildcards.genome / "plan.tsv"))


def plan_file(wildcards):
    return checkpoints.split.get(genome=wildcards.genome).output.plan


def shard_sizes(genome):
    """A row for each shard, once the genome is dealt: its bytes and those of its largest record, in megabytes."""
    with open(checkpoints.split.get(genome=genome).output.summary) as summary:
        rows = [line.split("\t") for line in summary][1:]
    return [(int(total) / 1e6, int(largest) / 1e6) for _, _, total, largest in rows]


def searched_shards(kind):
    """An input function: what the search of every shard writes, in the order of the shards."""

    def files(wildcards):
        shards = range(len(shard_sizes(wildcards.genome)))
        return expand("work/{genome}/{kind}/{shard}", genome=wildcards.genome, kind=kind, shard=shards)

    return files


def search_memory(wildcards, attempt):
    """Megabytes for the largest record, which is all that the program keeps at a time."""
    _, largest = shard_sizes(wildcards.genome)[int(wildcards.shard)]
    return attempt * (100 + round(largest * config["bytes_per_symbol"]))


def search_minutes(wildcards, attempt):
    total, _ = shard_sizes(wildcards.genome)[int(wildcards.shard)]
    total /= config["threads"]
    return attempt * (10 + round(total * config["seconds_per_megabase"] / 60))


def file_minutes(wildcards, attempt):
    """Minutes to read and write a genome or its results, at some megabytes a second."""
    genome = Path(genome_file(wildcards))
    megabytes = genome.stat().st_size / 1e6 if genome.exists() else 0
    return attempt * (10 + round(megabytes / 120))
