// Ties plan, profile and table together: one cursor, one boring that is chosen.

const longestLabel = 28;
const byId = (id) => document.getElementById(id);

class ReportPage {
  constructor(data) {
    this.km = data.km;
    this.decimals = data.decimals;
    this.road = new Road(data.plan, data.profile);
    this.borings = data.borings.map(([id, northing, easting, level, station, offset, placed]) => ({
      id, northing, easting, level, station, offset, placed: placed === 1,
      roadLevel: station === null ? null : this.road.levelAt(station),
    }));
    // By station, for stepping from one to the next; those without one at the end.
    this.alongRoad = this.borings.map((_, i) => i).sort((a, b) => this.stationOf(a) - this.stationOf(b) || a - b);
    this.cursor = null;
    this.hovered = this.selected = -1;
    this.colours = {};
    this.readColours();
    if (byId("table")) this.table = new BoringTable(byId("table"), byId("filter"), byId("count"), data.table, this);
    this.plan = new PlanView(byId("plan"), this);
    if (ProfileView.boundsOf(this)) this.profile = new ProfileView(byId("profile"), this);
    else byId("profile").closest("figure").hidden = true;
    this.views = [this.plan, this.profile].filter(Boolean);
    for (const view of this.views) this.addButtons(view.view);
    this.addSwitches();
    this.showPlace();
  }

  stationOf(index) {
    const b = this.borings[index];
    return b.placed ? b.station : Number.MAX_VALUE;
  }
  labelOf(index) {
    const letters = [...(this.borings[index].id || `row ${index + 1}`)];
    return letters.length > longestLabel ? letters.slice(0, longestLabel - 1).join("") + "…" : letters.join("");
  }
  isShown(index) {
    return this.table?.shown[index] ?? true;
  }

  repaint() {
    for (const view of this.views ?? []) view.view.paint();
  }

  // For screen readers, once the user pauses.
  say(text) {
    clearTimeout(this.saying);
    this.saying = setTimeout(() => (byId("spoken").textContent = text), 400);
  }

  // `place` has station and offset, and where the plan has the station, easting, northing and direction.
  moveCursor(place, from) {
    this.cursor = place;
    const other = from === "plan" ? this.profile : from === "profile" ? this.plan : null;
    if (place && other === this.profile) other?.view.show(place.station);
    if (place?.e !== undefined && other === this.plan) other.view.show(place.e, place.n);
    this.showPlace();
    this.repaint();
  }

  showPlace() {
    const { cursor: at, decimals } = this;
    const level = at && this.road.levelAt(at.station);
    const hasLevel = level !== null && level !== undefined;
    const where = at?.pointer ?? at;
    const texts = {
      station: at ? stationText(at.station, this.km) : "–",
      offset: !at ? "–" : at.offset === null ? "beyond the ends" : offsetText(at.offset),
      level: hasLevel ? level.toFixed(decimals) : "–",
      height: at?.height === undefined ? "–" : at.height.toFixed(decimals),
      northing: where?.n === undefined ? "–" : where.n.toFixed(placesOfCursor),
      easting: where?.e === undefined ? "–" : where.e.toFixed(placesOfCursor),
    };
    for (const [id, text] of Object.entries(texts)) byId(id).textContent = text;
    if (!at) return;
    this.say(`Station ${texts.station}, offset ${texts.offset}` + (hasLevel ? `, road level ${texts.level}` : ""));
  }

  hover(index) {
    if (index === this.hovered) return;
    this.hovered = index;
    for (const view of this.views) view.view.canvas.classList.toggle("finds", index >= 0);
    this.repaint();
  }

  select(index, from) {
    this.selected = index;
    this.table?.select(index);
    const b = this.borings[index];
    byId("chosen").textContent = b ? this.describe(index) : "none";
    if (b) this.show(b, from);
    this.repaint();
  }

  describe(index) {
    const b = this.borings[index];
    const parts = [b.id || this.labelOf(index)];
    if (b.station !== null) parts.push(`station ${stationText(b.station, this.km)}`);
    if (b.offset !== null) parts.push(`offset ${offsetText(b.offset)}`);
    if (b.level !== null) parts.push(`level ${b.level.toFixed(this.decimals)}`);
    if (b.northing === null) parts.push("no usable coordinates");
    else if (!b.placed && this.road.segments.length > 0) parts.push("not along the road");
    return parts.join(", ");
  }

  show(boring, from) {
    if (from !== "plan" && boring.northing !== null) this.plan.view.show(boring.easting, boring.northing);
    if (from !== "profile" && boring.placed) this.profile?.view.show(boring.station, boring.level ?? undefined);
    if (boring.placed) {
      const at = this.road.at(boring.station) ?? {};
      this.cursor = { ...at, station: boring.station, offset: boring.offset };
      if (boring.northing !== null) this.cursor.pointer = { e: boring.easting, n: boring.northing };
      this.showPlace();
    }
    this.say(this.describe(this.selected));
    // On a narrow screen the views may be far above the row.
    const pane = byId("plan").closest("figure");
    if (from === "table" && pane.getBoundingClientRect().bottom < 40) pane.scrollIntoView({ block: "nearest" });
  }

  // Keys in plan and profile beyond those that move and zoom.
  key(event) {
    const metres = Math.max(niceStep(2 / this.plan.view.kx), 0.1);
    const steps = { ArrowLeft: -metres, ArrowRight: metres };
    if (steps[event.key]) this.moveAlong(steps[event.key]);
    else if (event.key === "Home") this.moveAlong(-Infinity);
    else if (event.key === "End") this.moveAlong(Infinity);
    else if (event.key === "PageDown") this.step(1);
    else if (event.key === "PageUp") this.step(-1);
    else if (event.key === "Escape") this.select(-1, "key");
    else return false;
    return true;
  }

  moveAlong(metres) {
    const { firstStation, lastStation } = this.road;
    if (!Number.isFinite(firstStation)) return;
    const from = this.cursor?.station ?? firstStation;
    const station = Math.min(Math.max(from + metres, firstStation), lastStation);
    const place = { ...this.road.at(station), station, offset: 0 };
    this.moveCursor(place, "plan");
    if (place.e !== undefined) this.plan.view.show(place.e, place.n);
  }

  // To the next boring along the road that the filter keeps.
  step(by) {
    const order = this.alongRoad.filter((i) => this.isShown(i));
    if (order.length === 0) return;
    const at = order.indexOf(this.selected);
    const next = at < 0 ? (by > 0 ? 0 : order.length - 1) : Math.min(Math.max(at + by, 0), order.length - 1);
    this.select(order[next], "key");
  }

  addButtons(view) {
    const actions = { in: () => view.zoom(buttonStep), out: () => view.zoom(1 / buttonStep), whole: () => view.whole() };
    for (const button of view.canvas.closest("figure").querySelectorAll("button")) {
      button.addEventListener("click", actions[button.dataset.action]);
    }
  }

  addSwitches() {
    const dark = matchMedia("(prefers-color-scheme: dark)");
    const root = document.documentElement;
    const button = byId("theme");
    const isDark = () => (root.dataset.theme ? root.dataset.theme === "dark" : dark.matches);
    const changed = () => {
      button.setAttribute("aria-pressed", String(isDark()));
      this.readColours();
      this.repaint();
    };
    button.addEventListener("click", () => {
      root.dataset.theme = isDark() ? "light" : "dark";
      changed();
    });
    dark.addEventListener("change", changed);
    changed();
    byId("print").addEventListener("click", () => print());
  }

  readColours() {
    const probe = byId("spoken");
    for (const name of ["paper", "ink", "faint", "grid", "road", "boring", "stray", "accent", "onAccent"]) {
      probe.style.color = `var(--${name})`;
      this.colours[name] = getComputedStyle(probe).color;
    }
    probe.style.color = "";
  }
}

new ReportPage(JSON.parse(byId("data").textContent));
document.addEventListener("DOMContentLoaded", () => new Sheets(byId("sheets").parentElement));
