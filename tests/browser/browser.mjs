// One browser for all tests, and pages in it that note what must not happen.
import assert from "node:assert/strict";
import { after } from "node:test";
import { chromium } from "playwright-core";

let browser;

after(async () => browser?.close());

async function launched() {
  browser ??= await chromium.launch({ executablePath: process.env.CHROMIUM, args: ["--no-sandbox"] });
  return browser;
}

// Opens a file. The page's `faults` collects console messages, errors, dialogs and requests of anything but that file.
export async function open_page(file, { width = 1400, height = 900, colorScheme = "light", ...others } = {}) {
  const context = await (await launched()).newContext({ viewport: { width, height }, colorScheme, acceptDownloads: true, ...others });
  const page = await context.newPage();
  const address = `file://${file}`;
  page.faults = [];
  page.on("console", (message) => page.faults.push(`console: ${message.text()}`));
  page.on("pageerror", (error) => page.faults.push(`error: ${error}`));
  page.on("dialog", (dialog) => page.faults.push(`dialog: ${dialog.message()}`));
  page.on("request", (request) => {
    if (request.url() !== address && !/^(data|blob):/u.test(request.url())) page.faults.push(`request: ${request.url()}`);
  });
  await page.goto(address);
  await page.waitForSelector("html[data-ready]");
  return page;
}

// A page that several tests use in turn; the last test closes it.
export function shared_page(file) {
  let page;
  return async () => (page ??= await open_page(file));
}

// Closes the page and complains of whatever went wrong in it.
export async function close_page(page) {
  assert.deepEqual(page.faults, []);
  await page.context().close();
}

// Opens, lets `act` work, closes.
export async function with_page(file, options, act) {
  const page = await open_page(file, options);
  await act(page);
  await close_page(page);
}

// What the marks of a plot show to a pointer that rests on them.
export async function labels_in(page, selector) {
  return page.$$eval(`${selector} svg[role=img] > g:not(.marks, [data-part$="tick label"]) title`, (titles) => titles.map((title) => title.textContent));
}

// Waits until what was typed has reached the table.
export async function settle(page) {
  await page.waitForTimeout(250);
}

// The file that a click on the button saves.
export async function saved(page, button) {
  const [download] = await Promise.all([page.waitForEvent("download"), page.click(button)]);
  const stream = await download.createReadStream();
  const chunks = [];
  for await (const chunk of stream) chunks.push(chunk);
  return { name: download.suggestedFilename(), text: Buffer.concat(chunks).toString("utf8") };
}

// The text that a click on the button offers as a file, without the browser's download of it: browsers drop some of
// many downloads in a short time.
export async function offered(page, button) {
  return page.evaluate(async (selector) => {
    const { createObjectURL } = URL;
    let offer = null;
    URL.createObjectURL = (blob) => {
      offer = blob;
      return "data:,";
    };
    const { click } = HTMLAnchorElement.prototype;
    HTMLAnchorElement.prototype.click = () => undefined;
    document.querySelector(selector).click();
    HTMLAnchorElement.prototype.click = click;
    URL.createObjectURL = createObjectURL;
    return offer.text();
  }, button);
}

// Chooses a sequence by its place among those offered. Returns what was offered.
export async function choose_sequence(page, index) {
  await page.locator("#track-sequence").blur();
  await page.click("#track-sequence");
  const option = page.locator("#track-sequence-list [role=option]").nth(index);
  const text = await option.textContent();
  await option.click();
  return text;
}

function number_of(label) {
  const [, digits, suffix] = /^([\d.,]+)([kMG]?)$/u.exec(label);
  return Number(digits.replaceAll(",", "")) * { "": 1, k: 1e3, M: 1e6, G: 1e9 }[suffix];
}

// The ticks of an axis that are labelled: where they stand, in pixels, and their values.
export async function ticks_of(page, selector, axis) {
  const ticks = await page.$$eval(`${selector} svg[role=img] [data-part="${axis}-axis tick label"] text`, (texts, at) => texts
    .map((text) => [Number(/translate\(([-\d.]+),([-\d.]+)\)/u.exec(text.getAttribute("transform"))[at]), text.textContent]), axis === "x" ? 1 : 2);
  return ticks.filter(([, label]) => label !== "").map(([at, label]) => ({ at, value: number_of(label) }));
}

// What an axis says of a place in pixels, by its first and its last tick.
export function reading(ticks, logarithmic) {
  const [one, other] = [ticks[0], ticks.at(-1)];
  const [from, to] = logarithmic ? [Math.log(one.value), Math.log(other.value)] : [one.value, other.value];
  return (place) => {
    const value = from + ((place - one.at) / (other.at - one.at)) * (to - from);
    return logarithmic ? Math.exp(value) : value;
  };
}
