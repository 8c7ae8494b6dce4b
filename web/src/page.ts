// The page as a whole: reads the data, fills every part and connects them.

import { alignment_of, columns_of, read_data, type Repeats } from "./data";
import type { ReportData } from "./report-data";
import { by_id, make } from "./dom";
import { type Filter, no_filter, parse_region, parse_units, type Range, type Region, select } from "./filter";
import { show_distributions, show_unit_lengths, show_units } from "./plots";
import { bed_text, offer_file, tsv_text } from "./save";
import { RepeatTable } from "./table";
import { counted, decimal, grouped, shortened, visible } from "./text";
import { TrackView } from "./track";

function show_head(data: ReportData): void {
  const input = data.settings.find(([label]) => label.startsWith("Input file name"))?.[1] ?? "";
  by_id("source").replaceChildren("Results file ", make("bdi", {}, visible(data.results.name)),
    ...(input === "" ? [] : [", found in ", make("bdi", {}, visible(input))]), `, by ${visible(data.program)}.`);
  document.title = `Tandem repeats: ${visible(data.results.name)}`;
}

function show_totals(data: ReportData): void {
  const { repeats, covered, sequences, symbols } = data.totals;
  const tiles: [string, string][] = [["Repeats", grouped(repeats)], ["Bases covered", grouped(covered)]];
  if (symbols) {
    tiles.push(["Share covered", `${((covered / symbols) * 100).toFixed(2)} %`]);
    tiles.push(["Bases searched", grouped(symbols)]);
  }
  tiles.push([data.results.format === 3 && !symbols ? "Sequences with repeats" : "Sequences", grouped(sequences)]);
  const list = by_id("totals");
  for (const [name, value] of tiles) list.append(make("div", {}, make("dt", {}, name), make("dd", {}, value)));
}

function show_settings(data: ReportData): void {
  const list = by_id("settings-list");
  for (const [label, value] of data.settings) {
    list.append(make("dt", {}, visible(label)), make("dd", {}, make("bdi", {}, value === "" ? "\u2013" : visible(value))));
  }
}

// Every sentence about what the page does not hold.
function cut_sentences(data: ReportData): string[] {
  const cut = data.cut;
  const sentences: string[] = [];
  if (cut.repeats > 0) {
    sentences.push(`${counted(cut.repeats, "repeat is", "repeats are")} not listed, to keep this page small: ` +
      `those with a score below ${grouped(cut.score ?? 0)}, and those with that score behind the first ` +
      `${grouped(cut.listedOfScore)} of the file. Counts, distributions and tracks cover them all.`);
  }
  if (cut.alignments > 0) {
    sentences.push(`${counted(cut.alignments, "alignment is", "alignments are")} left out, all of repeats with a ` +
      `score of ${grouped(cut.alignmentScore ?? 0)} or less.`);
  }
  if (cut.longAlignments > 0) {
    sentences.push(`${counted(cut.longAlignments, "alignment", "alignments")} of more than 20,000 symbols left out.`);
  }
  if (cut.tracks > 0) {
    sentences.push(`${counted(cut.tracks, "sequence has", "sequences have")} no track: those with the fewest repeats ` +
      `(at most ${grouped(cut.trackRepeats)}).`);
  }
  if (cut.names > 0) sentences.push(`${counted(cut.names, "long name or unit is", "long names or units are")} shortened.`);
  return sentences;
}

function show_cuts(data: ReportData): void {
  const sentences = cut_sentences(data);
  by_id("cut").hidden = sentences.length === 0;
  by_id("cut").replaceChildren(...sentences.map((sentence) => make("p", {}, sentence)));
}

// A field's number; null when it is empty. A text that is no number is marked and counts as none.
function number_in(id: string): number | null {
  const field = by_id<HTMLInputElement>(id);
  const text = field.value.trim();
  const value = Number(text);
  const wrong = !field.validity.valid || Number.isNaN(value);
  field.toggleAttribute("aria-invalid", wrong);
  if (wrong) field.setAttribute("aria-invalid", "true");
  return text === "" || wrong ? null : value;
}

function range_in(name: string): Range {
  return { min: number_in(`${name}-min`), max: number_in(`${name}-max`) };
}

function complain(id: string, message: string): void {
  const field = by_id<HTMLInputElement>(id);
  if (message === "") field.removeAttribute("aria-invalid");
  else field.setAttribute("aria-invalid", "true");
  by_id(`${id}-error`).textContent = message;
}

// What the track has asked for, and the text that stands for it: a name alone may be that of several sequences.
let asked = { text: "", region: null as Region | null };

function read_region(data: ReportData, text: string): Region | null {
  return text === asked.text ? asked.region : parse_region(data, text);
}

function read_filter(data: ReportData): Filter | null {
  const units = parse_units(by_id<HTMLInputElement>("filter-unit").value);
  complain("filter-unit", units ? "" : "Please give units as letters, for example AC or AAT.");
  const text = by_id<HTMLInputElement>("filter-region").value;
  const region = read_region(data, text);
  const is_unknown = text.trim() !== "" && !region;
  complain("filter-region", is_unknown ? "No sequence of that name, or no such range." : "");
  if (!units || is_unknown) return null;
  return { ...no_filter(), units, region, unitLength: range_in("filter-unit-length"), length: range_in("filter-length"),
    perfection: range_in("filter-perfection"), score: range_in("filter-score") };
}

function connect_filters(data: ReportData, repeats: Repeats, table: RepeatTable): () => void {
  const form = by_id<HTMLFormElement>("filters");
  const apply = () => {
    const filter = read_filter(data);
    table.set_rows(filter ? select(data, repeats, filter) : new Uint32Array(0));
  };
  let waiting = 0;
  form.addEventListener("input", () => {
    clearTimeout(waiting);
    waiting = window.setTimeout(apply, 150);
  });
  form.addEventListener("submit", (event) => {
    event.preventDefault();
    apply();
  });
  form.addEventListener("reset", () => setTimeout(apply, 0));
  return apply;
}

function connect_saving(data: ReportData, repeats: Repeats, table: RepeatTable): void {
  const stem = data.results.name.replace(/(\.(txt|tsv|gz|results?))+$/u, "").replace(/[^\w.-]+/gu, "_") || "repeats";
  by_id("save-bed").addEventListener("click", () =>
    offer_file(`${stem}.bed`, "text/plain", bed_text(data, repeats, table.shown())));
  by_id("save-tsv").addEventListener("click", () =>
    offer_file(`${stem}.tsv`, "text/tab-separated-values", tsv_text(data, repeats, table.shown())));
}

const without_text = {
  alignment: "The alignment of this repeat was left out to keep the page small.",
  sequence: "The sequence of this repeat was left out to keep the page small.",
  none: "The results file holds no alignments. quarvo writes them with --outputFormat 0 or 1 and --printRepeatSeqMode 2.",
};

function show_details(data: ReportData, repeats: Repeats, i: number): void {
  const name = visible(data.sequences.name[repeats.sequence[i]]);
  const unit = visible(data.repeats.unitTexts[repeats.unit[i]]);
  by_id("details-heading").replaceChildren("Repeat at ", make("bdi", {}, shortened(name, 80)),
    `:${grouped(repeats.start[i])}\u2013${grouped(repeats.end[i])}`);
  by_id("details-facts").textContent = `Unit ${unit} (${counted(repeats.unitLength[i], "base", "bases")}), ` +
    `${decimal(repeats.copies[i])} copies, ${grouped(repeats.length[i])} bp, score ${grouped(repeats.score[i])}, ` +
    `perfection ${decimal(repeats.perfection[i])} %.`;
  const lines = alignment_of(data, i);
  const text = by_id("alignment");
  text.hidden = lines === null;
  text.textContent = lines ? lines.join("\n") : "";
  by_id("alignment-note").textContent = lines ? "" : without_text[data.alignments.kind];
  by_id("details").hidden = false;
}

function region_text(data: ReportData, region: Region): string {
  return `${data.sequences.name[region.sequence]}:${region.from}-${region.to}`;
}

function start(): void {
  const data = read_data();
  const repeats = columns_of(data);
  show_head(data);
  show_totals(data);
  show_settings(data);
  show_cuts(data);
  by_id("nothing").hidden = data.totals.repeats > 0;
  by_id("something").hidden = data.totals.repeats === 0;
  if (data.totals.repeats === 0) return;

  show_unit_lengths(data);
  show_units(data);
  show_distributions(data);
  const pick = (repeat: number) => {
    show_details(data, repeats, repeat);
    table.mark(repeat);
    track.show_repeat(repeat);
    by_id("details").focus();
  };
  const table = new RepeatTable(data, repeats, pick);
  const apply = connect_filters(data, repeats, table);
  const limit = (region: Region) => {
    const field = by_id<HTMLInputElement>("filter-region");
    field.value = region_text(data, region);
    asked = { text: field.value, region };
    apply();
    by_id("repeats").scrollIntoView();
  };
  const track = new TrackView(data, repeats, { pick, limit });
  connect_saving(data, repeats, table);
  apply();
}

start();
document.documentElement.dataset.ready = "true";
