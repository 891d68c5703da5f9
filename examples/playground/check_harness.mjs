// Helps the check of the page: counts results, drives a browser, and acts as a user.

import {createReadStream, existsSync, mkdtempSync, readFileSync, rmSync} from 'node:fs';
import {createServer} from 'node:http';
import {tmpdir} from 'node:os';
import {extname, join} from 'node:path';
import puppeteer from 'puppeteer-core';

const patience = 60_000;  // milliseconds until a single step fails; enough on a busy machine

// ---- results

export const tally = {passed: 0, failed: 0};

/** Prints whether something is so, and if not, what was found instead. */
export function check(what, isSo, found = '') {
  if (isSo) ++tally.passed;
  else ++tally.failed;
  const detail = isSo || found === '' ? '' : ': ' + show(found);
  console.log(`${isSo ? 'ok    ' : 'FAILED'} ${what}${detail}`);
}

export const show = (value) => typeof value === 'string' ? value : JSON.stringify(value);
export const isNear = (a, b, tolerance) => Math.abs(a - b) <= tolerance;
export const areNear = (a, b, tolerance) => a.every((value, i) => isNear(value, b[i], tolerance));
export const areSame = (a, b) => show(a) === show(b);

// ---- the browser

const types = {
  '.html': 'text/html', '.css': 'text/css', '.js': 'text/javascript', '.png': 'image/png',
  '.svg': 'image/svg+xml',
};

/** A page as a browser without scripts reads it. */
const withoutScripts = (path) => readFileSync(path, 'utf8')
    .replace(/<script .*?<\/script>/g, '').replace(/<\/?noscript>/g, '');

function serve(folder) {
  const server = createServer((request, response) => {
    const {pathname} = new URL(request.url, 'http://page');
    if (pathname === '/without-scripts.html') {
      response.setHeader('Content-Type', types['.html']);
      return response.end(withoutScripts(join(folder, 'index.html')));
    }
    const path = join(folder, pathname.replace(/\/$/, '/index.html'));
    if (!path.startsWith(folder) || !existsSync(path)) return response.writeHead(404).end();
    response.setHeader('Content-Type', types[extname(path)] ?? 'application/octet-stream');
    createReadStream(path).pipe(response);
  });
  return new Promise((done) => server.listen(0, '127.0.0.1', () => done(server)));
}

/** Chromium with an empty profile, and a server for the page's folder. */
export class Browser {
  /** Warnings and errors on the console, and requests to other addresses than the page's folder. */
  complaints = [];
  strangers = [];

  static async start(folder) {
    const browser = new Browser();
    browser.server = await serve(folder);
    browser.address = `http://127.0.0.1:${browser.server.address().port}/`;
    browser.profile = mkdtempSync(join(tmpdir(), 'playground-'));
    browser.chromium = await puppeteer.launch({
      executablePath: '/usr/bin/chromium',
      headless: true,
      userDataDir: browser.profile,
      protocolTimeout: patience,
      args: ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
             '--disable-background-networking', '--disable-component-update', '--disable-sync'],
    });
    return browser;
  }

  async close() {
    await this.chromium.close();
    this.server.close();
    rmSync(this.profile, {recursive: true, force: true});
  }

  /** Opens the page in a window of its own and waits until it rests. With `forced`, in colours of
   * the user's choice. Without `scripts`, or with another `path`, it waits for nothing. */
  async open({url = this.address, path = '', width = 1280, height = 800, density = 1, touch = false,
              scheme = 'light', forced = false, scripts = true} = {}) {
    const page = await this.chromium.newPage();
    page.setDefaultTimeout(patience);
    page.on('console', (message) => {
      if (message.type() !== 'log') this.complaints.push(`${message.type()}: ${message.text()}`);
    });
    page.on('pageerror', (error) => this.complaints.push(String(error)));
    const home = url.replace(/[^/]*$/, '');
    page.on('request', (request) => {
      const asked = request.url();
      if (!asked.startsWith(home) && !asked.startsWith('data:')) this.strangers.push(asked);
    });
    const session = await page.createCDPSession();  // puppeteer itself can't force colours
    await session.send('Emulation.setEmulatedMedia', {features: [
      {name: 'prefers-color-scheme', value: scheme},
      {name: 'forced-colors', value: forced ? 'active' : 'none'},
    ]});
    await page.setJavaScriptEnabled(scripts);
    await page.setViewport(
        {width, height, deviceScaleFactor: density, hasTouch: touch, isMobile: touch});
    await page.evaluateOnNewDocument(prepare);
    await page.goto(url + path);
    const isMap = scripts && !/\.html$/.test(path);
    if (isMap) await page.waitForFunction('globalThis.playground');
    if (isMap) await atRest(page);
    return page;
  }
}

// Runs in the page. Counts frames, reads pixels, and keeps the texts drawn since a canvas was last
// cleared. Pixels are read from a copy: reading a canvas would change how the browser draws it.
function prepare() {
  globalThis.framesDrawn = 0;
  const request = requestAnimationFrame;
  globalThis.requestAnimationFrame = (step) => request((time) => {
    ++globalThis.framesDrawn;
    step(time);
  });
  globalThis.pixelsOf = (canvas, ...box) => {
    const copy = new OffscreenCanvas(canvas.width, canvas.height);
    const context = copy.getContext('2d', {willReadFrequently: true});
    context.drawImage(canvas, 0, 0);
    return context.getImageData(...box).data;
  };
  globalThis.textsDrawn = [];
  const context = CanvasRenderingContext2D.prototype;
  const {clearRect, fillText} = context;
  context.clearRect = function(...box) {
    globalThis.textsDrawn = [];
    return clearRect.apply(this, box);
  };
  context.fillText = function(text, x, y) {
    const {width} = this.measureText(text);
    const height = parseFloat(this.font.match(/[\d.]+px/));
    globalThis.textsDrawn.push({text, x, y, width, height});
    return fillText.call(this, text, x, y);
  };
}

// ---- what a user does and sees, in CSS pixels

/** The colour on the screen three pixels inside the left edge of an element, or null. */
export async function colourAtEdge(page, selector) {
  const box = await (await page.$(selector)).boundingBox();
  const [x, y] = [Math.round(box.x) + 3, Math.round(box.y + box.height / 2)];
  const clip = {x, y, width: 1, height: 1};
  const png = await page.screenshot({clip, encoding: 'base64'});
  return page.evaluate(async (png) => {
    const image = new Image();
    image.src = `data:image/png;base64,${png}`;
    await image.decode();
    const context = new OffscreenCanvas(1, 1).getContext('2d');
    context.drawImage(image, 0, 0);
    return [...context.getImageData(0, 0, 1, 1).data].join(' ');
  }, png);
}

export const atRest = (page) => page.waitForFunction('playground.isAtRest', {polling: 20});
export const viewOf = (page) => page.evaluate('playground.navigation.view');
export const named = (page) => page.$eval('#country', (output) => output.textContent);
export const placeAt = (page, x, y) => page.evaluate(
    (x, y) => playground.world.placeAt(x * devicePixelRatio, y * devicePixelRatio), x, y);

/** Chooses a value of a control. */
export async function choose(page, name, value) {
  await page.$eval(`[name=${name}][value="${value}"]`, (input) => input.click());
  await atRest(page);
}

/** Shows a place, in degrees. A scale of 0 keeps the scale. */
export async function look(page, longitude, latitude, scale = 0, turn = 0) {
  await page.evaluate((longitude, latitude, scale, turn) => {
    const {world, navigation} = playground;
    navigation.setView({
      x: longitude, y: world.mapY(latitude), scale: scale || navigation.view.scale, turn,
    });
  }, longitude, latitude, scale, turn);
  await atRest(page);
}

/** Points the mouse at a place; returns the name on the page. */
export async function point(page, longitude, latitude) {
  const [x, y] = await page.evaluate((longitude, latitude) => {
    const {world} = playground;
    return world.pixelOf(longitude, world.mapY(latitude)).map((at) => at / devicePixelRatio);
  }, longitude, latitude);
  await page.mouse.move(x, y);
  await page.waitForFunction('!playground.frameRequested', {polling: 20});
  return named(page);
}

export async function drag(page, from, to) {
  await page.mouse.move(...from);
  await page.mouse.down();
  await page.mouse.move(...to, {steps: 8});
  await page.mouse.up();
  await atRest(page);
}
