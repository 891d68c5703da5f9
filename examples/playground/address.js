// The view and the switches in the page's address, so that a link shows the same map. Values that
// are missing or not understood count as the default.
'use strict';

const writeEvery = 500;  // milliseconds: browsers limit how often a page may change its address

/** The place in the middle, the degrees across the shorter side, and the turn.
 * @typedef {{latitude: number, longitude: number, span: number, turn: number}} SharedView */

class Address {
  /**
   * @param {HTMLFormElement} form  whose controls are stored
   * @param {() => SharedView | null} viewNow  null for the whole world
   * @param {(view: SharedView | null) => void} changed  called when the user changes the address
   */
  constructor(form, viewNow, changed) {
    this.form = form;
    this.viewNow = viewNow;
    this.timer = 0;
    addEventListener('hashchange', () => {
      clearTimeout(this.timer);
      this.timer = 0;
      changed(this.read());
    });
  }

  /** Sets the controls to what the address says; returns the view in it, or null. */
  read() {
    const parts = new URLSearchParams(location.hash.slice(1));
    this.form.reset();
    for (const input of this.#inputs()) {
      const value = parts.get(input.name);
      if (input.type === 'checkbox') input.checked = value === input.value;
      else if (value === input.value) input.checked = true;
    }
    const [latitude, longitude, ...more] = (parts.get('at') ?? '').split(',').map(numberIn);
    const span = numberIn(parts.get('span') ?? ''), turn = numberIn(parts.get('turn') ?? '0');
    const isView = more.length === 0 && Math.abs(latitude) <= 90 && Math.abs(longitude) <= 180 &&
                   span > 0 && Math.abs(turn) <= 180;
    return isView ? {latitude, longitude, span, turn} : null;
  }

  /** Writes the address soon, without an entry in the history. */
  writeLater() {
    this.timer ||= setTimeout(() => {
      this.timer = 0;
      this.#write();
    }, writeEvery);
  }

  #write() {
    const parts = [];
    const view = this.viewNow();
    if (view) {
      const {latitude, longitude, span, turn} = view;
      parts.push(`at=${latitude.toFixed(4)},${longitude.toFixed(4)}`);
      parts.push(`span=${Number(span.toPrecision(6))}`);
      if (Math.abs(turn) >= 0.005) parts.push(`turn=${Number(turn.toFixed(2))}`);
    }
    for (const input of this.#inputs()) {
      if (input.checked && !input.defaultChecked) parts.push(`${input.name}=${input.value}`);
    }
    const [page] = location.href.split('#');
    const address = parts.length > 0 ? `${page}#${parts.join('&')}` : page;
    if (address !== location.href) history.replaceState(null, '', address);
  }

  /** All of them are radio buttons and check boxes. @returns {HTMLInputElement[]} */
  #inputs() {
    return [...this.form.querySelectorAll('input')];
  }
}

/** The number in a text of digits, or NaN. @param {string} text */
function numberIn(text) {
  return /^-?\d{1,4}(\.\d{1,9})?$/.test(text) ? Number(text) : NaN;
}
