// The data of the page, and the columns that the page works on. What the data hold is described once, in
// report-data.schema.json; their types are made from it.
//
// Nothing here touches the document but read_data().

import type { ReportData } from "./report-data";

// The listed repeats, a column a field. Index i of every column is the i-th repeat of the file that is listed.
// Positions count from 1, both ends inclusive. Perfection is NaN where the file gives no number.
export interface Repeats {
  count: number;
  sequence: Int32Array; // index into data.sequences
  first: Int32Array; // of each sequence: its first repeat; one more entry than sequences
  start: Float64Array;
  end: Float64Array;
  length: Float64Array;
  unit: Int32Array; // index into data.repeats.unitTexts
  unitLength: Int32Array;
  copies: Float64Array;
  score: Float64Array;
  perfection: Float64Array;
}

export function read_data(): ReportData {
  const element = document.getElementById("report-data");
  const data = JSON.parse(element?.textContent ?? "") as ReportData;
  if (data.version !== 1) throw new Error("The data of this page are of another version than the page.");
  return data;
}

export function columns_of(data: ReportData): Repeats {
  const source = data.repeats;
  const count = source.step.length;
  const sequence = new Int32Array(count);
  const first = new Int32Array(data.sequences.listed.length + 1);
  const start = new Float64Array(count);
  const end = new Float64Array(count);
  let row = 0;
  data.sequences.listed.forEach((listed, index) => {
    first[index] = row;
    let position = 0;
    for (const stop = row + listed; row < stop; ++row) {
      position += source.step[row];
      sequence[row] = index;
      start[row] = position;
      end[row] = position + source.length[row] - 1;
    }
  });
  first[data.sequences.listed.length] = row;
  const unitLength = Int32Array.from(source.unit, (unit) => source.unitTexts[unit].length);
  return {
    count,
    sequence,
    first,
    start,
    end,
    length: Float64Array.from(source.length),
    unit: Int32Array.from(source.unit),
    unitLength,
    copies: Float64Array.from(source.length, (length, i) => (length + source.excess[i]) / unitLength[i]),
    score: Float64Array.from(source.score),
    perfection: Float64Array.from(source.defect, (defect) => (defect === null ? NaN : (100000 - defect) / 1000)),
  };
}

// The lines that the results file prints of a repeat, or null when the page does not hold them.
export function alignment_of(data: ReportData, repeat: number): string[] | null {
  const at = binary_search(data.alignments.repeat, repeat);
  if (at < 0) return null;
  const lines = data.alignments.lines[at];
  if (data.alignments.kind !== "alignment" || lines.length !== 1) return lines;
  return [lines[0], "|".repeat(lines[0].length), lines[0]];
}

function binary_search(sorted: number[], wanted: number): number {
  let low = 0;
  let high = sorted.length - 1;
  while (low <= high) {
    const middle = (low + high) >> 1;
    if (sorted[middle] === wanted) return middle;
    if (sorted[middle] < wanted) low = middle + 1;
    else high = middle - 1;
  }
  return -1;
}
