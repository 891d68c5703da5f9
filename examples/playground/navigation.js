// Which part of the map is shown, and how mouse, wheel, fingers and keys change it.
'use strict';

/** A place in the picture, in pixels of the device. @typedef {{x: number, y: number}} Pixel */

/**
 * What a key does in each second while it is held: moves to the right and down by pixels, zooms in
 * by a power of e, turns counter-clockwise by degrees.
 * @type {Record<string, {x?: number, y?: number, zoom?: number, turn?: number}>}
 */
const heldKeys = {
  arrowleft: {x: -600},
  arrowright: {x: 600},
  arrowup: {y: -600},
  arrowdown: {y: 600},
  '+': {zoom: 1.6},
  '=': {zoom: 1.6},  // on many keyboards, the key of + without Shift
  '-': {zoom: -1.6},
  _: {zoom: -1.6},
  q: {turn: 70},
  e: {turn: -70},
};

// Milliseconds
const restAfter = 140;      // the map counts as moving for so long after a change
const shortestPress = 120;  // a shorter press of a key would hardly move the map
const glideTime = 320;

/** The angle from a to b about a centre, in degrees clockwise on the screen.
 * @param {Pixel} a @param {Pixel} b @param {Pixel} centre */
function angleBetween(a, b, centre) {
  const angle =
      Math.atan2(b.y - centre.y, b.x - centre.x) - Math.atan2(a.y - centre.y, a.x - centre.x);
  return (angle - 2 * Math.PI * Math.round(angle / (2 * Math.PI))) * 180 / Math.PI;
}

// Degrees of latitude: all land but the inner Antarctic lies between them.
const north = 84, south = -78;

class Navigation {
  /**
   * @param {World} world
   * @param {Picture} picture
   * @param {HTMLCanvasElement} surface  where the user acts
   * @param {(hasMoved: boolean) => void} changed  called when there is something to draw
   */
  constructor(world, picture, surface, changed) {
    this.world = world;
    this.picture = picture;
    this.surface = surface;
    this.changed = changed;
    /** @type {View} */
    this.view = {x: 0, y: 0, scale: 1, turn: 0};
    /** True while the view is that of `home`. */
    this.isHome = false;
    /** Where the mouse is, or the last finger was. @type {Pixel | null} */
    this.mouse = null;
    this.isByKeyboard = false;
    /** Fingers on the map, or the mouse if a button is down. @type {Map<number, Pixel>} */
    this.pointers = new Map();
    this.isTurning = false;
    /** Keys that are held, by their place on the keyboard.
     * @type {Map<string, {motion: typeof heldKeys[string], since: number, until: number}>} */
    this.keys = new Map();
    /** A motion that continues by itself until it returns false.
     * @type {((time: number) => boolean) | null} */
    this.motion = null;
    this.lastMoved = -Infinity;
    this.lastStep = 0;
    this.#listen();
  }

  // ---- the view

  /** The view of the whole world, north up, where no card covers it. @returns {View} */
  home() {
    const {width, height, free, pixelRatio} = this.picture;
    const top = this.world.mapY(north), bottom = this.world.mapY(south);
    const margin = 8 * pixelRatio;
    const scale = Math.max(Math.min((free.width - margin) / 360,
                                    (free.height - margin) / (top - bottom)), 0.1);
    return {
      x: 10 + (width / 2 - free.left - free.width / 2) / scale,  // the map ends in Bering Strait
      y: (top + bottom) / 2 - (height / 2 - free.top - free.height / 2) / scale,
      scale,
      turn: 0,
    };
  }

  showHome() {
    this.setView(this.home());
    this.isHome = true;
  }

  /** @param {View} view */
  setView(view) {
    const {width, height, pixelRatio, free} = this.picture;
    const least = this.home().scale, most = 300 * pixelRatio;
    const scale = Math.min(Math.max(view.scale, least), most);
    // The middle of the window may leave the map by its distance from the middle of the part that no
    // card covers, so that the latter can reach both ends of the map.
    const offset = Math.hypot(width / 2 - free.left - free.width / 2,
                              height / 2 - free.top - free.height / 2) / scale;
    const y = Math.min(Math.max(view.y, -150 - offset), 165 + offset);
    this.view = {...view, y, scale};
    this.isHome = false;
    this.world.setView(this.view, width, height, this.world.unitsPerPixel);
    this.lastMoved = performance.now();
    this.changed(true);
  }

  /**
   * Changes scale and turn, and moves the map so that a place is shown at a pixel.
   * @param {[number, number]} place  on the map
   * @param {Pixel} pixel
   * @param {number} scale
   * @param {number} turn
   */
  hold(place, pixel, scale = this.view.scale, turn = this.view.turn) {
    this.setView({...this.view, scale, turn});
    const [x, y] = this.world.placeAt(pixel.x, pixel.y);
    this.setView({...this.view, x: this.view.x + place[0] - x, y: this.view.y + place[1] - y});
  }

  /** Zooms and turns about a pixel. @param {Pixel} pixel @param {number} factor
   * @param {number} degrees */
  change(pixel, factor, degrees) {
    const place = this.world.placeAt(pixel.x, pixel.y);
    this.hold(place, pixel, this.view.scale * factor, this.view.turn + degrees);
  }

  /** @returns {Pixel} */
  get middle() {
    return {x: this.picture.width / 2, y: this.picture.height / 2};
  }

  /** The pixel that the user points at. */
  get target() {
    return this.isByKeyboard ? this.middle : this.mouse;
  }

  get isHeld() {
    return this.pointers.size > 0;
  }

  get isGoingOn() {
    return this.motion !== null || this.keys.size > 0;
  }

  get isMoving() {
    return this.isGoingOn || performance.now() - this.lastMoved < restAfter;
  }

  // Brings longitude and turn back to -180 to 180 degrees. The map looks the same.
  normalise() {
    this.view.x -= 360 * Math.floor((this.view.x + 180) / 360);
    this.view.turn -= 360 * Math.floor((this.view.turn + 180) / 360);
    const {width, height} = this.picture;
    this.world.setView(this.view, width, height, this.world.unitsPerPixel);
  }

  // ---- motions that continue by themselves

  /** Moves the map in a frame, if it moves by itself. @param {number} time  of the frame */
  step(time) {
    const elapsed = Math.min(Math.max(time - this.lastStep, 0), 50);
    this.lastStep = time;
    if (this.motion && !this.motion(time)) this.motion = null;
    if (this.keys.size > 0) this.#moveByKeys(elapsed / 1000);
  }

  /** Does what a button says. @param {string} what  zoomIn, zoomOut, turnLeft, turnRight or home */
  take(what) {
    const {middle} = this;
    if (what === 'home') this.#glideHome();
    if (what === 'zoomIn') this.#glideAbout(middle, 1.8, 0);
    if (what === 'zoomOut') this.#glideAbout(middle, 1 / 1.8, 0);
    if (what === 'turnLeft') this.#glideAbout(middle, 1, 15);
    if (what === 'turnRight') this.#glideAbout(middle, 1, -15);
  }

  /** @param {(share: number, before: View) => void} step  called with a share from 0 to 1 */
  #glide(step) {
    const before = {...this.view};
    const start = performance.now();
    const duration = matchMedia('(prefers-reduced-motion: reduce)').matches ? 1 : glideTime;
    this.motion = (time) => {
      const share = Math.min(Math.max((time - start) / duration, 0), 1);
      step(1 - (1 - share) ** 3, before);
      return share < 1;
    };
    this.changed(true);
  }

  /** @param {Pixel} pixel @param {number} factor @param {number} degrees */
  #glideAbout(pixel, factor, degrees) {
    this.#glide((share, before) => {
      const place = this.world.placeAt(pixel.x, pixel.y);
      this.hold(place, pixel, before.scale * factor ** share, before.turn + degrees * share);
    });
  }

  #glideHome() {
    this.normalise();
    const target = this.home();
    this.#glide((share, before) => {
      if (share === 1) return this.showHome();
      const mix = (/** @type {number} */ a, /** @type {number} */ b) => a + share * (b - a);
      const scale = before.scale * (target.scale / before.scale) ** share;
      const nearest = before.x - 360 * Math.round((before.x - target.x) / 360);
      this.setView({
        x: mix(nearest, target.x), y: mix(before.y, target.y), scale, turn: mix(before.turn, 0),
      });
    });
  }

  /** @param {number} seconds */
  #moveByKeys(seconds) {
    const {middle} = this;
    const shift = seconds * this.picture.pixelRatio;
    let {x, y} = middle;
    let zoom = 0, turn = 0;
    for (const [code, {motion, until}] of this.keys) {
      x += shift * (motion.x ?? 0);
      y += shift * (motion.y ?? 0);
      zoom += seconds * (motion.zoom ?? 0);
      turn += seconds * (motion.turn ?? 0);
      if (until <= performance.now()) this.keys.delete(code);
    }
    this.hold(this.world.placeAt(x, y), middle, this.view.scale * Math.exp(zoom),
              this.view.turn + turn);
  }

  // ---- what the user does

  #listen() {
    const {surface} = this;
    surface.addEventListener('pointerdown', (event) => this.#down(event));
    surface.addEventListener('pointermove', (event) => this.#move(event));
    surface.addEventListener('pointerup', (event) => this.#up(event));
    surface.addEventListener('pointercancel', (event) => this.#up(event));
    surface.addEventListener('pointerleave', (event) => {
      if (event.pointerType === 'mouse') this.#point(null);  // what a finger touched stays named
    });
    surface.addEventListener('contextmenu', (event) => event.preventDefault());
    surface.addEventListener(
        'dblclick', (event) => this.#glideAbout(this.#pixelOf(event), event.shiftKey ? 0.5 : 2, 0));
    surface.addEventListener('wheel', (event) => this.#wheel(event), {passive: false});
    // Keys work at once, without a click on the map first.
    document.addEventListener('keydown', (event) => this.#keyDown(event));
    document.addEventListener('keyup', (event) => {
      const held = this.keys.get(event.code);
      if (held) held.until = Math.max(performance.now(), held.since + shortestPress);
    });
    document.addEventListener('focusin', (event) => {
      if (event.target !== surface) this.#endKeys();
    });
    addEventListener('blur', () => this.#endKeys());
  }

  #endKeys() {
    this.keys.clear();
    this.isByKeyboard = false;
    this.changed(false);
  }

  /** @param {MouseEvent} event @returns {Pixel} */
  #pixelOf(event) {
    const box = this.surface.getBoundingClientRect();
    return {
      x: (event.clientX - box.left) * this.picture.width / box.width,
      y: (event.clientY - box.top) * this.picture.height / box.height,
    };
  }

  /** @param {Pixel | null} pixel */
  #point(pixel) {
    this.mouse = pixel;
    this.isByKeyboard = false;
    this.changed(false);
  }

  /** @param {PointerEvent} event */
  #down(event) {
    this.surface.setPointerCapture(event.pointerId);
    this.surface.classList.add('moving');
    this.motion = null;
    if (!this.isHeld) {
      this.isTurning = event.shiftKey || event.button === 2;
      this.normalise();
    }
    const pixel = this.#pixelOf(event);
    this.pointers.set(event.pointerId, pixel);
    this.#point(pixel);
  }

  /** @param {PointerEvent} event */
  #move(event) {
    const pixel = this.#pixelOf(event);
    const before = this.pointers.get(event.pointerId);
    this.#point(pixel);
    if (!before) return;
    const other = [...this.pointers].find(([id]) => id !== event.pointerId)?.[1];
    if (other) {
      this.#moveFinger(before, pixel, other);
    } else if (this.isTurning) {
      this.change(this.middle, 1, -angleBetween(before, pixel, this.middle));
    } else {
      this.hold(this.world.placeAt(before.x, before.y), pixel);
    }
    this.pointers.set(event.pointerId, pixel);
  }

  /** The place under each of two fingers stays under it.
   * @param {Pixel} before @param {Pixel} after @param {Pixel} other */
  #moveFinger(before, after, other) {
    const distance = (/** @type {Pixel} */ pixel) =>
        Math.max(Math.hypot(pixel.x - other.x, pixel.y - other.y), 1);
    this.hold(this.world.placeAt(before.x, before.y), after,
              this.view.scale * distance(after) / distance(before),
              this.view.turn - angleBetween(before, after, other));
  }

  /** @param {PointerEvent} event */
  #up(event) {
    this.pointers.delete(event.pointerId);
    if (!this.isHeld) this.surface.classList.remove('moving');
    this.changed(false);
  }

  /** @param {WheelEvent} event */
  #wheel(event) {
    event.preventDefault();
    this.motion = null;
    const pixel = this.#pixelOf(event);
    const delta = (event.deltaY || event.deltaX) *
                  (event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 30 : 1);
    if (event.shiftKey) {
      this.change(pixel, 1, -delta / 8);
    } else {
      // A pinch on a touch pad arrives as a wheel with Ctrl, in smaller steps.
      this.change(pixel, Math.exp(-delta * (event.ctrlKey ? 0.01 : 0.0016)), 0);
    }
  }

  /** @param {KeyboardEvent} event */
  #keyDown(event) {
    if (event.ctrlKey || event.metaKey || event.altKey || event.defaultPrevented) return;
    const key = event.key.toLowerCase();
    const motion = heldKeys[key];
    if (!motion && key !== 'home') return;
    // In the panel, the arrows choose and scroll, and so does Home.
    const isInPanel = event.target instanceof Element && event.target.closest('#panel') !== null;
    if (isInPanel && (key === 'home' || key.startsWith('arrow'))) return;
    event.preventDefault();
    this.isByKeyboard = true;
    if (event.repeat) return;
    this.motion = null;
    if (motion) this.keys.set(event.code, {motion, since: performance.now(), until: Infinity});
    else this.take('home');
    this.changed(true);
  }
}
