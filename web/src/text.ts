// Texts of the results file as something that can be looked at, and numbers as people write them.

const reordering = /[\u200e\u200f\u202a-\u202e\u2066-\u2069]/gu;

// Control bytes become their pictures, and what would turn the direction of the text becomes U+FFFD.
export function visible(text: string): string {
  return text
    .replace(/[\u0000-\u001f]/gu, (control) => String.fromCharCode(0x2400 + control.charCodeAt(0)))
    .replace(/\u007f/gu, "\u2421")
    .replace(/[\u0080-\u009f\u2028\u2029]/gu, "\ufffd")
    .replace(reordering, "\ufffd");
}

// Shortened in the middle to at most that many characters.
export function shortened(text: string, most: number): string {
  if (text.length <= most) return text;
  const kept = most - 1;
  return text.slice(0, Math.ceil(kept / 2)) + "\u2026" + text.slice(text.length - Math.floor(kept / 2));
}

const whole = new Intl.NumberFormat("en-US", { maximumFractionDigits: 0 });
const three = new Intl.NumberFormat("en-US", { maximumFractionDigits: 3 });

export function grouped(value: number): string {
  return whole.format(value);
}

export function decimal(value: number): string {
  return Number.isNaN(value) ? "undefined" : three.format(value);
}

export function percent(value: number): string {
  return Number.isNaN(value) ? "undefined" : `${value.toFixed(2)} %`;
}

export function counted(count: number, one: string, many: string): string {
  return `${grouped(count)} ${count === 1 ? one : many}`;
}

// An axis label for a position or a count: 1500000 as 1.5M.
export function short_number(value: number): string {
  const size = Math.abs(value);
  for (const [factor, suffix] of [[1e9, "G"], [1e6, "M"], [1e3, "k"]] as const) {
    if (size >= factor) return `${+(value / factor).toPrecision(6)}${suffix}`;
  }
  return String(+value.toPrecision(6));
}
