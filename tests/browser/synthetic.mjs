// Results files of any size with repeats at random: what quarvo would write of a sequence that nobody has.
import { closeSync, openSync, readFileSync, writeSync } from "node:fs";
import { path, random_numbers, record, results_of, write } from "./files.mjs";

const names = ["mono", "di", "tri", "tetra", "penta", "hexa"].map((name) => `${name}nucleotide`);

function padded(value, width) {
  return String(value).padStart(width);
}

function repeat_lines(random, start) {
  const unit_length = 1 + random(6);
  let unit = "A";
  while (unit.length < unit_length) unit += "CGT"[random(3)];
  const length = unit_length * 2 + 6 + Math.floor(60 / (1 + random(60)));
  const mismatches = length > 12 && random(3) === 0 ? 1 : 0;
  const sequence = unit.repeat(Math.ceil(length / unit_length)).slice(0, length);
  const changed = mismatches ? sequence.slice(0, 9) + (sequence[9] === "A" ? "C" : "A") + sequence.slice(10) : sequence;
  const marks = mismatches ? "|".repeat(9) + " " + "|".repeat(length - 10) : "|".repeat(length);
  const perfection = (((length - mismatches) / length) * 100).toFixed(3);
  const score = length - unit_length - 6 * mismatches;
  const head = `${padded(names[unit_length - 1], 16)} ${padded(start, 9)} : ${padded(start + length - 1, 9)} | ${padded(length, 6)} bp | ` +
    `${padded(length, 6)} BP | ${padded(score, 6)} pt | ${padded(perfection, 7)} % | ${padded(mismatches, 3)} mis |   0 ins |   0 del |   0 N |  unit ${unit}\n`;
  return { length, text: `${head}Missense: ${mismatches ? "(10,M)," : ""}\n${changed}\n${marks}\n${sequence}\n` };
}

// Writes a results file with that many repeats on so many sequences; returns its path.
export function synthetic_results(name, repeats, sequences) {
  const sample = readFileSync(results_of(write("sample.fa", record("sample", 1, 2)), "sample.txt"), "latin1");
  const file = openSync(path(name), "w");
  writeSync(file, sample.slice(0, sample.indexOf("\n>") + 1));
  const random = random_numbers(7);
  const each = Math.ceil(repeats / sequences);
  for (let sequence = 1, done = 0; sequence <= sequences; ++sequence) {
    let text = "";
    let position = 1;
    for (let i = 0; i < each && done < repeats; ++i, ++done) {
      position += random(300);
      const repeat = repeat_lines(random, position);
      text += repeat.text;
      position += repeat.length;
    }
    const title = `sequence${sequence} made at random`;
    writeSync(file, `>${title}\nsequence length: ${position + 1000}\n${text}# Analysis of sequence "${title}" completed.\n`);
  }
  writeSync(file, "## Finished successfully. ##\n");
  closeSync(file);
  return path(name);
}
