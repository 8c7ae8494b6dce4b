// Where the plots draw: points at their values, axes from 0 with whole numbers for what is counted, labels whole.
import assert from "node:assert/strict";
import { test } from "node:test";
import { choose_sequence, labels_in, reading, ticks_of, with_page } from "./browser.mjs";
import { read_results } from "./direct.mjs";
import { examples, page_of, random_numbers, results_of, write } from "./files.mjs";

const results = results_of(`${examples}/example.fa`, "example.txt", "-U", "24");
const example = page_of(results, "example.html");
const { repeats, sequences } = read_results(results);

// Repeats of the unit of so many bp each, in stretches of sequence that hold none.
function perfect_repeats(unit, ...lengths) {
  const spacer = "GATCCGTTAGCAATCGGCTA";
  return `>made\n${spacer}${lengths.map((length) => unit.repeat(length).slice(0, length) + spacer).join("")}\n`;
}

function page_of_repeats(name, unit, lengths, ...options) {
  const found = results_of(write(`${name}.fa`, perfect_repeats(unit, ...lengths)), `${name}.txt`, ...options);
  const only = read_results(found).repeats.map((repeat) => repeat.length);
  assert.deepEqual(only, lengths);
  return page_of(found, `${name}.html`);
}

async function dots(page, id) {
  return page.$$eval(`${id} svg circle`, (circles) => circles.map((circle) => {
    const at = circle.getBoundingClientRect();
    const plot = circle.closest("svg").getBoundingClientRect();
    return { x: (at.left + at.right) / 2 - plot.left, label: circle.querySelector("title").textContent };
  }));
}

test("each length stands at its value", () => with_page(example, { width: 900 }, async (page) => {
  const at = reading(await ticks_of(page, "#length-distribution", "x"), true);
  const points = await dots(page, "#length-distribution");
  const single = points.filter(({ label }) => /^\d+ bp/u.test(label) && Number(/^\d+/u.exec(label)[0]) < 40);
  assert.ok(single.length > 20);
  for (const { x, label } of single) {
    const [drawn, length] = [at(x), Number(/^\d+/u.exec(label)[0])];
    assert.ok(Math.abs(drawn - length) < 0.2, `${label} at ${drawn}`);
  }
  for (const { x, label } of points.filter((point) => / to /u.test(point.label))) {
    const [low, high] = /^(\d+) to (\d+) bp/u.exec(label).slice(1).map(Number);
    assert.ok(Math.abs(at(x) / ((low + high) / 2) - 1) < 0.01, `${label} at ${at(x)}`);
  }
}));

test("perfect repeats stand at 100 %", () => with_page(example, { width: 900 }, async (page) => {
  const ticks = await ticks_of(page, "#perfection-distribution", "x");
  const at = reading(ticks, false);
  assert.equal(Math.max(...ticks.map((tick) => tick.value)), 100);
  const points = await dots(page, "#perfection-distribution");
  for (const { x, label } of points) {
    const low = Number(/^[\d.]+/u.exec(label)[0]);
    assert.ok(Math.abs(at(x) - (low === 100 ? 100 : low + 0.5)) < 0.05, `${label} at ${at(x)}`);
  }
  assert.ok(points.some(({ label }) => label.startsWith("100 %")));
  await page.selectOption("#distribution-scale", "linear");
  const bars = await page.$$eval("#perfection-distribution svg rect", (rects) => rects
    .map((rect) => [rect.getBoundingClientRect(), rect.closest("svg").getBoundingClientRect(), rect.querySelector("title").textContent])
    .filter(([, , label]) => label.startsWith("100 %")).map(([bar, plot]) => (bar.left + bar.right) / 2 - plot.left));
  assert.ok(bars.length > 0);
  for (const x of bars) assert.ok(Math.abs(at(x) - 100) < 0.1, String(at(x)));
}));

test("where all repeats are perfect the axis ends at 100 %", () => with_page(page_of_repeats("perfect", "AC", [12, 20]), {}, async (page) => {
  const ticks = await ticks_of(page, "#perfection-distribution", "x");
  assert.deepEqual([ticks.length > 2, ticks.at(-1).value], [true, 100]);
  for (const { x } of await dots(page, "#perfection-distribution")) assert.ok(Math.abs(reading(ticks, false)(x) - 100) < 0.05);
}));

test("lines end where a bin is empty", () => with_page(page_of_repeats("gaps", "AC", [12, 13, 14, 30, 31]), {}, async (page) => {
  const lines = await page.$$eval("#length-distribution svg path[stroke]", (paths) => paths.map((path) => path.getAttribute("d"))
    .filter((d) => d?.startsWith("M") && d.includes("L")));
  assert.equal(lines.length, 1);
  assert.equal(lines[0].match(/M/gu).length, 2, lines[0]);
  assert.equal(lines[0].match(/L/gu).length, 3, lines[0]);
}));

test("the strip above the track stands as the track does", () => with_page(page_of_repeats("strip", "AC", [40]), {}, async (page) => {
  const at = reading(await ticks_of(page, "#track-plot", "x"), false);
  const [bars, frame] = await page.$eval("#track-overview svg", (svg) => [svg.querySelector(".overview-bars").getAttribute("d"),
    [Number(svg.querySelector(".overview-window").getAttribute("x")), Number(svg.querySelector(".overview-window").getAttribute("width"))]]);
  const [left, right] = [/^M([\d.]+)/u.exec(bars)[1], /H([\d.]+)V\d+Z$/u.exec(bars)[1]].map(Number);
  assert.ok(Math.abs(at(left) - 0.5) < 0.1, `${at(left)}`); // bins are 32 bp wide: the repeat at 21 to 60 is in the first two
  assert.ok(Math.abs(at(right) - 64.5) < 0.1, `${at(right)}`);
  assert.ok(Math.abs(at(frame[0]) - 0.5) < 0.1 && Math.abs(at(frame[0] + frame[1]) - 80.5) < 0.1, `${frame.map(at)}`);
  const [repeat] = await page.$$eval("#track-plot .marks rect", (rects) => rects.map((rect) => [Number(rect.getAttribute("x")), Number(rect.getAttribute("width"))]));
  assert.ok(Math.abs(at(repeat[0]) - 20.5) < 0.1 && Math.abs(at(repeat[0] + repeat[1]) - 60.5) < 0.1);
}));

// The longest stretch of a sequence without a base in a repeat.
function empty_stretch(sequence) {
  let best = [1, 0];
  let from = 1;
  for (const repeat of [...repeats.filter((one) => one.sequence === sequence), { start: sequences[sequence].length + 1, end: 0 }]) {
    if (repeat.start - from > best[1] - best[0] + 1) best = [from, repeat.start - 1];
    from = Math.max(from, repeat.end + 1);
  }
  return best;
}

test("the density of a stretch without repeats has an axis from 0", () => with_page(example, {}, async (page) => {
  const last = sequences.length - 1;
  await choose_sequence(page, last);
  const [from, to] = empty_stretch(last);
  assert.ok(to - from > 50);
  await page.fill("#track-from", String(from));
  await page.fill("#track-to", String(to));
  await page.click("#track-range button");
  for (const [measure, top] of [["covered", 100], ["starts", 1]]) {
    await page.selectOption("#track-measure", measure);
    const ticks = await ticks_of(page, "#track-plot", "y");
    assert.deepEqual([ticks[0].value, ticks.at(-1).value], [0, top]);
    assert.ok(ticks[0].at > 150 && ticks.at(-1).at < 30, "from the bottom of the panel to its top");
    const outside = await page.$$eval("#track-plot svg text", (texts) => texts.filter((text) => {
      const [box, plot] = [text.getBoundingClientRect(), text.closest("svg").getBoundingClientRect()];
      return box.left < plot.left || box.right > plot.right || box.top < plot.top || box.bottom > plot.bottom;
    }).map((text) => text.textContent));
    assert.deepEqual(outside, []);
  }
  assert.match(await page.textContent("#track-state"), /No repeat lies here\./u);
}));

test("no bar of the track is a sliver", () => with_page(example, {}, async (page) => {
  await choose_sequence(page, sequences.length - 1);
  for (const to of [50000, 49900, 49000, 47001, 20001]) {
    await page.fill("#track-from", "1");
    await page.fill("#track-to", String(to));
    await page.click("#track-range button");
    const bars = (await labels_in(page, "#track-plot")).map((label) => /^([\d,]+) to ([\d,]+):/u.exec(label).slice(1).map((text) => Number(text.replaceAll(",", ""))))
      .map(([from, last]) => last - from + 1);
    const usual = bars[0];
    assert.ok(bars.every((width) => width >= usual / 2 && width < 1.5 * usual), `${to}: ${usual}, ${bars.at(-1)}`);
  }
}));

test("few repeats on a long sequence are counted per megabase", () => {
  const random = random_numbers(3);
  const spacer = Array.from({ length: 600000 }, () => "ACGT"[random(4)]).join("");
  const found = results_of(write("sparse.fa", `>sparse\n${spacer}${"AC".repeat(40)}\n`), "sparse.txt", "-s", "50");
  return with_page(page_of(found, "sparse.html"), {}, async (page) => {
    const label = () => page.$eval("#track-plot [data-part='y-axis label']", (text) => text.textContent);
    await page.selectOption("#track-measure", "starts");
    assert.match(await label(), /Repeats per Mb$/u);
    const bars = (await labels_in(page, "#track-plot")).map((text) => /: (\d+) repeats? starts?, .* of ([\d,]+) bp/u.exec(text))
      .map(([, count, size]) => (1e6 * Number(count)) / Number(size.replaceAll(",", "")));
    const ticks = await ticks_of(page, "#track-plot", "y");
    assert.ok(ticks.at(-1).value >= Math.max(...bars) * 0.6 && ticks.at(-1).value <= Math.max(...bars) * 1.5, `${ticks.at(-1).value} ${bars}`);
    await page.fill("#track-from", "599000");
    await page.click("#track-range button");
    assert.match(await label(), /Repeats per kb$/u);
  });
});

const long_units = (() => {
  const random = random_numbers(11);
  const symbols = (count) => Array.from({ length: count }, () => "ACGT"[random(4)]).join("");
  return results_of(write("long.fa", Array.from({ length: 5 }, (_, i) => `>long${i}\n${symbols(40)}${symbols(150 + i).repeat(3)}${symbols(40)}\n`).join("")),
    "long.txt", "-u", "100", "-U", "200");
})();

for (const width of [1400, 390]) {
  test(`long units are shortened in the middle, and whole in their titles, at ${width} pixels`, () => with_page(page_of(long_units, "long.html"), { width }, async (page) => {
    const labels = await page.$$eval("#frequent-units [data-part='y-axis tick label'] text", (texts) => texts.map((text) => {
      const [box, plot] = [text.getBoundingClientRect(), text.closest("svg").getBoundingClientRect()];
      const title = text.querySelector("title").textContent;
      return { inside: box.left >= plot.left && box.right <= plot.right && box.width > 0, title, text: text.textContent.slice(0, -title.length) || text.lastChild.textContent };
    }));
    const found = read_results(long_units).repeats;
    assert.ok(found.length >= 5);
    assert.equal(labels.length, new Set(found.map((repeat) => repeat.unit)).size);
    for (const { inside, title } of labels) {
      assert.ok(inside, title);
      assert.ok(title.length >= 100 && /^[ACGT]+$/u.test(title), title);
    }
    const words = await page.$$eval("#frequent-units [data-part='y-axis tick label'] text", (texts) => texts.map((text) =>
      [...text.childNodes].filter((node) => node.nodeName !== "title").map((node) => node.textContent).join("")));
    words.forEach((word, i) => {
      const [, rank, front, back, size] = /^(\d+)\. ([ACGT]+)\u2026([ACGT]+) \((\d+)\)$/u.exec(word);
      assert.equal(Number(rank), i + 1);
      assert.ok(labels[i].title.startsWith(front) && labels[i].title.endsWith(back));
      assert.equal(Number(size), labels[i].title.length);
    });
  }));
}

test("counts and unit lengths have ticks at whole numbers alone, from 0", () => with_page(page_of_repeats("few", "AC", [12, 13]), {}, async (page) => {
  for (const [id, axis, counts] of [["#repeats-by-unit-length", "x"], ["#repeats-by-unit-length", "y", true], ["#covered-by-unit-length", "x"],
    ["#covered-by-unit-length", "y", true], ["#frequent-units", "x", true], ["#length-distribution", "x"], ["#copies-distribution", "x"],
    ["#length-distribution", "y"], ["#perfection-distribution", "x"], ["#track-plot", "x"]]) {
    const values = (await ticks_of(page, id, axis)).map((tick) => tick.value);
    assert.ok(values.length >= 2, `${id} ${axis}: ${values}`);
    assert.ok(values.every(Number.isInteger), `${id} ${axis}: ${values}`);
    if (counts) assert.ok(values[0] === 0 && values.at(-1) >= 2, `${id}: ${values}`);
  }
  await page.selectOption("#distribution-scale", "linear");
  for (const id of ["#length-distribution", "#copies-distribution", "#perfection-distribution"]) {
    const values = (await ticks_of(page, id, "y")).map((tick) => tick.value);
    assert.ok(values.every(Number.isInteger) && values[0] === 0, `${id}: ${values}`);
  }
}));

test("the bar of the only unit length stands above it, among others", () => with_page(page_of_repeats("only", "AC", [12, 20]), {}, async (page) => {
  const ticks = await ticks_of(page, "#repeats-by-unit-length", "x");
  assert.ok(ticks.length >= 6, String(ticks.length));
  const at = reading(ticks, false);
  const [[left, right]] = await page.$$eval("#repeats-by-unit-length svg rect", (rects) => rects.map((rect) => [rect.getBoundingClientRect(), rect.closest("svg").getBoundingClientRect()])
    .map(([bar, plot]) => [bar.left - plot.left, bar.right - plot.left]));
  assert.ok(at(left) > 1.45 && at(left) < 1.6 && at(right) > 2.4 && at(right) < 2.55, `${at(left)} ${at(right)}`);
}));

test("heights say what they count", async () => {
  const label = (page, id) => page.$eval(`${id} [data-part='y-axis label']`, (text) => text.textContent.replace("\u2191 ", ""));
  await with_page(page_of_repeats("narrow", "AC", [12, 20]), {}, async (page) => {
    for (const id of ["#length-distribution", "#copies-distribution", "#perfection-distribution"]) assert.equal(await label(page, id), "Repeats");
    assert.equal(await page.textContent("#distribution-note"), "");
  });
  await with_page(page_of_repeats("wide", "AC", [12, 205]), {}, async (page) => {
    assert.equal(await label(page, "#length-distribution"), "Repeats per bp of length");
    assert.equal(await label(page, "#copies-distribution"), "Repeats per copy");
    assert.equal(await label(page, "#perfection-distribution"), "Repeats");
    assert.match(await page.textContent("#distribution-note"), /number of repeats divided by the width, so that one repeat in a bin of 100 bp stands at 0\.01\.$/u);
  });
});
