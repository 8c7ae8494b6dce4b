// The filtered repeats as the text of a file.

import type { Repeats } from "./data";
import type { ReportData } from "./report-data";

// A name must be one word in one column: blanks and control characters become '_', and so does an empty name.
function word(text: string): string {
  return text.replace(/[\u0000-\u0020\u007f-\u00a0\u2028\u2029]/gu, "_") || "_";
}

function bed_score(score: number): number {
  return Math.max(0, Math.min(1000, score));
}

// Starts count from 0 and ends are exclusive, as the format demands; a score is kept within 0 to 1000. A repeat has no
// strand.
export function bed_text(data: ReportData, repeats: Repeats, rows: Uint32Array): string {
  const lines: string[] = [];
  for (const i of rows) {
    const name = word(data.sequences.name[repeats.sequence[i]]);
    const unit = data.repeats.unitTexts[repeats.unit[i]];
    lines.push(`${name}\t${repeats.start[i] - 1}\t${repeats.end[i]}\t${word(unit)}\t${bed_score(repeats.score[i])}\t.\n`);
  }
  return lines.join("");
}

const edit_columns = ["mismatches", "insertions", "deletions", "ns"] as const;

// A header line, then a line a repeat. Positions count from 1, both ends inclusive.
export function tsv_text(data: ReportData, repeats: Repeats, rows: Uint32Array): string {
  const edits = edit_columns.filter((name) => data.repeats[name].length > 0);
  const header = ["sequence", "start", "end", "length", "unit_length", "unit", "copies", "score", "perfection", ...edits];
  const lines = [header.join("\t") + "\n"];
  for (const i of rows) {
    const perfection = repeats.perfection[i];
    const fields = [
      word(data.sequences.name[repeats.sequence[i]]),
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
