// A page of a million repeats on thousands of sequences: below its size, and honest about what it leaves out.
import assert from "node:assert/strict";
import { statSync } from "node:fs";
import { test } from "node:test";
import { settle, with_page } from "./browser.mjs";
import { data_of, page_of } from "./files.mjs";
import { synthetic_results } from "./synthetic.mjs";

const repeats = 1000000;
const sequences = 5000;

test("a million repeats", async () => {
  const file = page_of(synthetic_results("million.txt", repeats, sequences), "million.html");
  assert.ok(statSync(file).size < 20000000);
  assert.ok(statSync(file).size > 15000000, "room is wasted");
  const data = data_of(file);
  assert.equal(data.totals.repeats, repeats);
  assert.equal(data.unitLengths.repeats.reduce((a, b) => a + b), repeats);
  for (const name of ["length", "copies", "perfection"]) {
    assert.equal(data.distributions[name].repeats.reduce((a, b) => a + b), repeats);
  }
  const listed = data.repeats.step.length;
  assert.equal(listed + data.cut.repeats, repeats);
  assert.ok(data.repeats.score.every((score) => score >= data.cut.score));
  assert.equal(data.repeats.score.filter((score) => score === data.cut.score).length, data.cut.listedOfScore);
  assert.equal(data.sequences.track.length - data.sequences.track.filter((track) => track === null).length + data.cut.tracks, sequences);

  await with_page(file, {}, async (page) => {
    const note = await page.textContent("#cut");
    assert.ok(note.includes(`${data.cut.repeats.toLocaleString("en-US")} repeats are not listed`), note);
    assert.ok(note.includes(`score below ${data.cut.score}, and, of those with a score of exactly ${data.cut.score}, all but the first ` +
      `${data.cut.listedOfScore.toLocaleString("en-US")} of the file.`), note);
    await page.fill("#filter-length-min", "60");
    await settle(page);
    await page.click("th[data-key=score] button");
    const expected = data.repeats.length.filter((length) => length >= 60).length;
    await page.waitForFunction((text) => document.getElementById("row-state").textContent.startsWith(text),
      `${expected.toLocaleString("en-US")} repeat`);

    await page.click("#track-sequence");
    assert.equal(await page.locator("#track-sequence-list [role=option]").count(), 50);
    assert.match(await page.textContent("#track-sequence-note"), /^[\d,]+ sequences match; the first 50 are shown\./u);
    const last = data.sequences.name.at(-1);
    await page.keyboard.type(last);
    assert.deepEqual(await page.$$eval("#track-sequence-list li > bdi", (names) => names.map((name) => name.textContent).slice(0, 1)), [last]);
    await page.keyboard.press("Enter");
    assert.ok((await page.textContent("#track-title")).startsWith(`${last} `));
  });
});
