import { initialValues, readAddress, writeAddress } from './address.js';
import { Gallery } from './gallery.js';
import { Stage, Unsupported } from './stage.js';
import { View } from './view.js';

const part = (id) => document.getElementById(id);

class Page {
  constructor(stage) {
    this.stage = stage;
    this.values = stage.scenes.map(initialValues); // of the settings, by scene and name
    this.seed = 1;
    this.scene = -1;
    this.time = performance.now();
    stage.scenes.forEach((_, scene) => stage.start(scene, this.seed));
    this.gallery = new Gallery(part('cards'), stage);
    this.view = new View(stage, (name, value) => this.#set(name, value), (values) => this.#setAll(values));
    this.#setPaused(matchMedia('(prefers-reduced-motion: reduce)').matches);
    this.#listen();
    this.#showAddress();
    requestAnimationFrame((time) => this.#draw(time));
  }

  #draw(time) {
    requestAnimationFrame((next) => this.#draw(next));
    const seconds = this.paused ? 0 : Math.max(0, time - this.time) / 1000;
    this.time = time;
    (this.scene < 0 ? this.gallery : this.view).advance(seconds);
  }

  // Shows the scene and the settings of the address.
  #showAddress() {
    const { scene, values } = readAddress(location.hash, this.stage.scenes);
    const previous = this.scene;
    this.scene = scene;
    part('gallery').hidden = scene >= 0;
    part('view').hidden = scene < 0;
    document.title = scene < 0 ? 'Tidalume' : `${this.stage.scenes[scene].title} · Tidalume`;
    if (scene < 0) {
      this.gallery.cards[previous]?.link.focus();
      return;
    }
    this.values[scene] = values;
    this.#applySettings();
    scrollTo(0, 0);
  }

  #navigate() {
    const isFromGallery = this.scene < 0;
    this.#showAddress();
    if (isFromGallery && this.scene >= 0) this.stage.canvas.focus({ preventScroll: true });
  }

  #set(name, value) {
    this.values[this.scene][name] = value;
    this.stage.set(this.scene, name, value);
    this.#writeAddress();
  }

  #address(scene) {
    return writeAddress(this.stage.scenes[scene], this.values[scene]);
  }

  #applySettings() {
    const values = this.values[this.scene];
    for (const [name, value] of Object.entries(values)) this.stage.set(this.scene, name, value);
    this.view.show(this.scene, values, (scene) => this.#address(scene));
    this.#writeAddress();
  }

  // Every link to a scene holds the settings that the visitor left there.
  #writeAddress() {
    const address = this.#address(this.scene);
    history.replaceState(null, '', address);
    this.gallery.cards[this.scene].link.href = address;
  }

  #setPaused(paused) {
    this.paused = paused;
    for (const button of document.querySelectorAll('.pause')) button.textContent = paused ? 'Play' : 'Pause';
  }

  #restart() {
    this.stage.start(this.scene, ++this.seed);
    this.#applySettings();
  }

  #setAll(values) {
    this.values[this.scene] = values;
    this.#applySettings();
  }

  async #copyLink() {
    try {
      await navigator.clipboard.writeText(location.href);
      showMessage('The link is copied. It holds the effect and its settings.');
    } catch {
      showMessage('Please copy the address of this page. It holds the effect and its settings.');
    }
  }

  async #showBackground(file) {
    try {
      await this.stage.showBackground(file);
      showMessage(`${file.name} is the background now.`);
    } catch {
      showMessage(`${file.name} is not a picture that this browser can read.`);
    }
  }

  #press(event) {
    const { key, target } = event;
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const actions = {
      Escape: () => { location.hash = ''; },
      ' ': () => this.#setPaused(!this.paused),
      r: () => this.#restart(),
      ArrowLeft: () => part('previous').click(),
      ArrowRight: () => part('next').click(),
    };
    const belongsToControl = target.closest('input, select') || (key === ' ' && target.closest('button, label'));
    const isForView = key !== ' ';
    if (!actions[key] || (belongsToControl && key !== 'Escape') || (isForView && this.scene < 0)) return;
    event.preventDefault();
    actions[key]();
  }

  #listen() {
    addEventListener('hashchange', () => this.#navigate());
    addEventListener('keydown', (event) => this.#press(event));
    for (const button of document.querySelectorAll('.pause')) {
      button.addEventListener('click', () => this.#setPaused(!this.paused));
    }
    part('restart').addEventListener('click', () => this.#restart());
    part('reset').addEventListener('click', () => this.#setAll(initialValues(this.stage.scenes[this.scene])));
    part('copy').addEventListener('click', () => this.#copyLink());
    part('own-ground').addEventListener('click', () => this.stage.showOwnGrounds());
    part('file').addEventListener('change', ({ target }) => {
      if (target.files[0]) this.#showBackground(target.files[0]);
      target.value = '';
    });
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
      if (file) this.#showBackground(file);
    });
  }
}

function showMessage(text) {
  part('message').textContent = text;
  clearTimeout(showMessage.timer);
  showMessage.timer = setTimeout(() => { part('message').textContent = ''; }, 4000);
}

try {
  new Page(await Stage.create(document.createElement('canvas')));
} catch (error) {
  const alert = document.createElement('p');
  alert.className = 'alert';
  alert.setAttribute('role', 'alert');
  alert.textContent = error instanceof Unsupported ? error.message : `The effects did not start: ${error.message}`;
  part('cards').before(alert);
}
