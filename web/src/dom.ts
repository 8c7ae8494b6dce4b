// Making elements. Text only ever becomes text: nothing here, or anywhere on the page, parses HTML.

type Child = Node | string;

export function make<K extends keyof HTMLElementTagNameMap>(
  tag: K, attributes: Record<string, string> = {}, ...children: Child[]
): HTMLElementTagNameMap[K] {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, value);
  element.append(...children);
  return element;
}

// The element of that id, which the page is known to have.
export function by_id<T extends HTMLElement = HTMLElement>(id: string): T {
  const element = document.getElementById(id);
  if (!element) throw new Error(`The page has no element ${id}.`);
  return element as T;
}

// A table of numbers: a header row, then rows whose first cell is their header.
export function number_table(caption: string, header: string[], rows: string[][]): HTMLTableElement {
  const table = make("table", {}, make("caption", {}, caption));
  table.append(make("thead", {}, make("tr", {}, ...header.map((text) => make("th", { scope: "col" }, text)))));
  const body = make("tbody");
  for (const row of rows) {
    const [first, ...others] = row;
    body.append(make("tr", {}, make("th", { scope: "row" }, make("bdi", {}, first)),
      ...others.map((text) => make("td", {}, text))));
  }
  table.append(body);
  return table;
}

const followers: (() => void)[] = [];

// Calls draw with the width in pixels now and whenever it changes.
export function follow_width(element: HTMLElement, draw: (width: number) => void): void {
  let drawn = 0;
  const follow = () => {
    const width = Math.floor(element.clientWidth);
    if (width <= 0 || width === drawn) return;
    drawn = width;
    draw(width);
  };
  new ResizeObserver(follow).observe(element);
  followers.push(follow);
}

// Looks at all widths at once, without waiting for the browser to tell of them.
export function follow_widths_now(): void {
  for (const follow of followers) follow();
}

// Shows, while an area is wider than its place, that it scrolls sideways: by the words, and by shades at its sides.
export function tell_of_scrolling(area: HTMLElement, words: HTMLElement): void {
  const frame = area.parentElement as HTMLElement;
  const look = () => {
    const hidden = area.scrollWidth - area.clientWidth;
    words.hidden = hidden <= 1;
    frame.classList.toggle("more-left", area.scrollLeft > 1);
    frame.classList.toggle("more-right", area.scrollLeft < hidden - 1);
  };
  area.addEventListener("scroll", look, { passive: true });
  const observer = new ResizeObserver(look);
  observer.observe(area);
  for (const child of area.children) observer.observe(child);
}
