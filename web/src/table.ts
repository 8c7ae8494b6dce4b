// The table of listed repeats: sorted and cut into pages by TanStack Table, one page of elements at a time.

import { type ColumnDef, createTable, getCoreRowModel, type PaginationState, type SortingState, type TableState, type Updater } from "@tanstack/table-core";
import type { Repeats } from "./data";
import type { SequenceNames } from "./names";
import type { ReportData } from "./report-data";
import { sort, type SortKey } from "./filter";
import { by_id, make } from "./dom";
import { counted, grouped, percent, shortened, visible } from "./text";

interface Column {
  key: SortKey;
  title: string;
  text: (repeat: number) => string;
}

function columns(data: ReportData, names: SequenceNames, repeats: Repeats): Column[] {
  const all: Column[] = [
    { key: "sequence", title: "Sequence", text: (i) => shortened(visible(names.labels[repeats.sequence[i]]), 48) },
    { key: "start", title: "Start", text: (i) => grouped(repeats.start[i]) },
    { key: "end", title: "End", text: (i) => grouped(repeats.end[i]) },
    { key: "length", title: "Length", text: (i) => grouped(repeats.length[i]) },
    { key: "unit", title: "Unit", text: (i) => shortened(visible(data.repeats.unitTexts[repeats.unit[i]]), 24) },
    { key: "unitLength", title: "Unit length", text: (i) => grouped(repeats.unitLength[i]) },
    { key: "copies", title: "Copies", text: (i) => repeats.copies[i].toFixed(2) },
    { key: "score", title: "Score", text: (i) => grouped(repeats.score[i]) },
    { key: "perfection", title: "Perfection", text: (i) => percent(repeats.perfection[i]) },
  ];
  const edits = { mismatches: "Mismatches", insertions: "Insertions", deletions: "Deletions", ns: "N\u2019s" } as const;
  for (const key of ["mismatches", "insertions", "deletions", "ns"] as const) {
    if (data.repeats[key].length > 0) all.push({ key, title: edits[key], text: (i) => grouped(data.repeats[key][i]) });
  }
  return all;
}

// The title with soft hyphens, for narrow columns.
function hyphenated(title: string): string {
  return title.replace(/(?<=^Mis|^Inser|^Dele|^Perfec)/u, "\u00ad");
}

function updated<T>(updater: Updater<T>, old: T): T {
  return typeof updater === "function" ? (updater as (old: T) => T)(old) : updater;
}

const texts = new Set<SortKey>(["sequence", "unit"]);

// Of places and texts the first is looked for first, of sizes the largest.
const ascending_first = new Set<SortKey>(["sequence", "start", "end", "unit"]);

export class RepeatTable {
  private rows = new Uint32Array(0); // all that pass the filter, sorted
  private chosen = -1;
  private is_barred = false;
  private sorting: SortingState = [];
  private pagination: PaginationState = { pageIndex: 0, pageSize: 25 };
  private readonly columns: Column[];
  private readonly table;

  constructor(
    private readonly data: ReportData,
    names: SequenceNames,
    private readonly repeats: Repeats,
    private readonly pick: (repeat: number) => void,
  ) {
    this.columns = columns(data, names, repeats);
    const definitions: ColumnDef<number>[] = this.columns.map((column) => ({
      id: column.key, header: column.title, accessorFn: column.text,
      sortDescFirst: !ascending_first.has(column.key),
    }));
    this.table = createTable<number>({
      data: [], columns: definitions, state: {}, onStateChange: () => undefined, renderFallbackValue: null,
      getCoreRowModel: getCoreRowModel(), manualPagination: true, manualSorting: true, rowCount: 0,
      enableSortingRemoval: true, enableMultiSort: false,
      onSortingChange: (updater) => this.set_sorting(updated(updater, this.sorting)),
      onPaginationChange: (updater) => this.set_page(updated(updater, this.pagination)),
    });
    this.build_head();
    this.listen();
  }

  // The repeats to show, in the order of the file; they are sorted here as the user has chosen. Null when a filter cannot
  // be applied: then none are shown.
  set_rows(rows: Uint32Array | null): void {
    this.is_barred = rows === null;
    this.rows = rows?.slice() ?? new Uint32Array(0);
    this.sort_rows();
    this.set_page({ ...this.pagination, pageIndex: 0 });
  }

  // What is shown, in its order.
  shown(): Uint32Array {
    return this.rows;
  }

  // Marks a repeat as the chosen one, on whatever page it is.
  mark(repeat: number): void {
    this.chosen = repeat;
    this.draw();
  }

  private sort_rows(): void {
    const [by] = this.sorting;
    if (by) sort(this.data, this.repeats, this.rows, by.id as SortKey, by.desc);
    else this.rows.sort();
  }

  private set_sorting(sorting: SortingState): void {
    this.sorting = sorting;
    this.sort_rows();
    this.set_page({ ...this.pagination, pageIndex: 0 });
  }

  private set_page(pagination: PaginationState): void {
    const pages = Math.max(1, Math.ceil(this.rows.length / pagination.pageSize));
    this.pagination = { ...pagination, pageIndex: Math.max(0, Math.min(pagination.pageIndex, pages - 1)) };
    this.draw();
  }

  private synchronise(): void {
    const { pageIndex, pageSize } = this.pagination;
    const page = Array.from(this.rows.subarray(pageIndex * pageSize, (pageIndex + 1) * pageSize));
    this.table.setOptions((old) => ({
      ...old, data: page, rowCount: this.rows.length,
      state: { ...(this.table.initialState as TableState), sorting: this.sorting, pagination: this.pagination },
    }));
  }

  private build_head(): void {
    this.synchronise();
    const row = make("tr");
    for (const column of this.table.getAllLeafColumns()) {
      const button = make("button", { type: "button" }, String(column.columnDef.header));
      button.addEventListener("click", () => column.toggleSorting());
      const kind = texts.has(column.id as SortKey) ? "text" : "number";
      // Browsers repeat the head of a table on every page of paper, but not the buttons in it.
      const on_paper = make("span", { class: "on-paper" }, hyphenated(String(column.columnDef.header)));
      row.append(make("th", { scope: "col", class: kind, "data-key": column.id }, button, on_paper));
    }
    by_id("repeat-head").replaceChildren(row);
  }

  private listen(): void {
    const acts: [string, () => void][] = [
      ["page-first", () => this.table.firstPage()],
      ["page-previous", () => this.table.previousPage()],
      ["page-next", () => this.table.nextPage()],
      ["page-last", () => this.table.lastPage()],
    ];
    for (const [id, act] of acts) by_id(id).addEventListener("click", act);
    const size = by_id<HTMLSelectElement>("page-size");
    size.addEventListener("change", () => this.set_page({ pageIndex: 0, pageSize: Number(size.value) }));
  }

  private draw(): void {
    this.synchronise();
    this.draw_head();
    const rows = this.table.getRowModel().rows.map((row) => this.row(row.original));
    by_id("repeat-rows").replaceChildren(...rows);
    this.draw_state();
  }

  private draw_head(): void {
    for (const cell of by_id("repeat-head").querySelectorAll("th")) {
      const direction = this.table.getColumn(cell.dataset.key ?? "")?.getIsSorted();
      if (direction) cell.setAttribute("aria-sort", direction === "asc" ? "ascending" : "descending");
      else cell.removeAttribute("aria-sort");
    }
  }

  private row(repeat: number): HTMLTableRowElement {
    const cells = this.columns.map((column) => {
      if (column.key === "sequence") return make("td", { class: "text" }, make("bdi", {}, column.text(repeat)));
      if (column.key === "unit") return make("td", { class: "text unit" }, column.text(repeat));
      if (column.key !== "start") return make("td", {}, column.text(repeat));
      const button = make("button", { type: "button", class: "link", title: "Show this repeat",
        "aria-label": `${column.text(repeat)}, show this repeat of ${this.columns[0].text(repeat)}` }, column.text(repeat));
      button.addEventListener("click", () => this.pick(repeat));
      return make("td", {}, button);
    });
    const row = make("tr", { "data-repeat": String(repeat) }, ...cells);
    if (repeat === this.chosen) row.setAttribute("aria-current", "true");
    return row;
  }

  private draw_state(): void {
    const pages = Math.max(1, this.table.getPageCount());
    by_id("page-state").textContent = `Page ${grouped(this.pagination.pageIndex + 1)} of ${grouped(pages)}`;
    by_id("row-state").textContent = this.is_barred ? "No repeats are shown: please correct the marked filter."
      : `${counted(this.rows.length, "repeat", "repeats")} of ${grouped(this.repeats.count)} listed ` +
        `${this.rows.length === 1 ? "passes" : "pass"} the filters.`;
    const back = this.table.getCanPreviousPage();
    const on = this.table.getCanNextPage();
    for (const id of ["page-first", "page-previous"]) by_id<HTMLButtonElement>(id).disabled = !back;
    for (const id of ["page-next", "page-last"]) by_id<HTMLButtonElement>(id).disabled = !on;
  }
}
