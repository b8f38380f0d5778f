// How long Chromium takes to open a report as HTML, and to sort, filter and choose in it. After the test "html",
// which installs the package that drives the browser:
//
//   node bench/report/open_page.mjs PAGE.html [RUNS]
import { statSync } from "node:fs";
import { createRequire } from "node:module";
import { resolve } from "node:path";

const packages = new URL("../../build/linux/tests/html/", import.meta.url);
const { chromium } = createRequire(packages)("playwright-core");
const [page, runs = "5"] = process.argv.slice(2);
const file = resolve(page);

const median = (values) => values.toSorted((a, b) => a - b)[Math.floor(values.length / 2)];
const args = ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
              "--disable-component-update", "--disable-sync"];
const browser = await chromium.launch({ executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium", args });
const results = [];
for (let run = 0; run < Number(runs); ++run) {
  const context = await browser.newContext({ viewport: { width: 1400, height: 900 } });
  const tab = await context.newPage();
  const protocol = await context.newCDPSession(tab);
  await protocol.send("Performance.enable", { timeDomain: "threadTicks" });
  await tab.addInitScript(() => {
    // The first frame in which plan, profile and table react to people.
    const wait = () => (document.querySelector("[role=grid]") ? (window.usable = performance.now()) : requestAnimationFrame(wait));
    requestAnimationFrame(wait);
  });
  await tab.goto(`file://${file}`);
  const metrics = (await protocol.send("Performance.getMetrics")).metrics;
  const times = await tab.evaluate(async () => {
    const frame = () => new Promise((done) => requestAnimationFrame(() => setTimeout(done)));
    const time = async (action) => {
      await frame();
      const start = performance.now();
      action();
      await frame();
      return performance.now() - start;
    };
    const filter = document.getElementById("filter");
    return {
      usable: window.usable,
      loaded: performance.getEntriesByType("navigation")[0].loadEventEnd,
      sort: await time(() => document.querySelectorAll("th button")[1].click()),
      filter: await time(() => {
        filter.value = "1";
        filter.dispatchEvent(new Event("input"));
      }),
      choose: await time(() => document.querySelector("tbody [aria-rowindex]").click()),
    };
  });
  results.push({ ...times, processor: 1000 * metrics.find((metric) => metric.name === "ThreadTime").value });
  await context.close();
}
await browser.close();
const of = (name) => `${median(results.map((result) => result[name])).toFixed(0)} ms`;
console.log(`${(statSync(file).size / 1e6).toFixed(1)} MB, median of ${runs}: usable after ${of("usable")}, all loaded after ` +
  `${of("loaded")}, of that ${of("processor")} of processor time; sort ${of("sort")}, filter ${of("filter")}, choose ${of("choose")}`);
