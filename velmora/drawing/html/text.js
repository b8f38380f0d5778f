// Numbers as people read them, and steps of axes.

const placesOfCursor = 2;

function stationText(metres, km, decimals = placesOfCursor) {
  const text = Math.abs(metres).toFixed(decimals);
  const sign = metres < 0 && /[1-9]/.test(text) ? "-" : "";
  if (!km) return sign + text;
  const [whole, fraction] = text.split(".");
  const padded = whole.padStart(4, "0");
  return sign + padded.slice(0, -3) + "/" + padded.slice(-3) + (fraction ? "." + fraction : "");
}

// H (höger) to the right, V (vänster) to the left of the road.
function offsetText(offset) {
  const text = Math.abs(offset).toFixed(placesOfCursor);
  return /[1-9]/.test(text) ? (offset < 0 ? "V " : "H ") + text : text;
}

// The smallest of 1, 2, 5 times a power of ten that is not below `least`.
function niceStep(least) {
  const power = 10 ** Math.floor(Math.log10(least));
  return power * [1, 2, 5, 10].find((step) => step * power >= least * (1 - 1e-9));
}

function* ticks(low, high, step) {
  if (!(step > 0) || (high - low) / step > 2000) return;
  for (let i = Math.ceil(low / step); i * step <= high; ++i) yield i * step;
}

const decimalsOfStep = (step) => Math.max(0, -Math.floor(Math.log10(step) + 1e-9));
