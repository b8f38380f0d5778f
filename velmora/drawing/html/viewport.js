// A canvas that shows a part of a plane and can be moved and zoomed with mouse, fingers and keys.
// World x runs to the right and y upwards; there may be different scales along them.

const tapDistance = 5; // px that a press may move and still be a click
const wheelStep = 1.0015;
const buttonStep = 1.5;

class Viewport {
  // `margin` of pixels at the left and below belongs to axes. `handlers`: draw(context), move(x, y),
  // click(x, y), leave(), key(event), which returns whether it took the key.
  constructor(canvas, margin, handlers) {
    Object.assign(this, { canvas, margin, handlers });
    this.context = canvas.getContext("2d");
    this.pointers = new Map();
    this.x = this.y = 0; // of the middle, in the world
    this.kx = this.ky = 1; // px per metre
    this.bounds = null;
    this.touched = false; // by people, so that another size keeps what they look at
    new ResizeObserver(() => this.resize()).observe(canvas);
    canvas.addEventListener("wheel", (event) => this.wheel(event), { passive: false });
    canvas.addEventListener("pointerdown", (event) => this.press(event));
    canvas.addEventListener("pointermove", (event) => this.drag(event));
    for (const end of ["pointerup", "pointercancel"]) {
      canvas.addEventListener(end, (event) => this.release(event, end === "pointerup"));
    }
    canvas.addEventListener("pointerleave", () => this.pointers.size === 0 && handlers.leave());
    canvas.addEventListener("keydown", (event) => this.keydown(event));
  }

  get plotWidth() {
    return this.width - this.margin.left;
  }
  get plotHeight() {
    return this.height - this.margin.bottom;
  }
  toX(x) {
    return this.margin.left + this.plotWidth / 2 + (x - this.x) * this.kx;
  }
  toY(y) {
    return this.plotHeight / 2 - (y - this.y) * this.ky;
  }
  fromX(px) {
    return this.x + (px - this.margin.left - this.plotWidth / 2) / this.kx;
  }
  fromY(py) {
    return this.y - (py - this.plotHeight / 2) / this.ky;
  }

  resize() {
    const { clientWidth, clientHeight } = this.canvas;
    if (clientWidth === 0 || clientHeight === 0) return;
    const scale = window.devicePixelRatio || 1;
    this.width = clientWidth;
    this.height = clientHeight;
    this.canvas.width = Math.round(clientWidth * scale);
    this.canvas.height = Math.round(clientHeight * scale);
    this.context.setTransform(scale, 0, 0, scale, 0, 0);
    if (!this.touched) this.fit();
    this.paint();
  }

  // Shows all of `bounds`, at one scale unless heights are to fill the canvas.
  setBounds(bounds, heightsFill) {
    Object.assign(this, { bounds, heightsFill });
    this.resize();
  }

  fit() {
    const { left, right, bottom, top } = this.bounds;
    const pad = 28;
    this.x = (left + right) / 2;
    this.y = (bottom + top) / 2;
    this.kx = Math.max(this.plotWidth - 2 * pad, 50) / Math.max(right - left, 1);
    this.ky = Math.max(this.plotHeight - 2 * pad, 50) / Math.max(top - bottom, 1);
    if (!this.heightsFill) this.kx = this.ky = Math.min(this.kx, this.ky);
    this.least = Math.min(this.kx, this.ky) / 8;
    this.most = Math.max(500, Math.max(this.kx, this.ky) * 2);
    this.touched = false;
  }

  zoom(factor, px = this.margin.left + this.plotWidth / 2, py = this.plotHeight / 2) {
    const smallest = Math.min(this.kx, this.ky);
    const largest = Math.max(this.kx, this.ky);
    const by = Math.min(Math.max(factor, this.least / smallest), this.most / largest);
    const [x, y] = [this.fromX(px), this.fromY(py)];
    this.kx *= by;
    this.ky *= by;
    this.x += x - this.fromX(px);
    this.y += y - this.fromY(py);
    this.changed();
  }

  pan(dx, dy) {
    this.x -= dx / this.kx;
    this.y += dy / this.ky;
    this.changed();
  }

  // Moves so that the place can be seen, if it cannot.
  show(x, y = this.y) {
    const [px, py] = [this.toX(x), this.toY(y)];
    const edge = 24;
    const beside = px < this.margin.left + edge || px > this.width - edge;
    const above = py < edge || py > this.plotHeight - edge;
    if (beside) this.x = x;
    if (above) this.y = y;
    if (beside || above) this.changed();
  }

  changed() {
    this.touched = true;
    this.paint();
  }

  whole() {
    this.fit();
    this.paint();
  }

  // Draws once, before the next frame.
  paint() {
    if (this.frame || !this.bounds || !this.width) return;
    this.frame = requestAnimationFrame(() => {
      this.frame = 0;
      this.context.clearRect(0, 0, this.width, this.height);
      this.handlers.draw(this.context);
    });
  }

  position(event) {
    const box = this.canvas.getBoundingClientRect();
    return [event.clientX - box.left - this.canvas.clientLeft, event.clientY - box.top - this.canvas.clientTop];
  }

  wheel(event) {
    event.preventDefault();
    const pixels = event.deltaY * (event.deltaMode === 1 ? 33 : event.deltaMode === 2 ? 400 : 1);
    this.zoom(wheelStep ** -pixels, ...this.position(event));
  }

  press(event) {
    if (event.button !== 0) return;
    this.canvas.setPointerCapture(event.pointerId);
    this.pointers.set(event.pointerId, this.position(event));
    this.pressed = this.pointers.size === 1 ? this.position(event) : null;
  }

  drag(event) {
    const at = this.position(event);
    const before = this.pointers.get(event.pointerId);
    if (!before) {
      this.handlers.move(...at);
      return;
    }
    if (this.pointers.size === 1) {
      if (this.pressed && Math.hypot(at[0] - this.pressed[0], at[1] - this.pressed[1]) < tapDistance) return;
      this.pressed = null;
      this.pan(at[0] - before[0], at[1] - before[1]);
    } else {
      const other = [...this.pointers].find(([id]) => id !== event.pointerId)[1];
      const apart = (p) => Math.max(Math.hypot(p[0] - other[0], p[1] - other[1]), 1);
      const middle = (p) => [(p[0] + other[0]) / 2, (p[1] + other[1]) / 2];
      const [from, to] = [middle(before), middle(at)];
      this.pan(to[0] - from[0], to[1] - from[1]);
      this.zoom(apart(at) / apart(before), ...to);
    }
    this.pointers.set(event.pointerId, at);
  }

  release(event, inside) {
    const click = this.pressed && this.pointers.size === 1 && inside;
    this.pointers.delete(event.pointerId);
    this.pressed = null;
    if (!click) return;
    this.handlers.move(...this.position(event));
    this.handlers.click(...this.position(event));
  }

  keydown(event) {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const far = 60;
    const pans = { ArrowLeft: [far, 0], ArrowRight: [-far, 0], ArrowUp: [0, far], ArrowDown: [0, -far] };
    if (event.shiftKey && pans[event.key]) this.pan(...pans[event.key]);
    else if (event.key === "+" || event.key === "=") this.zoom(buttonStep);
    else if (event.key === "-") this.zoom(1 / buttonStep);
    else if (event.key === "0") this.whole();
    else if (!this.handlers.key(event)) return;
    event.preventDefault();
  }
}
