// The table of the borings: sorted by its headers, filtered by text, and a row chosen with mouse or keys.
// Only the rows in view are elements, so that thousands cost nothing.

const collator = new Intl.Collator("sv", { numeric: true, sensitivity: "base" });
const rowsBeyond = 10; // above and below those in view
const widthInDigits = { least: 6, most: 40, padding: 4 };

function make(name, attributes = {}, ...children) {
  const element = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
  element.append(...children);
  return element;
}

class BoringTable {
  // `data`: columns of [title, unit, 1 if of numbers], and rows of texts.
  constructor(frame, filter, count, data, report) {
    Object.assign(this, { frame, count, report, columns: data.columns, rows: data.rows });
    this.inList = this.rows.map((_, i) => i);
    this.sorted = { column: -1, falling: false, order: this.inList };
    this.shown = this.rows.map(() => true);
    this.visible = this.inList; // sorted and filtered
    this.selected = -1;
    this.build();
    frame.addEventListener("scroll", () => this.draw());
    new ResizeObserver(() => this.draw()).observe(frame);
    this.body.addEventListener("click", (event) => {
      const row = event.target.closest("[aria-rowindex]");
      if (row && getSelection().isCollapsed) report.select(row.index, "table");
    });
    this.table.addEventListener("keydown", (event) => this.keydown(event));
    filter.addEventListener("input", () => this.filter(filter.value));
    this.filter(filter.value); // as the browser kept it
  }

  build() {
    const { least, most, padding } = widthInDigits;
    let sum = 0;
    const cols = this.columns.map(([title, unit], column) => {
      const longest = this.rows.reduce((n, row) => Math.max(n, row[column].length), title.length + unit.length + 2);
      const width = Math.min(Math.max(longest, least), most) + padding;
      sum += width;
      return make("col", { style: `width:${width}ch` });
    });
    this.headers = this.columns.map(([title, unit, numeric], column) => {
      const button = make("button", { type: "button" }, title);
      if (unit) button.append(" ", make("span", { class: "unit" }, unit));
      button.addEventListener("click", () => this.sortBy(column));
      return make("th", { scope: "col", class: numeric ? "number" : "text", "aria-sort": "none" }, button);
    });
    this.body = make("tbody");
    this.head = make("thead", {}, make("tr", { "aria-rowindex": "1" }, ...this.headers));
    this.table = make("table", { role: "grid", tabindex: "0", "aria-labelledby": "borings", style: `min-width:${sum}ch` });
    this.table.append(make("colgroup", {}, ...cols), this.head, this.body);
    this.frame.replaceChildren(this.table);
  }

  get rowHeight() {
    return this.body.querySelector("[aria-rowindex]")?.offsetHeight || 28;
  }

  // The rows in view, between two that stand for all others.
  draw() {
    const height = this.rowHeight;
    const last = this.visible.length;
    const from = Math.max(Math.floor(this.frame.scrollTop / height) - rowsBeyond, 0);
    const to = Math.min(Math.ceil((this.frame.scrollTop + this.frame.clientHeight) / height) + rowsBeyond, last);
    const space = (rows) => {
      const cell = make("td", { colspan: this.columns.length || 1 });
      cell.style.height = `${rows * height}px`;
      return make("tr", { class: "space", "aria-hidden": "true" }, cell);
    };
    // Rows that stay in view stay elements, as text is marked in them and buttons are pressed over them.
    const before = new Map(Array.from(this.body.querySelectorAll("[aria-rowindex]"), (row) => [row.index, row]));
    const rows = this.visible.slice(from, to).map((index, i) => {
      const row = before.get(index) ?? this.row(index);
      row.setAttribute("aria-rowindex", from + i + 2);
      row.setAttribute("aria-selected", index === this.selected);
      return row;
    });
    if (from > 0) rows.unshift(space(Math.min(from, last)));
    if (to < last) rows.push(space(last - to));
    this.body.replaceChildren(...rows);
  }

  row(index) {
    const cells = this.rows[index].map((text, column) => {
      const cell = make("td", this.columns[column][2] ? { class: "number" } : {}, text);
      if (text.length > widthInDigits.most) cell.title = text;
      return cell;
    });
    const row = make("tr", { id: `row${index}` }, ...cells);
    row.index = index;
    return row;
  }

  // Rising, falling, then as in the list.
  sortBy(column) {
    const same = this.sorted.column === column;
    const none = same && this.sorted.falling;
    const falling = same && !none;
    const order = none ? this.inList : this.orderBy(column, falling);
    this.sorted = { column: none ? -1 : column, falling, order };
    this.headers.forEach((header, i) => {
      header.setAttribute("aria-sort", i !== this.sorted.column ? "none" : falling ? "descending" : "ascending");
    });
    this.arrange();
    const [title] = this.columns[column];
    this.report.say(none ? "In the order of the list" : `Sorted by ${title}, ${falling ? "falling" : "rising"}`);
  }

  // Numbers before texts, and empty cells last in both directions.
  orderBy(column, falling) {
    const numeric = this.columns[column][2] === 1;
    const keys = this.rows.map((row, index) => {
      const text = row[column];
      const number = numeric && text !== "" ? Number(text) : NaN;
      return { index, text, number, rank: text === "" ? 2 : numeric && Number.isNaN(number) ? 1 : 0 };
    });
    const sign = falling ? -1 : 1;
    const compare = (a, b) => (numeric && a.rank === 0 ? a.number - b.number : collator.compare(a.text, b.text));
    keys.sort((a, b) => a.rank - b.rank || sign * compare(a, b) || a.index - b.index);
    return keys.map((key) => key.index);
  }

  // Keeps the rows in which every word occurs.
  filter(text) {
    const words = text.toLocaleLowerCase("sv").split(/\s+/).filter(Boolean);
    if (words.length > 0) this.texts ??= this.rows.map((row) => row.join("\n").toLocaleLowerCase("sv"));
    this.shown = this.rows.map((_, i) => words.every((word) => this.texts[i].includes(word)));
    this.arrange();
    const all = `${this.rows.length} ${this.rows.length === 1 ? "boring" : "borings"}`;
    this.count.textContent = words.length === 0 ? all : `${this.visible.length} of ${all}`;
    this.report.repaint();
  }

  arrange() {
    this.visible = this.sorted.order.filter((index) => this.shown[index]);
    this.table.setAttribute("aria-rowcount", this.visible.length + 1);
    this.draw();
    this.reveal();
  }

  // Marks the row of a boring, or none, and brings it into view.
  select(index) {
    this.selected = index;
    if (index >= 0) this.table.setAttribute("aria-activedescendant", `row${index}`);
    else this.table.removeAttribute("aria-activedescendant");
    this.reveal();
    this.draw();
  }

  // Within the table alone: the page stays where it is.
  reveal() {
    const at = this.visible.indexOf(this.selected);
    if (at < 0) return;
    const height = this.rowHeight;
    const room = this.frame.clientHeight - this.head.offsetHeight;
    const top = at * height;
    if (top >= this.frame.scrollTop && top + height <= this.frame.scrollTop + room) return;
    this.frame.scrollTop = top - (room - height) / 2;
    this.draw();
  }

  keydown(event) {
    if (event.target !== this.table || event.ctrlKey || event.metaKey || event.altKey) return;
    const at = this.visible.indexOf(this.selected);
    const page = 10;
    const to = {
      ArrowDown: at + 1, ArrowUp: at - 1, PageDown: at + page, PageUp: at - page, Home: 0, End: Infinity,
    }[event.key];
    if (event.key === "Escape") this.report.select(-1, "table");
    if (to === undefined || this.visible.length === 0) return;
    event.preventDefault();
    this.report.select(this.visible[Math.min(Math.max(to, 0), this.visible.length - 1)], "table");
  }
}
