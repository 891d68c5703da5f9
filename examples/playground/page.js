// The page: decides when to draw a frame, reads the controls, and writes the texts.
'use strict';

const readoutEvery = 250;  // milliseconds, while the map moves
const enoughFrames = 8;    // the first frames after a change are slow, so a median needs more

/** What the built-in line types look like, from number 1 on. The library has numbers only. */
const lineTypeNames = [
  'Solid', 'Dashed', 'Dotted', 'Dash, dot', 'Dash, two dots', 'Solid, 110', 'Solid, 120',
  'Solid, 130', 'Wide gaps', 'Long, short', 'Longer, short', 'Long dashes', 'Long, two short',
];

/**
 * @template {Element} T
 * @param {string} id
 * @param {new () => T} type
 * @returns {T}
 */
function element(id, type) {
  const found = document.getElementById(id);
  if (!(found instanceof type)) throw new Error(`no ${type.name} ${id}`);
  return found;
}

/** Puts HTML into an element unless it is there already. @param {string} id
 * @param {string} html */
function tell(id, html) {
  const target = element(id, HTMLElement);
  if (target.dataset.told === html) return;
  target.dataset.told = html;
  target.innerHTML = html;
}

/** Writes a number with thin blanks between thousands. @param {number} n */
const grouped = (n) => n.toLocaleString('en').replace(/,/g, '\u202f');

/** The largest part of a box that no card meets. @param {Box} box @param {Box[]} cards
 * @returns {Box} */
function largestFree(box, cards) {
  const right = box.left + box.width, bottom = box.top + box.height;
  const card = cards.find(({left, top, width, height}) => width > 0 && left < right &&
      left + width > box.left && top < bottom && top + height > box.top);
  if (!card) return box;
  const cardRight = card.left + card.width, cardBottom = card.top + card.height;
  const around = [
    {...box, width: card.left - box.left},
    {...box, left: cardRight, width: right - cardRight},
    {...box, height: card.top - box.top},
    {...box, top: cardBottom, height: bottom - cardBottom},
  ];
  return around.filter(({width, height}) => width > 0 && height > 0)
      .map((rest) => largestFree(rest, cards))
      .reduce((best, rest) => rest.width * rest.height > best.width * best.height ? rest : best,
              {...box, width: 0, height: 0});
}

/** The times of the frames in the last second. */
class Costs {
  /** @type {{time: number, clip: number, map: number, draw: number}[]} */
  #frames = [];

  /** Medians in milliseconds, or null until there were enough frames.
   * @type {{clip: number, map: number, draw: number} | null} */
  medians = null;

  /** @param {{clip: number, map: number, draw: number}} cost */
  add({clip, map, draw}) {
    const time = performance.now();
    this.#frames = this.#frames.filter((frame) => time - frame.time < 1000);
    this.#frames.push({time, clip, map, draw});
    if (this.#frames.length < enoughFrames) return;
    this.medians = {
      clip: this.#median('clip'), map: this.#median('map'), draw: this.#median('draw'),
    };
  }

  /** Forgets all frames: other settings take other times. */
  clear() {
    this.#frames = [];
    this.medians = null;
  }

  /** @param {'clip' | 'map' | 'draw'} what */
  #median(what) {
    const sorted = this.#frames.map((frame) => frame[what]).sort((a, b) => a - b);
    return sorted[sorted.length >> 1];
  }
}

class Page {
  /** @param {World} world */
  constructor(world) {
    const surface = element('overlay', HTMLCanvasElement);
    this.world = world;
    this.picture = new Picture(world, element('ground', HTMLCanvasElement), surface);
    this.navigation =
        new Navigation(world, this.picture, surface, (hasMoved) => this.#ask(hasMoved));
    this.costs = new Costs();
    /** The last result of drawing. @type {ReturnType<Picture['draw']> | null} */
    this.report = null;
    this.country = -1;
    this.overlayShown = '';
    this.isGroundStale = false;
    this.isRestPending = false;
    this.frameRequested = 0;
    this.lastReadout = -Infinity;
    this.restTimer = 0;

    /** @type {Options} */
    this.options = {clip: 'window', grid: 0, lineType: 1, pens: 0, names: false};
    this.form = element('panel', HTMLFormElement);
    this.toggle = element('toggle', HTMLButtonElement);
    this.#makeLineTypes();
    this.address = new Address(this.form, () => this.#sharedView(), (shared) => {
      this.#takeOptions();
      this.#show(shared);
    });
    this.sharedAtStart = this.address.read();
    this.#takeOptions();
    this.#readScheme();
    this.#listen();
    this.#listenForSize(surface);
  }

  /** True when everything has been drawn in full detail. */
  get isAtRest() {
    return this.report !== null && !this.frameRequested && !this.isRestPending &&
           !this.navigation.isGoingOn;
  }

  // ---- controls

  #listen() {
    for (const button of document.querySelectorAll('button')) {
      const step = button.dataset.step;
      if (step) button.addEventListener('click', () => this.navigation.take(step));
    }
    this.toggle.addEventListener('click', () => {
      const isOpen = this.toggle.getAttribute('aria-expanded') === 'true';
      this.toggle.setAttribute('aria-expanded', String(!isOpen));
      this.#findFree();
      if (this.navigation.isHome) this.navigation.showHome();
      this.#ask(true);
    });
    this.form.addEventListener('change', () => {
      this.#takeOptions();
      this.#ask(true);
    });
    this.form.addEventListener('submit', (event) => event.preventDefault());
    matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => {
      this.#readScheme();
      this.#ask(true);
    });
  }

  // Reads the controls.
  #takeOptions() {
    const data = new FormData(this.form);
    this.options = /** @type {Options} */ ({
      clip: data.get('clip'),
      grid: Number(data.get('grid')),
      lineType: Number(data.get('line')),
      pens: Number(data.get('pens')),
      names: data.has('names'),
    });
    this.costs.clear();
    tell('lineTypeNow', this.#lineTypeHtml(this.options.lineType));
  }

  #readScheme() {
    const isDark = matchMedia('(prefers-color-scheme: dark)').matches;
    this.picture.setScheme(isDark ? 'dark' : 'light');
  }

  #makeLineTypes() {
    const rows = lineTypeNames.map((_, i) => `<label><input type="radio" name="line"
        value="${i + 1}" ${i === 0 ? 'checked' : ''}><span>${this.#lineTypeHtml(i + 1)}</span>
        </label>`);
    element('lineTypes', HTMLDivElement).innerHTML = rows.join('');
  }

  /** Its number, its name and a sample. @param {number} lineType */
  #lineTypeHtml(lineType) {
    const dashes = this.picture.dashes[lineType - 1].join(' ') || 'none';
    return `<b>${lineType}</b> ${lineTypeNames[lineType - 1]} <svg aria-hidden="true"><line x1="0"
        y1="50%" x2="100%" y2="50%" stroke-dasharray="${dashes}"/></svg>`;
  }

  // ---- size

  /** Sizes the canvas to whole pixels of the device; it would be blurred otherwise.
   * @param {HTMLElement} surface */
  #listenForSize(surface) {
    const observer = new ResizeObserver(([entry]) => {
      const ratio = devicePixelRatio;
      const size = (/** @type {number} */ css, /** @type {number | undefined} */ exact) =>
          // If developer tools simulate a density, the exact size is that of the real screen.
          exact && Math.abs(exact - css * ratio) < 2 ? exact : Math.round(css * ratio);
      const exact = entry.devicePixelContentBoxSize?.[0];
      this.#resize(size(entry.contentRect.width, exact?.inlineSize),
                   size(entry.contentRect.height, exact?.blockSize), ratio);
    });
    try {
      observer.observe(surface, {box: 'device-pixel-content-box'});
    } catch {
      observer.observe(surface);  // some browsers don't report the exact size
    }
  }

  /** @param {number} width @param {number} height @param {number} ratio */
  #resize(width, height, ratio) {
    const {picture, navigation, report} = this;
    const isSame = width === picture.width && height === picture.height &&
                   ratio === picture.pixelRatio;
    if (width === 0 || height === 0 || (isSame && report)) return;
    const zoom = ratio / picture.pixelRatio;
    picture.resize(width, height, ratio);
    this.#findFree();
    const {view} = navigation;
    if (!report) this.#show(this.sharedAtStart);
    else if (navigation.isHome) navigation.showHome();
    else navigation.setView({...view, scale: view.scale * zoom});
    navigation.lastMoved = -Infinity;
    this.#draw(performance.now());  // before the browser shows the cleared canvas
  }

  #findFree() {
    const {width, height, pixelRatio} = this.picture;
    const cards = [...document.querySelectorAll('.card')].map((card) => {
      const box = card.getBoundingClientRect();
      return {
        left: box.left * pixelRatio,
        top: box.top * pixelRatio,
        width: box.width * pixelRatio,
        height: box.height * pixelRatio,
      };
    });
    this.picture.free = largestFree({left: 0, top: 0, width, height}, cards);
  }

  // ---- the view in the address

  /** The part of the window beside the panel; all of it if the panel can be closed.
   * @returns {Box} */
  #sharedPart() {
    const {width, height, pixelRatio} = this.picture;
    const isPanelBeside = this.toggle.offsetWidth === 0;
    const {left} = this.form.getBoundingClientRect();
    return {left: 0, top: 0, width: isPanelBeside ? left * pixelRatio : width, height};
  }

  /** @returns {SharedView | null} */
  #sharedView() {
    const {world, navigation: {view, isHome}} = this;
    if (isHome) return null;
    const {width, height} = this.#sharedPart();
    const [x, y] = world.placeAt(width / 2, height / 2);
    const within180 = (/** @type {number} */ degrees) =>
        degrees - 360 * Math.floor((degrees + 180) / 360);
    return {
      latitude: world.latitudeAt(y),
      longitude: within180(x),
      span: Math.min(width, height) / view.scale,
      turn: within180(view.turn),
    };
  }

  /** @param {SharedView | null} shared  null for the whole world */
  #show(shared) {
    const {world, navigation} = this;
    navigation.motion = null;
    if (!shared) return navigation.showHome();
    const {width, height} = this.#sharedPart();
    navigation.hold([shared.longitude, world.mapY(shared.latitude)], {x: width / 2, y: height / 2},
                    Math.min(width, height) / shared.span, shared.turn);
  }

  // ---- frames

  /** Asks for a frame. @param {boolean} isGround  false if only the overlay has changed */
  #ask(isGround) {
    this.isGroundStale ||= isGround;
    this.frameRequested ||= requestAnimationFrame((time) => {
      this.frameRequested = 0;
      this.navigation.step(time);
      this.#draw(time);
      if (this.navigation.isGoingOn) this.#ask(true);
    });
  }

  /** @param {number} time */
  #draw(time) {
    const {navigation, picture, options} = this;
    const {isMoving} = navigation;
    const isDrawn = this.isGroundStale || (this.isRestPending && !isMoving);
    if (isDrawn) {
      if (!isMoving && !navigation.isHeld) navigation.normalise();
      this.report = picture.draw(navigation.view, options, isMoving);
      this.costs.add(this.report);
      if (options.names && !isMoving) picture.placeNames();
      this.isGroundStale = false;
      this.isRestPending = isMoving;
      if (isMoving) this.#restLater();
      this.address.writeLater();
    }
    this.#pick();
    const cross = navigation.isByKeyboard ? navigation.middle : null;
    const overlay = `${this.country} ${cross !== null}`;
    if (isDrawn || overlay !== this.overlayShown) {
      this.overlayShown = overlay;
      picture.drawOverlay(options, this.country, isMoving, cross);
    }
    if (!isMoving || time - this.lastReadout > readoutEvery) {
      this.lastReadout = time;
      this.#tell();
    }
  }

  // Finds the country at the pointer. A drag keeps it there, so it is not asked for again.
  #pick() {
    const {target, isHeld, motion} = this.navigation;
    if (isHeld && this.country >= 0) return;
    this.country = target && !motion ? this.world.pick(target.x, target.y) : -1;
  }

  // Draws the map once more in full detail when it has come to rest.
  #restLater() {
    clearTimeout(this.restTimer);
    this.restTimer = setTimeout(() => this.#ask(false), restAfter + 10);
  }

  // ---- texts

  #tell() {
    const {report, costs: {medians}, options, navigation} = this;
    if (!report) return;
    this.#tellCountry(navigation.target !== null, navigation.isByKeyboard);
    const {cameIn, kept, drawn, rings} = report;
    tell('vertices', `<b>${grouped(cameIn)}</b> vertices → ` +
                     `<b>${grouped(kept)}</b> kept → <b>${grouped(drawn)}</b> drawn`);
    const time = (/** @type {'clip' | 'map' | 'draw'} */ what) =>
        `${what} <b>${medians?.[what].toFixed(1)}</b>`;
    tell('cost', medians ? `${time('clip')} · ${time('map')} · ${time('draw')} ms a frame`
                         : 'Move the map to time its frames.');

    tell('clipNote', {
      window: () => 'Keeps what lies in the window. The rest is neither mapped nor drawn.',
      frame: () => `Keeps what lies in the turned frame, one ring for each polygon;
                    ${grouped(rings)} are drawn. Edges along the frame are invisible; here they are
                    dashed.`,
      rings: () => this.#ringsNote(rings),
    }[options.clip]());
    const grid =
        options.grid > 0 ? `a grid of ${options.grid} px` : '⅛ pixel, coarser in motion';
    tell('gridNote', `Rounds to ${grid}. Repeated vertices become one.`);
    const {pens, coloursBefore} = this.picture;
    const hasPens = options.pens > 0;
    tell('penNote', hasPens ? `${pens.length} pens, chosen for ${grouped(coloursBefore)} colours;
                               each is drawn with the closest.`
                            : 'Draws every colour. Choose a number of pens to draw with fewer.');
    tell('swatches',
         hasPens ? pens.map((pen) => `<i style="background:${pen}"></i>`).join('') : '');
  }

  /** @param {number} rings */
  #ringsNote(rings) {
    const lost = this.picture.namesLostInRings();
    const n = Math.min(lost.length, 3);
    const others = lost.length > n ? ` and ${lost.length - n} more` : '';
    const what = lost.length > 0 ? `In this view it loses ${lost.slice(0, n).join(', ')}${others}.`
                                 : 'In this view it loses no whole country.';
    return `Cuts what leaves the frame and returns into separate rings; ${grouped(rings)} are drawn.
            In a turned frame this method loses some polygons that lie wholly inside. ${what}`;
  }

  /** @param {boolean} isPointing @param {boolean} isByKeyboard */
  #tellCountry(isPointing, isByKeyboard) {
    let name = 'Open sea', how = isByKeyboard ? 'in the middle' : 'under the pointer';
    if (this.country >= 0) name = this.world.names[this.country];
    if (!isPointing) {
      name = matchMedia('(pointer: coarse)').matches ? 'Tap a country' : 'Point at a country';
      how = '';
    }
    tell('country', name);
    tell('how', how);
  }
}

/** Shows an error instead of the name of a country. @param {unknown} error */
function tellFault(error) {
  element('country', HTMLOutputElement).textContent = `This page has failed. ${error}`;
}

// On a page opened from a file, browsers withhold the error and report no rejection.
addEventListener('error', ({error, message}) => tellFault(error ?? message));

async function start() {
  const page = new Page(await World.load());
  Object.assign(globalThis, {playground: page});  // for the browser's console, and for the check
}

start().catch((error) => {
  console.error(error);
  tellFault(error);
});
