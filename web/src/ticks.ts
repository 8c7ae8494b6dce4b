// Ticks of axes.

// The step of 1, 2 or 5 times a power of ten, and never below 1, that comes nearest to that many ticks between the ends.
function whole_step(low: number, high: number, count: number): number {
  const wanted = (high - low) / Math.max(1, count);
  if (wanted <= 1) return 1;
  const power = 10 ** Math.floor(Math.log10(wanted));
  const excess = wanted / power;
  return power * (excess >= Math.sqrt(50) ? 10 : excess >= Math.sqrt(10) ? 5 : excess >= Math.SQRT2 ? 2 : 1);
}

// Whole numbers from low to high, about that many.
export function whole_ticks(low: number, high: number, count: number): number[] {
  const step = whole_step(low, high, count);
  const first = Math.ceil(low / step);
  const last = Math.floor(high / step);
  return Array.from({ length: Math.max(0, last - first + 1) }, (_, i) => (first + i) * step);
}

// An axis of counts: from 0 to the first tick that no count is above.
export function count_axis(most: number, count: number): { domain: [number, number]; ticks: number[] } {
  const step = whole_step(0, most, count);
  const high = Math.max(1, Math.ceil(most / step)) * step;
  return { domain: [0, high], ticks: whole_ticks(0, high, high / step) };
}

// Every power of ten from the last that is not above any value to the first that is above none; two of them at least.
export function powers_of_ten(values: number[]): number[] {
  const low = Math.floor(Math.log10(Math.min(...values)));
  const high = Math.max(low + 1, Math.ceil(Math.log10(Math.max(...values))));
  return Array.from({ length: high - low + 1 }, (_, i) => Number(`1e${low + i}`));
}
