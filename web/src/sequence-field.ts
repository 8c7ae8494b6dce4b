// A field in which a sequence is searched and chosen. However many sequences there are, the page holds elements for the
// few that match best.
//
// @github/combobox-nav moves the choice by keys and tells screen readers of it.

import Combobox from "@github/combobox-nav";
import { by_id, make } from "./dom";
import type { SequenceNames } from "./names";
import type { ReportData } from "./report-data";
import { counted, grouped, shortened, visible } from "./text";

const most_shown = 50;

// The first of those that hold the words: where a name begins with them, before all others.
export function matches(texts: string[], typed: string, most: number): { found: number[]; count: number } {
  const words = typed.trim().toLowerCase();
  const begins: number[] = [];
  const others: number[] = [];
  let count = 0;
  texts.forEach((text, index) => {
    const at = text.indexOf(words);
    if (at < 0) return;
    ++count;
    const found = at === 0 ? begins : others;
    if (found.length < most) found.push(index);
  });
  return { found: [...begins, ...others].slice(0, most), count };
}

export class SequenceField {
  private readonly input = by_id<HTMLInputElement>("track-sequence");
  private readonly popup = by_id("track-sequence-popup");
  private readonly list = by_id("track-sequence-list");
  private readonly note = by_id("track-sequence-note");
  private readonly combobox = new Combobox(this.input, this.list, { tabInsertsSuggestions: false, firstOptionSelectionMode: "active" });
  private readonly sequences: number[] = []; // those with a track
  private readonly texts: string[] = []; // what each is searched by
  private shown = ""; // what the field says of the chosen sequence

  constructor(
    private readonly data: ReportData,
    private readonly names: SequenceNames,
    private readonly choose: (sequence: number) => void,
  ) {
    const { title, track } = data.sequences;
    track.forEach((bins, sequence) => {
      if (!bins) return;
      this.sequences.push(sequence);
      this.texts.push(`${names.labels[sequence]} ${title[sequence]}`.toLowerCase());
    });
    this.listen();
  }

  // The first sequence that can be chosen, or null.
  first(): number | null {
    return this.sequences[0] ?? null;
  }

  // Names the sequence without telling anyone.
  show(sequence: number): void {
    this.shown = visible(this.names.labels[sequence]);
    this.input.value = this.shown;
  }

  private listen(): void {
    this.input.addEventListener("click", () => this.open());
    // After the field, so that it comes after the combobox has forgotten what was marked before.
    this.input.parentElement?.addEventListener("input", () => this.suggest(this.input.value));
    this.input.addEventListener("blur", () => this.close());
    this.input.addEventListener("keydown", (event) => {
      if (event.key === "Escape") this.close();
      if (event.key === "ArrowDown") this.open();
    });
    this.popup.addEventListener("mousedown", (event) => event.preventDefault()); // keeps the focus in the field
    this.list.addEventListener("combobox-commit", (event) => {
      const sequence = Number((event.target as HTMLElement).dataset.sequence);
      this.show(sequence);
      this.close();
      this.choose(sequence);
    });
  }

  // Offers all sequences, the text in the field marked so that typing replaces it.
  private open(): void {
    if (!this.popup.hidden) return;
    this.input.select();
    this.suggest("");
  }

  private close(): void {
    if (this.popup.hidden) return;
    this.combobox.stop();
    this.popup.hidden = true;
    this.input.value = this.shown;
  }

  private suggest(typed: string): void {
    if (this.popup.hidden) {
      this.popup.hidden = false;
      this.combobox.start();
    }
    const { found, count } = matches(this.texts, typed, most_shown);
    this.list.replaceChildren(...found.map((index) => this.option(this.sequences[index])));
    this.note.textContent = count === 0 ? `No sequence matches.${this.data.cut.tracks > 0 ? " Those without a track are not among them." : ""}`
      : count > found.length ? `${grouped(count)} sequences match; the first ${found.length} are shown. Type more of a name.` : "";
    this.combobox.resetSelection();
  }

  private option(sequence: number): HTMLElement {
    const { title, repeats } = this.data.sequences;
    const about = `${shortened(visible(title[sequence]), 60)} (${counted(repeats[sequence], "repeat", "repeats")})`.trim();
    return make("li", { role: "option", "data-sequence": String(sequence) },
      make("bdi", {}, shortened(visible(this.names.labels[sequence]), 60)), " ", make("small", {}, make("bdi", {}, about)));
  }
}
