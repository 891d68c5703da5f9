// The world for JavaScript: calls the library and turns addresses into numbers, arrays and texts.
// Arrays are not copied: they are views of the library's memory.
'use strict';

/**
 * Outlines on the device, and counts from the way there. The arrays are the library's: they stay
 * valid until the same layer is drawn again.
 * @typedef {object} Layer
 * @property {Int32Array} points  x and y of one vertex after the other, in units of the grid
 * @property {Int32Array} flags  for each vertex: bit 0 if the edge to the next vertex is visible,
 *     bit 1 if that next vertex is the first of the ring
 * @property {Int32Array} pieces  country, first vertex and number of vertices of each piece
 * @property {number} cameIn  vertices read, again for each further copy of the map in reach
 * @property {number} kept  vertices after clipping
 * @property {number} drawn  vertices after mapping
 * @property {number} rings
 * @property {number} clipMilliseconds
 * @property {number} mapMilliseconds
 */

/**
 * @typedef {object} View
 * @property {number} x  longitude of the place in the middle
 * @property {number} y  its latitude, stretched like the map
 * @property {number} scale  pixels to a degree
 * @property {number} turn  degrees counter-clockwise
 */

/**
 * A rectangle on the device, turned clockwise.
 * @typedef {object} Frame
 * @property {number} x  of its middle
 * @property {number} y
 * @property {number} width
 * @property {number} height
 * @property {number} degrees
 */

/** An upright rectangle on the device.
 * @typedef {{left: number, top: number, width: number, height: number}} Box */

/** @typedef {{country: number, x: number, y: number, size: number}} PlacedName */

class World {
  /** @param {ZelvanModule} library */
  constructor(library) {
    this.library = library;
    const indices = [...Array(library._open_world()).keys()];
    /** @type {string[]} */
    this.names = indices.map((country) => this.#textAt(library._country_name(country)));
    /** The colour of each country, 0 to 6. @type {number[]} */
    this.colours = indices.map((country) => library._country_colour(country));
    this.unitsPerPixel = 1;
    this.placedNames = 0;
  }

  static async load() {
    return new World(await load_zelvan());
  }

  /** @param {number} latitude */
  mapY(latitude) {
    return this.library._map_y(latitude);
  }

  /** The latitude of a y on the map. @param {number} y */
  latitudeAt(y) {
    return this.library._latitude_at(y);
  }

  /**
   * @param {View} view
   * @param {number} width  in pixels
   * @param {number} height
   * @param {number} unitsPerPixel  outlines are rounded to this part of a pixel
   */
  setView(view, width, height, unitsPerPixel) {
    this.unitsPerPixel = unitsPerPixel;
    this.library._set_view(view.x, view.y, view.scale, view.turn, width, height, unitsPerPixel);
  }

  /** @param {number} pixelX @param {number} pixelY @returns {[number, number]} */
  placeAt(pixelX, pixelY) {
    return this.#pairAt(this.library._place_at(pixelX, pixelY));
  }

  /** @param {number} x @param {number} y @returns {[number, number]} */
  pixelOf(x, y) {
    return this.#pairAt(this.library._pixel_of(x, y));
  }

  /** @param {boolean} hasBordersOnce  draws the border of two neighbours once, so that the dashes
   *     of one don't fill the gaps of the other */
  drawView(hasBordersOnce) {
    return this.#layerAt(this.library._draw_view(Number(hasBordersOnce)));
  }

  /**
   * @param {Frame} frame
   * @param {boolean} cutsIntoRings
   * @param {boolean} hasBordersOnce  if not, every edge is visible before clipping
   */
  drawFrame(frame, cutsIntoRings, hasBordersOnce) {
    return this.#layerAt(this.library._draw_frame(
        frame.x, frame.y, frame.width, frame.height, frame.degrees, Number(cutsIntoRings),
        Number(hasBordersOnce)));
  }

  /** @param {number} country */
  drawCountry(country) {
    return this.#layerAt(this.library._draw_country(country));
  }

  /** The country at a pixel, or -1 at sea. @param {number} pixelX @param {number} pixelY */
  pick(pixelX, pixelY) {
    return this.library._pick(pixelX, pixelY);
  }

  /** Dash, gap and so on in pixels; empty for a solid line; null if there is no such line type.
   * @param {number} index  from 1 on */
  lineType(index) {
    const start = this.library._line_type(index) / 8;
    const count = this.library.HEAPF64[start];
    return count < 0 ? null : [...this.library.HEAPF64.subarray(start + 1, start + 1 + count)];
  }

  /** Turns a colour of the library into one of a canvas.
   * @param {string} text  such as HSV 210 0.3 0.9 */
  colour(text) {
    this.#handOver(new TextEncoder().encode(text + '\0'));
    const colour = this.library._colour_of_text();
    if (colour < 0) throw new Error(`${text} is not a colour`);
    return '#' + colour.toString(16).padStart(6, '0');
  }

  /**
   * Chooses pens that come closest to the picture's colours.
   * @param {ImageData} picture
   * @param {number} count  the largest number of pens
   */
  choosePens(picture, count) {
    this.#handOver(picture.data);
    const n = this.library._choose_pens(count);
    const start = this.library._chosen_pens();
    const bytes = this.library.HEAPU8.slice(start, start + 4 * n);
    const pens = [...Array(n).keys()].map(
        (pen) => `rgb(${bytes[4 * pen]} ${bytes[4 * pen + 1]} ${bytes[4 * pen + 2]})`);
    return {pens, coloursBefore: this.library._colours_before()};
  }

  /** Draws a picture with the pens chosen last. @param {ImageData} picture */
  applyPens(picture) {
    const address = this.#handOver(picture.data);
    this.library._apply_pens();
    picture.data.set(this.library.HEAPU8.subarray(address, address + picture.data.length));
  }

  /**
   * Places the names that have room inside a box.
   * @param {number[]} widths  of each country's name in letters of one pixel
   * @param {Box} box
   * @param {number} largest  height of the letters in pixels
   */
  placeNames(widths, {left, top, width, height}, largest) {
    this.#handOver(new Uint8Array(new Float64Array(widths).buffer));
    this.placedNames = this.library._place_names(left, top, width, height, largest);
  }

  /** Where the placed names are in the present view. @returns {PlacedName[]} */
  namesNow() {
    const start = this.library._placed_names_now() / 8;
    const numbers = this.library.HEAPF64;
    return [...Array(this.placedNames).keys()].map((i) => {
      const at = start + 4 * i;
      return {country: numbers[at], x: numbers[at + 1], y: numbers[at + 2], size: numbers[at + 3]};
    });
  }

  /** @param {number} address  of a LayerReport @returns {Layer} */
  #layerAt(address) {
    const words = this.library.HEAP32;
    const [points, flags, pieces, nPieces, cameIn, kept, drawn, rings] =
        words.subarray(address / 4, address / 4 + 8);
    const milliseconds = address / 8 + 4;
    return {
      points: words.subarray(points / 4, points / 4 + 2 * drawn),
      flags: words.subarray(flags / 4, flags / 4 + drawn),
      pieces: words.subarray(pieces / 4, pieces / 4 + 3 * nPieces),
      cameIn, kept, drawn, rings,
      clipMilliseconds: this.library.HEAPF64[milliseconds],
      mapMilliseconds: this.library.HEAPF64[milliseconds + 1],
    };
  }

  /** Copies bytes into the library's buffer; returns its address.
   * @param {Uint8Array | Uint8ClampedArray} bytes */
  #handOver(bytes) {
    const address = this.library._room_for(bytes.length);
    this.library.HEAPU8.set(bytes, address);
    return address;
  }

  /** @param {number} address @returns {[number, number]} */
  #pairAt(address) {
    return [this.library.HEAPF64[address / 8], this.library.HEAPF64[address / 8 + 1]];
  }

  /** @param {number} address */
  #textAt(address) {
    const bytes = this.library.HEAPU8;
    return new TextDecoder().decode(bytes.subarray(address, bytes.indexOf(0, address)));
  }
}
