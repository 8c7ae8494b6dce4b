// How far apart colours are, as people see them, with and without colour blindness.

// Of linear light; complete protanopia, deuteranopia and tritanopia by Machado, Oliveira and Fernandes (2009).
const simulations = {
  none: [1, 0, 0, 0, 1, 0, 0, 0, 1],
  protanopia: [0.152286, 1.052583, -0.204868, 0.114503, 0.786281, 0.099216, -0.003882, -0.048116, 1.051998],
  deuteranopia: [0.367322, 0.860646, -0.227968, 0.280085, 0.672501, 0.047413, -0.01182, 0.04294, 0.968881],
  tritanopia: [1.255528, -0.076749, -0.178779, -0.078411, 0.930809, 0.147602, 0.004733, 0.691367, 0.3039],
};

export const kinds_of_vision = Object.keys(simulations);

// "#rrggbb" or "rgb(r, g, b)" as linear light, 0 to 1.
function linear(colour) {
  const parts = colour.startsWith("#")
    ? [1, 3, 5].map((at) => parseInt(colour.slice(at, at + 2), 16))
    : colour.match(/\d+/gu).slice(0, 3).map(Number);
  return parts.map((part) => (part / 255 <= 0.04045 ? part / 255 / 12.92 : ((part / 255 + 0.055) / 1.055) ** 2.4));
}

function seen(colour, vision) {
  const [r, g, b] = linear(colour);
  const m = simulations[vision];
  return [0, 3, 6].map((row) => Math.min(1, Math.max(0, m[row] * r + m[row + 1] * g + m[row + 2] * b)));
}

function lab([r, g, b]) {
  const xyz = [(0.4124 * r + 0.3576 * g + 0.1805 * b) / 0.9505, 0.2126 * r + 0.7152 * g + 0.0722 * b,
    (0.0193 * r + 0.1192 * g + 0.9505 * b) / 1.089];
  const [x, y, z] = xyz.map((value) => (value > 0.008856 ? Math.cbrt(value) : 7.787 * value + 16 / 116));
  return [116 * y - 16, 500 * (x - y), 200 * (y - z)];
}

// The distance in CIE Lab. About 2 can just be noticed.
export function difference(one, other, vision) {
  const [a, b] = [lab(seen(one, vision)), lab(seen(other, vision))];
  return Math.hypot(...a.map((value, i) => value - b[i]));
}

// The ratio of WCAG 2: 3 is demanded of parts of pictures.
export function contrast(one, other) {
  const [a, b] = [one, other].map((colour) => {
    const [r, g, b] = linear(colour);
    return 0.2126 * r + 0.7152 * g + 0.0722 * b + 0.05;
  });
  return Math.max(a, b) / Math.min(a, b);
}
