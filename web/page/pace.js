const scales = [1, 0.75, 0.5]; // of the resolution
const measured = 500; // milliseconds
// Milliseconds for each frame. A display of 30 Hz lies between them: it is no slow machine.
const late = 40;
const roomy = 20;
const mostPatience = 60; // measurements

/** Counts frames as they are drawn, and finds the resolution that the machine can draw in time. */
export class Pace {
  constructor() {
    this.level = 0; // in scales
    this.patience = 4; // measurements with room before a finer resolution is tried
    this.framesPerSecond = null; // null until it is measured
    this.restart();
  }

  get scale() {
    return scales[this.level];
  }

  /** What was measured last says nothing about the next frames: there was a pause, or something was set up. */
  restart() {
    this.frames = -2; // which pay for it too
    this.calm = 0; // measurements with room, one after the other
    this.shortest = Infinity; // milliseconds for a frame: the display may be no faster
  }

  /**
   * To be called for each frame that is drawn.
   * @param isHeld  the resolution must not change now
   */
  tick(isHeld) {
    const now = performance.now();
    if (++this.frames <= 0) {
      this.start = now;
      return;
    }
    if (now - this.start < measured) return;
    const milliseconds = (now - this.start) / this.frames;
    this.framesPerSecond = Math.round(1000 / milliseconds);
    this.shortest = Math.min(this.shortest, milliseconds);
    const hasRoom = milliseconds <= late && milliseconds < Math.max(roomy, 1.2 * this.shortest);
    this.calm = hasRoom ? this.calm + 1 : 0;
    if (!isHeld) this.#choose(milliseconds);
    this.frames = 0;
    this.start = now;
  }

  #choose(milliseconds) {
    if (milliseconds > late && this.level < scales.length - 1) {
      ++this.level;
      this.patience = Math.min(2 * this.patience, mostPatience); // a finer one has been too much
    } else if (this.calm >= this.patience && this.level > 0) {
      --this.level;
      this.calm = 0;
    }
  }
}
