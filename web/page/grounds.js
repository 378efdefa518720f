import { showMessage } from './notices.js';

const smallArea = 100_000; // pixels of a ground that one frame has time to draw
const largestSide = 2048; // of a visitor's picture

/**
 * What lies beneath the players. Grounds are drawn by a worker; until one is there, the old one is stretched, and in
 * the first frame a smaller one of the same shape.
 */
export class Grounds {
  /** @param groundOf  called with a player for the name of the ground that it has at first */
  constructor(module, groundOf) {
    this.module = module;
    this.groundOf = groundOf;
    this.table = JSON.parse(module.UTF8ToString(module._stageGrounds()));
    this.picture = null; // the visitor's own: an ImageBitmap
    this.pictureNumber = 0;
    this.sources = []; // by player: a name, or null for the visitor's picture
    this.shown = []; // by player: what was asked for last, as text
  }

  /** @param name  of a ground; null for the visitor's picture */
  use(player, name) {
    this.sources[player] = name;
  }

  /** Sees that a player's ground is there, in that size. */
  fit(player, width, height) {
    const source = this.sources[player] === undefined ? this.groundOf(player) : this.sources[player];
    const request = `${source ?? this.pictureNumber} ${width} ${height}`;
    if (this.shown[player] === request) return;
    const isFirst = this.shown[player] === undefined;
    this.shown[player] = request;
    if (isFirst) {
      const scale = Math.min(1, Math.sqrt(smallArea / (width * height)));
      this.#drawHere(source ?? this.groundOf(player), Math.ceil(scale * width), Math.ceil(scale * height));
      this.module._stageShowGround(player);
      if (scale === 1 && source !== null) return;
    }
    this.#drawThere(source, width, height, (pixels) => {
      if (this.shown[player] !== request) return; // another one has been asked for since
      const address = this.module._stagePicture(width, height); // may replace HEAPU8 by a larger one
      this.module.HEAPU8.set(pixels, address);
      this.module._stageShowGround(player);
    });
  }

  /** Calls back with ImageData of a square picture of the ground. */
  thumbnail(name, side, done) {
    this.#drawThere(name, side, side, (pixels) => done(new ImageData(pixels, side, side)));
  }

  /** Takes a file as the visitor's picture. Throws if the browser cannot read it. */
  async readPicture(file) {
    const bitmap = await createImageBitmap(file);
    const scale = Math.min(1, largestSide / Math.max(bitmap.width, bitmap.height));
    this.picture = await createImageBitmap(bitmap, {
      resizeWidth: Math.max(1, Math.round(bitmap.width * scale)),
      resizeHeight: Math.max(1, Math.round(bitmap.height * scale)),
      resizeQuality: 'high',
    });
    bitmap.close();
    ++this.pictureNumber;
  }

  #index(name) {
    return this.table.findIndex((ground) => ground.name === name);
  }

  #drawHere(name, width, height) {
    this.module._stageDrawGround(this.#index(name), width, height);
  }

  #drawThere(source, width, height, done) {
    this.worker ??= this.#startWorker();
    const number = this.calls.push(done) - 1;
    const what = source === null ? { picture: this.picture } : { ground: this.#index(source) };
    this.worker.postMessage({ number, width, height, ...what });
  }

  #startWorker() {
    this.calls = []; // what to do with each drawing
    const worker = new Worker(new URL('ground-worker.js', import.meta.url), { type: 'module' });
    worker.addEventListener('error', () => showMessage('This browser could not draw the ground; a coarse one stays.'));
    worker.addEventListener('message', ({ data: { number, pixels } }) => {
      this.calls[number](pixels);
      this.calls[number] = null;
    });
    return worker;
  }
}
