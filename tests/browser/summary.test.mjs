// The plots draw the numbers of quarvo-convert's summary.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { test } from "node:test";
import { choose_sequence, labels_in, with_page } from "./browser.mjs";
import { examples, hostile_fasta, page_of, quarvo_convert, results_of } from "./files.mjs";

function number(text) {
  return Number(text.replaceAll(",", ""));
}

// Of each kind of group: its rows, in the order of the summary.
function summary_of(results) {
  const text = execFileSync(quarvo_convert, ["-t", "tsv", results], { encoding: "latin1" });
  const groups = { all: [], unit_length: [], unit: [], sequence: [] };
  for (const line of text.split("\n").slice(1, -1)) {
    const [kind, name, repeats, covered, searched] = line.split("\t");
    groups[kind].push({ name, repeats: Number(repeats), covered: Number(covered), searched: Number(searched) });
  }
  return groups;
}

function assert_bars(labels, form, expected) {
  assert.deepEqual(labels.map((label) => form.exec(label).slice(1).map((part) => (/^[\d,]+$/u.test(part) ? number(part) : part))), expected);
}

async function assert_tracks(page, sequences) {
  const with_repeats = sequences.filter(({ repeats }) => repeats > 0);
  await page.click("#track-sequence");
  assert.equal(await page.locator("#track-sequence-list [role=option]").count(), with_repeats.length);
  for (const [index, { repeats, covered }] of with_repeats.entries()) {
    await choose_sequence(page, index);
    const bars = (await labels_in(page, "#track-plot")).map((label) => /: ([\d,]+) repeats? starts?, ([\d,]+) of/u.exec(label).slice(1).map(number));
    assert.equal(bars.reduce((sum, [starts]) => sum + starts, 0), repeats);
    assert.equal(bars.reduce((sum, [, bases]) => sum + bases, 0), covered);
  }
}

async function assert_page_agrees(page, { all: [all], unit_length, unit, sequence }) {
  const totals = await page.$$eval("#totals dd", (values) => values.map((value) => value.textContent));
  assert.deepEqual([totals[0], totals[1], totals[3], totals[4]].map(number), [all.repeats, all.covered, all.searched, sequence.length]);
  assert_bars(await labels_in(page, "#repeats-by-unit-length"), /^unit length (\d+): ([\d,]+) repeats?$/u,
    unit_length.map(({ name, repeats }) => [Number(name), repeats]));
  assert_bars(await labels_in(page, "#covered-by-unit-length"), /^unit length (\d+): ([\d,]+) bases covered$/u,
    unit_length.map(({ name, covered }) => [Number(name), covered]));
  const frequent = [...unit].sort((a, b) => b.repeats - a.repeats || (a.name < b.name ? -1 : 1)).slice(0, 20);
  assert_bars(await labels_in(page, "#frequent-units"), /^(\S+): ([\d,]+) repeats?, ([\d,]+) bases covered$/u,
    frequent.map(({ name, repeats, covered }) => [name, repeats, covered]));
  for (const plot of ["#length-distribution", "#copies-distribution", "#perfection-distribution"]) {
    const drawn = (await labels_in(page, plot)).map((label) => number(/: ([\d,]+) repeats?$/u.exec(label)[1]));
    assert.equal(drawn.reduce((sum, count) => sum + count, 0), all.repeats, plot);
  }
  await assert_tracks(page, sequence);
}

for (const [name, fasta, ...options] of [
  ["the example, alignments", `${examples}/example.fa`, "-U", "24"],
  ["the example, perfect repeats", `${examples}/example.fa`, "-M", "exact"],
  ["the example, units as found", `${examples}/example.fa`, "--reportUnit", "0", "--outputFormat", "0"],
  ["the example as a table", `${examples}/example.fa`, "--outputFormat", "3", "--sequenceInfoAsComment"],
  ["hostile names", hostile_fasta("hostile.fa")],
]) {
  test(name, () => {
    const results = results_of(fasta, "summary.txt", ...options);
    return with_page(page_of(results, "summary.html"), {}, (page) => assert_page_agrees(page, summary_of(results)));
  });
}
