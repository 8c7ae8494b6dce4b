// Sequences whose names other programs cannot tell apart or pass over: the page says what quarvo-convert says.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { test } from "node:test";
import { choose_sequence, offered, saved, settle, with_page } from "./browser.mjs";
import { page_of, quarvo_convert, record, results_of, write } from "./files.mjs";

function pages_of(...headers) {
  const results = results_of(write("names.fa", headers.map((header, i) => record(header, i + 1)).join("")), "names.txt");
  return { results, page: page_of(results, "names.html") };
}

function as_bed(results) {
  return spawnSync(quarvo_convert, ["-t", "bed", results], { encoding: "utf8" });
}

function words(text) {
  return text.replace(/\s+/gu, " ");
}

for (const name of ["#c", "track", "browser_1", ""]) {
  test(`BED under the name "${name}" is refused as quarvo-convert refuses it`, () => {
    const { results, page: file } = pages_of("good", `${name} title`);
    return with_page(file, {}, async (page) => {
      await page.click("#save-bed");
      const told = words(await page.textContent("#save-error"));
      const refusal = words(as_bed(results).stderr);
      assert.match(refusal, /cannot stand in BED/u);
      assert.equal(told.split(" Please")[0], refusal.split(" Please")[0]);
      await page.fill("#filter-region", "good");
      await settle(page);
      assert.equal(await page.textContent("#save-error"), "");
      assert.match((await saved(page, "#save-bed")).text, /^(good\t\d+\t\d+\t[A-Z]+\t\d+\t\.\n)+$/u);
    });
  });
}

test("BED of two sequences of one name is refused, also of one of them", () => {
  const { results, page: file } = pages_of("a one", "b", "a two");
  assert.match(words(as_bed(results).stderr), /the name "a" has come before/u);
  return with_page(file, {}, async (page) => {
    for (const region of ["", "a #3"]) {
      await page.fill("#filter-region", region);
      await settle(page);
      await page.click("#save-bed");
      assert.match(words(await page.textContent("#save-error")), /the name "a" is that of several sequences .* take them for one\./u);
      assert.ok(await page.isVisible("#save-error"));
    }
    const lines = (await saved(page, "#save-tsv")).text.split("\n").slice(1, -1);
    assert.deepEqual([...new Set(lines.map((line) => line.split("\t").slice(0, 2).join()))], ["a,3"]);
  });
});

test("BED under a name that the page holds in part is refused", () => {
  const { page: file } = pages_of("n".repeat(300), "latin\xff");
  return with_page(file, {}, async (page) => {
    await page.click("#save-bed");
    assert.match(await page.textContent("#save-error"), /does not hold the whole name of sequence 1, .* by quarvo-convert/u);
    await page.fill("#filter-length-min", "1");
    await page.fill("#filter-region", "latin\ufffd");
    await settle(page);
    await page.click("#save-bed");
    assert.match(await page.textContent("#save-error"), /whole name of sequence 2/u);
  });
});

test("BED of all other names is that of quarvo-convert", () => {
  const { results, page: file } = pages_of("tab\tin name", "control\u0001\u001bbytes x", "a#b", "Track", "=1+1 formula", "@DATA@ $&", "a:1-2");
  const { stdout, status } = as_bed(results);
  assert.equal(status, 0);
  return with_page(file, {}, async (page) => assert.equal(await offered(page, "#save-bed"), stdout));
});

test("a region by a name that two sequences have names both, and takes either", () => {
  const { page: file } = pages_of("same first", "other", "same second", "#2");
  return with_page(file, {}, async (page) => {
    const in_table = () => page.$$eval("#repeat-rows tr", (rows) => [...new Set(rows.map((row) => row.cells[0].textContent))]);
    await page.selectOption("#page-size", "500");
    assert.deepEqual(await in_table(), ["same #1", "other", "same #3", "#2"]);
    for (const text of ["same", "same:1-100"]) {
      await page.fill("#filter-region", text);
      await settle(page);
      assert.equal(await page.textContent("#filter-region-error"), "2 sequences have the name same. Please give one of same #1, same #3.");
      assert.deepEqual(await in_table(), []);
    }
    for (const [text, name] of [["same #3", "same #3"], ["same #1:1-100000", "same #1"], ["other", "other"], ["#2", "#2"]]) {
      await page.fill("#filter-region", text);
      await settle(page);
      assert.deepEqual(await in_table(), [name], text);
    }
  });
});

test("of two sequences of one name the track lists its own", () => {
  const { page: file } = pages_of("same", "same", "");
  return with_page(file, {}, async (page) => {
    for (const [index, label] of [[1, "same #2"], [0, "same #1"], [2, "(no name) #3"]]) {
      const expected = /\((\d+) repeats\)$/u.exec(await choose_sequence(page, index))[1];
      assert.equal(await page.inputValue("#track-sequence"), label);
      await page.click("#track-limit");
      assert.match(await page.inputValue("#filter-region"), new RegExp(`^${label.replace(/[()]/gu, "\\$&")}:1-\\d+$`, "u"));
      await settle(page);
      assert.match(await page.textContent("#row-state"), new RegExp(`^${expected} repeats of`, "u"));
    }
  });
});

test("a sequence is searched by a part of its name or title", () => {
  const { page: file } = pages_of("chr1 first chromosome", "chr2 second chromosome", "chr11 eleventh");
  return with_page(file, {}, async (page) => {
    const offered_names = () => page.$$eval("#track-sequence-list li > bdi", (names) => names.map((name) => name.textContent));
    const field = page.getByRole("combobox", { name: "Sequence", exact: true });
    await field.focus();
    assert.equal(await field.getAttribute("aria-expanded"), "false", "the focus alone opens nothing");
    await page.keyboard.press("ArrowDown");
    assert.equal(await field.getAttribute("aria-expanded"), "true");
    assert.deepEqual(await offered_names(), ["chr1", "chr2", "chr11"]);
    await field.fill("HR1");
    assert.deepEqual(await offered_names(), ["chr1", "chr11"]);
    await field.fill("second");
    assert.deepEqual(await offered_names(), ["chr2"]);
    await page.keyboard.press("Enter");
    assert.equal(await field.inputValue(), "chr2");
    assert.equal(await page.textContent("#track-title"), "chr2 second chromosome");
    assert.ok(await page.isHidden("#track-sequence-popup"));
    await page.keyboard.press("Control+A");
    await page.keyboard.type("chr11");
    assert.deepEqual(await offered_names(), ["chr11"]);
    await page.keyboard.press("Escape");
    assert.equal(await field.inputValue(), "chr2");
    await page.keyboard.press("ArrowDown");
    await page.keyboard.press("ArrowDown");
    await page.keyboard.press("ArrowDown");
    const active = await field.getAttribute("aria-activedescendant");
    assert.equal(await page.getAttribute(`#${active}`, "aria-selected"), "true");
    await field.fill("nothing like it");
    assert.equal(await page.textContent("#track-sequence-note"), "No sequence matches.");
    await page.keyboard.press("Escape");
    assert.equal(await field.inputValue(), "chr2");
    assert.equal(await field.getAttribute("aria-expanded"), "false");
  });
});
