// The density of repeats along one sequence: an overview of all of it, and a view that zooms.
//
// The bins of the data cover every repeat. Closer than their width the view counts the listed repeats themselves, where
// all repeats of the sequence are listed, and stops at the width of a bin where not.

import * as Plot from "@observablehq/plot";
import { type Region, stretch_fault } from "./filter";
import type { Repeats } from "./data";
import type { SequenceNames } from "./names";
import type { ReportData, Track } from "./report-data";
import { by_id, follow_width, make } from "./dom";
import { complain, range_in } from "./fields";
import { as_image, class_colours, class_of } from "./plots";
import { SequenceField } from "./sequence-field";
import { counted, grouped, short_number, shortened, visible } from "./text";
import { whole_ticks } from "./ticks";

export interface Bin {
  from: number; // both inclusive
  to: number;
  starts: number;
  covered: number;
}

const most_marks = 400; // single repeats drawn below the bars
const narrowest_view = 20;
const left_margin = 52; // pixels: room for the labels of the y axis
const right_margin = 34; // room for half a label

// A last bin of less than half the width of the others is told with the one before it: a single repeat would tower there.
function without_sliver(bins: Bin[]): Bin[] {
  const [before, last] = bins.slice(-2);
  if (!last || 2 * (last.to - last.from + 1) >= before.to - before.from + 1) return bins;
  const joined = { from: before.from, to: last.to, starts: before.starts + last.starts, covered: before.covered + last.covered };
  return [...bins.slice(0, -2), joined];
}

// Bins of the view out of those of the data: as many neighbours in one as keep them at most that many.
export function merged_bins(track: Track, from: number, to: number, end: number, most: number): Bin[] {
  const first = Math.floor((from - 1) / track.width);
  const last = Math.floor((to - 1) / track.width);
  let together = 1;
  while ((last - first + 1) / together > most) together *= 2;
  const bins: Bin[] = [];
  for (let at = first - (first % together); at <= last; at += together) {
    const bin: Bin = { from: at * track.width + 1, to: Math.min((at + together) * track.width, end), starts: 0, covered: 0 };
    for (let i = at; i < at + together && i < track.starts.length; ++i) {
      bin.starts += track.starts[i];
      bin.covered += track.covered[i];
    }
    bins.push(bin);
  }
  return without_sliver(bins);
}

// Exact bins of the listed repeats [begin, stop), which are sorted by start.
export function exact_bins(repeats: Repeats, begin: number, stop: number, from: number, to: number, most: number): Bin[] {
  const width = Math.max(1, Math.ceil((to - from + 1) / most));
  const bins: Bin[] = [];
  for (let at = from; at <= to; at += width) bins.push({ from: at, to: Math.min(at + width - 1, to), starts: 0, covered: 0 });
  let done = from - 1;
  for (let i = begin; i < stop; ++i) {
    if (repeats.end[i] < from || repeats.start[i] > to) continue;
    if (repeats.start[i] >= from) bins[Math.floor((repeats.start[i] - from) / width)].starts++;
    const last = Math.min(repeats.end[i], to);
    for (let position = Math.max(repeats.start[i], done + 1); position <= last; ) {
      const bin = bins[Math.floor((position - from) / width)];
      const next = Math.min(bin.to, last) + 1;
      bin.covered += next - position;
      position = next;
    }
    done = Math.max(done, last);
  }
  return without_sliver(bins);
}

// What the bars tell of a bin, and the axis that suits the largest of them.
interface Measure {
  value: (bin: Bin) => number;
  label: string;
  top: number;
}

function share_covered(): Measure {
  return { value: (bin) => (bin.covered / (bin.to - bin.from + 1)) * 100, label: "Covered (%)", top: 100 };
}

// Repeats per kb, or per Mb where they are fewer than one per kb everywhere.
function repeats_per_length(bins: Bin[]): Measure {
  const most = Math.max(...bins.map((bin) => bin.starts / (bin.to - bin.from + 1)), 0);
  const [size, name] = most * 1e3 >= 1 || most === 0 ? [1e3, "kb"] : [1e6, "Mb"];
  return { value: (bin) => (bin.starts / (bin.to - bin.from + 1)) * size, label: `Repeats per ${name}`, top: 1 };
}

// From 0 to the largest value; where there is none, to what an axis of that kind ends at.
function value_domain(bins: Bin[], measure: Measure): [number, number] {
  const most = Math.max(...bins.map(measure.value), 0);
  return [0, most > 0 ? most : measure.top];
}

export class TrackView {
  private sequence = -1; // none yet
  private from = 1;
  private to = 1;
  private width = 0;
  private invert: (x: number) => number = () => 1;
  private readonly area = by_id("track-plot");
  private readonly overview = by_id("track-overview");
  private readonly choice: SequenceField;
  private readonly measure = by_id<HTMLSelectElement>("track-measure");

  constructor(
    private readonly data: ReportData,
    private readonly names: SequenceNames,
    private readonly repeats: Repeats,
    private readonly actions: { pick: (repeat: number) => void; limit: (region: Region) => void },
  ) {
    this.choice = new SequenceField(data, names, (sequence) => this.show_sequence(sequence));
    this.measure.addEventListener("change", () => this.draw());
    this.listen();
    follow_width(this.area, (width) => {
      this.width = width;
      this.draw();
    });
    const first = this.choice.first();
    if (first !== null) this.show_sequence(first);
  }

  show_sequence(sequence: number): void {
    this.sequence = sequence;
    this.choice.show(sequence);
    this.go(1, this.end());
  }

  show_repeat(repeat: number): void {
    const sequence = this.repeats.sequence[repeat];
    if (!this.data.sequences.track[sequence]) return;
    this.sequence = sequence;
    this.choice.show(sequence);
    const margin = Math.max(50, this.repeats.length[repeat] * 2);
    this.go(this.repeats.start[repeat] - margin, this.repeats.end[repeat] + margin);
  }

  private track(): Track {
    return this.data.sequences.track[this.sequence] as Track;
  }

  // The last position: of the sequence where its length is known, else of its last bin.
  private end(): number {
    const track = this.track();
    return this.data.sequences.length[this.sequence] ?? track.starts.length * track.width;
  }

  private all_listed(): boolean {
    return this.data.sequences.listed[this.sequence] === this.data.sequences.repeats[this.sequence];
  }

  private listen(): void {
    const factor: [string, () => void][] = [
      ["track-in", () => this.zoom(0.5)],
      ["track-out", () => this.zoom(2)],
      ["track-left", () => this.move(-0.5)],
      ["track-right", () => this.move(0.5)],
      ["track-all", () => this.go(1, this.end())],
      ["track-limit", () => this.actions.limit({ sequence: this.sequence, from: this.from, to: this.to })],
    ];
    for (const [id, act] of factor) by_id(id).addEventListener("click", act);
    this.area.addEventListener("keydown", (event) => {
      const act = { ArrowLeft: () => this.move(-0.25), ArrowRight: () => this.move(0.25), "+": () => this.zoom(0.5),
        "=": () => this.zoom(0.5), "-": () => this.zoom(2), Home: () => this.go(1, this.end()) }[event.key];
      if (!act) return;
      event.preventDefault();
      act();
    });
    this.listen_to_drags();
    by_id<HTMLFormElement>("track-range").addEventListener("submit", (event) => {
      event.preventDefault();
      this.go_to_typed();
    });
  }

  // An empty field stands for the end of the sequence on its side.
  private go_to_typed(): void {
    const range = range_in("track-range", "track-from", "track-to");
    if (!range) return;
    const [from, to] = [range.min ?? 1, range.max ?? this.end()];
    const fault = stretch_fault(from, to, this.end());
    if (fault === null) this.go(from, to);
    else complain("track-range", [by_id<HTMLInputElement>("track-from"), by_id<HTMLInputElement>("track-to")], fault);
  }

  // A stretch drawn with the pointer becomes the view; a mere click does nothing.
  private listen_to_drags(): void {
    let begun: number | null = null;
    const band = make("div", { class: "band", hidden: "" });
    const position = (event: PointerEvent) => event.clientX - this.area.getBoundingClientRect().left;
    this.area.append(band);
    this.area.addEventListener("pointerdown", (event) => {
      if (event.button !== 0 || event.pointerType === "touch") return;
      begun = position(event);
    });
    window.addEventListener("pointermove", (event) => {
      if (begun === null) return;
      const now = position(event);
      band.hidden = Math.abs(now - begun) < 4;
      band.style.left = `${Math.min(begun, now)}px`;
      band.style.width = `${Math.abs(now - begun)}px`;
    });
    window.addEventListener("pointerup", (event) => {
      if (begun === null) return;
      const [low, high] = [Math.min(begun, position(event)), Math.max(begun, position(event))];
      begun = null;
      band.hidden = true;
      if (high - low >= 4) this.go(this.invert(low), this.invert(high));
    });
  }

  private zoom(factor: number): void {
    const centre = (this.from + this.to) / 2;
    const half = ((this.to - this.from + 1) * factor) / 2;
    this.go(centre - half, centre + half);
  }

  private move(share: number): void {
    const span = this.to - this.from;
    const step = Math.round((span + 1) * share);
    const from = Math.max(1, Math.min(this.from + step, this.end() - span));
    this.go(from, from + span);
  }

  private go(from: number, to: number): void {
    const end = this.end();
    const narrowest = Math.min(end, this.all_listed() ? narrowest_view : this.track().width * 8);
    if (to - from + 1 < narrowest) {
      from = (from + to) / 2 - narrowest / 2;
      to = from + narrowest;
    }
    this.from = Math.max(1, Math.round(from));
    this.to = Math.min(end, Math.round(to));
    if (this.to - this.from + 1 < narrowest) this.from = Math.max(1, this.to - narrowest + 1);
    this.draw();
  }

  private bins(most: number): Bin[] {
    const track = this.track();
    const span = this.to - this.from + 1;
    if (this.all_listed() && span / track.width < most) {
      const [begin, stop] = [this.repeats.first[this.sequence], this.repeats.first[this.sequence + 1]];
      return exact_bins(this.repeats, begin, stop, this.from, this.to, most);
    }
    return merged_bins(track, this.from, this.to, this.end(), most);
  }

  private draw(): void {
    if (this.width === 0 || this.sequence < 0) return;
    const bins = this.bins(Math.max(40, Math.floor(this.width / 3)));
    const marks = this.marks_in_view();
    this.describe(bins, marks.length > 0);
    this.draw_view(bins, marks);
    this.draw_overview();
    const fields = [by_id<HTMLInputElement>("track-from"), by_id<HTMLInputElement>("track-to")];
    [fields[0].value, fields[1].value] = [String(this.from), String(this.to)];
    complain("track-range", fields, null);
  }

  private describe(bins: Bin[], has_marks: boolean): void {
    const { title, length } = this.data.sequences;
    const width = bins.length > 0 ? bins[0].to - bins[0].from + 1 : 1;
    const known = length[this.sequence] === null ? "of unknown length" : `of ${grouped(this.end())} bp`;
    const heading = `${shortened(visible(this.names.labels[this.sequence]), 80)} ${shortened(visible(title[this.sequence]), 160)}`.trim();
    by_id("track-title").replaceChildren(make("bdi", {}, heading));
    by_id("track-state").textContent =
      `Positions ${grouped(this.from)} to ${grouped(this.to)} ${known}; a bar is ${grouped(width)} bp.` +
      (bins.every((bin) => bin.starts === 0 && bin.covered === 0) ? " No repeat lies here." : "") +
      (has_marks ? " Below the bars stand single repeats, in the colours of their unit lengths." : "") +
      (this.all_listed() ? "" : " Single repeats of this sequence were cut, so bars get no narrower than " +
        `${grouped(this.track().width)} bp.`);
  }

  // The listed repeats in view, unless they are too many to tell apart.
  private marks_in_view(): number[] {
    const found: number[] = [];
    const stop = this.repeats.first[this.sequence + 1];
    for (let i = this.repeats.first[this.sequence]; i < stop && found.length <= most_marks; ++i) {
      if (this.repeats.end[i] >= this.from && this.repeats.start[i] <= this.to) found.push(i);
    }
    return found.length <= most_marks ? found : [];
  }

  private measure_of(bins: Bin[]): Measure {
    return this.measure.value === "covered" ? share_covered() : repeats_per_length(bins);
  }

  private draw_view(bins: Bin[], marks: number[]): void {
    const label = (bin: Bin) => `${grouped(bin.from)} to ${grouped(bin.to)}: ` +
      `${counted(bin.starts, "repeat starts", "repeats start")}, ${grouped(bin.covered)} of ${grouped(bin.to - bin.from + 1)} bp covered`;
    const measure = this.measure_of(bins);
    const [low, high] = [this.from - 0.5, this.to + 0.5];
    const plot = Plot.plot({
      width: this.width, height: 220, marginLeft: left_margin, marginRight: right_margin, marginTop: 22, marginBottom: 54,
      ariaLabel: "Density of repeats along the sequence", style: { background: "transparent" },
      x: { domain: [low, high], axis: null },
      y: { label: measure.label, domain: value_domain(bins, measure), grid: true, ticks: 5, tickFormat: short_number, nice: true },
      marks: [
        Plot.rectY(bins.filter((bin) => bin.starts > 0 || bin.covered > 0), { x1: (bin: Bin) => bin.from - 0.5,
          x2: (bin: Bin) => bin.to + 0.5, y: measure.value, fill: "var(--bar)", title: label, shapeRendering: "crispEdges", clip: true }),
        Plot.ruleY([0]),
        Plot.axisX({ anchor: "bottom", label: "Position (bp)", dy: 14, labelOffset: 46, tickSize: 0,
          ticks: whole_ticks(low, high, Math.max(2, Math.floor(this.width / 90))),
          tickFormat: high - low < 100000 ? grouped : short_number }),
      ],
    });
    const scale = plot.scale("x");
    this.invert = (x) => Number(scale?.invert?.(x) ?? 1);
    as_image(plot);
    this.add_marks(plot as unknown as SVGSVGElement, marks, (position) => Number(scale?.apply(position) ?? 0));
    this.area.querySelector(".plot-here")?.replaceChildren(plot);
  }

  // Single repeats stand in a row between the bars and the axis; a click picks one.
  private add_marks(svg: SVGSVGElement, marks: number[], x: (position: number) => number): void {
    const group = document.createElementNS(svg.namespaceURI, "g") as SVGGElement;
    group.setAttribute("class", "marks");
    for (const i of marks) {
      const rect = document.createElementNS(svg.namespaceURI, "rect") as SVGRectElement;
      const left = Math.max(left_margin, x(this.repeats.start[i] - 0.5));
      const right = Math.min(this.width - right_margin, x(this.repeats.end[i] + 0.5));
      const place = { x: left, y: 170, width: Math.max(2, right - left), height: 10 };
      for (const [name, value] of Object.entries(place)) rect.setAttribute(name, String(value));
      rect.setAttribute("fill", class_colours[class_of(this.repeats.unitLength[i])]);
      const title = document.createElementNS(svg.namespaceURI, "title");
      const unit = this.data.repeats.unitTexts[this.repeats.unit[i]];
      title.textContent = `${grouped(this.repeats.start[i])} to ${grouped(this.repeats.end[i])}: ${shortened(visible(unit), 40)}`;
      rect.append(title);
      rect.addEventListener("click", () => this.actions.pick(i));
      group.append(rect);
    }
    svg.append(group);
  }

  private draw_overview(): void {
    const end = this.end();
    const bins = merged_bins(this.track(), 1, end, end, Math.max(40, Math.floor(this.width / 3)));
    const measure = this.measure_of(bins);
    const most = value_domain(bins, measure)[1];
    const height = 34;
    const svg = document.createElementNS("http://www.w3.org/2000/svg", "svg");
    // Where a base begins: the strip reaches from the beginning of the first base to the end of the last, as the track does.
    const x = (position: number) => left_margin + ((position - 1) / end) * (this.width - left_margin - right_margin);
    svg.setAttribute("width", String(this.width));
    svg.setAttribute("height", String(height));
    svg.setAttribute("aria-hidden", "true");
    const add = (name: string, attributes: Record<string, string | number>) => {
      const shape = document.createElementNS(svg.namespaceURI, name);
      for (const [key, value] of Object.entries(attributes)) shape.setAttribute(key, String(value));
      svg.append(shape);
    };
    const path = bins.filter((bin) => bin.starts > 0 || bin.covered > 0).map((bin) => {
      const top = height - (measure.value(bin) / most) * (height - 2);
      return `M${x(bin.from).toFixed(1)},${height}V${top.toFixed(1)}H${x(bin.to + 1).toFixed(1)}V${height}Z`;
    });
    add("path", { d: `M${x(1)},${height - 0.5}H${x(end + 1)}`, class: "overview-line" });
    add("path", { d: path.join(""), class: "overview-bars" });
    add("rect", { x: x(this.from), y: 0.5, width: Math.max(3, x(this.to + 1) - x(this.from)), height: height - 1,
      class: "overview-window" });
    this.overview.replaceChildren(svg);
  }
}
