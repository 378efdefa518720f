import { presetValues } from './presets.js';
import { Surface } from './surface.js';
import { Touches } from './touches.js';

const preset = 'pool';
const picturesAlone = 20; // before cards take a part of each frame
const posterSeconds = 1; // which its poster is ahead
const seed = 2; // with which the first drop falls beside the words
const rain = 1.5; // drops a second, so that the water is never still for long

/** Water that fills the top of the page and follows the mouse. */
export class Hero {
  /**
   * @param smallest  pixels that the canvas has in both directions at least
   * @param touched   called when a person presses on the water
   */
  constructor(stage, element, smallest, touched) {
    this.stage = stage;
    this.player = stage.scenes.length; // after the scenes' own
    this.surface = new Surface(stage, element, smallest);
    this.inSight = true;
    this.pictures = 0; // that have been drawn
    this.seconds = 0; // since the first one
    this.isTouched = false;
    this.isStill = false; // the mouse moves nothing
    const scene = stage.scenes.findIndex(({ name }) => name === 'water');
    const entry = stage.scenes[scene];
    const values = { ...presetValues(entry, entry.presets.find(({ name }) => name === preset)), rain };
    stage.start(this.player, seed, scene);
    for (const [name, value] of Object.entries(values)) stage.set(this.player, name, value);
    new IntersectionObserver(([{ isIntersecting }]) => { this.inSight = isIntersecting; }, { rootMargin: '80px' })
      .observe(element);
    element.addEventListener('pointerdown', touched); // first, so that it counts where the water stood still
    this.touches = new Touches(element, (phase, x, y, finger) => {
      const { width, height } = stage.canvas;
      if (this.isStill) return;
      this.isTouched = true;
      stage.touch(this.player, phase, x * width, y * height, finger);
    }, true);
  }

  enter() {
    const { canvas } = this.stage;
    canvas.removeAttribute('tabindex');
    canvas.removeAttribute('role');
    canvas.removeAttribute('aria-label');
    canvas.ariaHidden = 'true';
    canvas.classList.remove('live'); // the poster shows until there is a picture
    this.touches.cancel();
    this.surface.enter();
  }

  /** Whether cards may use the canvas in this frame: the water moves, and covers it again, or is out of sight. */
  sharesCanvas(seconds) {
    return !this.inSight || (this.pictures >= picturesAlone && this.surface.isDue(this.player, seconds));
  }

  advance(seconds) {
    if (this.pictures > 0) this.seconds += seconds;
    if (!this.surface.advance(this.player, seconds)) return;
    ++this.pictures;
    if (this.isTouched || this.seconds >= posterSeconds) this.stage.canvas.classList.add('live');
  }
}
