// The page on paper: as wide as A4 and Letter allow, its plots drawn anew for that width, the settings of the run open.

import { by_id } from "./dom";

// Calls redraw when the page has taken the width of paper, and when it has gone back.
export function connect_printing(redraw: () => void): void {
  const settings = by_id<HTMLDetailsElement>("settings");
  let was_open = false;
  const set = (is_printing: boolean) => {
    document.documentElement.classList.toggle("printing", is_printing);
    redraw();
  };
  window.addEventListener("beforeprint", () => {
    was_open = settings.open;
    settings.open = true;
    set(true);
  });
  window.addEventListener("afterprint", () => {
    settings.open = was_open;
    set(false);
  });
}
