// The page that `velmora report` writes, as a browser shows and prints it.
//
//   VELMORA_COMMAND=... VELMORA_EXAMPLES=... CHROMIUM=... node --test report_test.mjs
import assert from "node:assert/strict";
import { execFileSync, spawnSync } from "node:child_process";
import { existsSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { chromium } from "playwright-core";

const { VELMORA_COMMAND: command, VELMORA_EXAMPLES: examples, CHROMIUM: executablePath } = process.env;
const road = join(examples, "road.vl");
const folder = mkdtempSync(join(tmpdir(), "velmora-html-"));
let browser;

const run = (program, ...words) => execFileSync(program, words, { encoding: "utf8", stdio: ["ignore", "pipe", "pipe"] });
const write = (name, text) => {
  writeFileSync(join(folder, name), text);
  return join(folder, name);
};
function report(name, list, file = road) {
  const done = spawnSync(command, ["report", file, "--points", list, "-o", join(folder, name)], { encoding: "utf8" });
  // 1: written, and a row of the list was refused.
  assert.ok(existsSync(join(folder, name)) && done.status <= 1, done.stderr);
  return join(folder, name);
}

// Runs use(page) and then requires that the page has asked for nothing and complained of nothing.
async function look(file, use, options = {}) {
  const context = await browser.newContext({ viewport: { width: 1400, height: 900 }, ...options });
  const page = await context.newPage();
  const complaints = [];
  page.on("console", (message) => complaints.push(message.text()));
  page.on("pageerror", (error) => complaints.push(error.message));
  page.on("dialog", (dialog) => complaints.push(dialog.message()) && dialog.dismiss());
  page.on("request", (request) => request.url() !== `file://${file}` && complaints.push(request.url()));
  await page.goto(`file://${file}`);
  await use(page);
  await context.close();
  assert.deepEqual(complaints, []);
}

const text = (page, id) => page.locator(`#${id}`).textContent();
const number = async (page, id) => Number((await text(page, id)).replace(/^H /, "").replace(/^V /, "-"));
const rows = (page) =>
  page.locator("tbody [aria-rowindex]").evaluateAll((all) => all.map((row) => Array.from(row.cells, (c) => c.textContent)));
const chosen = (page) => page.locator("[aria-selected=true] td").first().textContent();
const header = (page, title) => page.locator("th").filter({ hasText: new RegExp(`^${title}( |$)`) });
const columnOf = (page, title) => page.locator("th").evaluateAll((all, t) => all.findIndex((th) => th.textContent.startsWith(t)), title);
async function move(page, id, x, y) {
  const box = await page.locator(`#${id}`).boundingBox();
  await page.mouse.move(box.x + x * box.width, box.y + y * box.height);
}
// What the cursor has painted: the columns of pixels, from 0 to 1, that are mostly of its colour.
const cursorIn = (page, id) =>
  page.evaluate(async (canvasId) => {
    await new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done)));
    const canvas = document.getElementById(canvasId);
    const { width, height } = canvas;
    const copy = new OffscreenCanvas(width, height).getContext("2d", { willReadFrequently: true });
    copy.drawImage(canvas, 0, 0);
    const { data } = copy.getImageData(0, 0, width, height);
    let best = { count: 0 };
    for (let x = 0; x < width; ++x) {
      let count = 0;
      for (let y = 0; y < height; ++y) {
        const at = 4 * (y * width + x);
        if (data[at] > 140 && data[at + 1] > 50 && data[at + 1] < 110 && data[at + 2] < 60) ++count;
      }
      if (count > best.count) best = { count, x: (x + 0.5) / width };
    }
    return best;
  }, id);

before(async () => {
  browser = await chromium.launch({
    executablePath,
    args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
           "--disable-component-update", "--disable-sync"],
  });
});
after(async () => {
  await browser?.close();
  rmSync(folder, { recursive: true });
});

for (const [name, file] of [["rising", road], ["falling", join(examples, "road-falling.vl")]]) {
  test(`the cursor gives the station, side and offset that the command gives, ${name} stations`, async () => {
    const list = join(examples, "borings.csv");
    const seen = [];
    await look(report(`${name}.html`, list, file), async (page) => {
      for (let i = 1; i < 14; ++i) {
        await move(page, "plan", i / 14, ((i * 5) % 14) / 14);
        const place = {};
        for (const id of ["northing", "easting", "station"]) place[id] = await number(page, id);
        place.offset = (await text(page, "offset")) === "beyond the ends" ? null : await number(page, "offset");
        seen.push(place);
        // The profile shows the same station.
        const { x } = await cursorIn(page, "profile");
        await move(page, "profile", x, 0.5);
        const metresOfPixel = 2200 / 600;
        assert.ok(Math.abs((await number(page, "station")) - place.station) < 1.5 * metresOfPixel);
      }
    });
    const points = write("seen.csv", "id,northing,easting\n" + seen.map((p, i) => `${i},${p.northing},${p.easting}\n`).join(""));
    const placed = JSON.parse(run(command, "align", "locate", file, "--points", points, "--json", "--max-offset", "100000"));
    assert.ok(seen.filter((p) => p.offset !== null).length > 6);
    placed.forEach((p, i) => {
      assert.equal(p.station === null || p.station === undefined, seen[i].offset === null, JSON.stringify([p, seen[i]]));
      if (seen[i].offset === null) return;
      assert.ok(Math.abs(p.station - seen[i].station) < 0.05, JSON.stringify([p, seen[i]]));
      assert.ok(Math.abs(p.offset - seen[i].offset) < 0.05, JSON.stringify([p, seen[i]]));
    });
  });
}

test("the profile gives station and level, and the plan shows the same station", async () => {
  await look(report("profile.html", join(examples, "borings.csv")), async (page) => {
    for (const x of [0.3, 0.5, 0.8]) {
      await move(page, "profile", x, 0.4);
      const station = await number(page, "station");
      const [level] = JSON.parse(run(command, "align", "level", road, "--station", String(station), "--json"));
      assert.ok(Math.abs(level.level - (await number(page, "level"))) < 0.011);
      assert.ok((await cursorIn(page, "plan")).count > 0);
      const place = JSON.parse(run(command, "align", "place", road, "--stations", write("at.csv", `station,offset\n${station},0\n`), "--json"))[0];
      assert.ok(Math.abs(place.northing - (await number(page, "northing"))) < 0.011);
      assert.ok(Math.abs(place.easting - (await number(page, "easting"))) < 0.011);
    }
  });
});

test("a boring is chosen in plan, profile and table alike", async () => {
  await look(report("choose.html", join(examples, "borings.csv")), async (page) => {
    await page.locator("tbody [aria-rowindex]").nth(5).click();
    const id = await chosen(page);
    assert.match(await text(page, "chosen"), new RegExp(`^${id},`));
    const target = [await number(page, "easting"), await number(page, "northing")];
    // Two places of the pointer tell where the plan has the boring.
    const at = {};
    for (const part of [0.25, 0.75]) {
      await move(page, "plan", part, part);
      at[part] = [await number(page, "easting"), await number(page, "northing")];
    }
    const [x, y] = target.map((value, i) => 0.25 + (0.5 * (value - at[0.25][i])) / (at[0.75][i] - at[0.25][i]));
    await page.locator("tbody [aria-rowindex]").nth(1).click();
    assert.notEqual(await chosen(page), id);
    await move(page, "plan", x, y);
    await page.mouse.down();
    await page.mouse.up();
    assert.equal(await chosen(page), id);
    const row = await page.locator("[aria-selected=true]").boundingBox();
    const frame = await page.locator("#table").boundingBox();
    assert.ok(row.y >= frame.y && row.y + row.height <= frame.y + frame.height + 1);
    // With keys: along the road in the plan, up and down in the table.
    await page.locator("#plan").focus();
    await page.keyboard.press("End");
    assert.equal(await number(page, "station"), 3364.46);
    await page.keyboard.press("PageDown");
    const next = await chosen(page);
    assert.notEqual(next, id);
    await page.locator("[role=grid]").focus();
    await page.keyboard.press("Home");
    assert.equal(await chosen(page), (await rows(page))[0][0]);
    await page.keyboard.press("Escape");
    assert.equal(await text(page, "chosen"), "none");
  });
});

test("the plan zooms around the pointer and moves with it", async () => {
  await look(report("zoom.html", join(examples, "borings.csv")), async (page) => {
    const at = async (x, y) => {
      await move(page, "plan", x, y);
      return [await number(page, "easting"), await number(page, "northing")];
    };
    const same = (a, b, metres) => assert.ok(Math.hypot(a[0] - b[0], a[1] - b[1]) < metres, `${a} ${b}`);
    const [here, there] = [await at(0.3, 0.4), await at(0.5, 0.6)];
    const pixel = (there[0] - here[0]) / (0.2 * (await page.locator("#plan").boundingBox()).width);
    await at(0.3, 0.4);
    await page.mouse.wheel(0, -600);
    same(await at(0.3, 0.4), here, pixel); // turning the wheel has a place in whole pixels
    const near = await at(0.5, 0.6);
    assert.ok(near[0] - here[0] < 0.5 * (there[0] - here[0]));
    await page.mouse.down();
    await at(0.3, 0.4);
    await page.mouse.up();
    same(await at(0.3, 0.4), near, pixel);
    await page.getByRole("button", { name: "Plan: show the whole road" }).click();
    same(await at(0.5, 0.6), there, 0.02);
    await page.locator("#plan").focus();
    await page.keyboard.press("+");
    assert.ok((await at(0.5, 0.6))[0] - (await at(0.3, 0.4))[0] < 0.8 * (there[0] - here[0]));
  });
});

test("the table sorts numbers as numbers and filters over all columns", async () => {
  const count = 3000;
  const lines = Array.from({ length: count }, (_, i) => `B${i + 1},${6652250 + (i % 100)},${653200 + i / 10},${(i * 37) % 101}`);
  await look(report("many.html", write("many.csv", "id,northing,easting,z\n" + lines.join("\n") + "\n")), async (page) => {
    const level = await columnOf(page, "Level");
    for (const [state, sign] of [["ascending", 1], ["descending", -1]]) {
      await header(page, "Level").getByRole("button").click();
      assert.equal(await header(page, "Level").getAttribute("aria-sort"), state);
      const values = (await rows(page)).map((row) => Number(row[level]));
      assert.ok(values.length > 10 && values.every((v, i) => i === 0 || sign * (v - values[i - 1]) >= 0), String(values));
      assert.equal(values[0], sign > 0 ? 0 : 100);
    }
    await header(page, "Level").getByRole("button").click();
    assert.equal(await page.locator("th[aria-sort=none]").count(), await page.locator("th").count());
    await page.locator("#filter").fill("b299");
    assert.equal(await text(page, "count"), `11 of ${count} borings`);
    assert.deepEqual((await rows(page)).map((row) => row[0]), ["B299", ...Array.from({ length: 10 }, (_, i) => `B299${i}`)]);
    await page.locator("#filter").fill("");
    assert.equal(await page.locator("[role=grid]").getAttribute("aria-rowcount"), String(count + 1));
    // Every row can be reached, though few are elements at a time.
    await page.locator("[role=grid]").focus();
    await page.keyboard.press("End");
    assert.equal(await chosen(page), `B${count}`);
    assert.ok((await rows(page)).length < 100);
  });
});

test("texts of the list are text", async () => {
  const ids = ["</script><img src=x onerror=alert(1)>", "<!--<script>", "a&amp;b", "'><svg onload=alert(1)>", "${1}`\\u003c\\", "å ä ö €"];
  const list = "id,northing,easting,z,<b>\n" + ids.map((id, i) => `"${id}",6652250,${653300 + 40 * i},15,"${id}"\n`).join("");
  const file = report("hostile.html", write("hostile.csv", list));
  await look(file, async (page) => {
    assert.deepEqual((await rows(page)).map((row) => [row[0], row.at(-1)]), ids.map((id) => [id, id]));
    assert.equal(await page.locator("img, b, script:not([id]) ~ script:not([id]), table svg").count(), 0);
    await page.locator("tbody [aria-rowindex]").first().click();
    assert.ok((await text(page, "chosen")).startsWith(ids[0]));
  });
  assert.doesNotMatch(readFileSync(file, "utf8").replace(/<script>[^]*<\/script>/, ""), /\bNaN\b|\bnan\b|\bInfinity\b/);
});

test("the printed pages are the sheets, to scale", async () => {
  const file = report("print.html", join(examples, "borings.csv"));
  const svg = [...readFileSync(file, "utf8").matchAll(/<svg [^>]*?width="([\d.]+)mm" height="([\d.]+)mm"/g)];
  await look(file, async (page) => {
    const pdf = join(folder, "print.pdf");
    await page.pdf({ path: pdf, preferCSSPageSize: true });
    const pages = [...run("pdfinfo", "-l", "1000", pdf).matchAll(/^Page +\d+ size: +([\d.]+) x ([\d.]+)/gm)];
    assert.equal(pages.length, svg.length);
    const millimetres = (points) => (Number(points) * 25.4) / 72;
    svg.forEach((sheet, i) => {
      for (const side of [1, 2]) assert.ok(Math.abs(millimetres(pages[i][side]) - Number(sheet[side])) < 1.3, String(pages[i]));
      const drawn = run("pdftocairo", "-svg", "-f", String(i + 1), "-l", String(i + 1), pdf, "-");
      const scales = [...drawn.matchAll(/matrix\(([\d.]+),0,0,([\d.]+),/g)].map((m) => Number(m[1]));
      assert.ok(scales.some((scale) => Math.abs((scale * 25.4) / 72 - 1) < 2e-4), String(scales.slice(0, 5)));
    });
    assert.match(run("pdftotext", pdf, "-"), /Väg 943 Norrsjö/);
  }, { colorScheme: "dark" });
});

test("light, dark, narrow, and without scripts", async () => {
  const file = report("forms.html", join(examples, "borings.csv"));
  await look(file, async (page) => {
    const paper = () => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
    const button = page.getByRole("button", { name: "Dark" });
    assert.equal(await button.getAttribute("aria-pressed"), "true");
    const dark = await paper();
    await button.click();
    assert.equal(await button.getAttribute("aria-pressed"), "false");
    assert.notEqual(await paper(), dark);
  }, { colorScheme: "dark", viewport: { width: 380, height: 800 } });
  await look(file, async (page) => {
    const narrow = await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth);
    assert.ok(narrow);
    const [plan, profile] = [await page.locator("#plan").boundingBox(), await page.locator("#profile").boundingBox()];
    assert.ok(profile.y > plan.y + plan.height);
  }, { viewport: { width: 380, height: 800 }, hasTouch: true });
  await look(file, async (page) => {
    assert.ok((await page.locator("tbody tr").count()) > 5);
    assert.ok(await page.locator(".sheet svg").first().isVisible());
    assert.equal(await page.locator("#plan").isVisible(), false);
  }, { javaScriptEnabled: false });
});
