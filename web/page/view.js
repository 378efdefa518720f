import { Settings } from './settings.js';

const mostPixels = 1.5e6;
const pointerLimit = 10;
const step = 1 / 60; // of every scene, in seconds

const part = (id) => document.getElementById(id);

/** One scene in the full view, to be touched. */
export class View {
  /** @param changed  called with (name, value) when a person changes a setting */
  constructor(stage, changed) {
    this.stage = stage;
    this.scene = -1;
    this.isStale = false; // the canvas lacks what was shown or set last
    this.scale = 1; // of the resolution; lower where the machine is too slow for all of it
    this.pointers = new Array(pointerLimit).fill(null); // ids of the pointers that are down
    this.settings = new Settings(part('settings'), (name, value) => {
      this.isStale = true;
      changed(name, value);
    });
    this.clock = new FrameClock();
    part('driver').textContent = stage.driver;
    const { canvas } = stage;
    canvas.tabIndex = 0;
    part('frame').append(canvas);
    for (const type of ['pointerdown', 'pointermove', 'pointerup', 'pointercancel']) {
      canvas.addEventListener(type, (event) => this.#point(event));
    }
    for (const type of ['keydown', 'keyup']) {
      canvas.addEventListener(type, (event) => this.#pressEnter(event));
    }
    for (const type of ['webglcontextlost', 'webglcontextrestored']) {
      canvas.addEventListener(type, () => {
        part('lost').hidden = !stage.lost;
        this.clock.restart();
      });
    }
    document.addEventListener('visibilitychange', () => this.clock.restart());
  }

  /** @param address  of a scene */
  show(scene, values, address) {
    const { scenes, canvas } = this.stage;
    const neighbour = (offset) => address((scene + offset + scenes.length) % scenes.length);
    const entry = scenes[scene];
    this.scene = scene;
    this.isStale = true;
    this.scale = 1;
    part('title').textContent = entry.title;
    part('sentence').textContent = entry.sentence;
    part('background').hidden = !entry.showsBackground;
    part('previous').href = neighbour(-1);
    part('next').href = neighbour(1);
    canvas.setAttribute('aria-label', `${entry.title}. ${entry.sentence}`);
    this.settings.show(entry.parameters, values);
    this.#fitCanvas(); // before the first touch, which is counted in its pixels
    this.#showTime('–');
    this.clock.restart();
  }

  /** Also while no time passes, what is new is shown, by one step. */
  advance(seconds) {
    const isTouched = this.pointers.some((id) => id !== null); // where it is, is counted in the canvas's pixels
    if (!isTouched) this.#fitCanvas();
    if (seconds === 0) this.clock.restart();
    if (!this.stage.advance(this.scene, seconds === 0 && this.isStale ? step : seconds)) return;
    this.isStale = false;
    const milliseconds = this.clock.tick();
    if (milliseconds === null) return;
    this.#showTime(milliseconds.toFixed(1));
    if (milliseconds > 45 && !isTouched) this.scale = Math.max(0.5, this.scale * 0.75);
  }

  #showTime(milliseconds) {
    const { width, height } = this.stage.canvas;
    part('time').textContent = `${milliseconds} ms per frame, ${width} × ${height} pixels`;
  }

  #fitCanvas() {
    const { clientWidth, clientHeight } = part('frame');
    const ratio = Math.min(2, devicePixelRatio, Math.sqrt(mostPixels / (clientWidth * clientHeight))) * this.scale;
    this.stage.resize(Math.max(1, Math.round(clientWidth * ratio)), Math.max(1, Math.round(clientHeight * ratio)));
  }

  #point(event) {
    const isStart = event.type === 'pointerdown';
    const slot = this.pointers.indexOf(isStart ? null : event.pointerId);
    if (slot < 0) return;
    const { canvas } = this.stage;
    if (isStart) canvas.setPointerCapture(event.pointerId);
    const isEnd = event.type === 'pointerup' || event.type === 'pointercancel';
    this.pointers[slot] = isEnd ? null : event.pointerId;
    const action = isStart ? 'down' : isEnd ? 'up' : 'move';
    this.stage.touch(this.scene, action, event.offsetX * canvas.width / canvas.clientWidth,
      event.offsetY * canvas.height / canvas.clientHeight, slot);
  }

  #pressEnter(event) {
    if (event.key !== 'Enter' || event.repeat) return;
    const { canvas } = this.stage;
    this.stage.touch(this.scene, event.type === 'keydown' ? 'down' : 'up', canvas.width / 2, canvas.height / 2, 0);
  }
}

/** Averages the time between frames over half a second. */
class FrameClock {
  /** To be called also when no frames are due, as that time is none of theirs. */
  restart() {
    this.start = performance.now();
    this.frames = 0;
  }

  /** The average in milliseconds, or null while it is being measured. */
  tick() {
    ++this.frames;
    const elapsed = performance.now() - this.start;
    if (elapsed < 500) return null;
    const average = elapsed / this.frames;
    this.restart();
    return average;
  }
}
