// The plots of whole distributions. Each bar shows its numbers to a pointer that rests on it; tables give the same
// numbers to those who use none.

import * as Plot from "@observablehq/plot";
import type { Distribution, ReportData } from "./report-data";
import { by_id, follow_width, make, number_table } from "./dom";
import { counted, decimal, grouped, short_number, shortened, visible } from "./text";

// Unit lengths 1 to 6 have a colour each, all longer ones share one. The colours stand in page.css.
export const class_names = ["1", "2", "3", "4", "5", "6", "7 or more"];
export const class_colours = class_names.map((_, index) => `var(--class-${index + 1})`);

export function class_of(unitLength: number): number {
  return Math.min(unitLength, 7) - 1;
}

interface Bar {
  x1: number;
  x2: number;
  value: number;
  label: string;
}

const labelOffset = 35; // pixels from an axis to its label: within the margin
const common = { marginTop: 22, marginRight: 16, marginBottom: 40, height: 240, style: { background: "transparent" } };

function value_axis(label: string) {
  return { label, grid: true, ticks: 5, tickFormat: short_number, nice: true };
}

function bars(width: number, name: string, xLabel: string, yLabel: string, data: Bar[], logarithmic: boolean): Element {
  return Plot.plot({
    ...common, width, marginLeft: 52, ariaLabel: name,
    x: { label: xLabel, labelOffset, type: logarithmic ? "log" : "linear", ticks: Math.max(2, Math.floor(width / 80)),
      tickFormat: short_number },
    y: value_axis(yLabel),
    marks: [
      Plot.rectY(data, { x1: "x1", x2: "x2", y: "value", fill: "var(--bar)", insetLeft: 0.5, insetRight: 0.5,
        title: "label" }),
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
  const longest = unitLength.at(-1) ?? 1;
  const bar = (i: number, value: number, what: string): Bar => ({
    x1: unitLength[i] - 0.5, x2: unitLength[i] + 0.5, value, label: `unit length ${unitLength[i]}: ${grouped(value)} ${what}`,
  });
  const label = "Unit length (bp)";
  figure_of("repeats-by-unit-length", (width) => bars(width, "Repeats by unit length", label, "Repeats",
    repeats.map((value, i) => bar(i, value, value === 1 ? "repeat" : "repeats")), longest > 60));
  figure_of("covered-by-unit-length", (width) => bars(width, "Bases covered by unit length", label, "Bases covered",
    covered.map((value, i) => bar(i, value, "bases covered")), longest > 60));
  by_id("unit-length-numbers").append(number_table("Repeats and bases covered by unit length",
    ["Unit length", "Repeats", "Bases covered"],
    unitLength.map((length, i) => [String(length), grouped(repeats[i]), grouped(covered[i])])));
}

export function show_units(data: ReportData): void {
  const { unit, repeats, covered, distinct } = data.units;
  const shown = Math.min(20, unit.length);
  const rows = Array.from({ length: shown }, (_, i) => ({
    name: `${i + 1}. ${shortened(visible(unit[i]), 14)}${unit[i].length > 14 ? ` (${unit[i].length})` : ""}`,
    value: repeats[i],
    label: `${shortened(visible(unit[i]), 40)}: ${counted(repeats[i], "repeat", "repeats")}, ${grouped(covered[i])} bases covered`,
  }));
  figure_of("frequent-units", (width) => Plot.plot({
    ...common, width, height: 44 + 22 * shown, marginTop: 4, marginLeft: 150, marginRight: 58,
    ariaLabel: "Repeats of the most frequent units",
    x: { ...value_axis("Repeats"), labelOffset, ticks: Math.max(2, Math.floor((width - 210) / 70)) },
    y: { label: null, domain: rows.map((row) => row.name) },
    marks: [
      Plot.barX(rows, { x: "value", y: "name", fill: "var(--bar)", insetTop: 2, insetBottom: 2, title: "label" }),
      Plot.text(rows, { x: "value", y: "name", text: (row: { value: number }) => grouped(row.value), textAnchor: "start",
        dx: 4, fill: "currentColor" }),
      Plot.ruleX([0]),
    ],
  }));
  by_id("units-note").textContent = distinct > shown
    ? `The ${shown} most frequent of ${counted(distinct, "unit", "units")}.` : "";
  by_id("unit-numbers").append(number_table(`Repeats and bases covered of the ${counted(unit.length, "unit", "units")} found most often`,
    ["Unit in normal form", "Unit length", "Repeats", "Bases covered"],
    unit.map((text, i) => [visible(text), String(text.length), grouped(repeats[i]), grouped(covered[i])])));
}

interface Part {
  x1: number;
  x2: number;
  bin: number;
  unitClass: string;
  height: number;
  label: string;
}

// The cells of a distribution, those of one unit length or all, added up by class of unit length.
function parts_of(distribution: Distribution, chosen: number | null, unit: string, upper: (bin: number) => number): Part[] {
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
    const [x1, x2] = [distribution.edges[bin], upper(bin)];
    const lengths = chosen === null ? `, unit length ${unitClass}` : "";
    return { x1, x2, bin, unitClass, height: count / Math.max(1, x2 - x1),
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
  yLabel: string;
  unit: string;
  logarithmic: boolean;
}

// Every power of ten from the last below all values to the first above them.
function powers_of_ten(values: number[]): number[] {
  const low = Math.floor(Math.log10(Math.min(...values)));
  const high = Math.ceil(Math.log10(Math.max(...values)));
  return Array.from({ length: high - low + 1 }, (_, i) => Number(`1e${low + i}`));
}

// Counts on a linear scale are stacked bars. On a logarithmic scale, where stacks mean nothing, each class is a line.
function distribution_marks(parts: Part[], least: number, stacked: boolean) {
  if (stacked) {
    return [
      Plot.rectY(parts, Plot.stackY({ x1: (part: Part) => Math.max(least, part.x1), x2: "x2", y: "height",
        z: "unitClass", fill: "unitClass", order: class_names, stroke: "var(--surface)", strokeWidth: 0.4,
        title: "label" })),
      Plot.ruleY([0]),
    ];
  }
  const middle = (part: Part) => (Math.max(least, part.x1) + part.x2) / 2;
  return [
    Plot.lineY(parts, { x: middle, y: "height", z: "unitClass", stroke: "unitClass", strokeWidth: 1.2, ariaHidden: "true" }),
    Plot.dot(parts, { x: middle, y: "height", fill: "unitClass", r: 2.2, title: "label" }),
  ];
}

function draw_distribution(view: View, chosen: number | null, stacked: boolean, width: number): Element {
  const edges = view.distribution.edges;
  const upper = (bin: number) => edges[bin + 1] ?? edges[bin] + 1;
  const parts = parts_of(view.distribution, chosen, view.unit, upper);
  const least = view.logarithmic ? 0.5 : 0;
  const low = Math.max(least, Math.min(...parts.map((part) => part.x1), parts.length > 0 ? Infinity : 1));
  const high = Math.max(...parts.map((part) => part.x2), low + 1);
  const y = value_axis(view.yLabel);
  return Plot.plot({
    ...common, width, marginLeft: 52, ariaLabel: view.name,
    x: { label: view.label, labelOffset, type: view.logarithmic ? "log" : "linear", domain: [low, high],
      ticks: Math.max(2, Math.floor(width / 90)), tickFormat: short_number },
    y: stacked || parts.length === 0 ? y : { ...y, type: "log", ticks: powers_of_ten(parts.map((part) => part.height)) },
    color: { domain: class_names, range: class_colours },
    marks: distribution_marks(parts, least, stacked),
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

export function show_distributions(data: ReportData): void {
  const { length, copies, perfection } = data.distributions;
  const views: View[] = [
    { id: "length-distribution", distribution: length, name: "Distribution of lengths", label: "Length (bp)",
      yLabel: "Repeats per bp", unit: "bp", logarithmic: true },
    { id: "copies-distribution", distribution: copies, name: "Distribution of copy numbers", label: "Copies of the unit",
      yLabel: "Repeats per copy", unit: "copies", logarithmic: true },
    { id: "perfection-distribution", distribution: perfection, name: "Distribution of perfections",
      label: "Perfection (%)", yLabel: "Repeats per percent", unit: "%", logarithmic: false },
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
  const tables = () => by_id("distribution-numbers").replaceChildren(...views.map((view) => distribution_table(view, chosen())));
  for (const control of [choice, scale]) {
    control.addEventListener("change", () => {
      redraw.forEach((again) => again());
      tables();
    });
  }
  tables();
  const without = perfection.undefined;
  by_id("distribution-note").textContent =
    without > 0 ? `${counted(without, "repeat has", "repeats have")} no perfection: nothing but N's.` : "";
}
