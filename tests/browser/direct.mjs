// The plainest way from a results file to its repeats and their figures, for comparison with the page. Shares no code
// with quarvo-report or the page. Formats 0, 1 and 3, as text.
import { readFileSync } from "node:fs";

const repeat_line =
  /^ *\S+ +(\d+) : +(\d+) \| +(-?\d+) bp \| +(-?\d+) BP \| +(-?\d+) pt \| +(\S+) % \|(?: +(\d+) mis \| +(\d+) ins \| +(\d+) del \|)?(?: +(\d+) N \|)? +unit (\S+)$/;

function from_lines(lines) {
  const repeats = [];
  const sequences = [];
  lines.forEach((line, at) => {
    if (line.startsWith(">")) {
      const title = line.slice(1);
      sequences.push({ title, name: title.split(/[ \t]/)[0], length: Number(lines[at + 1].split(": ")[1]) });
    }
    const match = repeat_line.exec(line);
    if (!match) return;
    const [start, end, length, aligned, score, perfection, mismatches, insertions, deletions, ns] = match.slice(1).map(Number);
    const missense = lines[at + 1]?.startsWith("Missense:") ? 1 : 0;
    const block = lines.slice(at + 1 + missense, at + 4 + missense);
    repeats.push({ sequence: sequences.length - 1, name: sequences.at(-1).name, start, end, length, aligned, score,
      perfection, mismatches, insertions, deletions, ns, unit: match[11], block });
  });
  return { sequences, repeats };
}

function from_table(lines) {
  const names = [];
  const repeats = [];
  for (const line of lines) {
    if (line === "" || line.startsWith("#") || line.startsWith("seq-name\t")) continue;
    const fields = line.split("\t");
    if (names.at(-1) !== fields[0]) names.push(fields[0]);
    const [unitLength, perfection, start, end, length, , score, mismatches, insertions, deletions, ns] =
      fields.slice(1, 12).map(Number);
    repeats.push({ sequence: names.length - 1, name: fields[0], start, end, length,
      aligned: length - insertions + deletions, score, perfection, mismatches, insertions, deletions, ns, unit: fields[12],
      unitLength,
      block: [fields.length > 14 ? `${fields[14]}:${fields[13]}:${fields[15]}` : fields[13]] });
  }
  return { sequences: names.map((name) => ({ name, title: name, length: null })), repeats };
}

export function read_results(file) {
  const lines = readFileSync(file, "latin1").split("\n");
  return lines.some((line) => line.startsWith("seq-name\t")) ? from_table(lines) : from_lines(lines);
}

function rotations(unit) {
  return Array.from(unit, (_, i) => unit.slice(i) + unit.slice(0, i));
}

export function normal_form(unit) {
  const pairs = { A: "T", C: "G", G: "C", T: "A", N: "N" };
  const reverse = Array.from(unit, (symbol) => pairs[symbol] ?? "?").reverse().join("");
  return [...rotations(unit), ...rotations(reverse)].sort()[0];
}

// Symbols in at least one of the repeats, marked one by one.
export function covered(repeats) {
  const marks = new Map();
  for (const { sequence, start, end } of repeats) {
    if (!marks.has(sequence)) marks.set(sequence, new Set());
    const mine = marks.get(sequence);
    for (let position = start; position <= end; ++position) mine.add(position);
  }
  return [...marks.values()].reduce((sum, mine) => sum + mine.size, 0);
}

// Repeats by the value of a key, as a Map in ascending order of the key.
export function grouped_by(repeats, key) {
  const groups = new Map();
  for (const repeat of repeats) {
    const value = key(repeat);
    if (!groups.has(value)) groups.set(value, []);
    groups.get(value).push(repeat);
  }
  return new Map([...groups].sort(([a], [b]) => (a < b ? -1 : a > b ? 1 : 0)));
}
