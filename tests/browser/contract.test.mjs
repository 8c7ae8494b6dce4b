// The data in the page: valid by the schema, and equal to what the plainest computation gives.
import assert from "node:assert/strict";
import { readFileSync, statSync } from "node:fs";
import { test } from "node:test";
import { gzipSync } from "node:zlib";
import Ajv from "ajv";
import { covered, grouped_by, normal_form, read_results } from "./direct.mjs";
import { data_of, examples, hostile_fasta, page_of, path, record, results_of, run_report, write } from "./files.mjs";

const schema = JSON.parse(readFileSync(new URL("report-data.schema.json", import.meta.url), "utf8"));
const is_valid = new Ajv({ allErrors: true, allowUnionTypes: true }).compile(schema);

function assert_valid(data) {
  assert.ok(is_valid(data), JSON.stringify(is_valid.errors?.slice(0, 5)));
  for (const part of [data.unitLengths, ...Object.values(data.distributions).slice(1), data.sequences]) {
    const { edges: _edges, undefined: _undefined, ...columns } = part;
    assert.equal(new Set(Object.values(columns).map((column) => column.length)).size, 1);
  }
  const { step, length, excess, unit, score, defect, mismatches, insertions, deletions, ns } = data.repeats;
  for (const column of [length, excess, unit, score, defect]) assert.equal(column.length, step.length);
  for (const column of [mismatches, insertions, deletions, ns]) assert.ok([0, step.length].includes(column.length));
  assert.equal(data.sequences.listed.reduce((a, b) => a + b, 0), step.length);
  assert.equal(data.alignments.repeat.length, data.alignments.lines.length);
}

function sum(values) {
  return values.reduce((a, b) => a + b, 0);
}

function expected_cells(repeats, distribution, value_of) {
  const bin_of = (value) => distribution.edges.findLastIndex?.((edge) => edge <= value)
    ?? distribution.edges.filter((edge) => edge <= value).length - 1;
  const groups = grouped_by(repeats, (repeat) => repeat.unit.length * 1000 + bin_of(value_of(repeat)));
  return [...groups].map(([key, group]) => [Math.floor(key / 1000), key % 1000, group.length]);
}

function assert_distribution(repeats, distribution, value_of) {
  const defined = repeats.filter((repeat) => !Number.isNaN(value_of(repeat)));
  const cells = distribution.bin.map((bin, i) => [distribution.unitLength[i], bin, distribution.repeats[i]]);
  assert.deepEqual(cells, expected_cells(defined, distribution, value_of));
  assert.equal(distribution.undefined, repeats.length - defined.length);
}

function assert_units(data, repeats) {
  const expected = [...grouped_by(repeats, (repeat) => normal_form(repeat.unit))]
    .sort(([a, x], [b, y]) => y.length - x.length || (a < b ? -1 : 1));
  assert.equal(data.units.distinct, expected.length);
  assert.deepEqual(data.units.unit, expected.slice(0, 100).map(([unit]) => unit));
  assert.deepEqual(data.units.repeats, expected.slice(0, 100).map(([, group]) => group.length));
  assert.deepEqual(data.units.covered, expected.slice(0, 100).map(([, group]) => covered(group)));
}

function assert_tracks(data, repeats) {
  const groups = [...grouped_by(repeats, (repeat) => repeat.sequence).values()];
  assert.equal(data.sequences.track.length, groups.length);
  groups.forEach((group, i) => {
    const { width, starts, covered: bases } = data.sequences.track[i];
    assert.equal(data.sequences.repeats[i], group.length);
    assert.equal(data.sequences.covered[i], covered(group));
    assert.equal(sum(bases), covered(group));
    const expected = grouped_by(group, (repeat) => Math.floor((repeat.start - 1) / width));
    starts.forEach((count, bin) => assert.equal(count, expected.get(bin)?.length ?? 0));
  });
}

function assert_rows(data, repeats) {
  let row = 0;
  data.sequences.listed.forEach((listed) => {
    let start = 0;
    for (const stop = row + listed; row < stop; ++row) {
      start += data.repeats.step[row];
      const repeat = repeats[row];
      assert.equal(start, repeat.start);
      assert.equal(data.repeats.length[row], repeat.length);
      assert.equal(data.repeats.length[row] + data.repeats.excess[row], repeat.aligned);
      assert.equal(data.repeats.unitTexts[data.repeats.unit[row]], repeat.unit);
      assert.equal(data.repeats.score[row], repeat.score);
      const defect = data.repeats.defect[row];
      if (Number.isNaN(repeat.perfection)) assert.equal(defect, null);
      else assert.equal(defect, Math.round((100 - repeat.perfection) * 1000));
      for (const column of ["mismatches", "insertions", "deletions", "ns"]) {
        if (data.repeats[column].length > 0) assert.equal(data.repeats[column][row], repeat[column]);
      }
    }
  });
}

function assert_lines(data, repeats) {
  const { kind, repeat: rows, lines } = data.alignments;
  if (kind === "none") return assert.equal(rows.length, 0);
  assert.deepEqual(rows, repeats.map((_, i) => i));
  lines.forEach((given, i) => {
    const printed = kind === "alignment" && given.length === 1 ? [given[0], "|".repeat(given[0].length), given[0]] : given;
    assert.deepEqual(printed, repeats[i].block.slice(0, printed.length));
  });
}

function check(results, page) {
  const data = data_of(page);
  const { sequences, repeats } = read_results(results);
  assert_valid(data);
  assert.ok(repeats.length > 0);
  assert.equal(data.totals.repeats, repeats.length);
  assert.equal(data.totals.covered, covered(repeats));
  assert.equal(data.totals.sequences, sequences.length);
  const lengths = sequences.map((sequence) => sequence.length);
  assert.equal(data.totals.symbols, lengths.includes(null) ? null : sum(lengths));
  const by_unit_length = grouped_by(repeats, (repeat) => repeat.unit.length);
  assert.deepEqual(data.unitLengths.unitLength, [...by_unit_length.keys()]);
  assert.deepEqual(data.unitLengths.repeats, [...by_unit_length.values()].map((group) => group.length));
  assert.deepEqual(data.unitLengths.covered, [...by_unit_length.values()].map(covered));
  assert_units(data, repeats);
  assert_distribution(repeats, data.distributions.length, (repeat) => repeat.length);
  assert_distribution(repeats, data.distributions.copies, (repeat) => repeat.aligned / repeat.unit.length);
  assert_distribution(repeats, data.distributions.perfection, (repeat) => repeat.perfection);
  assert_tracks(data, repeats);
  assert_rows(data, repeats);
  assert_lines(data, repeats);
  assert.deepEqual(Object.values(data.cut).slice(0, 8), [0, null, 0, 0, null, 0, 0, 0]);
  assert.ok(statSync(page).size < 20000000);
  return data;
}

const example = `${examples}/example.fa`;

test("the default format with alignments", () => {
  const results = results_of(example, "default.txt", "-U", "24");
  const data = check(results, page_of(results, "default.html"));
  assert.equal(data.alignments.kind, "alignment");
  assert.deepEqual(data.settings.find(([label]) => label === "Maximum unit length"), ["Maximum unit length", "24"]);
});

for (const [name, ...options] of [
  ["format 0, no sequences", "--outputFormat", "0", "--printRepeatSeqMode", "0"],
  ["format 0, alignments with flanks", "--outputFormat", "0", "-f", "7"],
  ["format 1, sequences with flanks", "--printRepeatSeqMode", "1", "-f", "5"],
  ["format 1, N's as missense", "--NsAsMissense"],
  ["format 3", "--outputFormat", "3"],
  ["format 3, flanks", "--outputFormat", "3", "-f", "9"],
  ["units as found", "--reportUnit", "0"],
  ["exact", "-M", "exact"],
]) {
  test(name, () => {
    const fasta = write("two.fa", record("one of two", 5, 30) + record("two", 6, 30));
    const results = results_of(fasta, "results.txt", ...options);
    const data = check(results, page_of(results, "results.html"));
    assert.deepEqual(data.sequences.name, ["one", "two"]);
  });
}

test("hostile headers leave a page whose data are whole", () => {
  const results = results_of(hostile_fasta("hostile.fa"), "hostile.txt");
  const data = check(results, page_of(results, "hostile.html"));
  assert.equal(data.cut.names, 1);
  assert.equal(data.sequences.name[0], "<script>window.harmed=1</script>");
  assert.equal(data.sequences.name[6], "latin\ufffd\ufffd\ufffd\ufffdbytes");
  assert.equal(data.sequences.title[6], "\ufffd\ufffd\ufffd");
  assert.equal(data.sequences.name[7], "\u202ereversed");
  assert.ok(statSync(path("hostile.html")).size < 1000000);
});

test("hostile headers in format 3", () => {
  const fasta = write("hostile3.fa", record("<script>window.harmed=1</script> x", 1) + record("a&b", 2));
  const results = results_of(fasta, "hostile3.txt", "--outputFormat", "3");
  const data = check(results, page_of(results, "hostile3.html"));
  assert.deepEqual(data.sequences.name, ["<script>window.harmed=1</script>", "a&b"]);
});

test("compressed results give the same page", () => {
  const results = results_of(example, "same.txt");
  const page = readFileSync(page_of(results, "same.html"), "utf8");
  write("same.txt.gz", gzipSync(readFileSync(results)).toString("latin1"));
  const other = readFileSync(page_of(path("same.txt.gz"), "same-gz.html"), "utf8");
  assert.equal(other.replaceAll("same.txt.gz", "same.txt"), page);
});

test("the schema refuses what it does not describe", () => {
  const data = data_of(page_of(results_of(example, "refused.txt"), "refused.html"));
  const changes = [
    (copy) => delete copy.totals.covered,
    (copy) => (copy.totals.other = 1),
    (copy) => (copy.version = 2),
    (copy) => (copy.repeats.score[0] = "7"),
    (copy) => (copy.sequences.track[0].width = 0),
    (copy) => copy.settings[0].push("third"),
    (copy) => (copy.distributions.length.repeats[0] = 0),
    (copy) => (copy.alignments.lines[0] = []),
  ];
  for (const change of changes) {
    const copy = structuredClone(data);
    change(copy);
    assert.equal(is_valid(copy), false, String(change));
  }
});

test("a file without repeats gives a page", () => {
  const results = results_of(write("none.fa", ">none\nACGTTGCA\n"), "none.txt");
  const data = data_of(page_of(results, "none.html"));
  assert_valid(data);
  assert.equal(data.totals.repeats, 0);
});

test("what is no results file is refused, and an older page stays", () => {
  const page = write("older.html", "older");
  for (const [content, status] of [["", 3], ["chr1\t1\t2\n", 3], [readFileSync(example, "latin1"), 3]]) {
    const run = run_report(write("no-results", content), "-o", page);
    assert.equal(run.status, status);
    assert.match(run.stderr, /^Sorry! .*no-results/su);
    assert.equal(readFileSync(page, "latin1"), "older");
  }
});

test("results without their closing line are refused, and no page is made", () => {
  const whole = readFileSync(results_of(example, "whole.txt"), "latin1");
  const run = run_report(write("cut.txt", whole.slice(0, whole.length - 200)), "-o", path("never.html"));
  assert.equal(run.status, 4);
  assert.match(run.stderr, /^Sorry! /u);
  assert.throws(() => statSync(path("never.html")));
});
