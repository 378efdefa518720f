import { CodeTab } from './code-tab.js';
import { GroundChoice } from './ground-choice.js';
import { presetOf, presetValues } from './presets.js';
import { Settings } from './settings.js';
import { Surface } from './surface.js';
import { KeyTouches, Touches } from './touches.js';

const stepsAhead = 120; // which a still shows
const frameBudget = 10; // milliseconds of each frame of the page in which it is run ahead

const part = (id) => document.getElementById(id);

/** One scene in the full view, to be touched. */
export class View {
  /**
   * @param page  gets what a person does: touched(), changed(name, value) for a setting, chose(values) for a preset,
   *              choseGround(name), where null is the visitor's own picture, and chosePicture(file)
   */
  constructor(stage, page) {
    this.stage = stage;
    this.scene = -1;
    this.ahead = 0; // steps that are left to be run before the picture shows
    this.picture = null; // what to do with the next picture
    this.surface = new Surface(stage, part('frame'));
    this.settings = new Settings(part('settings'), (name, value) => {
      this.surface.needsRedraw = true;
      page.changed(name, value);
    });
    this.grounds = new GroundChoice(part('grounds'), stage.grounds, page);
    this.codeTab = new CodeTab(part('code-tab'));
    this.page = page;
    this.time = part('time');
    part('driver').textContent = stage.driver;
    const { canvas } = stage;
    const send = (phase, x, y, finger) => {
      if (this.scene < 0) return;
      if (phase === 'down') page.touched();
      stage.touch(this.scene, phase, x * canvas.width, y * canvas.height, finger);
    };
    this.touches = new Touches(part('frame'), send);
    this.keys = new KeyTouches(canvas, part('mark'), send);
    for (const type of ['webglcontextlost', 'webglcontextrestored']) {
      canvas.addEventListener(type, () => { part('lost').hidden = !stage.lost; });
    }
  }

  enter(scene, isStill) {
    const { scenes, canvas } = this.stage;
    const entry = scenes[scene];
    this.leave();
    this.scene = scene;
    part('title').textContent = part('name').textContent = entry.title;
    part('sentence').textContent = entry.sentence;
    part('poster').src = `posters/${entry.name}.webp`;
    canvas.tabIndex = 0;
    canvas.ariaHidden = null;
    canvas.role = 'application';
    canvas.ariaLabel = `${entry.title}. ${entry.sentence} Arrow keys move a point, the space bar touches there.`;
    canvas.classList.remove('live'); // the poster shows until there is a picture
    this.surface.enter();
    this.restart(isStill);
    this.time.textContent = '';
    part('panel').scrollTop = 0;
  }

  /** The scene begins anew. */
  restart(isStill) {
    this.#liftFingers();
    this.ahead = isStill ? stepsAhead : 0;
  }

  leave() {
    this.#liftFingers();
    this.picture = null;
    this.scene = -1;
  }

  // They stay without effect until they are put down again.
  #liftFingers() {
    this.touches.cancel();
    this.keys.cancel();
  }

  /** Shows the settings in the panel; refresh() is to follow. */
  show(values) {
    const entry = this.stage.scenes[this.scene];
    this.surface.needsRedraw = true;
    this.settings.show(entry.parameters, values);
    this.#listPresets(entry);
  }

  /**
   * Shows in the panel what follows from the settings.
   * @param ground   its name, or null for the visitor's picture
   * @param address  called with a scene for its address
   */
  refresh(values, ground, address) {
    const { scenes } = this.stage;
    const entry = scenes[this.scene];
    const neighbour = (offset) => address((this.scene + offset + scenes.length) % scenes.length);
    part('previous').href = neighbour(-1);
    part('next').href = neighbour(1);
    this.grounds.show(ground);
    this.codeTab.show(entry, values);
    const preset = presetOf(entry, values);
    for (const button of part('presets').children) button.ariaPressed = String(button.name === preset?.name);
  }

  /** Calls back with the next picture as a blob of a PNG; null where the browser cannot make one. */
  save(done) {
    this.picture = done;
    this.surface.needsRedraw = true;
  }

  /** Advances by a time in seconds. */
  advance(seconds) {
    const { canvas } = this.stage;
    if (this.ahead > 0 && seconds === 0) {
      this.#runAhead();
      if (this.ahead > 0) return;
    }
    this.ahead = 0;
    if (!this.surface.advance(this.scene, seconds, this.touches.areDown)) return;
    canvas.classList.add('live');
    const { framesPerSecond } = this.surface.pace;
    const frames = framesPerSecond === null ? '' : `${framesPerSecond} frames a second, `;
    const text = `${frames}${canvas.width} × ${canvas.height} pixels`;
    if (this.time.textContent !== text) this.time.textContent = text;
    if (this.picture) canvas.toBlob(this.picture);
    this.picture = null;
  }

  #runAhead() {
    const end = performance.now() + frameBudget;
    while (this.ahead > 0 && performance.now() < end && !this.stage.lost) {
      this.stage.step(this.scene);
      --this.ahead;
    }
    this.surface.needsRedraw = true;
  }

  #listPresets(entry) {
    part('presets').hidden = entry.presets.length < 2;
    part('presets').replaceChildren(...entry.presets.map((preset) => {
      const button = document.createElement('button');
      button.type = 'button';
      button.name = preset.name;
      button.textContent = preset.title;
      button.addEventListener('click', () => this.page.chose(presetValues(entry, preset)));
      return button;
    }));
  }
}
