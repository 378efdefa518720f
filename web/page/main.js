import { initialValues, readAddress, writeAddress } from './address.js';
import { Gallery, cardHeight } from './gallery.js';
import { Hero } from './hero.js';
import { copy, showMessage } from './notices.js';
import { presetOf } from './presets.js';
import { Stage } from './stage.js';
import { View } from './view.js';

const part = (id) => document.getElementById(id);
const all = (selector) => document.querySelectorAll(selector);

class Page {
  constructor(stage) {
    this.stage = stage;
    this.scene = -1; // -1 for the landing
    // What the visitor left at each scene. The ground is '' where none was chosen.
    this.states = stage.scenes.map((entry) => ({ values: initialValues(entry), seed: 1, ground: '' }));
    this.folded = matchMedia('(max-width: 860px), (max-height: 500px)').matches;
    this.usesPicture = false; // of the visitor, as the ground of every scene
    this.time = performance.now();
    stage.scenes.forEach((_, scene) => stage.start(scene, 1));
    this.hero = new Hero(stage, part('hero'), cardHeight, () => this.#setPaused(false));
    this.gallery = new Gallery(part('cards'), stage);
    this.view = new View(stage, {
      touched: () => this.#setPaused(false),
      changed: (name, value) => this.#change(name, value),
      chose: (values) => this.#setAll(values),
      choseGround: (name) => this.#chooseGround(name),
    });
    for (const button of all('button:disabled')) button.disabled = false;
    this.#setPaused(matchMedia('(prefers-reduced-motion: reduce)').matches);
    this.#listen();
    this.#showAddress();
    requestAnimationFrame((time) => this.#draw(time));
  }

  get #entry() {
    return this.stage.scenes[this.scene];
  }

  get #state() {
    return this.states[this.scene];
  }

  // A preset that its scene's own ground would hide brings another one.
  #initialGround(scene) {
    const entry = this.stage.scenes[scene];
    return (presetOf(entry, this.states[scene].values) ?? entry).ground;
  }

  // Null for the visitor's picture. What was chosen, or came with a link, goes before it.
  #groundOf(scene) {
    return this.states[scene].ground || (this.usesPicture ? null : this.#initialGround(scene));
  }

  #draw(time) {
    requestAnimationFrame((next) => this.#draw(next));
    const seconds = this.paused ? 0 : Math.max(0, time - this.time) / 1000;
    this.time = time;
    if (this.scene >= 0) {
      this.view.advance(seconds);
    } else if (!this.paused || this.stage.canvas.classList.contains('live')) {
      this.#drawLanding(seconds);
    }
  }

  // The cards use a corner of the canvas, before the hero covers it.
  #drawLanding(seconds) {
    const { hero, gallery } = this;
    if (!this.paused) gallery.advance(seconds, hero.sharesCanvas(seconds));
    if (hero.inSight) hero.advance(seconds);
  }

  // Shows the scene and the settings of the address.
  #showAddress() {
    const { stage } = this;
    const names = stage.grounds.table.map(({ name }) => name);
    const { scene, values, seed, ground } = readAddress(location.hash, stage.scenes, names);
    const previous = this.scene;
    if (previous < 0 && scene < 0 && this.isShown) return; // a link within the landing
    this.isShown = true;
    this.scene = scene;
    part('landing').hidden = scene >= 0;
    part('view').hidden = scene < 0;
    document.title = scene < 0 ? 'Tidalume' : `${stage.scenes[scene].title} · Tidalume`;
    if (scene < 0) {
      this.view.leave();
      this.hero.enter();
      this.gallery.cards[previous]?.link.focus();
      if (previous >= 0) document.getElementById(location.hash.slice(1))?.scrollIntoView();
      return;
    }
    if (seed !== this.states[scene].seed) stage.start(scene, seed);
    this.states[scene] = { values, seed, ground };
    this.view.enter(scene, this.paused);
    this.#applySettings();
    this.#fold(this.folded);
    scrollTo(0, 0);
  }

  #navigate() {
    const isFromLanding = this.scene < 0;
    this.#showAddress();
    if (isFromLanding && this.scene >= 0) this.stage.canvas.focus({ preventScroll: true });
  }

  #address(scene) {
    return writeAddress(this.stage.scenes[scene], this.states[scene]);
  }

  #applySettings() {
    for (const [name, value] of Object.entries(this.#state.values)) this.stage.set(this.scene, name, value);
    this.view.show(this.#state.values);
    this.#applied();
    this.#writeAddress();
  }

  // Every link to a scene holds the settings that the visitor left there.
  #applied() {
    this.stage.scenes.forEach((_, scene) => this.stage.grounds.use(scene, this.#groundOf(scene)));
    this.view.refresh(this.#state.values, this.#groundOf(this.scene), (scene) => this.#address(scene));
    this.gallery.cards.forEach(({ link }, scene) => { link.href = this.#address(scene); });
  }

  // Browsers limit how often: once for a slider that is drawn, not for each of its values.
  #writeAddress() {
    history.replaceState(null, '', this.#address(this.scene));
  }

  #change(name, value) {
    this.#state.values[name] = value;
    this.stage.set(this.scene, name, value);
    this.#applied();
  }

  #setAll(values) {
    this.#state.values = values;
    this.#applySettings();
  }

  #chooseGround(name) {
    this.usesPicture = name === null;
    if (this.usesPicture) for (const state of this.states) state.ground = ''; // it lies beneath all of them
    else this.#state.ground = name === this.#initialGround(this.scene) ? '' : name;
    this.#applied();
    this.#writeAddress();
  }

  async #choosePicture(file) {
    try {
      await this.stage.grounds.readPicture(file);
    } catch {
      showMessage(`${file.name} is not a picture that this browser can read.`);
      return;
    }
    this.view.grounds.drawOwn();
    this.#chooseGround(null);
    showMessage(`${file.name} is the ground now.`);
  }

  #setPaused(paused) {
    this.paused = paused;
    this.hero.isStill = paused;
    document.body.classList.toggle('paused', paused);
    for (const button of all('.pause')) button.ariaLabel = paused ? 'Play' : 'Pause';
  }

  #restart() {
    this.stage.start(this.scene, ++this.#state.seed);
    this.view.restart(this.paused);
    this.#applySettings();
  }

  #fold(folded) {
    this.folded = folded;
    part('panel').hidden = folded;
    part('fold').ariaExpanded = String(!folded);
    part('view').classList.toggle('folded', folded);
    if (!folded) this.view.grounds.draw();
  }

  #leavePanel() {
    this.#fold(true);
    part('fold').focus();
  }

  #save() {
    const { name } = this.#entry;
    this.view.save((blob) => {
      if (!blob) {
        showMessage('This browser could not make a picture of it.');
        return;
      }
      const link = document.createElement('a');
      link.href = URL.createObjectURL(blob);
      link.download = `tidalume-${name}.png`;
      link.click();
      setTimeout(() => URL.revokeObjectURL(link.href), 60_000); // some browsers read it later
    });
  }

  #copyLink() {
    const isOwn = this.#groundOf(this.scene) === null;
    copy(location.href, `The link is copied. ${isOwn ? 'Your picture stays here.' : 'It holds all settings.'}`);
  }

  #toggleFullScreen() {
    if (document.fullscreenElement) document.exitFullscreen();
    else if (document.fullscreenEnabled) document.documentElement.requestFullscreen();
  }

  #showTab(name) {
    for (const tab of all('[role=tab]')) {
      tab.ariaSelected = String(tab.id === name);
      tab.tabIndex = tab.id === name ? 0 : -1;
      part(tab.getAttribute('aria-controls')).hidden = tab.id !== name;
    }
  }

  #press(event) {
    const { key, target } = event;
    if (event.ctrlKey || event.altKey || event.metaKey || this.scene < 0) return;
    const actions = {
      p: () => this.#setPaused(!this.paused),
      r: () => this.#restart(),
      f: () => this.#toggleFullScreen(),
      s: () => this.#save(),
      ',': () => part('previous').click(),
      '.': () => part('next').click(),
    };
    if (key === 'Escape' && !document.fullscreenElement) {
      if (part('panel').contains(target)) this.#leavePanel();
      else location.hash = '';
    } else if (actions[key] && (target === document.body || target === this.stage.canvas)) {
      event.preventDefault();
      actions[key]();
    }
  }

  #listen() {
    const onClick = (id, action) => part(id).addEventListener('click', action);
    addEventListener('hashchange', () => this.#navigate());
    addEventListener('keydown', (event) => this.#press(event));
    for (const button of all('.pause')) button.addEventListener('click', () => this.#setPaused(!this.paused));
    onClick('restart', () => this.#restart());
    onClick('reset', () => this.#setAll(initialValues(this.#entry)));
    onClick('fold', () => this.#fold(!this.folded));
    onClick('save', () => this.#save());
    onClick('full', () => this.#toggleFullScreen());
    part('settings').addEventListener('change', () => this.#writeAddress());
    onClick('copy', () => this.#copyLink());
    onClick('copy-code', () => copy(part('code-tab').querySelector('code').textContent, 'The code is copied.'));
    part('full').hidden = !document.fullscreenEnabled;
    part('file').addEventListener('change', ({ target }) => {
      if (target.files[0]) this.#choosePicture(target.files[0]);
      target.value = '';
    });
    for (const tab of all('[role=tab]')) {
      tab.addEventListener('click', () => this.#showTab(tab.id));
      tab.addEventListener('keydown', ({ key }) => {
        if (key !== 'ArrowLeft' && key !== 'ArrowRight') return;
        const other = tab.nextElementSibling ?? tab.previousElementSibling;
        this.#showTab(other.id);
        other.focus();
      });
    }
    this.#listenForDrops();
  }

  #listenForDrops() {
    const showDragging = (dragging) => document.body.classList.toggle('dragging', dragging);
    addEventListener('dragover', (event) => {
      event.preventDefault();
      showDragging(true);
    });
    addEventListener('dragleave', ({ relatedTarget }) => showDragging(relatedTarget !== null));
    addEventListener('drop', (event) => {
      event.preventDefault();
      showDragging(false);
      const [file] = event.dataTransfer.files;
      if (file && this.scene >= 0) this.#choosePicture(file);
    });
  }
}

/** Makes the page answer the visitor. Fails as Stage.create() does, whose `loaded` it takes. */
export async function openPage(loaded) {
  new Page(await Stage.create(document.createElement('canvas'), loaded));
}
