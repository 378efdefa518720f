const side = 96; // pixels of a thumbnail

/** Thumbnails of the grounds, and the visitor's own picture. */
export class GroundChoice {
  /** @param page  gets choseGround(name), where null is the visitor's picture */
  constructor(element, grounds, page) {
    this.grounds = grounds;
    this.page = page;
    this.options = new Map(); // by name, null for the visitor's picture
    this.drawn = false;
    for (const { name, title } of grounds.table) element.append(this.#option(name, title));
    this.own = this.#option(null, 'Your picture');
    this.own.hidden = true;
    element.append(this.own);
  }

  /** Marks the ground that is shown. */
  show(name) {
    this.options.get(name).input.checked = true;
  }

  /** Draws the thumbnails, for the first time that they are seen. */
  draw() {
    if (this.drawn) return;
    this.drawn = true;
    for (const { name } of this.grounds.table) {
      this.grounds.thumbnail(name, side, (image) => this.options.get(name).picture.putImageData(image, 0, 0));
    }
  }

  drawOwn() {
    const { picture } = this.grounds;
    const part = Math.min(picture.width, picture.height);
    this.options.get(null).picture.drawImage(picture, (picture.width - part) / 2, (picture.height - part) / 2,
      part, part, 0, 0, side, side);
    this.own.hidden = false;
  }

  #option(name, title) {
    const label = document.createElement('label');
    const input = document.createElement('input');
    const canvas = document.createElement('canvas');
    Object.assign(input, { type: 'radio', name: 'ground', value: name ?? '', ariaLabel: title });
    Object.assign(canvas, { width: side, height: side });
    label.title = title;
    label.append(input, canvas);
    input.addEventListener('change', () => this.page.choseGround(name));
    this.options.set(name, { input, picture: canvas.getContext('2d') });
    return label;
  }
}
