// What the build puts into zelvan.js: the functions of playground.h, which describes them.
// Addresses are numbers.

interface ZelvanModule {
  HEAPU8: Uint8Array;
  HEAP32: Int32Array;
  HEAPF64: Float64Array;

  _room_for(bytes: number): number;

  _open_world(): number;
  _country_name(country: number): number;
  _country_colour(country: number): number;
  _map_y(latitude: number): number;
  _latitude_at(mapY: number): number;

  _set_view(x: number, y: number, pixelsPerDegree: number, degrees: number, width: number,
            height: number, unitsPerPixel: number): void;
  _place_at(pixelX: number, pixelY: number): number;
  _pixel_of(x: number, y: number): number;

  _draw_view(hasBordersOnce: number): number;
  _draw_frame(centreX: number, centreY: number, width: number, height: number, degrees: number,
              cutsIntoRings: number, hasBordersOnce: number): number;
  _draw_country(country: number): number;

  _pick(pixelX: number, pixelY: number): number;
  _line_type(index: number): number;
  _colour_of_text(): number;
  _choose_pens(pens: number): number;
  _chosen_pens(): number;
  _colours_before(): number;
  _apply_pens(): void;

  _place_names(left: number, top: number, width: number, height: number,
               largest: number): number;
  _placed_names_now(): number;
}

declare function load_zelvan(): Promise<ZelvanModule>;
