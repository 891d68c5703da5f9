// The page: when a frame is drawn, what the controls say, and what is told.
'use strict';

const readoutEvery = 250;  // milliseconds, while the map moves

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

/** Puts text with marks into an element, if it isn't there yet. @param {string} id
 * @param {string} html */
function tell(id, html) {
  const target = element(id, HTMLElement);
  if (target.dataset.told === html) return;
  target.dataset.told = html;
  target.innerHTML = html;
}

/** With a thin blank at the thousands. @param {number} n */
const grouped = (n) => n.toLocaleString('en').replace(/,/g, '\u202f');

/** What frames of the last second have cost, for the medians. */
class Costs {
  /** @type {{time: number, clip: number, map: number, draw: number}[]} */
  #frames = [];

  /** @param {{clip: number, map: number, draw: number}} cost */
  add({clip, map, draw}) {
    const time = performance.now();
    this.#frames = this.#frames.filter((frame) => time - frame.time < 1000);
    this.#frames.push({time, clip, map, draw});
  }

  /** @param {'clip' | 'map' | 'draw'} what  in milliseconds */
  median(what) {
    const sorted = this.#frames.map((frame) => frame[what]).sort((a, b) => a - b);
    return sorted[sorted.length >> 1] ?? 0;
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
    /** What was drawn last. @type {ReturnType<Picture['draw']> | null} */
    this.report = null;
    this.country = -1;
    this.overlayShown = '';
    this.isGroundStale = false;
    this.isRestPending = false;
    this.frameRequested = 0;
    this.lastReadout = -Infinity;
    this.restTimer = 0;

    this.form = element('panel', HTMLFormElement);
    this.#makeLineTypes();
    this.options = this.#readOptions();
    this.#readScheme();
    this.#listen();
    this.#listenForSize(surface);
  }

  /** True when all has been drawn that was asked for, as fine as can be. */
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
    const toggle = element('toggle', HTMLButtonElement);
    toggle.addEventListener('click', () => {
      const isOpen = toggle.getAttribute('aria-expanded') === 'true';
      toggle.setAttribute('aria-expanded', String(!isOpen));
      this.#findFree();
      this.#ask(true);
    });
    this.form.addEventListener('change', () => {
      this.options = this.#readOptions();
      this.#ask(true);
    });
    this.form.addEventListener('submit', (event) => event.preventDefault());
    matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => {
      this.#readScheme();
      this.#ask(true);
    });
  }

  #readOptions() {
    const data = new FormData(this.form);
    return /** @type {Options} */ ({
      clip: data.get('clip'),
      grid: Number(data.get('grid')),
      lineType: Number(data.get('lineType')),
      pens: Number(data.get('pens')),
      names: data.has('names'),
    });
  }

  #readScheme() {
    const isDark = matchMedia('(prefers-color-scheme: dark)').matches;
    this.picture.setScheme(isDark ? 'dark' : 'light');
  }

  #makeLineTypes() {
    const tiles = this.picture.dashes.map((dashes, i) => `
      <label title="Line type ${i + 1}"><input type="radio" name="lineType" value="${i + 1}"
        ${i === 0 ? 'checked' : ''} aria-label="Line type ${i + 1}"><span><svg viewBox="0 0 54 4"
        preserveAspectRatio="none"><path d="M0 2H54" vector-effect="non-scaling-stroke"
        stroke-dasharray="${dashes.join(' ') || 'none'}"/></svg></span></label>`);
    element('lineTypes', HTMLDivElement).innerHTML = tiles.join('');
  }

  // ---- size

  /** A canvas is sharp only with just the pixels of the device. @param {HTMLElement} surface */
  #listenForSize(surface) {
    const observer = new ResizeObserver(([entry]) => {
      const ratio = devicePixelRatio;
      const size = (/** @type {number} */ css, /** @type {number | undefined} */ exact) =>
          // Where a density is only simulated, the exact size knows nothing of it.
          exact && Math.abs(exact - css * ratio) < 2 ? exact : Math.round(css * ratio);
      const exact = entry.devicePixelContentBoxSize?.[0];
      this.#resize(size(entry.contentRect.width, exact?.inlineSize),
                   size(entry.contentRect.height, exact?.blockSize), ratio);
    });
    try {
      observer.observe(surface, {box: 'device-pixel-content-box'});
    } catch {
      observer.observe(surface);  // not every browser can tell
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
    navigation.setView(report ? {...view, scale: view.scale * zoom} : navigation.home());
    navigation.lastMoved = -Infinity;
    this.#draw(performance.now());  // before the browser shows a canvas that it has cleared
  }

  // What is free of cards: beside the panel, or between those along the edges.
  #findFree() {
    const {width, height, pixelRatio} = this.picture;
    const boxOf = (/** @type {string} */ id) => element(id, HTMLElement).getBoundingClientRect();
    const panel = boxOf('panel'), readout = boxOf('readout');
    const isBeside = panel.width > 0 && panel.left > innerWidth / 3;
    const isAcross = readout.width > innerWidth / 2;
    const lower = panel.width > 0 && !isBeside ? panel : readout;
    const top = isAcross ? boxOf('title').bottom * pixelRatio : 0;
    const bottom = isAcross ? lower.top * pixelRatio : height;
    this.picture.free = {
      left: 0,
      top,
      width: isBeside ? panel.left * pixelRatio : width,
      height: Math.max(bottom - top, 0),
    };
  }

  // ---- frames

  /** Asks for a frame. @param {boolean} isGround  else what lies over the ground alone */
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

  // What is held stays under the pointer: it need not be asked again.
  #pick() {
    const {target, isHeld, motion} = this.navigation;
    if (isHeld && this.country >= 0) return;
    this.country = target && !motion ? this.world.pick(target.x, target.y) : -1;
  }

  // Once the map is at rest it is drawn again, as fine as can be.
  #restLater() {
    clearTimeout(this.restTimer);
    this.restTimer = setTimeout(() => this.#ask(false), restAfter + 10);
  }

  // ---- what the page tells

  #tell() {
    const {report, costs, options, navigation} = this;
    if (!report) return;
    this.#tellCountry(navigation.target !== null, navigation.isByKeyboard);
    const {cameIn, kept, drawn, rings} = report;
    tell('vertices', `<b>${grouped(cameIn)}</b> <span class="spare">vertices</span> → ` +
                     `<b>${grouped(kept)}</b> clipped → <b>${grouped(drawn)}</b> mapped`);
    const [clip, map, draw] = /** @type {const} */ (['clip', 'map', 'draw']).map(
        (what) => `${what} <b>${costs.median(what).toFixed(1)}</b>`);
    tell('cost', `${clip} · ${map} · ${draw} ms a frame`);

    tell('clipNote', {
      off: 'What lies beyond the window is cut away before it is mapped and drawn.',
      view: `What lies in the frame is kept, in ${grouped(rings)} rings. Edges along the frame come
             out invisible, here in dashes: no coast is there.`,
      rings: `What leaves the frame and comes back is cut apart: ${grouped(rings)} rings. Right in
              general position: in a turned frame, islands may be lost.`,
    }[options.clip]);
    const {pens, coloursBefore} = this.picture;
    const hasPens = options.pens > 0;
    tell('penNote', hasPens ? `${grouped(coloursBefore)} colours, drawn with ${pens.length} pens.`
                            : 'Draws the picture with so many pens, the closest for each colour.');
    tell('swatches',
         hasPens ? pens.map((pen) => `<i style="background:${pen}"></i>`).join('') : '');
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

World.load().then(
    (world) => {
      // For the browser's console, and for the check.
      Object.assign(globalThis, {playground: new Page(world)});
    },
    (error) => {
      console.error(error);
      tell('country', `The library did not load: ${error}`);
    });
