// The page in a browser: what its plots draw, how its table filters, sorts, pages and saves.
import assert from "node:assert/strict";
import { test } from "node:test";
import { choose_sequence, close_page, labels_in, offered, saved, settle, shared_page, with_page } from "./browser.mjs";
import { covered, grouped_by, normal_form, read_results } from "./direct.mjs";
import { examples, page_of, record, results_of, write } from "./files.mjs";

const results = results_of(`${examples}/example.fa`, "example.txt", "-U", "24");
const page_file = page_of(results, "example.html");
const { repeats, sequences } = read_results(results);

function number(text) {
  return Number(text.replaceAll(",", ""));
}

async function column(page, key) {
  const place = await page.$$eval("#repeat-head th", (cells, wanted) => cells.findIndex((cell) => cell.dataset.key === wanted), key);
  return page.$$eval("#repeat-rows tr", (rows, at) => rows.map((row) => row.cells[at].textContent), place);
}

async function shown(page) {
  const text = await page.textContent("#row-state");
  return number(/^([\d,]+)/u.exec(text)[1]);
}

test("opens without a message, an error or a request", () => with_page(page_file, {}, async (page) => {
  await page.waitForTimeout(500);
  assert.equal(await page.title(), "Tandem repeats: example.txt");
  assert.match(await page.textContent("#source"), /^Search of \S*example\.fa by Quarvo, version [\d.]+\. Results file: example\.txt\.$/u);
}));

test("licences, Quarvo's first", () => with_page(page_file, {}, async (page) => {
  await page.click("#licences summary");
  const text = await page.innerText("#licences pre");
  assert.match(text, /^Quarvo\s+MIT License\s+Copyright \(c\) 2026 The Quarvo authors\s/u);
  for (const name of ["@observablehq/plot", "@tanstack/table-core", "@github/combobox-nav"]) assert.ok(text.includes(name), name);
}));

test("totals", () => with_page(page_file, {}, async (page) => {
  const totals = Object.fromEntries(await page.$$eval("#totals div", (tiles) => tiles.map((tile) =>
    [tile.querySelector("dt").textContent, tile.querySelector("dd").textContent])));
  const bases = sequences.reduce((sum, sequence) => sum + sequence.length, 0);
  assert.equal(number(totals.Repeats), repeats.length);
  assert.equal(number(totals["Bases covered"]), covered(repeats));
  assert.equal(number(totals["Bases searched"]), bases);
  assert.equal(totals["Share covered"], `${((covered(repeats) / bases) * 100).toFixed(2)} %`);
  assert.equal(number(totals.Sequences), sequences.length);
}));

test("settings", () => with_page(page_file, {}, async (page) => {
  await page.click("#settings summary");
  const text = await page.innerText("#settings-list");
  assert.match(text, /Maximum unit length\s+24\s/u);
  assert.match(text, /Satellites searched for\s+imperfect repeats\s/u);
}));

test("plots of unit lengths", () => with_page(page_file, {}, async (page) => {
  const groups = grouped_by(repeats, (repeat) => repeat.unit.length);
  const counts = (await labels_in(page, "#repeats-by-unit-length")).map((label) => /^unit length (\d+): ([\d,]+) repeats?$/u.exec(label));
  assert.deepEqual(counts.map(([, length, count]) => [Number(length), number(count)]),
    [...groups].map(([length, group]) => [length, group.length]));
  const bases = (await labels_in(page, "#covered-by-unit-length")).map((label) => /^unit length (\d+): ([\d,]+) bases covered$/u.exec(label));
  assert.deepEqual(bases.map(([, length, count]) => [Number(length), number(count)]),
    [...groups].map(([length, group]) => [length, covered(group)]));
}));

test("bars are as high as their numbers", () => with_page(page_file, {}, async (page) => {
  const bars = await page.$$eval("#repeats-by-unit-length svg rect", (rects) => rects
    .map((rect) => [Number(rect.getAttribute("height")), rect.querySelector("title").textContent]));
  const scale = bars[0][0] / number(/: ([\d,]+)/u.exec(bars[0][1])[1]);
  for (const [height, label] of bars) assert.ok(Math.abs(height - number(/: ([\d,]+)/u.exec(label)[1]) * scale) < 0.01);
}));

test("plot of frequent units", () => with_page(page_file, {}, async (page) => {
  const expected = [...grouped_by(repeats, (repeat) => normal_form(repeat.unit))]
    .sort(([a, x], [b, y]) => y.length - x.length || (a < b ? -1 : 1)).slice(0, 20)
    .map(([unit, group]) => [unit, group.length, covered(group)]);
  const labels = (await labels_in(page, "#frequent-units")).map((label) => /^(\S+): ([\d,]+) repeats?, ([\d,]+) bases covered$/u.exec(label));
  assert.deepEqual(labels.map(([, unit, count, bases]) => [unit, number(count), number(bases)]), expected);
}));

async function drawn_repeats(page, id) {
  const labels = await labels_in(page, id);
  return labels.reduce((sum, label) => sum + number(/: ([\d,]+) repeats?$/u.exec(label)[1]), 0);
}

test("plots of distributions, all and of one unit length, on both scales", () => with_page(page_file, {}, async (page) => {
  const plots = ["#length-distribution", "#copies-distribution", "#perfection-distribution"];
  for (const scale of ["log", "linear"]) {
    await page.selectOption("#distribution-scale", scale);
    for (const unitLength of ["", "3", "24"]) {
      await page.selectOption("#distribution-unit-length", unitLength);
      const expected = repeats.filter((repeat) => unitLength === "" || repeat.unit.length === Number(unitLength)).length;
      for (const plot of plots) assert.equal(await drawn_repeats(page, plot), expected, `${plot} ${scale} ${unitLength}`);
    }
  }
  await page.selectOption("#distribution-unit-length", "3");
  const labels = await labels_in(page, "#length-distribution");
  const threes = grouped_by(repeats.filter((repeat) => repeat.unit.length === 3 && repeat.length < 100), (repeat) => repeat.length);
  for (const [length, group] of threes) {
    assert.ok(labels.includes(`${length} bp: ${group.length} ${group.length === 1 ? "repeat" : "repeats"}`), `${length}`);
  }
}));

function bins_of(labels) {
  return labels.map((label) => /^([\d,]+) to ([\d,]+): ([\d,]+) repeats? starts?, ([\d,]+) of ([\d,]+) bp covered$/u.exec(label).slice(1).map(number));
}

test("the track draws every repeat, whole and zoomed", () => with_page(page_file, {}, async (page) => {
  const last = sequences.length - 1;
  const mine = repeats.filter((repeat) => repeat.sequence === last);
  await choose_sequence(page, last);
  let bins = bins_of(await labels_in(page, "#track-plot"));
  assert.equal(bins.reduce((sum, bin) => sum + bin[2], 0), mine.length);
  assert.equal(bins.reduce((sum, bin) => sum + bin[3], 0), covered(mine));

  await page.fill("#track-from", "1000");
  await page.fill("#track-to", "1999");
  await page.click("#track-range button");
  bins = bins_of(await labels_in(page, "#track-plot"));
  const within = mine.filter((repeat) => repeat.start >= 1000 && repeat.start <= 1999);
  assert.equal(bins.reduce((sum, bin) => sum + bin[2], 0), within.length);
  const cut = mine.filter((repeat) => repeat.end >= 1000 && repeat.start <= 1999)
    .map((repeat) => ({ ...repeat, start: Math.max(1000, repeat.start), end: Math.min(1999, repeat.end) }));
  assert.equal(bins.reduce((sum, bin) => sum + bin[3], 0), covered(cut));
  assert.equal(await page.locator("#track-plot .marks rect").count(), cut.length);
  assert.match(await page.textContent("#track-state"), /^Positions 1,000 to 1,999 of 50,000 bp/u);

  await page.click("#track-limit");
  assert.equal(await shown(page), cut.length);
}));

test("the track zooms by buttons, keys and drags", () => with_page(page_file, {}, async (page) => {
  const view = async () => [number(await page.inputValue("#track-from")), number(await page.inputValue("#track-to"))];
  await choose_sequence(page, sequences.length - 1);
  assert.deepEqual(await view(), [1, 50000]);
  await page.click("#track-in");
  const [from, to] = await view();
  assert.ok(Math.abs(to - from - 25000) <= 2 && from > 12000 && to < 38000);
  await page.focus("#track-plot");
  await page.keyboard.press("+");
  assert.ok((await view())[1] - (await view())[0] < 12600);
  const before = (await view())[0];
  await page.keyboard.press("ArrowRight");
  assert.ok((await view())[0] > before);
  await page.keyboard.press("Home");
  assert.deepEqual(await view(), [1, 50000]);
  await page.locator("#track-plot").scrollIntoViewIfNeeded();
  const box = await page.locator("#track-plot").boundingBox();
  await page.mouse.move(box.x + box.width * 0.4, box.y + 100);
  await page.mouse.down();
  await page.mouse.move(box.x + box.width * 0.5, box.y + 100, { steps: 4 });
  await page.mouse.up();
  const [low, high] = await view();
  assert.ok(low > 15000 && low < 22000 && high > 21000 && high < 27000 && high > low, `${low} ${high}`);
  await page.click("#track-all");
  assert.deepEqual(await view(), [1, 50000]);
}));

const region = { name: sequences.at(-1).name, from: 20000, to: 30000 };
const filters = [
  ["unit, any rotation and strand", { "#filter-unit": "TTA" }, (repeat) => normal_form(repeat.unit) === "AAT"],
  ["two units", { "#filter-unit": "gt, aag" }, (repeat) => ["AC", "AAG"].includes(normal_form(repeat.unit))],
  ["unit length", { "#filter-unit-length-min": "2", "#filter-unit-length-max": "4" }, (repeat) => repeat.unit.length >= 2 && repeat.unit.length <= 4],
  ["length", { "#filter-length-min": "30" }, (repeat) => repeat.length >= 30],
  ["perfection", { "#filter-perfection-min": "90", "#filter-perfection-max": "99.5" }, (repeat) => repeat.perfection >= 90 && repeat.perfection <= 99.5],
  ["score", { "#filter-score-max": "9" }, (repeat) => repeat.score <= 9],
  ["region", { "#filter-region": `${region.name}:20,000-30000` }, (repeat) => repeat.name === region.name && repeat.end >= region.from && repeat.start <= region.to],
  ["sequence", { "#filter-region": sequences[0].name }, (repeat) => repeat.sequence === 0],
  ["several at once", { "#filter-unit": "A", "#filter-length-min": "10", "#filter-score-min": "12", "#filter-perfection-min": "95" },
    (repeat) => repeat.unit.length === 1 && normal_form(repeat.unit) === "A" && repeat.length >= 10 && repeat.score >= 12 && repeat.perfection >= 95],
];

function bed_line(repeat) {
  return [repeat.name, repeat.start - 1, repeat.end, repeat.unit, Math.min(1000, repeat.score), "."].join("\t");
}

const filtered = shared_page(page_file);

for (const [name, fields, keeps] of filters) {
  test(`filter: ${name}`, async () => {
    const page = await filtered();
    const expected = repeats.filter(keeps);
    assert.ok(expected.length > 0 && expected.length < repeats.length);
    for (const [field, value] of Object.entries(fields)) await page.fill(field, value);
    await settle(page);
    assert.equal(await shown(page), expected.length);
    assert.deepEqual((await offered(page, "#save-bed")).split("\n").slice(0, -1), expected.map(bed_line));
    await page.click("#clear-filters");
    await settle(page);
    assert.equal(await shown(page), repeats.length);
  });
}

test("no filter does harm", async () => close_page(await filtered()));

const faults = [
  ["a unit with a digit", { "#filter-unit": "A1" }, "filter-unit", /letters/u],
  ["a unit of letters that are no bases", { "#filter-unit": "AC, XYZ" }, "filter-unit", /^X, Z stand for no base\./u],
  ["a sequence that is not there", { "#filter-region": "nowhere:1-5" }, "filter-region", /^No sequence of that name/u],
  ["a region that ends before it begins", { "#filter-region": `${region.name}:400-100` }, "filter-region", /first position is after the second/u],
  ["a region past the end", { "#filter-region": `${region.name}:50,001-50,002` }, "filter-region", /^The sequence ends at 50,000\.$/u],
  ["a region from 0", { "#filter-region": `${region.name}:0-5` }, "filter-region", /count from 1/u],
  ["half a region", { "#filter-region": `${region.name}:400-` }, "filter-region", /NAME:FROM-TO/u],
  ["a range that ends before it begins", { "#filter-length-min": "400", "#filter-length-max": "100" }, "filter-length", /first number is above the second/u],
  ["a perfection above 100", { "#filter-perfection-max": "140" }, "filter-perfection", /above 100/u],
  ["a unit length of 0", { "#filter-unit-length-min": "0" }, "filter-unit-length", /below 1/u],
  ["a score with a fraction", { "#filter-score-min": "7.5" }, "filter-score", /whole number/u],
];

const refusing = shared_page(page_file);

for (const [name, fields, id, words] of faults) {
  test(`refused at the field: ${name}`, async () => {
    const page = await refusing();
    for (const [field, value] of Object.entries(fields)) await page.fill(field, value);
    await settle(page);
    const field = Object.keys(fields)[0];
    assert.match(await page.textContent(`#${id}-error`), words);
    assert.ok(await page.isVisible(`#${id}-error`));
    assert.equal(await page.getAttribute(field, "aria-invalid"), "true");
    assert.ok((await page.getAttribute(field, "aria-describedby")).includes(`${id}-error`));
    assert.match(await page.textContent("#row-state"), /^No repeats are shown: please correct the marked filter/u);
    assert.equal(await page.locator("#repeat-rows tr").count(), 0);
    await page.click("#clear-filters");
    await settle(page);
    assert.equal(await page.textContent(`#${id}-error`), "");
    assert.equal(await page.getAttribute(field, "aria-invalid"), null);
    assert.equal(await shown(page), repeats.length);
  });
}

test("a number that is none is refused at the field", async () => {
  const page = await refusing();
  await page.locator("#filter-length-min").pressSequentially("1e");
  await settle(page);
  assert.match(await page.textContent("#filter-length-error"), /give a number/u);
  await page.click("#clear-filters");
  await settle(page);
});

test("no refusal does harm", async () => close_page(await refusing()));

test("an impossible range of the track is refused at the field", () => with_page(page_file, {}, async (page) => {
  await choose_sequence(page, sequences.length - 1);
  for (const [from, to, words] of [["400", "100", /first number is above the second/u], ["60000", "70000", /^The sequence ends at 50,000/u],
    ["0", "5", /below 1/u], ["1.5", "5", /whole number/u]]) {
    await page.fill("#track-from", from);
    await page.fill("#track-to", to);
    await page.click("#track-range button");
    assert.match(await page.textContent("#track-range-error"), words);
    assert.equal(await page.getAttribute("#track-from", "aria-invalid"), "true");
    assert.match(await page.textContent("#track-state"), /^Positions 1 to 50,000 /u);
  }
  await page.fill("#track-from", "100");
  await page.fill("#track-to", "400");
  await page.click("#track-range button");
  assert.equal(await page.textContent("#track-range-error"), "");
  assert.equal(await page.getAttribute("#track-from", "aria-invalid"), null);
  assert.match(await page.textContent("#track-state"), /^Positions 100 to 400 /u);
}));

const sort_keys = {
  start: (repeat) => repeat.start, end: (repeat) => repeat.end, length: (repeat) => repeat.length,
  unit: (repeat) => repeat.unit, unitLength: (repeat) => repeat.unit.length,
  copies: (repeat) => repeat.aligned / repeat.unit.length, score: (repeat) => repeat.score,
  perfection: (repeat) => repeat.perfection, mismatches: (repeat) => repeat.mismatches,
  insertions: (repeat) => repeat.insertions, deletions: (repeat) => repeat.deletions, ns: (repeat) => repeat.ns,
};

const sorted = shared_page(page_file);

for (const [key, value] of Object.entries(sort_keys)) {
  test(`sort by ${key}`, async () => {
    const page = await sorted();
    const order = (sign) => [...repeats.keys()].sort((a, b) => {
      const [x, y] = [value(repeats[a]), value(repeats[b])];
      return x === y ? a - b : x < y ? -sign : sign;
    }).map((i) => bed_line(repeats[i]));
    const header = page.locator(`th[data-key=${key}]`);
    const both = [["ascending", order(1)], ["descending", order(-1)]];
    for (const [direction, expected] of ["start", "end", "unit"].includes(key) ? both : both.reverse()) {
      await header.locator("button").click();
      assert.equal(await header.getAttribute("aria-sort"), direction);
      assert.deepEqual((await offered(page, "#save-bed")).split("\n").slice(0, -1), expected);
    }
    await header.locator("button").click();
    assert.equal(await header.getAttribute("aria-sort"), null);
    assert.deepEqual((await offered(page, "#save-bed")).split("\n").slice(0, -1), repeats.map(bed_line));
  });
}

test("no sorting does harm", async () => close_page(await sorted()));

test("paging shows every repeat once", () => with_page(page_file, {}, async (page) => {
  await page.selectOption("#page-size", "100");
  const starts = [];
  const pages = Math.ceil(repeats.length / 100);
  for (let i = 1; i <= pages; ++i) {
    assert.equal(await page.textContent("#page-state"), `Page ${i} of ${pages}`);
    starts.push(...(await column(page, "start")).map(number));
    assert.equal(await page.isDisabled("#page-next"), i === pages);
    if (i < pages) await page.click("#page-next");
  }
  assert.deepEqual(starts, repeats.map((repeat) => repeat.start));
  await page.click("#page-first");
  assert.ok(await page.isDisabled("#page-previous"));
  await page.click("#page-last");
  assert.equal(await page.textContent("#page-state"), `Page ${pages} of ${pages}`);
}));

test("the table shows the numbers of each repeat", () => with_page(page_file, {}, async (page) => {
  const first = repeats.slice(0, 25);
  assert.deepEqual(await column(page, "sequence"), first.map((repeat) => repeat.name));
  assert.deepEqual(await column(page, "unit"), first.map((repeat) => repeat.unit));
  assert.deepEqual(await column(page, "perfection"), first.map((repeat) => `${repeat.perfection.toFixed(2)} %`));
  assert.deepEqual(await column(page, "copies"), first.map((repeat) => (repeat.aligned / repeat.unit.length).toFixed(2)));
}));

test("a chosen repeat shows its alignment as the results file prints it", () => with_page(page_file, {}, async (page) => {
  await page.selectOption("#page-size", "500");
  const rows = page.locator("#repeat-rows tr");
  const imperfect = repeats.findIndex((repeat) => repeat.insertions > 0 && repeat.deletions > 0);
  for (const i of [0, repeats.findIndex((repeat) => repeat.mismatches > 0), imperfect].filter((at) => at >= 0 && at < 500)) {
    await rows.nth(i).locator("button").click();
    assert.equal(await page.textContent("#alignment"), repeats[i].block.join("\n"));
    assert.equal(await page.evaluate(() => document.activeElement.id), "details");
    assert.equal(await rows.nth(i).getAttribute("aria-current"), "true");
    assert.match(await page.textContent("#details-heading"), new RegExp(repeats[i].name, "u"));
    const [from, to] = [number(await page.inputValue("#track-from")), number(await page.inputValue("#track-to"))];
    assert.ok(from <= repeats[i].start && to >= repeats[i].end);
  }
}));

test("a click on a repeat in the track shows it", () => with_page(page_file, {}, async (page) => {
  await page.locator("#track-plot .marks rect").nth(1).click();
  assert.equal(await page.textContent("#alignment"), repeats[1].block.join("\n"));
}));

test("the saved BED file", () => with_page(page_file, {}, async (page) => {
  await page.fill("#filter-length-min", "30");
  await settle(page);
  const { name, text } = await saved(page, "#save-bed");
  assert.equal(name, "example.bed");
  assert.equal(text, repeats.filter((repeat) => repeat.length >= 30).map((repeat) => `${bed_line(repeat)}\n`).join(""));
}));

test("the saved table", () => with_page(page_file, {}, async (page) => {
  const { name, text } = await saved(page, "#save-tsv");
  assert.equal(name, "example.tsv");
  const lines = text.split("\n").slice(0, -1).map((line) => line.split("\t"));
  assert.deepEqual(lines[0], ["sequence", "sequence_number", "start", "end", "length", "unit_length", "unit", "copies", "score",
    "perfection", "mismatches", "insertions", "deletions", "ns"]);
  assert.deepEqual(lines.slice(1), repeats.map((repeat) => [repeat.name, repeat.sequence + 1, repeat.start, repeat.end, repeat.length,
    repeat.unit.length, repeat.unit, (repeat.aligned / repeat.unit.length).toFixed(3), repeat.score,
    repeat.perfection.toFixed(3), repeat.mismatches, repeat.insertions, repeat.deletions, repeat.ns].map(String)));
}));

test("results without alignments say so", () => {
  const file = page_of(results_of(`${examples}/example.fa`, "bare.txt", "--outputFormat", "0", "--printRepeatSeqMode", "0"), "bare.html");
  return with_page(file, {}, async (page) => {
    await page.locator("#repeat-rows button").first().click();
    assert.ok(await page.isHidden("#alignment"));
    assert.match(await page.textContent("#alignment-note"), /--printRepeatSeqMode 2/u);
    assert.equal(await page.locator("th[data-key=mismatches]").count(), 0);
    const header = (await saved(page, "#save-tsv")).text.split("\n")[0];
    assert.ok(header.endsWith("\tperfection"));
  });
});

test("results without repeats", () => {
  const file = page_of(results_of(write("none.fa", ">none\nACGTTGCA\n"), "none.txt"), "none.html");
  return with_page(file, {}, async (page) => {
    assert.ok(await page.isVisible("#nothing"));
    assert.ok(await page.isHidden("#something"));
    assert.ok(await page.isVisible("#settings-list"));
  });
});

test("one repeat in one sequence of unknown length", () => {
  const fasta = write("one.fa", record("one", 3, 1));
  const file = page_of(results_of(fasta, "one.txt", "--outputFormat", "3", "-s", "15"), "one.html");
  return with_page(file, {}, async (page) => {
    assert.match(await page.textContent("#track-state"), /of unknown length/u);
    await page.locator("#repeat-rows button").first().click();
    assert.ok(await page.isVisible("#alignment"));
  });
});
