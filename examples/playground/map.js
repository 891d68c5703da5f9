// The world as the library has it, for JavaScript: numbers, arrays and texts in the place of
// addresses. All that it does is done by the library; arrays are looked at where it left them.
'use strict';

/**
 * What became of outlines on their way to the device. The arrays are the library's and stay until
 * the same layer is drawn again.
 * @typedef {object} Layer
 * @property {Int32Array} points  x and y of one vertex after the other, in units of the grid
 * @property {Int32Array} flags  for each vertex: bit 0, is the edge to the next one visible;
 *     bit 1, does it go back to the first of the ring instead
 * @property {Int32Array} pieces  country, first vertex and number of vertices, one after the other
 * @property {number} cameIn  vertices
 * @property {number} kept  after clipping
 * @property {number} drawn  after mapping
 * @property {number} rings
 * @property {number} clipMilliseconds
 * @property {number} mapMilliseconds
 */

/**
 * @typedef {object} View
 * @property {number} x  of the place in the middle: its longitude
 * @property {number} y  its latitude, stretched as the map is
 * @property {number} scale  pixels to a degree
 * @property {number} turn  degrees counter-clockwise
 */

/** @typedef {{country: number, x: number, y: number, size: number}} PlacedName */

class World {
  /** @param {ZelvanModule} library */
  constructor(library) {
    this.library = library;
    const indices = [...Array(library._open_world()).keys()];
    /** @type {string[]} */
    this.names = indices.map((country) => this.#textAt(library._country_name(country)));
    /** Which of seven colours each has. @type {number[]} */
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

  /**
   * @param {View} view
   * @param {number} width  in pixels
   * @param {number} height
   * @param {number} unitsPerPixel  of the grid that outlines are rounded to
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

  /** @param {boolean} hasBordersOnce  so that dashes of two neighbours don't fill their gaps */
  drawView(hasBordersOnce) {
    return this.#layerAt(this.library._draw_view(Number(hasBordersOnce)));
  }

  /**
   * @param {{x: number, y: number, width: number, height: number, degrees: number}} frame  on the
   *     device, about x, y, turned clockwise
   * @param {boolean} cutsIntoRings
   * @param {boolean} hasBordersOnce
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

  /** The country at a pixel, -1 for none. @param {number} pixelX @param {number} pixelY */
  pick(pixelX, pixelY) {
    return this.library._pick(pixelX, pixelY);
  }

  /** Dash, gap and so on in pixels; none for a solid line. @param {number} index  from 1 on */
  lineType(index) {
    const start = this.library._line_type(index) / 8;
    const count = this.library.HEAPF64[start];
    return count < 0 ? null : [...this.library.HEAPF64.subarray(start + 1, start + 1 + count)];
  }

  /** A colour for a canvas. @param {string} text  such as HSV 210 0.3 0.9 */
  colour(text) {
    this.#handOver(new TextEncoder().encode(text + '\0'));
    const colour = this.library._colour_of_text();
    if (colour < 0) throw new Error(`${text} is no colour`);
    return '#' + colour.toString(16).padStart(6, '0');
  }

  /**
   * Chooses pens that stand for the picture's colours.
   * @param {ImageData} picture
   * @param {number} count  at most so many
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
   * Places the names that have room in the view drawn last.
   * @param {number[]} widths  of each country's name in letters of one pixel
   * @param {number} largest  height of the letters in pixels
   */
  placeNames(widths, largest) {
    this.#handOver(new Uint8Array(new Float64Array(widths).buffer));
    this.placedNames = this.library._place_names(largest);
  }

  /** Where those names are in the present view. @returns {PlacedName[]} */
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

  /** @param {Uint8Array | Uint8ClampedArray} bytes */
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
