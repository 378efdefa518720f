import { Settings } from './settings.js';

const maxPixels = 1.5e6;
const pointerCount = 10;
const timeStep = 1 / 60; // of every scene, in seconds

const part = (id) => document.getElementById(id);

/** One scene in the full view, to be touched. */
export class View {
  /**
   * @param changed  called with (name, value) when a person changes a setting
   * @param chosen   called with the values of all settings, by name, when a person chooses a preset
   */
  constructor(stage, changed, chosen) {
    this.stage = stage;
    this.scene = -1;
    this.needsRedraw = false; // the scene or a setting is new
    this.scale = 1; // of the resolution; below 1 where the machine is too slow for the full one
    this.pointers = new Array(pointerCount).fill(null); // ids of the pointers that are down
    this.settings = new Settings(part('settings'), (name, value) => {
      this.needsRedraw = true;
      changed(name, value);
    });
    this.chosen = chosen;
    this.clock = new FrameClock();
    part('driver').textContent = stage.driver;
    const { canvas } = stage;
    canvas.tabIndex = 0;
    part('frame').append(canvas);
    for (const type of ['pointerdown', 'pointermove', 'pointerup', 'pointercancel']) {
      canvas.addEventListener(type, (event) => this.#point(event));
    }
    for (const type of ['keydown', 'keyup']) {
      canvas.addEventListener(type, (event) => this.#touchMiddle(event));
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
    this.needsRedraw = true;
    this.scale = 1;
    part('title').textContent = entry.title;
    part('sentence').textContent = entry.sentence;
    part('previous').href = neighbour(-1);
    part('next').href = neighbour(1);
    canvas.setAttribute('aria-label', `${entry.title}. ${entry.sentence}`);
    this.#showPresets(entry);
    this.settings.show(entry.parameters, values);
    this.#fitCanvas(); // before the first touch, which is in pixels of the canvas
    this.#showTime('–');
    this.clock.restart();
  }

  /** Advances by a time in seconds. A new scene or setting shows, by one step, even when no time passes. */
  advance(seconds) {
    const isTouched = this.pointers.some((id) => id !== null); // in pixels of the canvas, whose size must not change
    if (!isTouched) this.#fitCanvas();
    if (seconds === 0) this.clock.restart();
    if (!this.stage.advance(this.scene, seconds === 0 && this.needsRedraw ? timeStep : seconds)) return;
    this.needsRedraw = false;
    const milliseconds = this.clock.tick();
    if (milliseconds === null) return;
    this.#showTime(milliseconds.toFixed(1));
    if (milliseconds > 45 && !isTouched) this.scale = Math.max(0.5, this.scale * 0.75);
  }

  #showPresets({ parameters, presets }) {
    part('presets').hidden = presets.length < 2;
    part('presets').replaceChildren(...presets.map(({ title, values }) => {
      const button = document.createElement('button');
      button.type = 'button';
      button.textContent = title;
      button.addEventListener('click', () => {
        this.chosen(Object.fromEntries(parameters.map(({ name }, index) => [name, values[index]])));
      });
      return button;
    }));
  }

  #showTime(milliseconds) {
    const { width, height } = this.stage.canvas;
    part('time').textContent = `${milliseconds} ms per frame, ${width} × ${height} pixels`;
  }

  #fitCanvas() {
    const { clientWidth, clientHeight } = part('frame');
    const ratio = Math.min(2, devicePixelRatio, Math.sqrt(maxPixels / (clientWidth * clientHeight))) * this.scale;
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
    const phase = { pointerdown: 'down', pointermove: 'move', pointerup: 'up', pointercancel: 'cancel' }[event.type];
    this.stage.touch(this.scene, phase, event.offsetX * canvas.width / canvas.clientWidth,
      event.offsetY * canvas.height / canvas.clientHeight, slot);
  }

  #touchMiddle(event) {
    if (event.key !== 'Enter' || event.repeat) return;
    const { canvas } = this.stage;
    this.stage.touch(this.scene, event.type === 'keydown' ? 'down' : 'up', canvas.width / 2, canvas.height / 2, 0);
  }
}

/** Averages the time between frames over half a second. */
class FrameClock {
  /** To be called while no frames are drawn, too: that time does not count. */
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
