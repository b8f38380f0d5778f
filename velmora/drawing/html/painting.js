// What plan and profile have in common: text, symbols of borings and their labels.
// A boring's symbol tells its kind by shape, so that nobody needs the colours.

const font = "12px system-ui, sans-serif";
const boldFont = "600 12px system-ui, sans-serif";
const lineHeight = 15;
const reach = 12; // px within which the pointer finds a boring
const mostLabelled = 150;
const dense = 600;

function write(c, text, x, y, colour, { align = "left", bold = false, halo } = {}) {
  c.font = bold ? boldFont : font;
  c.textAlign = align;
  c.textBaseline = "middle";
  if (halo) {
    c.lineWidth = 3;
    c.lineJoin = "round";
    c.strokeStyle = halo;
    c.strokeText(text, x, y);
  }
  c.fillStyle = colour;
  c.fillText(text, x, y);
}

function stroke(c, colour, width, dash = []) {
  c.strokeStyle = colour;
  c.lineWidth = width;
  c.setLineDash(dash);
  c.stroke();
  c.setLineDash([]);
}

function line(c, x1, y1, x2, y2, colour, width, dash) {
  c.beginPath();
  c.moveTo(x1, y1);
  c.lineTo(x2, y2);
  stroke(c, colour, width, dash);
}

const shapes = {
  circle(c, x, y, r) {
    c.moveTo(x + r, y);
    c.arc(x, y, r, 0, 2 * Math.PI);
  },
  square(c, x, y, r) {
    c.rect(x - r, y - r, 2 * r, 2 * r);
  },
  triangle(c, x, y, r) {
    c.moveTo(x, y - r);
    c.lineTo(x + r, y + r);
    c.lineTo(x - r, y + r);
    c.closePath();
  },
};

// Borings at their places in a view, the last drawn: what is drawn there, and what the pointer finds.
class Symbols {
  constructor(report) {
    this.report = report;
    this.clear();
  }

  clear() {
    this.all = [];
    this.taken = []; // boxes of [x, y, width] around text that names must not cover
  }

  add(index, x, y, shape) {
    this.all.push({ index, x, y, shape });
  }

  // So many that the road is drawn over them.
  get areDense() {
    return this.all.length > dense;
  }

  nearest(x, y) {
    let found = -1;
    let best = reach * reach;
    for (const s of this.all) {
      const squared = (s.x - x) ** 2 + (s.y - y) ** 2;
      if (squared > best || !this.report.isShown(s.index)) continue;
      best = squared;
      found = s.index;
    }
    return found;
  }

  // Names begin to the right of `left`.
  draw(c, left = 0) {
    const { colours } = this.report;
    const count = this.all.length;
    const radius = count > 1500 ? 2 : this.areDense ? 2.5 : 4;
    const width = radius < 3 ? 1 : 1.5;
    for (const shown of [false, true]) {
      for (const [name, shape] of Object.entries(shapes)) {
        c.beginPath();
        for (const s of this.all) {
          if (s.shape === name && this.report.isShown(s.index) === shown) shape(c, s.x, s.y, radius);
        }
        c.globalAlpha = shown ? 1 : 0.25;
        c.fillStyle = colours.paper;
        c.fill();
        stroke(c, name === "square" ? colours.stray : colours.boring, width);
      }
    }
    c.globalAlpha = 1;
    if (count <= mostLabelled) this.label(c, radius, left);
  }

  drawChosen(c) {
    const { selected, hovered } = this.report;
    for (const index of new Set([hovered, selected])) this.emphasize(c, index, index === selected);
  }

  // Names where they cover neither another name nor another symbol.
  label(c, radius, left) {
    const { hovered, selected } = this.report;
    const half = lineHeight / 2;
    const taken = this.all.map((s) => [s.x - radius, s.x + radius, s.y - radius, s.y + radius]);
    for (const [x, y, width] of this.taken) taken.push([x, x + width, y - half, y + half]);
    const isFree = (a) => taken.every((b) => a[1] <= b[0] || b[1] <= a[0] || a[3] <= b[2] || b[3] <= a[2]);
    c.font = font;
    for (const s of this.all) {
      if (!this.report.isShown(s.index) || s.index === hovered || s.index === selected) continue;
      const text = this.report.labelOf(s.index);
      const width = c.measureText(text).width;
      for (const x of [s.x + radius + 4, s.x - radius - 4 - width]) {
        const box = [x, x + width, s.y - half, s.y + half];
        if (x < left || x + width > c.canvas.clientWidth || !isFree(box)) continue;
        taken.push(box);
        write(c, text, x, s.y, this.report.colours.ink, { halo: this.report.colours.paper });
        break;
      }
    }
  }

  emphasize(c, index, ring) {
    const radius = 4;
    const s = this.all.find((symbol) => symbol.index === index);
    if (!s) return;
    const { colours } = this.report;
    c.beginPath();
    shapes[s.shape](c, s.x, s.y, radius + 1);
    c.fillStyle = colours.boring;
    c.fill();
    if (ring) {
      c.beginPath();
      shapes.circle(c, s.x, s.y, radius + 6);
      stroke(c, colours.accent, 2.5);
    }
    const text = this.report.labelOf(index);
    c.font = boldFont;
    const width = c.measureText(text).width + 12;
    const left = s.x + radius + 10 + width > c.canvas.clientWidth ? s.x - radius - 10 - width : s.x + radius + 10;
    c.fillStyle = colours.accent;
    c.beginPath();
    c.roundRect(left, s.y - 11, width, 22, 4);
    c.fill();
    write(c, text, left + 6, s.y + 0.5, colours.onAccent, { bold: true });
  }
}
