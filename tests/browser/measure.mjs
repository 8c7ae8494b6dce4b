// How long pages take to make and to open, and how large they are. Started by tests/browser/measure.
import { statSync } from "node:fs";
import { chromium } from "playwright-core";
import { data_of, page_of, path } from "./files.mjs";
import { synthetic_results } from "./synthetic.mjs";

const browser = await chromium.launch({ executablePath: process.env.CHROMIUM, args: ["--no-sandbox"] });

// Seconds from the call until the page is drawn and answers.
async function opening_time(file) {
  const page = await browser.newPage({ viewport: { width: 1400, height: 900 } });
  const begun = performance.now();
  await page.goto(`file://${file}`);
  await page.waitForSelector("html[data-ready]");
  await page.waitForSelector("#track-plot svg[role=img] title", { state: "attached" });
  await page.evaluate(() => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));
  const seconds = (performance.now() - begun) / 1000;
  await page.click("th[data-key=score] button");
  await page.close();
  return seconds;
}

function median(values) {
  return [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];
}

console.log("| repeats | sequences | results, MB | made in, s | page, MB | listed | alignments | opens in, s |");
console.log("| ---: | ---: | ---: | ---: | ---: | ---: | ---: | ---: |");
for (const [repeats, sequences] of [[100, 1], [10000, 5000], [50000, 24], [200000, 24], [1000000, 24], [1000000, 20000]]) {
  const results = synthetic_results("synthetic.txt", repeats, sequences);
  const begun = performance.now();
  page_of(results, "synthetic.html");
  const made = (performance.now() - begun) / 1000;
  const times = [];
  for (let i = 0; i < 3; ++i) times.push(await opening_time(path("synthetic.html")));
  const data = data_of(path("synthetic.html"));
  const megabytes = (name) => (statSync(path(name)).size / 1e6).toFixed(1);
  console.log(`| ${repeats} | ${sequences} | ${megabytes("synthetic.txt")} | ${made.toFixed(2)} | ${megabytes("synthetic.html")} | ` +
    `${data.repeats.step.length} | ${data.alignments.repeat.length} | ${median(times).toFixed(2)} |`);
}
await browser.close();
