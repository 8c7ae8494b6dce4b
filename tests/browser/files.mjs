// What the tests share: the programs, a directory that vanishes at the end, sequences with repeats, results and pages.
import { execFileSync, spawnSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";

function required(name) {
  const value = process.env[name];
  if (!value) throw new Error(`${name} is not set: start the tests with tests/browser/run`);
  return value;
}

export const quarvo = required("QUARVO");
export const quarvo_report = required("QUARVO_REPORT");
export const quarvo_convert = required("QUARVO_CONVERT");
export const examples = required("QUARVO_EXAMPLES");

export const directory = mkdtempSync(join(tmpdir(), "quarvo-report-"));
process.on("exit", () => rmSync(directory, { recursive: true, force: true }));

export function path(name) {
  return join(directory, name);
}

// The same sequence of numbers below `limit` for the same seed.
export function random_numbers(seed) {
  let state = BigInt(seed) * 2862933555777941757n + 3037000493n;
  return (limit) => {
    state = (state * 6364136223846793005n + 1442695040888963407n) & 0xffffffffffffffffn;
    return Number(state >> 33n) % limit;
  };
}

function random_symbols(random, count) {
  return Array.from({ length: count }, () => "ACGT"[random(4)]).join("");
}

// A record with repeats of units of 1 to 8 symbols between stretches of random sequence, a few of them mutated.
export function record(header, seed, repeats = 12) {
  const random = random_numbers(seed);
  let sequence = random_symbols(random, 30);
  for (let i = 0; i < repeats; ++i) {
    let repeat = random_symbols(random, 1 + random(8)).repeat(4 + random(12));
    if (random(3) === 0) repeat = repeat.slice(0, 9) + "N" + repeat.slice(10);
    if (random(3) === 0) repeat = repeat.slice(0, 14) + repeat.slice(15);
    sequence += repeat + random_symbols(random, 20 + random(200));
  }
  return `>${header}\n${sequence}\n`;
}

export function write(name, content) {
  writeFileSync(path(name), content, "latin1");
  return path(name);
}

// Runs quarvo; returns the results file.
export function results_of(fasta, name, ...options) {
  execFileSync(quarvo, [...options, fasta, path(name)], { stdio: "pipe" });
  return path(name);
}

// Runs quarvo-report; returns the page.
export function page_of(results, name) {
  execFileSync(quarvo_report, [results, "-o", path(name)], { stdio: "pipe" });
  return path(name);
}

export function run_report(...words) {
  const { status, stderr, stdout } = spawnSync(quarvo_report, words, { encoding: "latin1", maxBuffer: 1 << 28 });
  return { status, stderr, stdout };
}

// The data inside a page.
export function data_of(page) {
  const text = readFileSync(page, "utf8");
  const begin = '<script type="application/json" id="report-data">';
  const from = text.indexOf(begin) + begin.length;
  return JSON.parse(text.slice(from, text.indexOf("</script>", from)));
}

// Headers that would do harm if they were ever taken for more than text.
export const hostile_headers = [
  "<script>window.harmed=1</script> <script>window.harmed=2</script>",
  "</script><script>window.harmed=3</script>",
  "<!--<script> -->",
  "<img/src=x/onerror=window.harmed=4> <svg onload=window.harmed=5>",
  "\"'><b>quotes</b> & &lt;entities&gt; \\u003c \\",
  "control\u0001\u0007\u001b[31m\u007fbytes \u0008behind",
  "latin\xff\xfe\xc0\xafbytes \xed\xa0\x80",
  "\xe2\x80\xaereversed \xe2\x80\xa8separator",
  "__proto__",
  "constructor toString",
  "tab\tin name",
  "@DATA@ $& $` ${1}",
  "same",
  "same",
  "=1+1 formula",
  "",
  `megabyte${"x".repeat(1000000)} ${"y".repeat(1000000)}`,
];

export function hostile_fasta(name) {
  return write(name, hostile_headers.map((header, i) => record(header, i + 1, 10 + (i % 5))).join(""));
}
