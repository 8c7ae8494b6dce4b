// Everyone can use the page: keyboard, screen readers, contrast in light and dark, narrow windows, hostile names.
import assert from "node:assert/strict";
import { mkdirSync } from "node:fs";
import { test } from "node:test";
import axe from "axe-core";
import { choose_sequence, saved, settle, with_page } from "./browser.mjs";
import { contrast, difference, kinds_of_vision } from "./colours.mjs";
import { examples, hostile_fasta, hostile_headers, page_of, results_of } from "./files.mjs";

const page_file = page_of(results_of(`${examples}/example.fa`, "example.txt", "-U", "24"), "example.html");
const hostile_file = page_of(results_of(hostile_fasta("hostile.fa"), "hostile.txt"), "hostile.html");

async function picture(page, name) {
  const place = process.env.SCREENSHOTS;
  if (!place) return;
  mkdirSync(place, { recursive: true });
  await page.screenshot({ path: `${place}/${name}.png`, fullPage: true });
}

async function open_everything(page) {
  await page.$$eval("details", (all) => all.forEach((one) => (one.open = true)));
  await page.locator("#repeat-rows button").first().click();
}

for (const width of [1400, 400]) {
  for (const colorScheme of ["light", "dark"]) {
    test(`${width} pixels, ${colorScheme}: nothing overflows, and axe finds no fault`, () =>
      with_page(page_file, { width, colorScheme, bypassCSP: true }, async (page) => {
        await picture(page, `example-${width}-${colorScheme}`);
        await open_everything(page);
        assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth));
        await page.evaluate(axe.source);
        const { violations } = await page.evaluate(() => window.axe.run());
        assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes.map((node) => node.html).slice(0, 3)]), []);
        await picture(page, `example-open-${width}-${colorScheme}`);
      }));
  }
}

for (const colorScheme of ["light", "dark"]) {
  test(`colours are told apart with every kind of vision, ${colorScheme}`, () => with_page(page_file, { colorScheme }, async (page) => {
    const [ground, ...colours] = await page.$$eval("#unit-length-legend .swatch", (swatches) =>
      [swatches[0].closest(".card"), ...swatches].map((element) => getComputedStyle(element).backgroundColor));
    assert.equal(colours.length, 7);
    colours.forEach((colour, i) => {
      assert.ok(contrast(colour, ground) >= 3, `${colour} on ${ground}`);
      for (const vision of kinds_of_vision) {
        const least = vision === "none" ? 40 : 20;
        for (const other of colours.slice(i + 1)) assert.ok(difference(colour, other, vision) > least, `${colour} ${other} ${vision}`);
      }
    });
  }));
}

test("labels of the axes do not overlap at any width", async () => {
  for (const [width, from] of [[360, "1"], [360, "40000"], [400, "1"], [640, "1"], [1000, "40000"], [1400, "1"]]) {
    await with_page(page_file, { width }, async (page) => {
      await choose_sequence(page, 6);
      await page.fill("#track-from", from);
      await page.fill("#track-to", "40100");
      await page.click("#track-range button");
      const overlaps = await page.$$eval("svg g[data-part$='tick label']", (groups) => groups.flatMap((group) => {
        const boxes = [...group.querySelectorAll("text")].filter((text) => text.textContent !== "").map((text) => text.getBoundingClientRect());
        return boxes.filter((a, i) => boxes.some((b, j) => j > i && a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom))
          .map(() => group.closest("figure, #track-plot")?.id);
      }));
      assert.deepEqual(overlaps, [], `at ${width} pixels`);
    });
  }
});

test("everything is reached and worked by keyboard", () => with_page(page_file, {}, async (page) => {
  await page.keyboard.press("Tab");
  assert.equal(await page.evaluate(() => document.activeElement.className), "skip");
  await page.keyboard.press("Enter");
  const reached = new Set();
  for (let i = 0; i < 200; ++i) {
    await page.keyboard.press("Tab");
    reached.add(await page.evaluate(() => document.activeElement.id || document.activeElement.closest("th")?.dataset.key || document.activeElement.className));
  }
  for (const id of ["filter-unit", "filter-region", "filter-score-max", "save-bed", "save-tsv", "score", "perfection", "link",
    "page-next", "page-size", "track-sequence", "track-in", "track-plot", "distribution-unit-length"]) {
    assert.ok(reached.has(id), `${id} of ${[...reached]}`);
  }
  await page.focus("th[data-key=score] button");
  await page.keyboard.press("Enter");
  assert.equal(await page.getAttribute("th[data-key=score]", "aria-sort"), "descending");
  await page.focus("#repeat-rows button");
  await page.keyboard.press("Enter");
  assert.ok(await page.isVisible("#details"));
}));

test("what has the focus shows it", () => with_page(page_file, {}, async (page) => {
  for (const id of ["#filter-unit", "#save-bed", "#track-plot", "#distribution-unit-length"]) {
    await page.focus(id);
    await page.keyboard.press("Shift+Tab");
    await page.keyboard.press("Tab");
    const outline = await page.$eval(id, (element) => getComputedStyle(element).outlineStyle);
    assert.notEqual(outline, "none", id);
  }
}));

test("the page says what each control is, as a screen reader hears it", () => with_page(page_file, {}, async (page) => {
  await page.getByRole("region", { name: "Table of repeats" }).waitFor();
  await page.getByRole("img", { name: "Repeats by unit length" }).waitFor();
  await page.getByRole("combobox", { name: "Sequence", exact: true }).waitFor();
  await page.getByRole("spinbutton", { name: "Perfection from" }).waitFor();
  await page.getByRole("button", { name: "Save as BED" }).waitFor();
  await page.getByRole("columnheader", { name: "Score", exact: true }).waitFor();
  const [name, start] = await page.$eval("#repeat-rows tr", (row) => [row.cells[0].textContent, row.cells[1].textContent]);
  await page.getByRole("button", { name: `${start}, show this repeat of ${name}`, exact: true }).first().waitFor();
}));

test("hostile names are shown as text and never run", () => with_page(hostile_file, {}, async (page) => {
  await open_everything(page);
  await page.selectOption("#page-size", "500");
  await page.click("#track-sequence");
  const sequences = await page.locator("#track-sequence-list [role=option]").count();
  assert.equal(sequences, hostile_headers.length);
  for (let i = 0; i < sequences; ++i) await choose_sequence(page, i);
  await page.waitForTimeout(300);
  assert.equal(await page.evaluate(() => window.harmed), undefined);
  assert.equal(await page.locator("img, iframe, object, embed, body b").count(), 0);
  assert.equal(await page.locator("script").count(), 2);
  const names = await page.$$eval("#repeat-rows tr", (rows) => [...new Set(rows.map((row) => row.cells[0].textContent))]);
  assert.equal(names[0], "<script>window.harmed=1</script>");
  assert.ok(names.includes("</script><script>window.harmed=3</script>"));
  assert.ok(names.includes("control\u2401\u2407\u241b[31m\u2421bytes"));
  assert.ok(names.includes("\ufffdreversed"));
  assert.ok(names.includes("__proto__"));
  assert.ok(names.some((name) => name.startsWith("megabyte") && name.length < 100));
  assert.match(await page.textContent("#cut"), /shortened/u);
  assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth));
  await picture(page, "hostile-1400-light");
}));

test("a table saved from hostile names keeps its columns", () => with_page(hostile_file, {}, async (page) => {
  const { text } = await saved(page, "#save-tsv");
  const lines = text.split("\n").slice(1, -1);
  for (const line of lines) assert.match(line, /^[^\t\u0000-\u0020\u007f]+\t\d+\t\d+\t\d+\t\d+\t\d+\t[A-Z]+\t[\d.]+\t-?\d+\t[^\t]+\t\d+\t\d+\t\d+\t\d+$/u);
  assert.deepEqual([...new Set(lines.map((line) => Number(line.split("\t")[1])))], hostile_headers.map((_, i) => i + 1));
}));

test("a hostile name can be asked for as a region", () => with_page(hostile_file, {}, async (page) => {
  await page.fill("#filter-region", "<script>window.harmed=1</script>");
  await settle(page);
  const names = await page.$$eval("#repeat-rows tr", (rows) => [...new Set(rows.map((row) => row.cells[0].textContent))]);
  assert.deepEqual(names, ["<script>window.harmed=1</script>"]);
}));
