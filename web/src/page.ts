// The page as a whole: reads the data, fills every part and connects them.

import { alignment_of, columns_of, read_data, type Repeats } from "./data";
import type { ReportData } from "./report-data";
import { by_id, follow_widths_now, make, tell_of_scrolling } from "./dom";
import { filter_in_form, filter_words } from "./fields";
import { type Region, select } from "./filter";
import { SequenceNames } from "./names";
import { show_distributions, show_unit_lengths, show_units } from "./plots";
import { connect_printing } from "./printing";
import { bed_fault, bed_text, offer_file, tsv_text } from "./save";
import { RepeatTable } from "./table";
import { counted, decimal, grouped, shortened, visible } from "./text";
import { TrackView } from "./track";

function show_head(data: ReportData): void {
  const input = data.settings.find(([label]) => label.startsWith("Input file name"))?.[1] ?? "";
  by_id("source").replaceChildren(
    ...(input === "" ? ["Search"] : ["Search of ", make("bdi", {}, visible(input))]), ` by ${visible(data.program)}. Results file: `,
    make("bdi", {}, visible(data.results.name)), ".");
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
      `those with a score below ${grouped(cut.score ?? 0)}, and, of those with a score of exactly ` +
      `${grouped(cut.score ?? 0)}, all but the first ${grouped(cut.listedOfScore)} of the file. ` +
      "Counts, distributions and tracks cover them all.");
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

function connect_filters(data: ReportData, names: SequenceNames, repeats: Repeats, table: RepeatTable): () => void {
  const form = by_id<HTMLFormElement>("filters");
  const apply = () => {
    const filter = filter_in_form(data, names);
    table.set_rows(filter ? select(data, repeats, filter) : null);
    by_id("filter-words").textContent = filter_words();
    by_id("save-error").textContent = "";
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
  by_id("save-bed").addEventListener("click", () => {
    const fault = bed_fault(data, repeats, table.shown());
    by_id("save-error").textContent = fault ?? "";
    if (fault === null) offer_file(`${stem}.bed`, "text/plain", bed_text(data, repeats, table.shown()));
  });
  by_id("save-tsv").addEventListener("click", () =>
    offer_file(`${stem}.tsv`, "text/tab-separated-values", tsv_text(data, repeats, table.shown())));
}

const without_text = {
  alignment: "The alignment of this repeat was left out to keep the page small.",
  sequence: "The sequence of this repeat was left out to keep the page small.",
  none: "The results file holds no alignments. quarvo writes them with --outputFormat 0 or 1 and --printRepeatSeqMode 2.",
};

// The lines of an alignment, one below the other, in pieces that fit on paper.
function in_pieces(lines: string[]): string {
  const width = 90;
  const pieces: string[] = [];
  for (let at = 0; at < Math.max(...lines.map((line) => line.length)); at += width) {
    pieces.push(lines.map((line) => line.slice(at, at + width)).join("\n"));
  }
  return pieces.join("\n\n");
}

function show_details(data: ReportData, names: SequenceNames, repeats: Repeats, i: number): void {
  const name = visible(names.labels[repeats.sequence[i]]);
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
  by_id("alignment-on-paper").textContent = lines ? in_pieces(lines) : "";
  by_id("alignment-note").textContent = lines ? "" : without_text[data.alignments.kind];
  by_id("details").hidden = false;
}

function region_text(names: SequenceNames, region: Region): string {
  return `${names.labels[region.sequence]}:${region.from}-${region.to}`;
}

function start(): void {
  const data = read_data();
  const repeats = columns_of(data);
  const names = new SequenceNames(data);
  show_head(data);
  show_totals(data);
  show_settings(data);
  show_cuts(data);
  by_id("nothing").hidden = data.totals.repeats > 0;
  by_id("something").hidden = data.totals.repeats === 0;
  by_id<HTMLDetailsElement>("settings").open = data.totals.repeats === 0;
  connect_printing(follow_widths_now);
  if (data.totals.repeats === 0) return;

  show_unit_lengths(data);
  show_units(data);
  show_distributions(data);
  const pick = (repeat: number) => {
    show_details(data, names, repeats, repeat);
    table.mark(repeat);
    track.show_repeat(repeat);
    by_id("details").focus();
  };
  const table = new RepeatTable(data, names, repeats, pick);
  const apply = connect_filters(data, names, repeats, table);
  const limit = (region: Region) => {
    by_id<HTMLInputElement>("filter-region").value = region_text(names, region);
    apply();
    by_id("repeats").scrollIntoView();
  };
  const track = new TrackView(data, names, repeats, { pick, limit });
  connect_saving(data, repeats, table);
  tell_of_scrolling(by_id("repeat-scroll"), by_id("repeat-scroll-words"));
  apply();
}

start();
document.documentElement.dataset.ready = "true";
