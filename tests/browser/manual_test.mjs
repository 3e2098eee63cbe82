// The manual page in a real browser, opened from disk. The path of the page is the environment's
// MANUAL_PAGE, that of the browser CHROMIUM, where it is not Debian's.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { after, before, test } from "node:test";
import { fileURLToPath, pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
const path = process.env.MANUAL_PAGE ?? fileURLToPath(
  new URL("../../library/Corvane/Documentation/corvanedoc.html", import.meta.url));
const url = pathToFileURL(path).href;
const desk = { width: 1280, height: 800 };
const phone = { width: 390, height: 844 };
let browser;

before(async () => {
  browser = await chromium.launch({
    executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
    args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
      "--disable-background-networking", "--disable-component-update", "--disable-sync"],
  });
});
after(() => browser?.close());

// Runs `check` with the page open in a fresh profile that has no network; a failing script or a
// request beyond the page itself fails the test.
async function withPage(options, check) {
  const context = await browser.newContext({ offline: true, ...options });
  const troubles = [];
  const page = await context.newPage();
  page.on("pageerror", (error) => troubles.push(error.message));
  page.on("request", (request) => {
    if (!/^data:/.test(request.url()) && request.url().split("#")[0] !== url) {
      troubles.push(request.url());
    }
  });
  await page.goto(url);
  await check(page);
  await context.close();
  assert.deepEqual(troubles, []);
}

// What axe finds in the page, or in a part of it, by all its rules or by those named.
async function violations(page, part = "html", ...rules) {
  await page.evaluate(axe);
  const report = await page.evaluate(
    ([part, rules]) => globalThis.axe.run(part, rules.length ? { runOnly: rules } : {}), [part, rules]);
  return report.violations.map(({ id, nodes }) => `${id}: ${nodes[0].html.slice(0, 120)}`);
}

const shown = (page) => page.locator("#index li a:visible").allTextContents();

for (const colorScheme of ["light", "dark"]) {
  for (const viewport of [desk, phone]) {
    test(`axe finds nothing in the ${colorScheme} scheme at ${viewport.width} pixels`, () =>
      withPage({ colorScheme, viewport }, async (page) => {
        assert.deepEqual(await violations(page), []);
        await page.locator("#index summary").click();
        await page.locator("#contents").evaluate((contents) => { contents.open = true; });
        assert.deepEqual(await violations(page, "nav"), []);
        await page.locator("#find").fill("flash");
        assert.deepEqual(await violations(page, "nav"), []);
      }));
  }
}

test("the scheme follows the reader's setting", async () => {
  const ground = (page) => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
  const brightness = (color) => Math.max(...color.match(/\d+/g).map(Number));
  await withPage({ colorScheme: "light" }, async (page) => {
    assert.ok(brightness(await ground(page)) > 240);
    await page.emulateMedia({ colorScheme: "dark" });
    assert.ok(brightness(await ground(page)) < 40);
  });
});

test("paper is white whatever the scheme, and has no controls on it", () =>
  withPage({ colorScheme: "dark", viewport: { width: 680, height: 960 } }, async (page) => {
    await page.emulateMedia({ media: "print", colorScheme: "dark" });
    const grounds = await page.evaluate(() => [...new Set([...document.querySelectorAll("body, body *")]
      .filter((element) => element.checkVisibility() && element.className !== "swatch")
      .map((element) => getComputedStyle(element).backgroundColor))]);
    assert.deepEqual(grounds.sort(), ["rgb(255, 255, 255)", "rgba(0, 0, 0, 0)"]);
    assert.equal(await page.locator("nav").isVisible(), false);
    assert.deepEqual(await violations(page, "main", "color-contrast"), []);
  }));

test("no width makes the page scroll sideways, and phones see the contents folded", async () => {
  for (const [width, open] of [[1280, true], [820, false], [390, false], [320, false]]) {
    await withPage({ viewport: { width, height: 800 } }, async (page) => {
      const wide = await page.evaluate(() => document.documentElement.scrollWidth);
      assert.ok(wide <= width, `${wide} of ${width} pixels`);
      assert.equal(await page.locator("#contents").evaluate((contents) => contents.open), open);
    });
  }
});

test("typing filters the index, the best answer first", () =>
  withPage({ viewport: desk }, async (page) => {
    const field = page.locator("#find");
    const all = await page.locator("#index li").count();
    for (const [text, answers] of [
      ["gravity", ["Gravity"]],
      ["SIZE of", ["Size of blink", "Size of halo", "Size amplitude of oscillation",
        "Size dispersion of elements", "Size frequency of oscillation"]],
      ["color of part", ["Color of particles"]],
      ["emitter pre", ["Emmiter presets"]],
      ["sparks", ["Terminate type"]],                            // one of its items
      ["direction", ["Direction", "Direction dispersion", "Direction of wind",
        "Orientation"]],                                         // "Random all directions"
      ["no such thing", []],
    ]) {
      await field.fill(text);
      assert.deepEqual(await shown(page), answers, text);
    }
    assert.equal(await page.locator("#found").textContent(), "No entries");
    assert.equal(await page.locator("#contents").isVisible(), false);
    await field.fill("");
    await page.locator("#index summary").click();
    assert.equal((await shown(page)).length, all);
    assert.equal(await page.locator("#contents").isVisible(), true);
  }));

test("the keyboard alone finds a parameter", () =>
  withPage({ viewport: desk }, async (page) => {
    const focused = () => page.evaluate(() => document.activeElement.textContent);
    await page.keyboard.press("/");
    await page.keyboard.type("time");
    await page.keyboard.press("ArrowDown");
    assert.equal(await focused(), "Time fade");
    await page.keyboard.press("ArrowDown");
    assert.equal(await focused(), "Time life");
    await page.keyboard.press("Enter");
    assert.match(page.url(), /#p-time-life$/);
    assert.ok(await page.locator("#p-time-life").evaluate(
      (heading) => heading.getBoundingClientRect().top < innerHeight));
    await page.keyboard.press("/");  // selects what was typed
    await page.keyboard.type("width");
    await page.keyboard.press("Enter");
    assert.match(page.url(), /#p-width$/);
    await page.keyboard.press("/");
    await page.keyboard.press("Escape");
    assert.equal(await page.locator("#find").inputValue(), "");
  }));

test("without scripts the index is a plain list and the contents stand open beside the text", () =>
  withPage({ javaScriptEnabled: false, viewport: desk }, async (page) => {
    assert.equal(await page.locator("#find").isVisible(), false);
    assert.equal(await page.locator("#contents a").first().isVisible(), true);
    await page.locator("#index summary").click();
    const links = page.locator("#index li a");
    assert.ok(await links.count() > 70);
    await links.filter({ hasText: /^Gravity$/ }).click();
    assert.match(page.url(), /#p-gravity$/);
  }));
