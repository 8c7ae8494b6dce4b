// Which repeats are shown, and in which order. Indices of repeats go in and out; nothing here touches the document.

import type { Repeats } from "./data";
import type { ReportData } from "./report-data";
import { normal_form } from "./units";

export interface Range {
  min: number | null; // both inclusive; null for no bound
  max: number | null;
}

export interface Region {
  sequence: number;
  from: number;
  to: number;
}

export interface Filter {
  units: string[]; // normal forms; empty for every unit
  unitLength: Range;
  length: Range;
  perfection: Range;
  score: Range;
  region: Region | null;
}

export type SortKey =
  | "sequence" | "start" | "end" | "unit" | "unitLength" | "copies" | "length" | "score" | "perfection"
  | "mismatches" | "insertions" | "deletions" | "ns";

const unbounded: Range = { min: null, max: null };

export function no_filter(): Filter {
  return { units: [], unitLength: unbounded, length: unbounded, perfection: unbounded, score: unbounded, region: null };
}

// A value that is no number lies in no range that has a bound.
function is_outside(range: Range, value: number): boolean {
  return (range.min !== null && !(value >= range.min)) || (range.max !== null && !(value <= range.max));
}

// Indices into unitTexts of all units of these normal forms.
function wanted_units(data: ReportData, forms: string[]): Set<number> {
  const lengths = new Set(forms.map((form) => form.length));
  const wanted = new Set(forms);
  const found = new Set<number>();
  data.repeats.unitTexts.forEach((unit, index) => {
    if (lengths.has(unit.length) && wanted.has(normal_form(unit))) found.add(index);
  });
  return found;
}

// The repeats that pass, in the order of the file. A region takes every repeat that has a symbol in it.
export function select(data: ReportData, repeats: Repeats, filter: Filter): Uint32Array {
  const units = filter.units.length > 0 ? wanted_units(data, filter.units) : null;
  const region = filter.region;
  const begin = region ? repeats.first[region.sequence] : 0;
  const stop = region ? repeats.first[region.sequence + 1] : repeats.count;
  const selected = new Uint32Array(stop - begin);
  let count = 0;
  for (let i = begin; i < stop; ++i) {
    if (region && (repeats.end[i] < region.from || repeats.start[i] > region.to)) continue;
    if (is_outside(filter.unitLength, repeats.unitLength[i]) || is_outside(filter.length, repeats.length[i])) continue;
    if (is_outside(filter.score, repeats.score[i]) || is_outside(filter.perfection, repeats.perfection[i])) continue;
    if (units && !units.has(repeats.unit[i])) continue;
    selected[count++] = i;
  }
  return selected.subarray(0, count);
}

function text_ranks(texts: string[]): Float64Array {
  const order = texts.map((_, index) => index).sort((a, b) => (texts[a] < texts[b] ? -1 : texts[a] > texts[b] ? 1 : 0));
  const ranks = new Float64Array(texts.length);
  let rank = 0;
  order.forEach((index, at) => {
    if (at > 0 && texts[order[at - 1]] !== texts[index]) ++rank;
    ranks[index] = rank;
  });
  return ranks;
}

type Column = ArrayLike<number>;

function sort_column(data: ReportData, repeats: Repeats, key: SortKey): Column {
  switch (key) {
    case "unit": {
      const ranks = text_ranks(data.repeats.unitTexts);
      return Float64Array.from(repeats.unit, (unit) => ranks[unit]);
    }
    case "mismatches":
    case "insertions":
    case "deletions":
    case "ns":
      return data.repeats[key];
    default:
      return repeats[key];
  }
}

// Sorts in place. Sequences keep the order of the file; equal repeats too, in either direction. What is no number
// comes last.
export function sort(data: ReportData, repeats: Repeats, selected: Uint32Array, key: SortKey, descending: boolean): void {
  const column = sort_column(data, repeats, key);
  const sign = descending ? -1 : 1;
  selected.sort((a, b) => {
    const x = column[a];
    const y = column[b];
    if (x === y) return a - b;
    if (Number.isNaN(x) || Number.isNaN(y)) return Number.isNaN(x) && Number.isNaN(y) ? a - b : Number.isNaN(x) ? 1 : -1;
    return sign * (x - y);
  });
}

// Units from what was typed: words of letters, brought into normal form.
export function parse_units(text: string): string[] | null {
  const words = text.toUpperCase().replace(/U/gu, "T").split(/[\s,;]+/u).filter((word) => word !== "");
  if (words.some((word) => !/^[A-Z]+$/u.test(word))) return null;
  return [...new Set(words.map(normal_form))];
}

// A name, or NAME:FROM-TO. A name that holds a colon itself is tried whole first; of several sequences of one name the
// first is meant. Null when there is no such sequence or no such range.
export function parse_region(data: ReportData, text: string): Region | null {
  const exact = data.sequences.name.indexOf(text);
  const wanted = exact >= 0 ? text : text.trim();
  const whole = exact >= 0 ? exact : data.sequences.name.indexOf(wanted);
  if (whole >= 0) return { sequence: whole, from: 1, to: Infinity };
  const parts = /^(.*):([\d,]+)-([\d,]+)$/su.exec(wanted);
  if (!parts) return null;
  const sequence = data.sequences.name.indexOf(parts[1]);
  const from = Number(parts[2].replaceAll(",", ""));
  const to = Number(parts[3].replaceAll(",", ""));
  return sequence >= 0 && from >= 1 && from <= to ? { sequence, from, to } : null;
}
