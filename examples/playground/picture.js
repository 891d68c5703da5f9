// Draws the map on a canvas: its colours, and what is drawn over what.
'use strict';

/** Colours in the library's notation. */
const schemes = {
  light: {
    sea: 'RGB 0.80 0.88 0.94',
    border: 'RGB 0.32 0.30 0.32',
    fills: ['RGB 0.96 0.87 0.70', 'RGB 0.80 0.88 0.68', 'RGB 0.95 0.77 0.70', 'RGB 0.85 0.79 0.90',
            'RGB 0.99 0.94 0.72', 'RGB 0.74 0.86 0.80', 'RGB 0.93 0.82 0.84'],
    highlight: 'HSV 224 0.80 0.85',
    letters: 'RGB 0.15 0.15 0.20',
    rim: 'Name white',
  },
  dark: {
    sea: 'HSV 214 0.50 0.13',
    border: 'HSV 210 0.12 0.66',
    fills: ['HSV 32 0.38 0.46', 'HSV 100 0.28 0.38', 'HSV 12 0.40 0.46', 'HSV 258 0.28 0.49',
            'HSV 46 0.40 0.52', 'HSV 168 0.34 0.40', 'HSV 335 0.30 0.47'],
    highlight: 'HSV 205 0.50 1',
    letters: 'RGB 0.95 0.95 0.93',
    rim: 'HSV 214 0.50 0.10',
  },
};

/**
 * @typedef {object} Options
 * @property {'window' | 'frame' | 'rings'} clip  to the window alone, or also to a smaller, turned
 *     frame: by ClipPolygonSetToView, or by ClipPolygonSet, which cuts into rings
 * @property {number} grid  outlines are rounded to so many CSS pixels; 0 for a part of a pixel
 * @property {number} lineType  from 1 on
 * @property {number} pens  the number of colours drawn; 0 for all
 * @property {boolean} names
 */

/**
 * Adds rings to a path. A fill closes them by itself; closePath takes time in proportion to the
 * path so far.
 * @param {CanvasPath} path
 * @param {Layer} layer
 * @param {number} piece
 */
function traceRings(path, {points, flags, pieces}, piece) {
  const end = pieces[piece + 1] + pieces[piece + 2];
  let isFirst = true;
  for (let i = pieces[piece + 1]; i < end; ++i) {
    if (isFirst) path.moveTo(points[2 * i], points[2 * i + 1]);
    else path.lineTo(points[2 * i], points[2 * i + 1]);
    isFirst = flags[i] >= 2;
  }
}

/**
 * Adds the visible edges of rings to a path, or the invisible ones.
 * @param {CanvasPath} path
 * @param {Layer} layer
 * @param {number} piece
 * @param {0 | 1} visible
 */
function traceEdges(path, {points, flags, pieces}, piece, visible) {
  const end = pieces[piece + 1] + pieces[piece + 2];
  let first = pieces[piece + 1];
  let penIsDown = false;
  for (let i = first; i < end; ++i) {
    const isLast = flags[i] >= 2;
    const isWanted = (flags[i] & 1) === visible;
    if (isWanted) {
      const next = isLast ? first : i + 1;
      if (!penIsDown) path.moveTo(points[2 * i], points[2 * i + 1]);
      path.lineTo(points[2 * next], points[2 * next + 1]);
    }
    penIsDown = isWanted && !isLast;
    if (isLast) first = i + 1;
  }
}

/** Draws the map on one canvas, and on another above it what changes while the map rests. */
class Picture {
  /**
   * @param {World} world
   * @param {HTMLCanvasElement} ground
   * @param {HTMLCanvasElement} overlay
   */
  constructor(world, ground, overlay) {
    this.world = world;
    this.ground = Picture.#context(ground, {alpha: false});
    this.overlay = Picture.#context(overlay, {});
    // Its pixels are read for every frame, so the browser should keep them in memory.
    this.scratch = Picture.#context(
        document.createElement('canvas'), {alpha: false, willReadFrequently: true});
    this.font = getComputedStyle(overlay).fontFamily;
    this.overlay.font = `600 100px ${this.font}`;
    this.nameWidths = world.names.map((name) => this.overlay.measureText(name).width / 100);
    this.dashes = [...Array(13).keys()].map((i) => world.lineType(i + 1) ?? []);
    /** @type {'light' | 'dark'} */
    this.schemeName = 'light';
    this.colours = this.#coloursOf('light');
    this.pixelRatio = 1;
    this.keptBefore = 0;
    /** The part of the picture that no card covers, in pixels. @type {Box} */
    this.free = {left: 0, top: 0, width: 0, height: 0};
    /** The settings for which the pens were chosen. */
    this.pensFor = '';
    /** @type {string[]} */
    this.pens = [];
    this.coloursBefore = 0;
  }

  get width() {
    return this.ground.canvas.width;
  }

  get height() {
    return this.ground.canvas.height;
  }

  /** @param {number} width @param {number} height  in pixels @param {number} pixelRatio */
  resize(width, height, pixelRatio) {
    for (const {canvas} of [this.ground, this.overlay, this.scratch]) {
      canvas.width = width;
      canvas.height = height;
    }
    this.pixelRatio = pixelRatio;
  }

  /** @param {'light' | 'dark'} name */
  setScheme(name) {
    this.schemeName = name;
    this.colours = this.#coloursOf(name);
  }

  /** @param {'light' | 'dark'} name */
  #coloursOf(name) {
    const texts = schemes[name];
    return {
      sea: this.world.colour(texts.sea),
      border: this.world.colour(texts.border),
      fills: texts.fills.map((fill) => this.world.colour(fill)),
      highlight: this.world.colour(texts.highlight),
      letters: this.world.colour(texts.letters),
      rim: this.world.colour(texts.rim),
    };
  }

  /** The smaller frame that shows clipping, in the free part of the picture. @returns {Frame} */
  frame() {
    const {left, top, width, height} = this.free;
    return {
      x: left + width / 2,
      y: top + height / 2,
      width: 0.62 * Math.min(width, 2 * height),  // so that it fits when turned
      height: 0.62 * Math.min(height, 1.2 * width),
      degrees: 14,
    };
  }

  /**
   * Draws the map; returns the number of vertices after each step, and the time that it took.
   * @param {View} view
   * @param {Options} options
   * @param {boolean} isMoving
   */
  draw(view, options, isMoving) {
    const {world} = this;
    // Eighths of a pixel are smooth at rest. Halves are enough in motion, and whole pixels where
    // pixels are small or vertices many.
    const isCoarse = this.pixelRatio >= 1.75 || this.keptBefore > 45_000;
    const unitsPerPixel = options.grid > 0 ? 1 / (options.grid * this.pixelRatio)
                          : !isMoving      ? 8
                          : isCoarse       ? 1
                                           : 2;
    world.setView(view, this.width, this.height, unitsPerPixel);
    const layer = world.drawView(true);
    this.keptBefore = layer.kept;

    const start = performance.now();
    const dashes = this.dashes[options.lineType - 1];
    // Lines of one pixel are drawn much faster than wider ones.
    const isHurried = isMoving && layer.kept > 20_000;
    const canvas = options.pens > 0 ? this.scratch : this.ground;
    canvas.setTransform(1, 0, 0, 1, 0, 0);
    canvas.fillStyle = this.colours.sea;
    canvas.fillRect(0, 0, this.width, this.height);
    canvas.setTransform(1 / unitsPerPixel, 0, 0, 1 / unitsPerPixel, 0, 0);
    /** What lies in the frame. @type {Layer[]} */
    let inside = [];
    if (options.clip === 'window') {
      this.#fill(canvas, layer);
      this.#strokeBorders(canvas, layer, dashes, isHurried);
    } else {
      canvas.globalAlpha = 0.3;
      this.#fill(canvas, layer);
      this.#strokeBorders(canvas, layer, [], isHurried);
      canvas.globalAlpha = 1;
      inside = this.#drawInside(canvas, options.clip === 'rings', dashes, isHurried);
    }
    if (options.pens > 0) this.#reduce(options);
    const drawing = performance.now() - start;

    const {cameIn, kept, drawn, rings} = inside[0] ?? layer;
    const clipInside = inside.reduce((sum, {clipMilliseconds}) => sum + clipMilliseconds, 0);
    const mapInside = inside.reduce((sum, {mapMilliseconds}) => sum + mapMilliseconds, 0);
    return {
      cameIn, kept, drawn, rings,
      clip: layer.clipMilliseconds + clipInside,
      map: layer.mapMilliseconds + mapInside,
      draw: drawing - clipInside - mapInside,
    };
  }

  /**
   * Names the countries that ClipPolygonSet loses from the frame, and ClipPolygonSetToView keeps;
   * those of most vertices first. Looks at the view drawn last.
   */
  namesLostInRings() {
    /** @returns {Map<number, number>}  vertices of each country @param {boolean} cutsIntoRings */
    const count = (cutsIntoRings) => {
      const {pieces} = this.world.drawFrame(this.frame(), cutsIntoRings, false);
      const counts = new Map();
      for (let i = 0; i < pieces.length; i += 3) {
        counts.set(pieces[i], (counts.get(pieces[i]) ?? 0) + pieces[i + 2]);
      }
      return counts;
    };
    const whole = count(false), inRings = count(true);
    return [...whole].filter(([country]) => !inRings.has(country)).sort((a, b) => b[1] - a[1])
        .map(([country]) => this.world.names[country]);
  }

  /** Finds places for names in the free part of the view drawn last. They stay there on the map
   * while it moves. */
  placeNames() {
    const {left, top, width, height} = this.free;
    const margin = 5 * this.pixelRatio;
    const inner = {
      left: left + margin,
      top: top + margin,
      width: Math.max(width - 2 * margin, 1),
      height: Math.max(height - 2 * margin, 1),
    };
    this.world.placeNames(this.nameWidths, inner, 15 * this.pixelRatio);
  }

  /** Those of the placed names that are wholly in the free part now. */
  namesShown() {
    const {left, top, width, height} = this.free;
    return this.world.namesNow().filter(({country, x, y, size}) => {
      const halfWidth = size * (this.nameWidths[country] / 2 + 0.1);  // with the rim
      const halfHeight = 0.5 * size;
      return x - halfWidth >= left && x + halfWidth <= left + width &&
             y - halfHeight >= top && y + halfHeight <= top + height;
    });
  }

  /**
   * Draws what lies over the map: the country at the pointer, the names, the keyboard's cross.
   * @param {Options} options
   * @param {number} country  -1 for none
   * @param {boolean} isMoving
   * @param {{x: number, y: number} | null} cross  the place that the keyboard points at
   */
  drawOverlay(options, country, isMoving, cross) {
    const {overlay} = this;
    const unit = this.pixelRatio;
    overlay.setTransform(1, 0, 0, 1, 0, 0);
    overlay.clearRect(0, 0, this.width, this.height);
    if (country >= 0) this.#highlight(country, isMoving);
    if (options.names) this.#writeNames(this.namesShown());
    if (cross) {
      overlay.strokeStyle = this.colours.letters;
      overlay.lineWidth = 1.5 * unit;
      overlay.beginPath();
      for (const [dx, dy] of [[1, 0], [-1, 0], [0, 1], [0, -1]]) {
        overlay.moveTo(cross.x + 4 * unit * dx, cross.y + 4 * unit * dy);
        overlay.lineTo(cross.x + 11 * unit * dx, cross.y + 11 * unit * dy);
      }
      overlay.stroke();
    }
  }

  /**
   * Fills all countries, with one path for each colour.
   * @param {CanvasRenderingContext2D} canvas
   * @param {Layer} layer
   */
  #fill(canvas, layer) {
    this.colours.fills.forEach((fill, colour) => {
      canvas.fillStyle = fill;
      canvas.beginPath();
      for (let piece = 0; piece < layer.pieces.length; piece += 3) {
        if (this.world.colours[layer.pieces[piece]] === colour) traceRings(canvas, layer, piece);
      }
      canvas.fill('evenodd');
    });
  }

  /**
   * @param {CanvasRenderingContext2D} canvas
   * @param {Layer} layer
   * @param {number[]} dashes
   * @param {boolean} isHurried
   */
  #strokeBorders(canvas, layer, dashes, isHurried) {
    const {unitsPerPixel} = this.world;
    const unit = unitsPerPixel * this.pixelRatio;
    canvas.strokeStyle = this.colours.border;
    // Solid lines are as thin as the screen allows. Dashes that thin would look solid.
    canvas.lineWidth = dashes.length > 0 && !isHurried ? 1.5 * unit : unitsPerPixel;
    this.#strokeEdges(canvas, layer, 1, dashes.map((length) => length * unit));
  }

  /**
   * @param {CanvasRenderingContext2D} canvas
   * @param {Layer} layer
   * @param {0 | 1} visible
   * @param {number[]} dashes  in units of the grid
   */
  #strokeEdges(canvas, layer, visible, dashes) {
    canvas.lineJoin = 'round';
    canvas.setLineDash(dashes);
    canvas.beginPath();
    for (let piece = 0; piece < layer.pieces.length; piece += 3) {
      traceEdges(canvas, layer, piece, visible);
    }
    canvas.stroke();
    canvas.setLineDash([]);
  }

  /**
   * Draws what clipping to the frame keeps, and its invisible edges in dashes. Returns the layers
   * drawn for it.
   * @param {CanvasRenderingContext2D} canvas
   * @param {boolean} cutsIntoRings
   * @param {number[]} dashes
   * @param {boolean} isHurried
   */
  #drawInside(canvas, cutsIntoRings, dashes, isHurried) {
    const frame = this.frame();
    const {unitsPerPixel} = this.world;
    const unit = unitsPerPixel * this.pixelRatio;
    canvas.save();
    canvas.scale(unitsPerPixel, unitsPerPixel);
    canvas.translate(frame.x, frame.y);
    canvas.rotate(frame.degrees * Math.PI / 180);
    canvas.fillStyle = this.colours.sea;
    canvas.strokeStyle = this.colours.highlight;
    canvas.lineWidth = this.pixelRatio;
    canvas.globalAlpha = 0.4;
    canvas.strokeRect(-frame.width / 2, -frame.height / 2, frame.width, frame.height);
    canvas.globalAlpha = 1;
    canvas.fillRect(-frame.width / 2, -frame.height / 2, frame.width, frame.height);
    canvas.restore();
    const once = this.world.drawFrame(frame, cutsIntoRings, true);
    this.#fill(canvas, once);
    this.#strokeBorders(canvas, once, dashes, isHurried);
    // Every edge is visible in the source here, so clipping made the invisible ones.
    const all = this.world.drawFrame(frame, cutsIntoRings, false);
    canvas.strokeStyle = this.colours.highlight;
    canvas.lineWidth = 2 * unit;
    this.#strokeEdges(canvas, all, 0, [6 * unit, 4 * unit]);
    return [once, all];
  }

  /**
   * Copies the scratch picture to the ground in few colours. The pens stay while the map moves.
   * @param {Options} options
   */
  #reduce(options) {
    const picture = this.scratch.getImageData(0, 0, this.width, this.height);
    const wanted = `${options.pens} ${this.schemeName} ${options.clip}`;
    if (wanted !== this.pensFor) {
      const {pens, coloursBefore} = this.world.choosePens(picture, options.pens);
      this.pensFor = wanted;
      this.pens = pens;
      this.coloursBefore = coloursBefore;
    }
    this.world.applyPens(picture);
    this.ground.putImageData(picture, 0, 0);
  }

  /** @param {number} country @param {boolean} isMoving */
  #highlight(country, isMoving) {
    const {overlay} = this;
    const layer = this.world.drawCountry(country);
    const unitsPerPixel = this.world.unitsPerPixel;
    overlay.setTransform(1 / unitsPerPixel, 0, 0, 1 / unitsPerPixel, 0, 0);
    overlay.fillStyle = '#ffffff';
    overlay.strokeStyle = this.colours.highlight;
    overlay.beginPath();
    for (let piece = 0; piece < layer.pieces.length; piece += 3) traceRings(overlay, layer, piece);
    overlay.globalAlpha = this.schemeName === 'dark' ? 0.25 : 0.55;
    overlay.fill('evenodd');
    overlay.globalAlpha = 1;
    overlay.lineWidth = unitsPerPixel * (isMoving ? 1 : 1.5 * this.pixelRatio);
    this.#strokeEdges(overlay, layer, 1, []);
    overlay.setTransform(1, 0, 0, 1, 0, 0);
  }

  /** @param {PlacedName[]} names */
  #writeNames(names) {
    const {overlay} = this;
    overlay.textAlign = 'center';
    overlay.textBaseline = 'middle';
    overlay.lineJoin = 'round';
    overlay.strokeStyle = this.colours.rim;
    overlay.fillStyle = this.colours.letters;
    for (const {country, x, y, size} of names) {
      overlay.font = `600 ${size.toFixed(1)}px ${this.font}`;
      overlay.lineWidth = 0.2 * size;
      overlay.globalAlpha = 0.6;
      overlay.strokeText(this.world.names[country], x, y);
      overlay.globalAlpha = 1;
      overlay.fillText(this.world.names[country], x, y);
    }
  }

  /** @param {HTMLCanvasElement} canvas @param {CanvasRenderingContext2DSettings} settings */
  static #context(canvas, settings) {
    const context = canvas.getContext('2d', settings);
    if (!context) throw new Error('this browser cannot draw on a canvas');
    return context;
  }
}
