// Which repeats are shown, and in which order. Indices of repeats go in and out; nothing here touches the document.

import type { Repeats } from "./data";
import type { SequenceNames } from "./names";
import type { ReportData } from "./report-data";
import { counted, grouped, shortened, visible } from "./text";
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

// What was typed, understood, or a sentence for whoever typed it.
export type Parsed<T> = { value: T } | { fault: string };

const bases = new Set("ACGTURYKMSWBDHVN");

// Letters that stand for no base and are in no unit of the results either.
function strange_letters(data: ReportData, words: string[]): string[] {
  const letters = [...new Set(words.join(""))].filter((letter) => !bases.has(letter));
  return letters.length === 0 ? [] : letters.filter((letter) => !data.repeats.unitTexts.some((unit) => unit.includes(letter)));
}

// Units, brought into normal form; none for every unit.
export function parse_units(data: ReportData, text: string): Parsed<string[]> {
  const words = text.toUpperCase().split(/[\s,;]+/u).filter((word) => word !== "");
  if (words.some((word) => !/^[A-Z]+$/u.test(word))) return { fault: "Please give units as letters, for example AC or AAT." };
  const strange = strange_letters(data, words);
  if (strange.length > 0) {
    return { fault: `${strange.join(", ")} ${strange.length === 1 ? "stands" : "stand"} for no base. ` +
      "Please give units such as AC or AAT." };
  }
  return { value: [...new Set(words.map((word) => normal_form(word.replaceAll("U", "T"))))] };
}

// A number as typed into a field; `text` is empty where the browser could not read it.
export interface Typed {
  text: string;
  isNumber: boolean;
}

export interface Limits {
  least: number | null;
  most: number | null;
  whole: boolean;
}

function parse_number({ text, isNumber }: Typed, { least, most, whole }: Limits): Parsed<number | null> {
  if (isNumber && text.trim() === "") return { value: null };
  const value = Number(text);
  if (!isNumber || !Number.isFinite(value)) return { fault: "Please give a number." };
  if (whole && !Number.isInteger(value)) return { fault: "Please give a whole number." };
  if (least !== null && value < least) return { fault: `No number below ${least} is possible here.` };
  if (most !== null && value > most) return { fault: `No number above ${most} is possible here.` };
  return { value };
}

export function parse_range(from: Typed, to: Typed, limits: Limits): Parsed<Range> {
  const min = parse_number(from, limits);
  if ("fault" in min) return min;
  const max = parse_number(to, limits);
  if ("fault" in max) return max;
  if (min.value !== null && max.value !== null && min.value > max.value) return { fault: "The first number is above the second." };
  return { value: { min: min.value, max: max.value } };
}

// A stretch of a sequence whose last position is `end`; null where that is not known. It may reach beyond the end, but
// not begin there.
export function stretch_fault(from: number, to: number, end: number | null): string | null {
  if (from < 1) return "Positions count from 1.";
  if (from > to) return "The first position is after the second.";
  if (end !== null && from > end) return `The sequence ends at ${grouped(end)}.`;
  return null;
}

function several_fault(names: SequenceNames, text: string, several: number[]): string {
  const shown = several.slice(0, 3).map((index) => visible(names.labels[index]));
  const more = several.length > shown.length ? ", and so on" : "";
  return `${counted(several.length, "sequence has", "sequences have")} the name ${shortened(visible(text), 40)}. ` +
    `Please give one of ${shown.join(", ")}${more}.`;
}

// A name or the label of a sequence, or one of these with ":FROM-TO". A name that holds a colon itself is tried whole
// first. Null for no text at all: everything.
export function parse_region(data: ReportData, names: SequenceNames, text: string): Parsed<Region | null> {
  if (text.trim() === "") return { value: null };
  const whole = names.find(text) ?? names.find(text.trim());
  const parts = whole ? null : /^(.*):([\d,]+)-([\d,]+)$/su.exec(text.trim());
  const found = whole ?? (parts ? names.find(parts[1]) : null);
  if (!found) {
    const isCutShort = names.find(text.trim().replace(/:[\d,]*-?$/u, "")) !== null;
    return { fault: isCutShort ? "Please give a range as NAME:FROM-TO." : "No sequence of that name is listed." };
  }
  if ("several" in found) return { fault: several_fault(names, parts?.[1] ?? text.trim(), found.several) };
  const { sequence } = found;
  if (!parts) return { value: { sequence, from: 1, to: Infinity } };
  const [from, to] = [parts[2], parts[3]].map((digits) => Number(digits.replaceAll(",", "")));
  const fault = stretch_fault(from, to, data.sequences.length[sequence]);
  return fault === null ? { value: { sequence, from, to } } : { fault };
}
