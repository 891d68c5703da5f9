// Uses the page in a browser as people do: mouse, wheel, fingers, keys, sizes, densities, colour
// schemes, links. Prints a line for each check, the time of a frame, and `N passed, N failed`.
//
//     node check.mjs PAGE COUNTS PICTURES
//
// PAGE is the folder of the page, COUNTS the program of counts.cpp. Screenshots go to PICTURES.

import axe from 'axe-core';
import {execFileSync} from 'node:child_process';
import {existsSync, mkdirSync} from 'node:fs';
import {join, resolve} from 'node:path';
import {pathToFileURL} from 'node:url';
import {
  areNear, areSame, atRest, Browser, check, choose, colourAtEdge, drag, isNear, look, named,
  placeAt, point, tally, viewOf,
} from './check_harness.mjs';

const [folder, counts, pictures] = process.argv.slice(2).map((path) => resolve(path));
mkdirSync(pictures, {recursive: true});
const photograph = (page, name) => page.screenshot({path: join(pictures, `${name}.png`)});

async function loads(page) {
  const names = await page.evaluate('playground.world.names');
  check('all countries are there, with their accents',
        names.length === 241 && names.includes('Côte d\'Ivoire'), names.length);
  const readout = () => page.$eval('#readout', (readout) => readout.innerText);
  const text = await readout();
  check('no time stands there before some frames are drawn',
        !/\d ms/.test(text) && text.includes('Move the map'), text);
  const numbers = text.match(/([\d\s]+) vertices → ([\d\s]+) kept → ([\d\s]+) drawn/)?.slice(1)
                      .map((number) => Number(number.replace(/\s/g, '')));
  check('a line counts vertices, the kept and the drawn',
        numbers?.every((n, i) => n > 0 && (i === 0 || n <= numbers[i - 1])), text);
  await page.mouse.move(400, 300);
  await page.mouse.down();
  for (let i = 1; i <= 12; ++i) {
    await page.mouse.move(400 + 5 * i, 300);
    await page.evaluate(() => new Promise((done) => requestAnimationFrame(done)));
  }
  await page.mouse.up();
  await atRest(page);
  check('a dozen frames later the times are there',
        /clip [\d.]+ · map [\d.]+ · draw [\d.]+ ms a frame/.test(await readout()),
        await readout());
  await choose(page, 'grid', '3');
  check('they are gone when a switch changes what a frame costs',
        !/\d ms/.test(await readout()), await readout());
  await choose(page, 'grid', '0');
  const before = await page.evaluate('framesDrawn');
  await new Promise((done) => setTimeout(done, 300));
  const after = await page.evaluate('framesDrawn');
  check('nothing is drawn while nothing changes', after === before, after - before);
}

// Holes, enclaves, islands, both ends of the map, and the sea.
const places = [
  [2.35, 48.85, 'France'], [37.6, 55.75, 'Russia'], [12.46, 43.94, 'San Marino'],
  [28.2, -29.6, 'Lesotho'], [27.5, -26.2, 'South Africa'], [149.1, -35.3, 'Australia'],
  [-147.7, 64.8, 'United States of America'], [-175, 66.5, 'Russia'], [34.5, 67.5, 'Russia'],
  [-5.5, 7.5, 'Côte d\'Ivoire'], [-58.9, 5, 'Guyana'], [0, -80, 'Antarctica'],
  [-30, 40, 'Open sea'], [50.5, 41.5, 'Open sea'],
];

async function picks(page) {
  for (const [longitude, latitude, expected] of places) {
    await look(page, longitude + 3, latitude, 40, 20);
    const found = await point(page, longitude, latitude);
    check(`at ${longitude}, ${latitude} lies ${expected}`, found === expected, found);
  }
  await look(page, 190, 66, 20);
  const found = await point(page, -175, 66.5);
  check('the map continues beyond the antimeridian', found === 'Russia', found);
}

async function moves(page) {
  await look(page, 20, 20, 10, 30);
  const country = await point(page, 17, 27);
  const before = await viewOf(page);
  const [x, y] = await page.evaluate(
      ({mouse} = playground.navigation) => [mouse.x, mouse.y]);
  const dragged = await placeAt(page, x, y);
  await drag(page, [x, y], [x + 210, y + 120]);
  const after = await viewOf(page);
  check('a drag moves the place with the pointer',
        areNear(await placeAt(page, x + 210, y + 120), dragged, 1e-9), after);
  check('and the country under the pointer with it',
        country === 'Libya' && await named(page) === country, await named(page));
  check('scale and turn stay', isNear(after.scale, before.scale, 1e-12) &&
        isNear(after.turn, before.turn, 1e-12), after);

  const held = await placeAt(page, 333, 222);
  await page.mouse.move(333, 222);
  for (const delta of [-400, -400, 150]) await page.mouse.wheel({deltaY: delta});
  const zoomed = after.scale * Math.exp(650 * 0.0016);
  await page.waitForFunction(
      (scale) => Math.abs(playground.navigation.view.scale - scale) < 1e-6, {polling: 20}, zoomed);
  const pixel = await page.evaluate(([x, y]) => playground.world.pixelOf(x, y), held);
  check('the wheel zooms and keeps the place under the pointer',
        areNear(pixel, [333, 222], 1e-6), pixel);
  await atRest(page);

  const middle = await placeAt(page, 640, 400);
  await page.keyboard.down('Shift');
  await drag(page, [840, 400], [640, 200]);
  await page.keyboard.up('Shift');
  const turned = await viewOf(page);
  check('Shift and a drag turn about the middle', isNear(turned.turn - after.turn, 90, 1e-6) &&
        areNear(await placeAt(page, 640, 400), middle, 1e-9), turned);
  const kept = await placeAt(page, 300, 300);
  await page.$eval('#overlay', (overlay) => overlay.dispatchEvent(new WheelEvent('wheel', {
    deltaY: -240, shiftKey: true, clientX: 300, clientY: 300, cancelable: true,
  })));
  await atRest(page);
  const wheeled = await viewOf(page);
  check('Shift and the wheel turn about the pointer',
        isNear(wheeled.turn - turned.turn, 30, 1e-6) &&
            areNear(await placeAt(page, 300, 300), kept, 1e-9), wheeled);
}

async function keys(page) {
  await look(page, 30, 10, 10, 0);
  await page.focus('#overlay');
  const press = async (key) => {
    const before = await viewOf(page);
    await page.keyboard.press(key);
    await atRest(page);
    return [before, await viewOf(page)];
  };
  const ways = {
    ArrowRight: (a, b) => b.x > a.x && isNear(b.y, a.y, 1e-9),
    ArrowLeft: (a, b) => b.x < a.x && isNear(b.y, a.y, 1e-9),
    ArrowUp: (a, b) => b.y > a.y && isNear(b.x, a.x, 1e-9),
    ArrowDown: (a, b) => b.y < a.y && isNear(b.x, a.x, 1e-9),
    '+': (a, b) => b.scale > a.scale,
    '-': (a, b) => b.scale < a.scale,
    q: (a, b) => b.turn > a.turn,
    E: (a, b) => b.turn < a.turn,
  };
  for (const [key, isItsWay] of Object.entries(ways)) {
    const found = await press(key);
    check(`the key ${key} moves the map its way`, isItsWay(...found), found);
  }
  await look(page, 25, -29, 20, 40);
  check('the keyboard points at the middle', await named(page) === 'South Africa');
  await photograph(page, 'keyboard');
  const ring = await page.$eval('#overlay', (overlay) => getComputedStyle(overlay).outlineStyle);
  check('the focus shows', ring === 'solid', ring);
  await press('Home');
  const home = await page.evaluate('playground.navigation.home()');
  check('Home shows the whole world', areSame(await viewOf(page), home), await viewOf(page));
}

async function keysAtOnce(page) {
  const press = async (key) => {
    const before = await viewOf(page);
    await page.keyboard.press(key);
    await atRest(page);
    return [before, await viewOf(page)];
  };
  const focused = await page.evaluate('document.activeElement.tagName');
  const [before, after] = await press('ArrowRight');
  check('keys move the map before it is clicked', focused === 'BODY' && after.x > before.x,
        [focused, before, after]);
  await page.click('[data-step=zoomIn]');
  await atRest(page);
  const [beside, moved] = await press('ArrowLeft');
  check('and after a click on a button', moved.x < beside.x, [beside, moved]);
  await page.focus('[name=clip]');
  const [still, chosen] = await press('ArrowRight');
  check('in the panel arrows choose', areSame(still, chosen) &&
        await page.evaluate('playground.options.clip') === 'frame', [still, chosen]);
  const [straight, turned] = await press('q');
  check('and letters still turn the map', turned.turn > straight.turn, [straight, turned]);
}

async function controls(page) {
  await page.focus('#overlay');
  const stops = [];
  for (let i = 0; i < 18; ++i) {
    await page.keyboard.press('Tab');
    stops.push(await page.evaluate(({activeElement: stop} = document) =>
      stop.getAttribute('aria-label') ?? stop.getAttribute('name') ?? stop.tagName));
  }
  const wanted =
      ['A', 'Zoom in', 'Whole world, north up', 'clip', 'grid', 'SUMMARY', 'pens', 'names'];
  check('Tab reaches every control', wanted.every((stop) => stops.includes(stop)), stops);
  const nameless = [];
  const walk = (node) => {
    const isControl = ['button', 'radio', 'checkbox', 'switch'].includes(node.role);
    if (isControl && !node.name) nameless.push(node.role);
    node.children?.forEach(walk);
  };
  walk(await page.accessibility.snapshot());
  check('every control has a name', nameless.length === 0, nameless);
  const before = await viewOf(page);
  await page.click('[data-step=turnLeft]');
  await atRest(page);
  await page.click('[data-step=zoomIn]');
  await atRest(page);
  const after = await viewOf(page);
  check('buttons turn and zoom', isNear(after.turn - before.turn, 15, 1e-9) &&
        isNear(after.scale / before.scale, 1.8, 1e-9), after);
}

async function fingers(page) {
  const session = await page.createCDPSession();
  const touch = (type, ...points) => session.send('Input.dispatchTouchEvent', {
    type, touchPoints: points.map(([x, y], id) => ({x, y, id})),
  });
  const between = (from, to, share) => [0, 1].map((i) => from[i] + share * (to[i] - from[i]));
  await look(page, 20, 45, 30);
  const from = [[120, 300], [250, 330]], to = [[140, 420], [300, 250]];
  const before = [await placeAt(page, ...from[0]), await placeAt(page, ...from[1])];
  await touch('touchStart', ...from);
  for (let i = 1; i <= 10; ++i) {
    await touch('touchMove', between(from[0], to[0], i / 10), between(from[1], to[1], i / 10));
  }
  await touch('touchEnd');
  await atRest(page);
  const after = [await placeAt(page, ...to[0]), await placeAt(page, ...to[1])];
  check('two fingers move, zoom and turn: both keep their places',
        areNear(after.flat(), before.flat(), 1e-6), [before, after]);
  const place = await placeAt(page, 200, 200);
  await touch('touchStart', [200, 200]);
  for (let i = 1; i <= 5; ++i) await touch('touchMove', [200 + 10 * i, 200 + 20 * i]);
  await touch('touchEnd');
  await atRest(page);
  check('one finger drags', areNear(await placeAt(page, 250, 300), place, 1e-6));
  await look(page, 25, -29, 20);
  await page.touchscreen.tap(187, 370);
  await atRest(page);
  check('a tap names the country', await named(page) === 'South Africa', await named(page));
  const heightOf = () => page.$eval('#panel', (panel) => panel.getBoundingClientRect().height);
  const hidden = await heightOf();
  await page.tap('#toggle');
  check('the panel opens on demand', hidden === 0 && await heightOf() > 100);
  await page.tap('summary');
  const small = await page.$$eval('a, button, label, summary', (all) => all.filter((target) => {
    const {width, height} = target.getBoundingClientRect();
    return width > 0 && (width < 44 || height < 44);
  }).map((target) => target.outerHTML.slice(0, 80)));
  check('a finger finds 44 pixels everywhere', small.length === 0, small);
}

/** A layer as the page draws it, of the window or of the frame, with the digest of counts.cpp. */
const layerOf = (page, what) => page.evaluate((what) => {
  const {world, picture, navigation: {view}} = playground;
  const {x, y, width, height, degrees} = picture.frame();
  const layer = what === 'window' ? world.drawView(true)
                                 : world.drawFrame(picture.frame(), what === 'rings', false);
  let digest = 2166136261;
  for (const words of [layer.points, layer.flags]) {
    for (const word of words) digest = Math.imul(digest ^ word, 16777619);
  }
  return {
    view: [view.x, view.y, view.scale, view.turn, picture.width, picture.height,
           world.unitsPerPixel],
    frame: [x, y, width, height, degrees, Number(what === 'rings')],
    counts: [layer.cameIn, layer.kept, layer.drawn, layer.rings, digest >>> 0],
    hidden: layer.flags.filter((flag) => flag % 2 === 0).length,
  };
}, what);

const native = (...numbers) =>
    execFileSync(counts, numbers.map(String), {encoding: 'utf8'}).trim().split(' ').map(Number);

/** The numbers in the line about vertices. */
const countsTold = (page) => page.$eval('#vertices', (line) => {
  const text = line.textContent.replace(/\s/g, '');
  return text.match(/^(\d+)vertices→(\d+)kept→(\d+)drawn$/)?.slice(1).map(Number) ?? text;
});

async function clips(page) {
  for (const view of [[15, 52, 18, 0], [-175, 60, 9, 33], [10, 30, 3.6, -77]]) {
    await look(page, ...view);
    const {view: numbers, counts: found} = await layerOf(page, 'window');
    check(`at ${view} all vertices and flags are those of a native program`,
          areSame(found, native(...numbers)), [found, native(...numbers)]);
  }
  await look(page, 22, 52, 14);
  const rings = {};
  for (const how of ['window', 'frame', 'rings']) {
    await choose(page, 'clip', how);
    const {view, frame, counts: found, hidden} = await layerOf(page, how);
    const expected = how === 'window' ? native(...view) : native(...view, ...frame);
    check(`clipped to the ${how}, they are the native program's`, areSame(found, expected),
          [found, expected]);
    const told = await countsTold(page);
    check(`the page says how many are kept (${how})`,
          areSame(told, found.slice(0, 3)) && found[0] === 97_660 && found[1] < found[0] / 2,
          [told, found]);
    if (how !== 'window') check('edges along the frame are invisible', hidden > 10, hidden);
    rings[how] = found[3];
    await photograph(page, `clip-${how}`);
  }
  check('the two operations differ', rings.frame !== rings.rings, rings);
  for (const how of ['frame', 'rings']) {
    await choose(page, 'clip', how);
    await look(page, 180, 64, 9);
    const strays = await page.evaluate(invisibleInside, how === 'rings');
    check(`no edge inside the frame is invisible, even where the map is cut (${how})`,
          strays.length === 0, strays);
  }
  await choose(page, 'clip', 'window');
}

/** Runs in the page: returns the invisible edges that don't lie along the frame, as their ends
 * relative to its middle, in pixels. */
function invisibleInside(cutsIntoRings) {
  const {world, picture} = playground;
  const frame = picture.frame();
  const {points, flags} = world.drawFrame(frame, cutsIntoRings, false);
  const angle = frame.degrees * Math.PI / 180;
  const inFrame = (i) => {
    const x = points[2 * i] / world.unitsPerPixel - frame.x;
    const y = points[2 * i + 1] / world.unitsPerPixel - frame.y;
    return [x * Math.cos(angle) + y * Math.sin(angle), y * Math.cos(angle) - x * Math.sin(angle)];
  };
  const sizes = [frame.width, frame.height];
  const strays = [];
  let first = 0;
  flags.forEach((flag, i) => {
    const ends = [inFrame(i), inFrame(flag >= 2 ? first : i + 1)];
    const isAlong = [0, 1].some((axis) => [-0.5, 0.5].some((side) =>
      ends.every((end) => Math.abs(end[axis] - side * sizes[axis]) < 0.5)));
    if (flag % 2 === 0 && !isAlong) strays.push(ends);
    if (flag >= 2) first = i + 1;
  });
  return strays;
}

/** Shows Bolivia in the frame, moved from a point of it by pixels; returns what the page says. */
const boliviaAt = (page, corner) => page.evaluate((corner) => {
  const {world, picture, navigation} = playground;
  const {x, y, width, height, degrees} = picture.frame();
  const [cos, sin] = [Math.cos(degrees * Math.PI / 180), Math.sin(degrees * Math.PI / 180)];
  const lowerLeft = {
    x: x - width / 2 * cos - height / 2 * sin,
    y: y - width / 2 * sin + height / 2 * cos,
  };
  const pixel = corner ? {x: lowerLeft.x + 60, y: lowerLeft.y - 60} : {x, y};
  navigation.hold([-64.7, world.mapY(-16.7)], pixel, 2.5, 0);
  return pixel;
}, corner);

// Bolivia is one polygon. Near the lower left corner of the frame it lies wholly inside, and within
// the ranges of x and y of the left side. So no edge of it lies to the right of a side. None lies
// below one either: the upper side is to the right, and that counts as left only. The header of
// ClipPolygonSet says that such a polygon produces nothing. In the middle of the frame Bolivia lies
// to the right of the left side and to the left of the right side.
async function losses(page) {
  for (const [how, corner, isLost] of [
    ['frame', true, false], ['rings', true, true], ['rings', false, false],
  ]) {
    await choose(page, 'clip', how);
    const pixel = await boliviaAt(page, corner);
    await atRest(page);
    const found = await page.evaluate(({x, y}) => {
      const {picture} = playground;
      const [red, green, blue] =
          pixelsOf(picture.ground.canvas, Math.round(x), Math.round(y), 1, 1);
      return {
        isSea: '#' + [red, green, blue].map((n) => n.toString(16).padStart(2, '0')).join('') ===
            picture.colours.sea,
        lost: picture.namesLostInRings(),
        note: document.querySelector('#clipNote').textContent.replace(/\s+/g, ' '),
      };
    }, pixel);
    const where = corner ? 'beside a side' : 'in the middle';
    check(`Bolivia ${where} of the frame (${how}) is ${isLost ? 'lost' : 'drawn'}`,
          found.isSea === isLost, found);
    if (how === 'frame') continue;
    check('and the page knows', found.lost.includes('Bolivia') === isLost, found.lost);
    const [, listed, more] = found.note.match(/it loses (?!no)(.*?)(?: and (\d+) more)?\.$/) ?? [];
    const told = listed ? listed.split(', ').length + Number(more ?? 0) : 0;
    check('and counts those that are lost', told === found.lost.length, found);
  }
  await choose(page, 'clip', 'window');
}

async function maps(page) {
  await look(page, 22, 52, 14);
  const drawn = [];
  for (const grid of ['0', '3', '8', '24']) {
    await choose(page, 'grid', grid);
    drawn.push(await page.evaluate('playground.report.drawn'));
    if (grid === '24') await photograph(page, 'grid');
  }
  check('the coarser the grid, the more vertices fall together',
        drawn.every((n, i) => i === 0 || n < 0.8 * drawn[i - 1]), drawn);
  await choose(page, 'grid', '0');
}

/** Measures dashes and gaps along the border on the 49th parallel, in pixels. */
const runsOnBorder = (page) => page.evaluate(() => {
  const {world, picture: {ground: {canvas}}} = playground;
  const [left, y] = world.pixelOf(-121, world.mapY(49));
  const [right] = world.pixelOf(-97, world.mapY(49));
  const rows = [-1, 0, 1].map((dy) => pixelsOf(
      canvas, Math.ceil(left), Math.floor(y) + dy, Math.floor(right - left), 1));
  const runs = [];
  for (let i = 0; i < rows[0].length; i += 4) {
    const isDash = Math.min(...rows.map((row) => row[i])) < 150;
    if (isDash !== runs.at(-1)?.isDash) runs.push({isDash, length: 0});
    ++runs.at(-1).length;
  }
  return runs.slice(1, -1);
});

async function dashes(page) {
  await look(page, -109, 49, 40);
  check('a solid border has no gaps', (await runsOnBorder(page)).length === 0);
  const expected = {2: [9, 6], 3: [1.5, 6], 4: [12, 4.5, 3, 4.5], 9: [12, 10.5]};
  for (const [type, lengths] of Object.entries(expected)) {
    await choose(page, 'line', type);
    const runs = await runsOnBorder(page);
    // A pattern begins again with each outline, which may cut the last dash or gap short.
    const fitting = runs.filter((run) => lengths.some(
        (length, i) => (i % 2 === 0) === run.isDash && isNear(run.length, length, 1)));
    check(`line type ${type} has its dashes and gaps`,
          runs.length > 40 && fitting.length > 0.9 * runs.length, runs.slice(0, 8));
  }
  await photograph(page, 'dashes');
  await page.click('summary');
  const rows = await page.$$eval('#lineTypes label', (all) => all.map((row) => row.innerText));
  check('line types have numbers and names',
        rows.length === 13 && new Set(rows.map((row) => row.replace(/^\d+/, ''))).size === 13 &&
            rows.every((row, i) => new RegExp(`^${i + 1}\\s+[A-Z]`).test(row)), rows);
  const chosen = await page.$eval('summary', (summary) => summary.innerText);
  check('the chosen one shows while the list is closed', chosen === rows[8], [chosen, rows[8]]);
  await photograph(page, 'line-types');
  await choose(page, 'line', '1');
}

const coloursDrawn = (page) => page.evaluate(() => {
  const {width, height, ground: {canvas}} = playground.picture;
  return new Set(new Uint32Array(pixelsOf(canvas, 0, 0, width, height).buffer)).size;
});

async function pens(page) {
  await look(page, 15, 47, 25);
  const all = await coloursDrawn(page);
  check('borders blend into hundreds of colours', all > 200, all);
  for (const count of [64, 16, 4]) {
    await choose(page, 'pens', String(count));
    const found = [await coloursDrawn(page), await page.$$eval('#swatches i', (all) => all.length)];
    check(`${count} pens draw the picture`, areSame(found, [count, count]), found);
  }
  await photograph(page, 'pens');
  await drag(page, [500, 300], [560, 330]);
  check('and no other colour appears while the map moves', await coloursDrawn(page) <= 4);
  await choose(page, 'pens', '0');
}

// Returns the names drawn now, and those of them that a card covers or the window cuts.
const namesDrawn = (page) => page.evaluate(() => {
  const isVisible = (x, y) =>
      document.elementFromPoint(x / devicePixelRatio, y / devicePixelRatio)?.id === 'overlay';
  const hidden = textsDrawn.filter(({x, y, width, height}) =>
    ![-0.5, 0, 0.5].every((share) =>
      [-0.4, 0.4].every((side) => isVisible(x + share * width, y + side * height))));
  return {all: textsDrawn.map(({text}) => text), hidden: hidden.map(({text}) => text)};
});

async function names(page) {
  await look(page, 15, 47, 14, 25);
  await page.click('.switch');
  await atRest(page);
  const found = await page.evaluate(({world} = playground) => {
    const names = world.namesNow();
    const strays = names.filter(({country, x, y}) => world.pick(x, y) !== country);
    return {count: names.length, strays: strays.map(({country}) => world.names[country])};
  });
  check('names stand in their countries', found.count > 15 && found.strays.length === 0, found);
  await photograph(page, 'names');
  for (const view of [[15, 47, 14, 25], [100, 40, 8, 0], [-60, -10, 5, -40], [25, 0, 3.2, 0]]) {
    await look(page, ...view);
    const {all, hidden} = await namesDrawn(page);
    check(`at ${view} no name is cut or under a card`, all.length > 5 && hidden.length === 0,
          [all, hidden]);
  }
  await look(page, 25, 20, 12);
  await page.mouse.move(600, 300);
  await page.mouse.down();
  const inMotion = [];
  for (let i = 1; i <= 8; ++i) {
    await page.mouse.move(600 + 40 * i, 300 + 20 * i);
    await page.waitForFunction('!playground.frameRequested', {polling: 20});
    inMotion.push(await namesDrawn(page));
  }
  await page.mouse.up();
  await atRest(page);
  check('nor while the map moves',
        inMotion[0].all.length > 5 && inMotion.every(({hidden}) => hidden.length === 0), inMotion);
  await page.click('.switch');
  await atRest(page);
}

/** The part of the address after the page, once it has been written. */
async function addressOf(page) {
  await new Promise((done) => setTimeout(done, 700));
  return page.evaluate('location.hash');
}

/** The place in the middle of what is shared, the degrees across its shorter side, the turn, and
 * the options. */
const sharedOf = (page) => page.evaluate(() => {
  const {world, navigation: {view}, picture: {width, height, pixelRatio}, options} = playground;
  const panel = document.querySelector('#panel').getBoundingClientRect();
  const isBeside = document.querySelector('#toggle').offsetWidth === 0;
  const right = isBeside ? panel.left * pixelRatio : width;
  return {
    place: world.placeAt(right / 2, height / 2),
    span: Math.min(right, height) / view.scale,
    turn: view.turn,
    options: JSON.stringify(options),
  };
});

async function shares(page, browser) {
  check('at first the address is plain', await addressOf(page) === '', await addressOf(page));
  const entries = await page.evaluate('history.length');
  await look(page, 15.3, 47.2, 19, 25);
  for (const [name, value] of [['clip', 'rings'], ['grid', '8'], ['line', '4'], ['pens', '16']]) {
    await choose(page, name, value);
  }
  await page.click('.switch');
  await atRest(page);
  const address = await addressOf(page);
  check('the address has the view and the switches', ['at=', 'span=', 'turn=25', 'clip=rings',
        'grid=8', 'line=4', 'pens=16', 'names=1'].every((part) => address.includes(part)), address);
  check('and no entry is added to the history',
        await page.evaluate('history.length') === entries, entries);
  const here = await sharedOf(page);
  const layer = await page.evaluate('playground.report');
  const phone = {width: 390, height: 844, density: 2, touch: true};
  for (const [where, settings] of [['in another window', {}], ['on a phone', phone]]) {
    const other = await browser.open({...settings, path: address});
    const there = await sharedOf(other);
    check(`a link shows the same ${where}`,
          areNear(there.place, here.place, 1e-3) && isNear(there.span / here.span, 1, 1e-4) &&
              isNear(there.turn, here.turn, 0.01) && there.options === here.options, [here, there]);
    const drawn = await other.evaluate('playground.report.drawn');
    if (where === 'in another window') {
      check('down to the vertices', isNear(drawn / layer.drawn, 1, 0.01), [drawn, layer.drawn]);
    }
    await other.close();
  }
  await page.evaluate(() => {
    playground.navigation.take('zoomIn');
    location.hash = '#at=-29,25&span=20&line=3';
  });
  await page.waitForFunction('playground.options.lineType === 3', {polling: 20});
  await atRest(page);
  const typed = await sharedOf(page);
  check('so does an address typed in while the map glides',
        areNear(typed.place, [25, await page.evaluate('playground.world.mapY(-29)')], 1e-3) &&
            isNear(typed.span, 20, 1e-3) && typed.turn === 0 && typed.options.includes('"window"'),
        typed);
  await page.click('[data-step=home]');
  await choose(page, 'line', '1');
  check('the whole world with all switches as they were has a plain address',
        await addressOf(page) === '', await addressOf(page));
}

/** Opens the page where one of its scripts does not load, and where a frame fails later. */
async function tellsFaults(browser) {
  const page = await browser.chromium.newPage();  // not by `open`: errors are expected here
  const isTold = () => page.waitForFunction(
      () => document.querySelector('#country').textContent.includes('failed'), {timeout: 10_000})
      .then(() => true, () => false);
  await page.goto(browser.address);
  await page.waitForFunction('globalThis.playground');
  // The browser withholds this error from the page, as it does if the page is opened from a file.
  await page.evaluate(() => {
    playground.picture.draw = () => {
      throw new Error('no frame');
    };
  });
  await page.keyboard.press('+');
  check('a frame that fails is reported', await isTold(), await named(page));
  let missing = '';
  await page.setRequestInterception(true);
  page.on('request', (request) => request.url().endsWith(missing) ? request.abort()
                                                                  : request.continue());
  for (missing of ['zelvan.js', 'map.js', 'picture.js', 'address.js']) {
    await page.goto(browser.address);
    check(`the page says that it has failed without ${missing}`, await isTold(), await named(page));
  }
  await page.close();
}

const brokenAddresses = [
  '#', '#at', '#at=&span=', '#at=91,0&span=10', '#at=0,181&span=10', '#at=1,2,3&span=10',
  '#at=NaN,Infinity&span=10', '#at=1e1,1e1&span=10', '#at=10,10&span=0', '#at=10,10&span=-5',
  '#at=10,10&span=10&turn=181', '#at=0x10,10&span=10', '#at=%E0%A4%A&span=%', '#clip=off',
  '#clip=__proto__&grid=constructor', '#grid=1e9&line=0&pens=-4&names=yes', '#line=14', '#pens=5',
  `#clip="><script>throw 1</script>`, `#at=<img src=x onerror=alert(1)>&names=<b>`,
  '#' + 'at=1,'.repeat(20_000),
];

async function ignoresBroken(page) {
  const before = [await viewOf(page), await page.evaluate('playground.options')];
  for (const address of brokenAddresses) {
    await page.evaluate((address) => {
      location.hash = address;
    }, address);
    await page.evaluate(() => new Promise((done) => setTimeout(done, 30)));
    await atRest(page);
    const found = [await viewOf(page), await page.evaluate('playground.options')];
    check(`ignored: ${address.slice(0, 50)}`, areSame(found, before), found);
  }
}

async function links(page, browser) {
  const shown = await page.$$eval(
      '#title a', (all) => all.map((link) => [link.innerText, link.href]));
  check('the page links to guide, source, licence and data',
        areSame(shown.map(([text]) => text), ['Guide', 'Source', 'Licence', 'Data']), shown);
  const textOf = async (path) => (await fetch(new URL(path, browser.address))).text();
  const source = await textOf('index.html');  // has also the links that show only without scripts
  for (const [, link] of source.matchAll(/(?:href|src)="(?!data:)([^"]+)/g)) {
    check(`${link} is a file beside the page`, existsSync(join(folder, link)));
  }
  const hrefs = Object.fromEntries(shown);
  for (const [text, words] of Object.entries({
    Guide: '<h1>zelvan', Licence: 'Permission is hereby', Data: 'Natural Earth',
  })) {
    check(`${text} leads to it`, (await textOf(hrefs[text])).includes(words), hrefs[text]);
  }
  const listed = execFileSync('tar', ['-tzf', join(folder, 'zelvan-source.tar.gz')],
                              {encoding: 'utf8'}).split('\n');
  check('the archive has the sources of library and page',
        ['zelvan/src/zelvan/zelvan.h', 'zelvan/examples/playground/page.js', 'zelvan/LICENSE']
            .every((path) => listed.includes(path)) &&
        !listed.some((path) => /^zelvan\/(build|out|\.git)\//.test(path)), listed.length);
}

async function forcedColours(page) {
  check('colours are forced', await page.evaluate(`matchMedia('(forced-colors: active)').matches`));
  await page.click('summary');
  for (const list of ['.choice', '#lineTypes']) {
    const chosen = await colourAtEdge(page, `${list} input:checked + span`);
    const other = await colourAtEdge(page, `${list} input:not(:checked) + span`);
    check(`forced colours show what is chosen in ${list}`, chosen !== other, [chosen, other]);
  }
  await page.click('summary');
  const off = await colourAtEdge(page, '.switch input');
  await page.click('.switch');
  await atRest(page);
  const on = await colourAtEdge(page, '.switch input');
  check('and that a switch is on', on !== off, [on, off]);
  await photograph(page, 'forced-colours');
}

async function withoutScripts(page) {
  const found = await page.evaluate(() => ({
    text: document.body.innerText,
    links: [...document.querySelectorAll('a')].filter((link) => link.offsetWidth > 0).length,
    isImageThere: document.querySelector('img').naturalWidth > 0,
    isControlThere: document.querySelector('#dock').offsetWidth > 0,
    isWide: document.documentElement.scrollWidth > innerWidth,
    isScrolled: getComputedStyle(document.body).overflowY !== 'hidden',
  }));
  check('without scripts the page says what it is, and links on',
        /map of the world/.test(found.text) && found.text.length > 400 && found.links >= 7 &&
            found.isImageThere, found);
  check('and shows nothing that would not work',
        !found.isControlThere && !/Loading|Drag/.test(found.text), found);
  check('and can be read to its end', !found.isWide && found.isScrolled, found);
  await photograph(page, `no-scripts-${page.viewport().width}`);
}

/** Opens all that can be opened, and asks axe for violations of the guidelines for access. */
async function accessible(browser, what, settings) {
  const page = await browser.open(settings);
  if (settings.touch && !settings.path) await page.tap('#toggle');
  for (const list of await page.$$('summary')) {
    if (await list.isVisible()) await list.click();
  }
  await page.evaluate(axe.source);
  const {violations, passes} = await page.evaluate(() => axe.run());
  check(`axe has no complaint: ${what}`, violations.length === 0 && passes.length > 10,
        violations.map(({id, nodes}) => [id, nodes.map(({html}) => html)]));
  await page.close();
}

async function access(browser) {
  const phone = {width: 390, height: 844, density: 2, touch: true};
  const readable = 'without-scripts.html';  // a copy as without scripts; axe itself needs them
  for (const [what, settings] of Object.entries({
    'light': {}, 'dark': {scheme: 'dark'}, 'forced colours': {forced: true},
    'forced colours, dark': {forced: true, scheme: 'dark'}, 'a phone': phone,
    'a dark phone': {...phone, scheme: 'dark'}, 'no scripts': {path: readable},
    'no scripts, dark, on a phone': {...phone, path: readable, scheme: 'dark'},
    'the guide': {path: 'guide/index.html'},
    'the guide in the dark': {path: 'guide/docs/playground.html', scheme: 'dark'},
  })) {
    await accessible(browser, what, settings);
  }
}

async function changes(page) {
  await look(page, 20, 45, 12, 10);
  const before = await viewOf(page);
  const seaOf = () => page.evaluate('playground.picture.colours.sea');
  const lightSea = await seaOf();
  await page.emulateMediaFeatures([{name: 'prefers-color-scheme', value: 'dark'}]);
  await page.waitForFunction(
      (sea) => playground.picture.colours.sea !== sea, {polling: 20}, lightSea);
  await atRest(page);
  const pixel = await page.evaluate(({world, picture} = playground) => {
    const [x, y] = world.pixelOf(-5, world.mapY(46));  // in the Bay of Biscay
    const [red, green, blue] = pixelsOf(picture.ground.canvas, x, y, 1, 1);
    return '#' + [red, green, blue].map((n) => n.toString(16).padStart(2, '0')).join('');
  });
  check('the map turns dark with the system', pixel === await seaOf(), pixel);
  await page.setViewport({width: 900, height: 700, deviceScaleFactor: 2});
  await page.waitForFunction(
      ({width, height} = playground.picture) => width === 1800 && height === 1400, {polling: 20});
  await atRest(page);
  const after = await viewOf(page);
  check('size and density may change: what is shown stays',
        isNear(after.x, before.x, 1e-9) && isNear(after.y, before.y, 1e-9) &&
            isNear(after.scale, 2 * before.scale, 1e-9), [before, after]);
}

async function fromFile(page) {
  check('a double click on the file is enough',
        await page.evaluate('playground.report.drawn > 10000'));
}

/** The contrast of two colours such as rgb(1, 2, 3), by WCAG 2. */
function contrast(a, b) {
  const luminance = (colour) => {
    const [red, green, blue] = colour.match(/[\d.]+/g).slice(0, 3).map((channel) => {
      const share = channel / 255;
      return share <= 0.04045 ? share / 12.92 : ((share + 0.055) / 1.055) ** 2.4;
    });
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
  };
  const [low, high] = [luminance(a), luminance(b)].sort((x, y) => x - y);
  return (high + 0.05) / (low + 0.05);
}

const layoutOf = (page) => page.evaluate(() => {
  const colourOf = (selector, what) => getComputedStyle(document.querySelector(selector))[what];
  const cards = [...document.querySelectorAll('.card')]
                    .map((card) => card.getBoundingClientRect()).filter((card) => card.width > 0);
  const meet = (a, b) => a !== b && a.left < b.right && b.left < a.right && a.top < b.bottom &&
      b.top < a.bottom;
  return {
    size: [playground.picture.width, playground.picture.height],
    text: colourOf('#country', 'color'),
    muted: colourOf('#vertices', 'color'),
    card: colourOf('#readout', 'backgroundColor'),
    areInside: cards.every((card) => card.left >= 0 && card.top >= 0 &&
        card.right <= innerWidth && card.bottom <= innerHeight),
    areApart: !cards.some((a) => cards.some((b) => meet(a, b))),
    isScrolled: document.documentElement.scrollWidth > innerWidth,
    cut: [...document.querySelectorAll('.card')]
             .filter((card) => card.scrollWidth > card.clientWidth).map((card) => card.id),
  };
});

/** Returns the places along the edges of the world that a card covers or the window cuts, in the
 * copy of the map that has fewest. */
const hiddenEnds = (page) => page.evaluate(() => {
  const {world} = playground;
  const hiddenIn = (copy) => {
    const hidden = [];
    for (const longitude of [-169, -80, 10, 100, 189]) {
      for (const latitude of [83.9, 0, -77.9]) {
        const [x, y] = world.pixelOf(longitude + 360 * copy, world.mapY(latitude))
                           .map((at) => at / devicePixelRatio);
        const top = document.elementFromPoint(x, y)?.id;
        if (top !== 'overlay') hidden.push([longitude, latitude, x, y, top]);
      }
    }
    return hidden;
  };
  return [-1, 0, 1].map(hiddenIn).sort((a, b) => a.length - b.length)[0];
});

/** Runs in the page: whether the turned frame lies where no card covers it. */
function isFrameFree() {
  const {picture} = playground;
  const {free} = picture;
  const {x, y, width, height, degrees} = picture.frame();
  const angle = degrees * Math.PI / 180;
  const reachX = (width * Math.cos(angle) + height * Math.sin(angle)) / 2;
  const reachY = (width * Math.sin(angle) + height * Math.cos(angle)) / 2;
  return x - reachX >= free.left && x + reachX <= free.left + free.width &&
      y - reachY >= free.top && y + reachY <= free.top + free.height;
}

const windows = [
  {width: 320, height: 480, density: 1},
  {width: 320, height: 568, density: 2, touch: true},
  {width: 375, height: 740, density: 2, touch: true},
  {width: 844, height: 390, density: 2, touch: true},
  {width: 768, height: 1024, density: 1},
  {width: 1280, height: 800, density: 1},
  {width: 1280, height: 800, density: 2},
  {width: 1920, height: 1080, density: 1},
];

async function looks(browser) {
  for (const scheme of ['light', 'dark']) {
    for (const size of windows) {
      const page = await browser.open({...size, scheme});
      const {width, height, density} = size;
      const name = `${width}x${height}@${density}-${scheme}`;
      const found = await layoutOf(page);
      check(`${name}: a pixel of the canvas is one of the screen`,
            areSame(found.size, [width * density, height * density]), found.size);
      check(`${name}: the cards stand apart, within the window`,
            found.areInside && found.areApart && !found.isScrolled, found);
      check(`${name}: nothing reaches beyond its card`, found.cut.length === 0, found.cut);
      check(`${name}: text can be read`,
            contrast(found.text, found.card) > 7 && contrast(found.muted, found.card) > 4.5, found);
      const hidden = await hiddenEnds(page);
      check(`${name}: the whole world is there at first`, hidden.length === 0, hidden);
      await photograph(page, name);
      if (size.touch && height > width) {
        await page.tap('#toggle');
        await atRest(page);
        const above = await hiddenEnds(page);
        check(`${name}: so it is above the panel`, above.length === 0, above);
        await choose(page, 'clip', 'frame');
        check(`${name}: and the turned frame too`, await page.evaluate(isFrameFree));
        await photograph(page, `panel-${scheme}`);
      }
      await page.close();
    }
  }
}

/** Runs in the page: drags the map for some frames. Returns the median and the 95th percentile of
 * the time from frame to frame, and of clip, map and draw together. */
async function dragFor(frames) {
  const surface = document.querySelector('#overlay');
  const [pointerId] = playground.navigation.pointers.keys();
  const gaps = [], costs = [];
  let before = await new Promise((done) => requestAnimationFrame(done));
  for (let i = 0; i < frames; ++i) {
    surface.dispatchEvent(new PointerEvent('pointermove', {
      pointerId,
      clientX: innerWidth / 3 + 200 * Math.sin(i / 15),
      clientY: innerHeight / 2 + 60 * Math.cos(i / 11),
    }));
    const time = await new Promise((done) => requestAnimationFrame(done));
    gaps.push(time - before);
    before = time;
    const {clip, map, draw} = playground.report;
    costs.push(clip + map + draw);
  }
  const at = (times, share) => times.sort((a, b) => a - b)[Math.floor(share * times.length)];
  return [gaps, costs].flatMap((times) => [at(times, 0.5), at(times, 0.95)]);
}

async function speeds(browser) {
  for (const [width, height] of [[1280, 800], [1920, 1080]]) {
    const page = await browser.open({width, height});
    for (const [where, scale] of [['the whole world', 0], ['Europe', width / 72]]) {
      if (scale > 0) await look(page, 15, 48, scale);
      await page.mouse.move(width / 3, height / 2);
      await page.mouse.down();
      const times = await page.evaluate(dragFor, 90);
      await page.mouse.up();
      await atRest(page);
      const [gap, slowGap, cost, slowCost] = times.map((time) => time.toFixed(1));
      console.log(`${width}x${height}, ${where}: a frame every ${gap} ms (median), ${slowGap} ` +
                  `(95 %); clip, map and draw take ${cost} of it, ${slowCost}`);
      // A generous limit, for busy machines: this finds only what hangs.
      check(`${width}x${height}, ${where}: the map follows the pointer`, times[0] < 500, times);
    }
    await page.close();
  }
}

/** Runs each part in a window of its own, so that one that fails spoils no other. */
async function inWindow(browser, settings, ...parts) {
  for (const part of parts) {
    const page = await browser.open(settings);
    await part(page, browser).catch(
        (error) => check(`${part.name} came to its end`, false, error.stack));
    await page.close();
  }
}

const start = performance.now();
const browser = await Browser.start(folder);
try {
  await inWindow(browser, {}, loads, picks, moves, keys, keysAtOnce, controls, clips, losses, maps,
                 dashes, pens, names, shares, ignoresBroken, links, changes);
  await inWindow(browser, {width: 375, height: 740, density: 2, touch: true}, fingers);
  await inWindow(browser, {forced: true}, forcedColours);
  await inWindow(browser, {scripts: false}, withoutScripts);
  await inWindow(browser, {scripts: false, width: 390, height: 844, touch: true}, withoutScripts);
  await inWindow(browser, {url: pathToFileURL(join(folder, 'index.html')).href}, fromFile);
  await tellsFaults(browser);
  await access(browser);
  await looks(browser);
  await speeds(browser);
} catch (error) {
  check('the check came to its end', false, error.stack);
}
check('the console is silent', browser.complaints.length === 0, browser.complaints);
check('nothing is requested from elsewhere', browser.strangers.length === 0, browser.strangers);
await browser.close();
console.log(`${((performance.now() - start) / 1000).toFixed(1)} seconds`);
console.log(`${tally.passed} passed, ${tally.failed} failed`);
process.exit(tally.failed > 0 ? 1 : 0);
