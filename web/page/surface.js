import { Pace } from './pace.js';

const maxPixels = 1.5e6;
const settled = 150; // milliseconds for which a size has to last
const timeStep = 1 / 60; // of every scene, in seconds

/** A place of the page that the stage's canvas can fill, at a resolution that the machine can draw in time. */
export class Surface {
  /**
   * @param place     an element that the canvas fills
   * @param smallest  pixels that the canvas has in both directions at least
   */
  constructor(stage, place, smallest = 1) {
    this.stage = stage;
    this.place = place;
    this.smallest = smallest;
    this.needsRedraw = false;
    this.pace = new Pace();
    for (const type of ['webglcontextlost', 'webglcontextrestored']) {
      stage.canvas.addEventListener(type, () => this.pace.restart());
    }
    document.addEventListener('visibilitychange', () => this.pace.restart());
  }

  /** Brings the canvas here. */
  enter() {
    if (this.stage.canvas.parentElement !== this.place) this.place.prepend(this.stage.canvas); // or it loses the focus
    this.size = null;
    this.needsRedraw = true;
    this.pace.restart();
    this.#fitCanvas();
  }

  /** Whether advance() would draw. */
  isDue(player, seconds) {
    return this.needsRedraw || this.stage.isDue(player, seconds);
  }

  /**
   * Advances by a time in seconds. What is new shows, by one step, even when no time passes.
   * @param isHeld  fingers are down, in pixels of the canvas, whose size must not change
   * @return whether there is a new picture
   */
  advance(player, seconds, isHeld) {
    const { stage, pace } = this;
    if (!isHeld) this.#fitCanvas();
    if (stage.fit(player, stage.canvas.width, stage.canvas.height)) {
      this.needsRedraw = true;
      pace.restart();
    }
    if (seconds === 0) pace.restart();
    if (stage.advance(player, this.needsRedraw ? Math.max(seconds, timeStep) : seconds) === 0) return false;
    this.needsRedraw = false;
    pace.tick(isHeld);
    return true;
  }

  // While a person drags the window's edge, the picture is stretched.
  #fitCanvas() {
    const { clientWidth, clientHeight } = this.place;
    const now = performance.now();
    if (!this.size) {
      this.size = { clientWidth, clientHeight, since: -Infinity };
    } else if (this.size.clientWidth !== clientWidth || this.size.clientHeight !== clientHeight) {
      this.size = { clientWidth, clientHeight, since: now };
    }
    if (now - this.size.since < settled || clientWidth === 0 || clientHeight === 0) return;
    const ratio = Math.max(
      this.smallest / Math.min(clientWidth, clientHeight),
      this.pace.scale * Math.min(2, devicePixelRatio, Math.sqrt(maxPixels / (clientWidth * clientHeight))),
    );
    this.stage.resize(Math.max(1, Math.round(clientWidth * ratio)), Math.max(1, Math.round(clientHeight * ratio)));
  }
}
