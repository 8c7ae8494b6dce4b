// The plots of whole distributions. Each bar shows its numbers to a pointer that rests on it; tables give the same
// numbers to those who use none.

import * as Plot from "@observablehq/plot";
import type { Distribution, ReportData } from "./report-data";
import { by_id, follow_width, make, number_table } from "./dom";
import { counted, decimal, grouped, short_number, shortened, visible } from "./text";
import { count_axis, powers_of_ten, whole_ticks } from "./ticks";

// Unit lengths 1 to 6 have a colour each, all longer ones share one. The colours stand in page.css.
export const class_names = ["1", "2", "3", "4", "5", "6", "7 or more"];
export const class_colours = class_names.map((_, index) => `var(--class-${index + 1})`);

export function class_of(unitLength: number): number {
  return Math.min(unitLength, 7) - 1;
}

interface Bar {
  at: number; // a whole number
  value: number;
  label: string;
}

const labelOffset = 35; // pixels from an axis to its label: within the margin
const common = { marginTop: 22, marginRight: 16, marginBottom: 40, height: 240, style: { background: "transparent" } };

function value_axis(label: string) {
  return { label, grid: true, ticks: 5, tickFormat: short_number, nice: true };
}

function whole_axis(label: string, most: number, count = 5) {
  return { label, grid: true, tickFormat: short_number, ...count_axis(most, count) };
}

// A bar is a bp wide, and on a logarithmic scale at most as wide as a bar of unit length 7.
function bar_side(at: number, logarithmic: boolean, sign: number): number {
  return at + sign * (logarithmic ? Math.min(0.5, at / 14) : 0.5);
}

// On a linear scale at least six unit lengths, so that a bar is a bar.
function unit_length_axis(width: number, data: Bar[], logarithmic: boolean) {
  const [least, most] = [data[0]?.at ?? 1, data.at(-1)?.at ?? 1];
  const high = Math.max(most, least + 5, 6) + 0.5;
  const low = Math.max(1, Math.min(least, most - 5)) - 0.5;
  const count = Math.max(2, Math.floor(width / 60));
  const scale = logarithmic ? { type: "log" as const, ticks: Math.floor(count / 2) } : { ticks: whole_ticks(low, high, count) };
  return { label: "Unit length (bp)", labelOffset, domain: [low, high], tickFormat: short_number, ...scale };
}

function bars(width: number, name: string, yLabel: string, data: Bar[]): Element {
  const logarithmic = (data.at(-1)?.at ?? 1) > 60;
  return Plot.plot({
    ...common, width, marginLeft: 52, ariaLabel: name,
    x: unit_length_axis(width, data, logarithmic),
    y: whole_axis(yLabel, Math.max(...data.map((bar) => bar.value))),
    marks: [
      Plot.rectY(data, { x1: (bar: Bar) => bar_side(bar.at, logarithmic, -1), x2: (bar: Bar) => bar_side(bar.at, logarithmic, 1),
        y: "value", fill: "var(--bar)", insetLeft: logarithmic ? 0 : 0.5, insetRight: logarithmic ? 0 : 0.5, title: "label" }),
      Plot.ruleY([0]),
    ],
  });
}

// Makes a plot one image with a name. Labels of what is inside an image are for nobody: the numbers stand in a table.
export function as_image(plot: Element): void {
  plot.setAttribute("role", "img");
  for (const part of plot.querySelectorAll("[aria-label]")) {
    part.setAttribute("data-part", part.getAttribute("aria-label") ?? "");
    part.removeAttribute("aria-label");
  }
}

function replace_plot(figure: HTMLElement, plot: Element): void {
  as_image(plot);
  figure.querySelector(".plot")?.replaceChildren(plot);
}

function figure_of(id: string, draw: (width: number) => Element): void {
  const figure = by_id(id);
  const area = figure.querySelector<HTMLElement>(".plot");
  if (area) follow_width(area, (width) => replace_plot(figure, draw(width)));
}

export function show_unit_lengths(data: ReportData): void {
  const { unitLength, repeats, covered } = data.unitLengths;
  const bar = (i: number, value: number, what: string): Bar => ({
    at: unitLength[i], value, label: `unit length ${unitLength[i]}: ${grouped(value)} ${what}`,
  });
  figure_of("repeats-by-unit-length", (width) => bars(width, "Repeats by unit length", "Repeats",
    repeats.map((value, i) => bar(i, value, value === 1 ? "repeat" : "repeats"))));
  figure_of("covered-by-unit-length", (width) => bars(width, "Bases covered by unit length", "Bases covered",
    covered.map((value, i) => bar(i, value, "bases covered"))));
  by_id("unit-length-numbers").append(number_table("Repeats and bases covered by unit length",
    ["Unit length", "Repeats", "Bases covered"],
    unitLength.map((length, i) => [String(length), grouped(repeats[i]), grouped(covered[i])])));
}

// The width in pixels of a text in a plot.
function text_width(): (text: string) => number {
  const context = make("canvas").getContext("2d");
  const { fontFamily } = getComputedStyle(document.body);
  if (context) context.font = `12px ${fontFamily}`;
  return (text) => context?.measureText(text).width ?? text.length * 9;
}

interface UnitRow {
  rank: number;
  unit: string; // whole
  value: number;
  label: string;
}

// The unit after its rank, shortened in the middle as far as the room demands; a shortened one with its length.
function unit_label(row: UnitRow, room: number, width_of: (text: string) => number): string {
  const whole = `${row.rank}. ${row.unit}`;
  if (width_of(whole) <= room) return whole;
  const label = (most: number) => `${row.rank}. ${shortened(row.unit, most)} (${grouped(row.unit.length)})`;
  let most = Math.min(row.unit.length - 1, 60);
  while (most > 3 && width_of(label(most)) > room) --most;
  return label(most);
}

// Names a group of labels as Plot names those of its own axes.
const as_tick_labels: Plot.RenderFunction = (index, scales, values, dimensions, context, next) => {
  const group = next?.(index, scales, values, dimensions, context) ?? null;
  group?.setAttribute("aria-label", "y-axis tick label");
  return group;
};

function unit_plot(rows: UnitRow[], width: number): Element {
  const width_of = text_width();
  const labels = rows.map((row) => unit_label(row, Math.min(240, width * 0.4), width_of));
  const marginLeft = Math.ceil(Math.max(60, ...labels.map(width_of))) + 12;
  const most = Math.max(...rows.map((row) => row.value));
  const marginRight = Math.ceil(width_of(grouped(most))) + 12;
  return Plot.plot({
    ...common, width, height: 44 + 22 * rows.length, marginTop: 4, marginLeft, marginRight,
    ariaLabel: "Repeats of the most frequent units",
    x: { ...whole_axis("Repeats", most, Math.max(2, Math.floor((width - marginLeft - marginRight) / 70))), labelOffset },
    y: { axis: null, domain: rows.map((row) => row.rank) },
    marks: [
      Plot.barX(rows, { x: "value", y: "rank", fill: "var(--bar)", insetTop: 2, insetBottom: 2, title: "label" }),
      Plot.text(rows, { x: "value", y: "rank", text: (row: UnitRow) => grouped(row.value), textAnchor: "start",
        dx: 4, fill: "currentColor" }),
      Plot.text(rows, { frameAnchor: "left", y: "rank", text: labels, textAnchor: "end", dx: -8, fill: "currentColor",
        title: "unit", render: as_tick_labels }),
      Plot.ruleX([0]),
    ],
  });
}

export function show_units(data: ReportData): void {
  const { unit, repeats, covered, distinct } = data.units;
  const shown = Math.min(20, unit.length);
  const rows = Array.from({ length: shown }, (_, i): UnitRow => ({
    rank: i + 1, unit: visible(unit[i]), value: repeats[i],
    label: `${shortened(visible(unit[i]), 40)}: ${counted(repeats[i], "repeat", "repeats")}, ${grouped(covered[i])} bases covered`,
  }));
  figure_of("frequent-units", (width) => unit_plot(rows, width));
  by_id("units-note").textContent = distinct > shown
    ? `The ${shown} most frequent of ${counted(distinct, "unit", "units")}.` : "";
  by_id("unit-numbers").append(number_table(`Repeats and bases covered of the ${counted(unit.length, "unit", "units")} found most often`,
    ["Unit in normal form", "Unit length", "Repeats", "Bases covered"],
    unit.map((text, i) => [visible(text), String(text.length), grouped(repeats[i]), grouped(covered[i])])));
  by_id<HTMLDetailsElement>("unit-details").open = shown <= 8; // the card has room for it
}

interface Part {
  x1: number;
  x2: number;
  middle: number;
  width: number; // of its bin
  bin: number;
  unitClass: string;
  height: number; // repeats divided by the width
  label: string;
}

// Where a bin is drawn. A length is a whole number: it stands in the middle of a bar that is a bp wide. The last bin of
// the perfections holds 100 % and nothing else.
function place_of({ distribution, unit }: View, bin: number): { x1: number; x2: number; middle: number; width: number } {
  const { edges } = distribution;
  const low = edges[bin];
  if (unit === "%" && bin === edges.length - 1) return { x1: low, x2: low, middle: low, width: 1 };
  const high = edges[bin + 1] ?? low + 1;
  const shift = unit === "bp" ? 0.5 : 0;
  return { x1: low - shift, x2: high - shift, middle: (low + high) / 2 - shift, width: high - low };
}

// The cells of a distribution, those of one unit length or all, added up by class of unit length.
function parts_of(view: View, chosen: number | null): Part[] {
  const { distribution, unit } = view;
  const sums = new Map<number, number>();
  distribution.repeats.forEach((count, cell) => {
    const unitLength = distribution.unitLength[cell];
    if (chosen !== null && unitLength !== chosen) return;
    const key = distribution.bin[cell] * 8 + class_of(unitLength);
    sums.set(key, (sums.get(key) ?? 0) + count);
  });
  return [...sums].sort((a, b) => a[0] - b[0]).map(([key, count]) => {
    const bin = Math.floor(key / 8);
    const unitClass = class_names[key % 8];
    const place = place_of(view, bin);
    const lengths = chosen === null ? `, unit length ${unitClass}` : "";
    return { ...place, bin, unitClass, height: count / place.width,
      label: `${bin_name(distribution.edges, bin, unit)}${lengths}: ${counted(count, "repeat", "repeats")}` };
  });
}

function bin_name(edges: number[], bin: number, unit: string): string {
  if (bin === edges.length - 1) return `${unit === "%" ? "" : "at least "}${decimal(edges[bin])} ${unit}`;
  const [low, high] = [edges[bin], edges[bin + 1]];
  if (unit === "bp") return high - low === 1 ? `${low} bp` : `${low} to ${high - 1} bp`;
  return `${decimal(low)} to below ${decimal(high)} ${unit}`;
}

interface View {
  id: string;
  distribution: Distribution;
  name: string;
  label: string;
  per: string; // what the height of a bin is divided by
  unit: string;
  logarithmic: boolean;
}

// The parts with a gap wherever a bin of the class is empty, so that no line is drawn across it.
function with_gaps(parts: Part[]): Part[] {
  const before = new Map<string, number>();
  return parts.flatMap((part) => {
    const last = before.get(part.unitClass);
    before.set(part.unitClass, part.bin);
    return last === undefined || last === part.bin - 1 ? [part] : [{ ...part, height: NaN }, part];
  });
}

// Counts on a linear scale are stacked bars. On a logarithmic scale, where stacks mean nothing, each class is a line.
// `least` is where the axis begins; the bar of a single value is `side` wide on either side of it.
function distribution_marks(parts: Part[], least: number, side: number, stacked: boolean) {
  if (stacked) {
    const is_point = (part: Part) => part.x1 === part.x2;
    return [
      Plot.rectY(parts, Plot.stackY({ x1: (part: Part) => Math.max(least, is_point(part) ? part.x1 - side : part.x1),
        x2: (part: Part) => (is_point(part) ? part.x2 + side : part.x2), y: "height",
        z: "unitClass", fill: "unitClass", order: class_names, stroke: "var(--surface)", strokeWidth: 0.4,
        title: "label" })),
      Plot.ruleY([0]),
    ];
  }
  return [
    Plot.lineY(with_gaps(parts), { x: "middle", y: "height", z: "unitClass", stroke: "unitClass", strokeWidth: 1.2, ariaHidden: "true" }),
    Plot.dot(parts, { x: "middle", y: "height", fill: "unitClass", r: 2.2, title: "label" }),
  ];
}

// Sizes run from the first bin to the last, on a logarithmic scale; percentages end at 100.
function value_domain(view: View, parts: Part[]): [number, number] {
  const low = Math.min(...parts.map((part) => part.x1));
  const high = Math.max(...parts.map((part) => part.x2));
  if (!view.logarithmic) return parts.length === 0 ? [0, 100] : [Math.min(low, 95), 100];
  return parts.length === 0 ? [1, 10] : [Math.max(0.5, low), high];
}

function height_axis(view: View, parts: Part[], stacked: boolean) {
  const label = parts.some((part) => part.width > 1) ? `Repeats per ${view.per}` : "Repeats";
  const heights = parts.map((part) => part.height);
  if (!stacked && parts.length > 0) {
    const ticks = powers_of_ten(heights);
    return { label, grid: true, tickFormat: short_number, type: "log" as const, ticks, domain: [ticks[0], ticks.at(-1) ?? 1] };
  }
  if (label !== "Repeats") return value_axis(label);
  const stacks = new Map<number, number>();
  for (const part of parts) stacks.set(part.bin, (stacks.get(part.bin) ?? 0) + part.height);
  return whole_axis(label, Math.max(1, ...stacks.values()));
}

function draw_distribution(view: View, chosen: number | null, stacked: boolean, width: number): Element {
  const parts = parts_of(view, chosen);
  const domain = value_domain(view, parts);
  const ticks = Math.max(2, Math.floor(width / 90));
  const marginLeft = 52;
  const pixel = (domain[1] - domain[0]) / Math.max(1, width - marginLeft - common.marginRight);
  const isWide = view.logarithmic && domain[1] > 8 * domain[0];
  const scale = { type: view.logarithmic ? "log" as const : "linear" as const,
    ticks: isWide ? ticks : whole_ticks(domain[0], domain[1], ticks) };
  return Plot.plot({
    ...common, width, marginLeft, ariaLabel: view.name,
    x: { label: view.label, labelOffset, domain, tickFormat: short_number, ...scale },
    y: height_axis(view, parts, stacked),
    color: { domain: class_names, range: class_colours },
    marks: distribution_marks(parts, domain[0], Math.min(0.35, 3 * pixel), stacked),
  });
}

// The repeats in each bin, of one unit length or all.
function distribution_table(view: View, chosen: number | null): HTMLTableElement {
  const { edges, unitLength, bin, repeats } = view.distribution;
  const rows = new Map<number, number>();
  repeats.forEach((count, cell) => {
    if (chosen === null || unitLength[cell] === chosen) rows.set(bin[cell], (rows.get(bin[cell]) ?? 0) + count);
  });
  return number_table(view.name, [view.label, "Repeats"], [...rows].sort((a, b) => a[0] - b[0])
    .map(([index, count]) => [bin_name(edges, index, view.unit), grouped(count)]));
}

function fill_legend(present: Set<number>): void {
  class_names.forEach((name, index) => {
    if (!present.has(index)) return;
    const swatch = make("span", { class: "swatch", style: `background:${class_colours[index]}` });
    by_id("unit-length-legend").append(make("li", {}, swatch, name));
  });
}

function distribution_note(data: ReportData): string {
  const { length, copies, perfection } = data.distributions;
  const is_wide = ({ edges, bin }: Distribution) => bin.some((at) => (edges[at + 1] ?? edges[at] + 1) - edges[at] > 1);
  const sentences: string[] = [];
  if (is_wide(length) || is_wide(copies)) {
    sentences.push("From 100 bp or copies on, bins are wider than one: their height is the number of repeats divided by the " +
      "width, so that one repeat in a bin of 100 bp stands at 0.01.");
  }
  if (perfection.undefined > 0) {
    sentences.push(`${counted(perfection.undefined, "repeat has", "repeats have")} no perfection: nothing but N's.`);
  }
  return sentences.join(" ");
}

export function show_distributions(data: ReportData): void {
  const { length, copies, perfection } = data.distributions;
  const views: View[] = [
    { id: "length-distribution", distribution: length, name: "Distribution of lengths", label: "Length (bp)",
      per: "bp of length", unit: "bp", logarithmic: true },
    { id: "copies-distribution", distribution: copies, name: "Distribution of copy numbers", label: "Copies of the unit",
      per: "copy", unit: "copies", logarithmic: true },
    { id: "perfection-distribution", distribution: perfection, name: "Distribution of perfections",
      label: "Perfection (%)", per: "percent", unit: "%", logarithmic: false },
  ];
  const choice = by_id<HTMLSelectElement>("distribution-unit-length");
  const longest = data.distributions.longest;
  for (const unitLength of data.unitLengths.unitLength.filter((length) => length <= longest)) {
    choice.append(make("option", { value: String(unitLength) }, String(unitLength)));
  }
  if ((data.unitLengths.unitLength.at(-1) ?? 0) > longest) {
    choice.append(make("option", { value: String(longest + 1) }, `more than ${grouped(longest)}`));
  }
  fill_legend(new Set(data.unitLengths.unitLength.map(class_of)));
  const chosen = () => (choice.value === "" ? null : Number(choice.value));
  const scale = by_id<HTMLSelectElement>("distribution-scale");
  const redraw: (() => void)[] = [];
  for (const view of views) {
    let known = 0;
    const draw = (width: number) => {
      known = width;
      return draw_distribution(view, chosen(), scale.value === "linear", width);
    };
    figure_of(view.id, draw);
    redraw.push(() => known > 0 && replace_plot(by_id(view.id), draw(known)));
  }
  const tables = () => {
    by_id("distribution-numbers").replaceChildren(...views.map((view) => distribution_table(view, chosen())));
    by_id("distribution-words").textContent = chosen() === null ? "" : `Repeats of unit length ${choice.selectedOptions[0].text}.`;
  };
  for (const control of [choice, scale]) {
    control.addEventListener("change", () => {
      redraw.forEach((again) => again());
      tables();
    });
  }
  tables();
  by_id("distribution-note").textContent = distribution_note(data);
}
