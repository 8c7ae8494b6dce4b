// The filtered repeats as the text of a file.

import type { Repeats } from "./data";
import type { ReportData } from "./report-data";
import { shortened, visible } from "./text";

// A name must be one word in one column: blanks and control characters become '_', and so does an empty name.
function word(text: string): string {
  return text.replace(/[\u0000-\u0020\u007f-\u00a0\u2028\u2029]/gu, "_") || "_";
}

// The name up to its first white space: what other programs read from the same header line.
function plain_name(name: string): string {
  return name.split(/[ \t\v\f\r\n]/u, 1)[0];
}

function bed_score(score: number): number {
  return Math.max(0, Math.min(1000, score));
}

const numbered = "or save as TSV, which numbers the sequences.";

function fault_of(data: ReportData, sequence: number): string | null {
  const name = `"${shortened(visible(plain_name(data.sequences.name[sequence])), 60)}"`;
  const ordinal = data.sequences.ordinal[sequence];
  switch (data.sequences.nameFault[sequence]) {
    case "unsuited":
      return `Sorry, sequence ${ordinal} of these results has the name ${name} which cannot stand in BED: other programs ` +
        `would pass its repeats over. Please rename it, filter its repeats out, ${numbered}`;
    case "shared":
      return `Sorry, the name ${name} is that of several sequences of these results: other programs would take them for ` +
        `one. Please search a file in which all names differ up to their first white space, ${numbered}`;
    case "altered":
      return `Sorry, this page does not hold the whole name of sequence ${ordinal}, ${name}. Please convert the results ` +
        `file by quarvo-convert, ${numbered}`;
    default:
      return null;
  }
}

// Why these repeats cannot be saved as BED, as quarvo-convert would refuse them; null when they can.
export function bed_fault(data: ReportData, repeats: Repeats, rows: Uint32Array): string | null {
  const wanted = new Uint8Array(data.sequences.name.length);
  for (const i of rows) wanted[repeats.sequence[i]] = 1;
  for (const [sequence, is_wanted] of wanted.entries()) {
    const fault = is_wanted ? fault_of(data, sequence) : null;
    if (fault !== null) return fault;
  }
  return null;
}

// Starts count from 0 and ends are exclusive, as the format demands; a score is kept within 0 to 1000. A repeat has no
// strand. Rows without a bed_fault() only.
export function bed_text(data: ReportData, repeats: Repeats, rows: Uint32Array): string {
  const lines: string[] = [];
  for (const i of rows) {
    const name = plain_name(data.sequences.name[repeats.sequence[i]]);
    const unit = data.repeats.unitTexts[repeats.unit[i]];
    lines.push(`${name}\t${repeats.start[i] - 1}\t${repeats.end[i]}\t${unit}\t${bed_score(repeats.score[i])}\t.\n`);
  }
  return lines.join("");
}

const edit_columns = ["mismatches", "insertions", "deletions", "ns"] as const;

// A header line, then a line a repeat. Positions count from 1, both ends inclusive.
export function tsv_text(data: ReportData, repeats: Repeats, rows: Uint32Array): string {
  const edits = edit_columns.filter((name) => data.repeats[name].length > 0);
  const header = ["sequence", "sequence_number", "start", "end", "length", "unit_length", "unit", "copies",
    "score", "perfection", ...edits];
  const lines = [header.join("\t") + "\n"];
  for (const i of rows) {
    const perfection = repeats.perfection[i];
    const fields = [
      word(data.sequences.name[repeats.sequence[i]]),
      data.sequences.ordinal[repeats.sequence[i]],
      repeats.start[i],
      repeats.end[i],
      repeats.length[i],
      repeats.unitLength[i],
      word(data.repeats.unitTexts[repeats.unit[i]]),
      repeats.copies[i].toFixed(3),
      repeats.score[i],
      Number.isNaN(perfection) ? "nan" : perfection.toFixed(3),
      ...edits.map((name) => data.repeats[name][i]),
    ];
    lines.push(fields.join("\t") + "\n");
  }
  return lines.join("");
}

export function offer_file(name: string, type: string, text: string): void {
  const link = document.createElement("a");
  link.href = URL.createObjectURL(new Blob([text], { type }));
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}
