// The plan: north up, at one scale.

class PlanView {
  constructor(canvas, report) {
    this.report = report;
    this.symbols = new Symbols(report);
    this.view = new Viewport(canvas, { left: 0, bottom: 0 }, {
      draw: (c) => this.draw(c),
      move: (x, y) => this.move(x, y),
      click: (x, y) => report.select(this.symbols.nearest(x, y), "plan"),
      leave: () => report.hover(-1),
      key: (event) => report.key(event),
    });
    this.view.setBounds(this.bounds(), false);
  }

  bounds() {
    const bounds = { left: Infinity, right: -Infinity, bottom: Infinity, top: -Infinity };
    const add = (e, n) => {
      bounds.left = Math.min(bounds.left, e);
      bounds.right = Math.max(bounds.right, e);
      bounds.bottom = Math.min(bounds.bottom, n);
      bounds.top = Math.max(bounds.top, n);
    };
    for (const p of this.report.road.points) add(p[1], p[0]);
    for (const s of this.report.road.segments) {
      for (let part = 0.125; s.bulge !== 0 && part < 1; part += 0.125) add(s.at(part).e, s.at(part).n);
    }
    // Borings far off would make the road a dot; they are reached by moving the plan or by their row.
    const hasRoad = Number.isFinite(bounds.left);
    for (const b of this.report.borings) {
      if (b.northing !== null && (b.placed || !hasRoad)) add(b.easting, b.northing);
    }
    return Number.isFinite(bounds.left) ? bounds : { left: 0, right: 100, bottom: 0, top: 100 };
  }

  move(x, y) {
    const [e, n] = [this.view.fromX(x), this.view.fromY(y)];
    const place = this.report.road.nearest(e, n);
    this.report.hover(this.symbols.nearest(x, y));
    this.report.moveCursor(place && { ...place, pointer: { e, n } }, "plan");
  }

  draw(c) {
    const { view } = this;
    const [low, high] = [
      { e: view.fromX(0), n: view.fromY(view.height) },
      { e: view.fromX(view.width), n: view.fromY(0) },
    ];
    this.grid(c, low, high);
    this.place();
    if (this.symbols.areDense) this.symbols.draw(c);
    this.road(c, low, high);
    this.symbols.taken = this.stations(c);
    if (!this.symbols.areDense) this.symbols.draw(c);
    this.cursor(c);
    this.symbols.drawChosen(c);
    this.scaleBar(c);
    this.northArrow(c);
  }

  place() {
    const { view, report } = this;
    this.symbols.clear();
    for (const [i, b] of report.borings.entries()) {
      if (b.northing === null) continue;
      const [x, y] = [view.toX(b.easting), view.toY(b.northing)];
      if (x < -20 || y < -20 || x > view.width + 20 || y > view.height + 20) continue;
      this.symbols.add(i, x, y, b.placed || report.road.segments.length === 0 ? "circle" : "square");
    }
  }

  grid(c, low, high) {
    const { view, report } = this;
    const step = niceStep(110 / view.kx);
    const decimals = decimalsOfStep(step);
    const { grid, faint, paper } = report.colours;
    for (const e of ticks(low.e, high.e, step)) line(c, view.toX(e), 0, view.toX(e), view.height, grid, 1);
    for (const n of ticks(low.n, high.n, step)) line(c, 0, view.toY(n), view.width, view.toY(n), grid, 1);
    for (const e of ticks(low.e, high.e, step)) {
      const x = view.toX(e);
      if (x > 60 && x < view.width - 60) {
        write(c, "E " + e.toFixed(decimals), x, 10, faint, { align: "center", halo: paper });
      }
    }
    for (const n of ticks(low.n, high.n, step)) {
      const y = view.toY(n);
      if (y > 20 && y < view.height - 50) write(c, "N " + n.toFixed(decimals), 6, y, faint, { halo: paper });
    }
  }

  road(c, low, high) {
    const { view } = this;
    const near = (a, b, reach, from, to) => Math.max(a, b) + reach >= from && Math.min(a, b) - reach <= to;
    c.beginPath();
    for (const s of this.report.road.segments) {
      if (!near(s.e, s.endE, s.reach, low.e, high.e) || !near(s.n, s.endN, s.reach, low.n, high.n)) continue;
      c.moveTo(view.toX(s.e), view.toY(s.n));
      // Chords that leave the arc by less than a quarter of a pixel.
      const turn = s.bulge === 0 ? 0 : Math.abs(s.sweep) / Math.sqrt(2 / Math.max(s.radius * view.kx, 1));
      const parts = Math.min(Math.max(Math.ceil(turn), 1), 4000);
      for (let i = 1; i <= parts; ++i) {
        const at = s.at(i / parts);
        c.lineTo(view.toX(at.e), view.toY(at.n));
      }
    }
    c.lineJoin = c.lineCap = "round";
    stroke(c, this.report.colours.road, 3);
    c.lineCap = "butt";
  }

  // Returns the boxes of their texts.
  stations(c) {
    const { view, report } = this;
    const { road, colours } = report;
    const boxes = [];
    if (road.segments.length === 0) return boxes;
    const [low, high] = [road.firstStation, road.lastStation];
    const step = Math.max(niceStep(90 / view.kx), niceStep((high - low) / 1500 || 1));
    const decimals = decimalsOfStep(step);
    for (const station of ticks(low, high, step)) {
      const at = road.at(station);
      if (!at) continue;
      const [x, y] = [view.toX(at.e), view.toY(at.n)];
      if (x < 0 || y < 0 || x > view.width || y > view.height) continue;
      const [nx, ny] = [at.dn, at.de]; // to the right, on the screen
      line(c, x - 6 * nx, y - 6 * ny, x + 6 * nx, y + 6 * ny, colours.road, 1.5);
      const text = stationText(station, report.km, decimals);
      const align = nx > 0.4 ? "left" : nx < -0.4 ? "right" : "center";
      write(c, text, x + 14 * nx, y + 14 * ny, colours.road, { align, halo: colours.paper });
      const width = c.measureText(text).width;
      const before = { left: 0, center: width / 2, right: width }[align];
      boxes.push([x + 14 * nx - before, y + 14 * ny, width]);
    }
    return boxes;
  }

  cursor(c) {
    const { view, report } = this;
    const at = report.cursor;
    if (!at || at.e === undefined) return;
    const [x, y] = [view.toX(at.e), view.toY(at.n)];
    const { accent, paper } = report.colours;
    if (at.pointer) line(c, view.toX(at.pointer.e), view.toY(at.pointer.n), x, y, accent, 1.5, [4, 4]);
    line(c, x - 12 * at.dn, y - 12 * at.de, x + 12 * at.dn, y + 12 * at.de, accent, 2);
    c.beginPath();
    shapes.circle(c, x, y, 5);
    c.fillStyle = paper;
    c.fill();
    stroke(c, accent, 2.5);
  }

  scaleBar(c) {
    const { view, report } = this;
    const metres = niceStep(60 / view.kx);
    const width = metres * view.kx;
    const [x, y] = [14, view.height - 14];
    const { ink, paper } = report.colours;
    line(c, x, y, x + width, y, paper, 6);
    line(c, x, y, x + width, y, ink, 2);
    for (const end of [x, x + width]) line(c, end, y - 5, end, y + 1, ink, 2);
    write(c, `${metres.toFixed(decimalsOfStep(metres))} m`, x + width / 2, y - 12, ink, { align: "center", halo: paper });
  }

  northArrow(c) {
    const { ink, paper } = this.report.colours;
    const [x, y] = [this.view.width - 22, 26];
    c.beginPath();
    c.moveTo(x, y);
    c.lineTo(x + 7, y + 22);
    c.lineTo(x, y + 17);
    c.lineTo(x - 7, y + 22);
    c.closePath();
    c.fillStyle = ink;
    c.fill();
    write(c, "N", x, y - 9, ink, { align: "center", bold: true, halo: paper });
  }
}
