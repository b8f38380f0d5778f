// The profile: stations to the right, levels upwards, heights exaggerated.

class ProfileView {
  constructor(canvas, report) {
    this.report = report;
    this.symbols = new Symbols(report);
    this.view = new Viewport(canvas, { left: 58, bottom: 30 }, {
      draw: (c) => this.draw(c),
      move: (x, y) => this.move(x, y),
      click: (x, y) => report.select(this.symbols.nearest(x, y), "profile"),
      leave: () => report.hover(-1),
      key: (event) => report.key(event),
    });
    this.view.setBounds(ProfileView.boundsOf(report), true);
  }

  // Nothing when there is neither a profile nor a boring with station and level.
  static boundsOf(report) {
    const bounds = { left: Infinity, right: -Infinity, bottom: Infinity, top: -Infinity };
    const add = (station, level) => {
      bounds.left = Math.min(bounds.left, station);
      bounds.right = Math.max(bounds.right, station);
      bounds.bottom = Math.min(bounds.bottom, level);
      bounds.top = Math.max(bounds.top, level);
    };
    for (const p of report.road.profile) add(p[1], p[0]);
    for (const b of report.borings) if (b.placed && b.level !== null) add(b.station, b.level);
    return Number.isFinite(bounds.left) ? bounds : null;
  }

  move(x, y) {
    const { view, report } = this;
    if (x < view.margin.left) return;
    const station = view.fromX(x);
    const at = report.road.at(station);
    const known = at || report.road.levelAt(station) !== null;
    const height = view.fromY(Math.min(y, view.plotHeight));
    report.hover(this.symbols.nearest(x, y));
    report.moveCursor(known ? { ...at, station, offset: 0, height } : null, "profile");
  }

  draw(c) {
    const { view, report } = this;
    this.axes(c);
    c.save();
    c.beginPath();
    c.rect(view.margin.left, 0, view.plotWidth, view.plotHeight);
    c.clip();
    this.place();
    if (this.symbols.areDense) this.symbols.draw(c);
    this.road(c);
    if (!this.symbols.areDense) {
      this.stems(c);
      this.symbols.draw(c, view.margin.left);
    }
    this.cursor(c);
    this.symbols.drawChosen(c);
    c.restore();
    line(c, view.margin.left, 0, view.margin.left, view.plotHeight, report.colours.faint, 1);
    line(c, view.margin.left, view.plotHeight, view.width, view.plotHeight, report.colours.faint, 1);
  }

  axes(c) {
    const { view, report } = this;
    const { grid, faint, ink, paper } = report.colours;
    const step = niceStep(90 / view.kx);
    const left = view.fromX(view.margin.left);
    for (const station of ticks(left, view.fromX(view.width), step)) {
      const x = view.toX(station);
      line(c, x, 0, x, view.plotHeight + 4, grid, 1);
      const text = stationText(station, report.km, decimalsOfStep(step));
      if (x < view.width - 30) write(c, text, x, view.plotHeight + 16, faint, { align: "center" });
    }
    const rise = niceStep(34 / view.ky);
    for (const level of ticks(view.fromY(view.plotHeight), view.fromY(0), rise)) {
      const y = view.toY(level);
      line(c, view.margin.left - 4, y, view.width, y, grid, 1);
      if (y < view.plotHeight - 4 && y > 6) {
        write(c, level.toFixed(decimalsOfStep(rise)), view.margin.left - 8, y, faint, { align: "right" });
      }
    }
    const times = view.ky / view.kx;
    const text = `Heights × ${times >= 10 ? times.toFixed(0) : times.toPrecision(2)}`;
    write(c, text, view.width - 8, 12, ink, { align: "right", halo: paper });
  }

  road(c) {
    const { view, report } = this;
    const { profile } = report.road;
    if (profile.length < 2) {
      write(c, "The road has no profile", view.margin.left + 12, 12, report.colours.faint);
      return;
    }
    c.beginPath();
    c.moveTo(view.toX(profile[0][1]), view.toY(profile[0][0]));
    for (const [i, b] of profile.entries()) {
      if (i === 0) continue;
      const a = profile[i - 1];
      const [from, to] = [view.toX(a[1]), view.toX(b[1])];
      const seen = to >= view.margin.left && from <= view.width;
      const parts = a[2] === 0 || !seen ? 1 : Math.min(Math.max(Math.ceil((to - from) / 4), 1), 2000);
      for (let k = 1; k < parts; ++k) {
        const station = a[1] + ((b[1] - a[1]) * k) / parts;
        const level = report.road.levelAt(station);
        if (level !== null) c.lineTo(view.toX(station), view.toY(level));
      }
      c.lineTo(to, view.toY(b[0]));
    }
    c.lineJoin = "round";
    stroke(c, report.colours.road, 2.5);
  }

  // The borings at their levels, those without one at the lower edge.
  place() {
    const { view, report } = this;
    this.symbols.clear();
    for (const [i, b] of report.borings.entries()) {
      if (!b.placed) continue;
      const x = view.toX(b.station);
      if (x < view.margin.left - 20 || x > view.width + 20) continue;
      if (b.level === null) this.symbols.add(i, x, view.plotHeight - 7, "triangle");
      else this.symbols.add(i, x, view.toY(b.level), "circle");
    }
  }

  // From the road to each boring.
  stems(c) {
    const { view, report } = this;
    c.beginPath();
    for (const { index, x, y } of this.symbols.all) {
      const { level, roadLevel } = report.borings[index];
      if (level === null || roadLevel === null) continue;
      c.moveTo(x, view.toY(roadLevel));
      c.lineTo(x, y);
    }
    stroke(c, report.colours.boring, 1);
  }

  cursor(c) {
    const { view, report } = this;
    const at = report.cursor;
    if (!at) return;
    const x = view.toX(at.station);
    const { accent, paper } = report.colours;
    line(c, x, 0, x, view.plotHeight, accent, 1.5);
    if (at.height !== undefined) {
      const y = view.toY(at.height);
      line(c, view.margin.left, y, view.width, y, accent, 1, [4, 4]);
    }
    const level = report.road.levelAt(at.station);
    if (level === null) return;
    c.beginPath();
    shapes.circle(c, x, view.toY(level), 5);
    c.fillStyle = paper;
    c.fill();
    stroke(c, accent, 2.5);
  }
}
