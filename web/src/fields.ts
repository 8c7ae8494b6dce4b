// What stands in the fields of the page, and complaints at the field where something cannot be.

import type { Filter, Limits, Parsed, Range, Typed } from "./filter";
import { parse_range, parse_region, parse_units } from "./filter";
import type { SequenceNames } from "./names";
import type { ReportData } from "./report-data";
import { by_id } from "./dom";
import { visible } from "./text";

// Marks the fields and says why in the element NAME-error; without a fault the mark and the words go.
export function complain(name: string, fields: HTMLInputElement[], fault: string | null): void {
  for (const field of fields) {
    if (fault === null) field.removeAttribute("aria-invalid");
    else field.setAttribute("aria-invalid", "true");
  }
  by_id(`${name}-error`).textContent = fault ?? "";
}

// The value, or null after a complaint.
function judged<T>(name: string, fields: HTMLInputElement[], parsed: Parsed<T>): T | null {
  const fault = "fault" in parsed ? parsed.fault : null;
  complain(name, fields, fault);
  return "fault" in parsed ? null : parsed.value;
}

function typed(field: HTMLInputElement): Typed {
  return { text: field.value, isNumber: !field.validity.badInput };
}

function limits_of(field: HTMLInputElement): Limits {
  const bound = (text: string) => (text === "" ? null : Number(text));
  return { least: bound(field.min), most: bound(field.max), whole: field.step !== "any" };
}

// The range in two fields; null after a complaint.
export function range_in(name: string, from: string, to: string): Range | null {
  const fields = [by_id<HTMLInputElement>(from), by_id<HTMLInputElement>(to)];
  return judged(name, fields, parse_range(typed(fields[0]), typed(fields[1]), limits_of(fields[0])));
}

function filter_range(name: string): Range | null {
  return range_in(`filter-${name}`, `filter-${name}-min`, `filter-${name}-max`);
}

// What stands in the fields of the filter, as a sentence; empty when nothing does.
export function filter_words(): string {
  const value = (id: string) => by_id<HTMLInputElement>(id).value.trim();
  const words = [["unit", value("filter-unit")], ["region", value("filter-region")]].filter(([, text]) => text !== "")
    .map(([name, text]) => `${name} ${visible(text)}`);
  for (const [name, id] of [["unit length", "unit-length"], ["length", "length"], ["perfection", "perfection"], ["score", "score"]]) {
    const [from, to] = [value(`filter-${id}-min`), value(`filter-${id}-max`)];
    if (from !== "" || to !== "") words.push(`${name} ${from === "" ? "" : `from ${from} `}${to === "" ? "" : `to ${to}`}`.trim());
  }
  return words.length === 0 ? "" : `Filters: ${words.join("; ")}.`;
}

// The filter in the form; null after complaints when it cannot be applied.
export function filter_in_form(data: ReportData, names: SequenceNames): Filter | null {
  const [unit, place] = ["filter-unit", "filter-region"].map((id) => by_id<HTMLInputElement>(id));
  const units = judged("filter-unit", [unit], parse_units(data, unit.value));
  const region = parse_region(data, names, place.value);
  judged("filter-region", [place], region);
  const [unitLength, length, perfection, score] = ["unit-length", "length", "perfection", "score"].map(filter_range);
  if (!units || "fault" in region || !unitLength || !length || !perfection || !score) return null;
  return { units, region: region.value, unitLength, length, perfection, score };
}
