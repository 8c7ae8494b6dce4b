// Names of sequences, as the page shows them and as people type them. Where several sequences have one name, the number
// of the sequence stands after it: "NAME #3". Names hold no blank, so no such text is a name.
//
// Nothing here touches the document.

import type { ReportData } from "./report-data";

export type Found = { sequence: number } | { several: number[] } | null;

export class SequenceNames {
  readonly labels: string[];
  private readonly of_label = new Map<string, number>();
  private readonly of_shared_name = new Map<string, number[]>();

  constructor(data: ReportData) {
    const { name, ordinal, nameFault } = data.sequences;
    const first = new Map<string, number>();
    name.forEach((text, index) => {
      const before = first.get(text);
      if (before === undefined) first.set(text, index);
      else if (!this.of_shared_name.get(text)?.push(index)) this.of_shared_name.set(text, [before, index]);
    });
    this.labels = name.map((text, index) =>
      text === "" || this.of_shared_name.has(text) || nameFault[index] === "shared"
        ? `${text || "(no name)"} #${ordinal[index]}` : text);
    this.labels.forEach((label, index) => this.of_label.set(label, index));
    for (const [text, index] of first) if (!this.of_shared_name.has(text)) this.of_label.set(text, index);
  }

  // The sequence that the text stands for, or all of that name.
  find(text: string): Found {
    const sequence = this.of_label.get(text);
    if (sequence !== undefined) return { sequence };
    const several = this.of_shared_name.get(text);
    return several ? { several } : null;
  }
}
