// The page on narrow windows, under fingers and on paper.
import assert from "node:assert/strict";
import { test } from "node:test";
import { settle, with_page } from "./browser.mjs";
import { examples, page_of, results_of } from "./files.mjs";

const example = page_of(results_of(`${examples}/example.fa`, "example.txt", "-U", "24"), "example.html");
const phone = { width: 390, height: 844, hasTouch: true };

async function visible_boxes(page, selector) {
  return page.$$eval(selector, (all) => all.filter((element) => element.checkVisibility() && element.offsetWidth > 0)
    .map((element) => {
      const { left, right, top, bottom, width, height } = element.getBoundingClientRect();
      return { name: element.id || element.textContent.trim(), left, right, top, bottom, width, height };
    }));
}

test("on a phone every control is 44 pixels high", () => with_page(example, phone, async (page) => {
  await page.locator("#repeat-rows button").first().click();
  const boxes = await visible_boxes(page, "button, input, select, summary");
  assert.ok(boxes.length > 50);
  assert.deepEqual(boxes.filter(({ height, width }) => height < 43.9 || width < 40).map(({ name, height, width }) => [name, height, width]), []);
}));

for (const width of [360, 390, 430]) {
  test(`on a window of ${width} pixels no button stands alone beside nothing`, () => with_page(example, { ...phone, width }, async (page) => {
    const alone = await page.$$eval("#something .controls", (rows) => rows.flatMap((row) => {
      const inner = row.getBoundingClientRect();
      const buttons = [...row.querySelectorAll("button")].map((button) => [button.textContent, button.getBoundingClientRect()]);
      const others = [...row.querySelectorAll("button, input, select, .choice label")].map((one) => one.getBoundingClientRect());
      return buttons.filter(([, box]) => box.width < inner.width * 0.9 &&
        others.filter((other) => other.top < box.bottom && box.top < other.bottom).length < 2).map(([text]) => text);
    }));
    assert.deepEqual(alone, []);
    assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth));
  }));
}

test("a table that is wider than its place says that it scrolls", async () => {
  await with_page(example, phone, async (page) => {
    assert.match(await page.textContent("#repeat-scroll-words"), /sideways/u);
    assert.ok(await page.isVisible("#repeat-scroll-words"));
    const shades = () => page.$eval(".frame", (frame) => ["::before", "::after"].map((side) => Number(getComputedStyle(frame, side).opacity)));
    await page.waitForTimeout(300);
    assert.deepEqual(await shades(), [0, 1]);
    await page.$eval("#repeat-scroll", (area) => (area.scrollLeft = 60));
    await page.waitForTimeout(300);
    assert.deepEqual(await shades(), [1, 1]);
    await page.$eval("#repeat-scroll", (area) => (area.scrollLeft = area.scrollWidth));
    await page.waitForTimeout(300);
    assert.deepEqual(await shades(), [1, 0]);
  });
  await with_page(example, {}, async (page) => {
    await settle(page);
    assert.ok(await page.isHidden("#repeat-scroll-words"));
    assert.deepEqual(await page.$eval(".frame", (frame) => frame.className), "frame");
  });
});

for (const width of [800, 1000, 1100, 1200, 1400]) {
  test(`the four ranges of the filters stand in one row at ${width} pixels`, () => with_page(example, { width }, async (page) => {
    const tops = (await visible_boxes(page, "#filters fieldset")).map(({ top }) => top);
    assert.deepEqual(tops, Array(4).fill(tops[0]));
  }));
}

// The widths between margins of 14 mm, in pixels.
const papers = [["A4", Math.floor(((210 - 28) / 25.4) * 96)], ["Letter", Math.floor((8.5 - 28 / 25.4) * 96)]];

test("on a phone the sequences are offered within the window", () => with_page(example, { ...phone, width: 360 }, async (page) => {
  await page.click("#track-sequence");
  const [popup] = await visible_boxes(page, "#track-sequence-popup");
  assert.ok(popup.left >= 0 && popup.right <= 360 && popup.width > 280, `${popup.left} to ${popup.right}`);
  assert.deepEqual((await visible_boxes(page, "#track-sequence-list li")).filter(({ height }) => height < 43.9), []);
  assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth));
}));

for (const [name, width] of papers) {
  test(`on ${name} everything is there and nothing is cut`, () => with_page(example, { width: 1400, colorScheme: "dark" }, async (page) => {
    await page.locator("#repeat-rows button").first().click();
    await page.$$eval("details", (all) => all.forEach((one) => (one.open = true)));
    await page.$$eval("#repeat-rows tr:nth-child(3) td:nth-child(n + 2):nth-child(-n + 3)", (cells) => cells.forEach((cell) => (cell.textContent = "248,956,422")));
    await page.evaluate(() => window.dispatchEvent(new Event("beforeprint")));
    await page.setViewportSize({ width, height: 1000 });
    await page.emulateMedia({ media: "print", colorScheme: "dark" });
    for (const selector of ["#unit-length-legend li", "#repeat-head th", "#repeat-rows tr:nth-child(3) td", "#settings-list dd", ".swatch", "#row-state"]) {
      const boxes = await visible_boxes(page, selector);
      assert.equal(boxes.length, await page.locator(selector).count(), selector);
      for (const box of boxes) assert.ok(box.left >= -0.5 && box.right <= width + 0.5, `${selector} ${box.name}: ${box.left} to ${box.right}`);
    }
    const cut = await page.$$eval("body *", (all) => all.filter((element) => element.checkVisibility() && !element.closest("svg, .hidden")
      && getComputedStyle(element).overflow !== "visible" && (element.scrollWidth > element.clientWidth + 1 || element.scrollHeight > element.clientHeight + 1))
      .map((element) => element.id || element.className));
    assert.deepEqual(cut, []);
    assert.ok(await page.evaluate((most) => document.documentElement.scrollWidth <= most, width));
    for (const svg of await page.$$eval("svg", (all) => all.filter((one) => one.checkVisibility() && one.clientWidth > 0).map((one) => [one.clientWidth, Number(one.getAttribute("width"))]))) {
      assert.ok(svg[0] >= svg[1] - 1, `a plot is drawn for ${svg[1]} pixels and shown at ${svg[0]}: its texts shrink`);
    }
    const [ground, text] = await page.evaluate(() => [getComputedStyle(document.body).backgroundColor, getComputedStyle(document.body).color]);
    assert.equal(ground, "rgb(255, 255, 255)");
    assert.equal(text, "rgb(27, 31, 36)");
    assert.ok((await page.$eval("#repeat-table", (table) => parseFloat(getComputedStyle(table).fontSize))) >= 9.5, "seven points");
    assert.deepEqual(await page.$$eval("thead button", (buttons) => buttons.filter((button) => button.checkVisibility()).length), 0);
    assert.deepEqual(await page.$$eval("#repeat-head .on-paper", (heads) => heads.filter((head) => head.checkVisibility()).length),
      await page.locator("#repeat-head th").count());
    assert.equal(await page.$eval(".swatch", (swatch) => getComputedStyle(swatch).printColorAdjust), "exact");
  }));
}

test("printing draws the plots for paper and then for the window again", () => with_page(example, {}, async (page) => {
  const before = await page.$eval("#track-plot svg", (svg) => Number(svg.getAttribute("width")));
  await page.evaluate(() => window.addEventListener("beforeprint", () => {
    window.printed = Number(document.querySelector("#track-plot svg").getAttribute("width"));
    window.settings = document.getElementById("settings").open;
  }));
  await page.pdf({ format: "A4" });
  assert.deepEqual(await page.evaluate(() => [window.printed > 500 && window.printed <= 680, window.settings]), [true, true]);
  assert.equal(await page.$eval("#track-plot svg", (svg) => Number(svg.getAttribute("width"))), before);
  assert.equal(await page.$eval("#settings", (settings) => settings.open), false);
}));

test("paper says which repeats it shows", () => with_page(example, {}, async (page) => {
  await page.emulateMedia({ media: "print" });
  for (const id of ["#filter-words", "#distribution-words"]) assert.ok(await page.isHidden(id), id);
  await page.emulateMedia({ media: "screen" });
  await page.fill("#filter-unit", "AC");
  await page.fill("#filter-length-min", "20");
  await page.fill("#filter-score-max", "40");
  await page.selectOption("#distribution-unit-length", "3");
  await settle(page);
  for (const id of ["#filter-words", "#distribution-words"]) assert.ok(await page.isHidden(id), id);
  await page.emulateMedia({ media: "print" });
  assert.equal(await page.innerText("#filter-words"), "Filters: unit AC; length from 20; score to 40.");
  assert.equal(await page.innerText("#distribution-words"), "Repeats of unit length 3.");
}));

test("a long alignment is broken into pieces on paper alone", () => with_page(example, {}, async (page) => {
  await page.click("th[data-key=length] button");
  await page.locator("#repeat-rows button").first().click();
  const lines = (await page.textContent("#alignment")).split("\n");
  assert.ok(lines[0].length > 90);
  assert.ok(await page.isHidden("#alignment-on-paper"));
  await page.emulateMedia({ media: "print" });
  assert.ok(await page.isHidden("#alignment"));
  const pieces = (await page.innerText("#alignment-on-paper")).split("\n\n").map((piece) => piece.split("\n"));
  assert.deepEqual([0, 1, 2].map((i) => pieces.map((piece) => piece[i]).join("").trimEnd()), lines.map((line) => line.trimEnd()));
  for (const piece of pieces) assert.ok(piece.every((line) => line.length <= 90));
}));
