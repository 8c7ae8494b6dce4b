// The normal form of repeat units: the first in the alphabet of all rotations of a unit and of its reverse complement.

const complements: Record<string, string> = {
  A: "T", C: "G", G: "C", T: "A", B: "V", V: "B", D: "H", H: "D", K: "M", M: "K", R: "Y", Y: "R", N: "N",
};

function reverse_complement(unit: string): string {
  return Array.from(unit, (symbol) => complements[symbol] ?? "?").reverse().join("");
}

// Two candidates are compared symbol by symbol; the greater one is ruled out with all rotations that share its start.
function smallest_rotation(unit: string): string {
  const n = unit.length;
  const twice = unit + unit;
  let i = 0;
  let j = 1;
  let k = 0;
  while (i < n && j < n && k < n) {
    const a = twice[i + k];
    const b = twice[j + k];
    if (a === b) {
      ++k;
      continue;
    }
    if (a > b) i += k + 1;
    else j += k + 1;
    if (i === j) ++j;
    k = 0;
  }
  const start = Math.min(i, j);
  return twice.slice(start, start + n);
}

export function normal_form(unit: string): string {
  const forward = smallest_rotation(unit);
  const backward = smallest_rotation(reverse_complement(unit));
  return forward < backward ? forward : backward;
}
