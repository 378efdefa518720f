const phases = {
  pointerdown: 'down', pointermove: 'move', pointerup: 'up', pointercancel: 'cancel', pointerleave: 'up',
};
const fingers = 9; // and one more for the keyboard

/** Fingers and the mouse on an element. */
export class Touches {
  /**
   * @param send    called with (phase, x, y, finger): a phase of Stage.touch() and shares of the element
   * @param hovers  whether the mouse touches without a button, too
   */
  constructor(element, send, hovers = false) {
    this.element = element;
    this.send = send;
    this.hovers = hovers;
    this.pointers = new Array(fingers).fill(null); // ids of those that are down
    for (const type of Object.keys(phases)) element.addEventListener(type, (event) => this.#point(event));
  }

  get areDown() {
    return this.pointers.some((id) => id !== null);
  }

  /** Fingers that are down no longer count until they are lifted and put down again. */
  cancel() {
    this.pointers.forEach((id, finger) => {
      if (id !== null) this.send('cancel', 0, 0, finger);
    });
    this.pointers.fill(null);
  }

  #point(event) {
    let phase = phases[event.type];
    const isHover = this.hovers && event.pointerType === 'mouse' && event.buttons === 0;
    const known = this.pointers.indexOf(event.pointerId);
    if (phase === 'down' && known >= 0) this.#send('up', event, known); // it hovered until now
    if (phase === 'move' && known < 0 && isHover) phase = 'down';
    const finger = phase === 'down' ? this.pointers.indexOf(known < 0 ? null : event.pointerId) : known;
    if (finger < 0) return;
    this.pointers[finger] = phase === 'down' || phase === 'move' ? event.pointerId : null;
    if (event.type === 'pointerdown') this.element.setPointerCapture(event.pointerId);
    this.#send(phase, event, finger);
  }

  #send(phase, { clientX, clientY }, finger) {
    const { left, top, width, height } = this.element.getBoundingClientRect();
    this.send(phase, (clientX - left) / width, (clientY - top) / height, finger);
  }
}

const directions = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };
const stride = 0.03; // of the element's shorter side

/** The keyboard on an element: arrow keys move a point, which the space bar and Enter put down and lift. */
export class KeyTouches {
  /**
   * @param mark  shows where the point is
   * @param send  as that of Touches
   */
  constructor(element, mark, send) {
    this.element = element;
    this.mark = mark;
    this.send = send;
    this.x = this.y = 0.5;
    this.isDown = false;
    element.addEventListener('keydown', (event) => this.#press(event));
    element.addEventListener('keyup', (event) => this.#release(event));
    element.addEventListener('blur', () => this.cancel());
    element.addEventListener('pointerdown', () => { mark.hidden = true; });
  }

  cancel() {
    this.mark.hidden = true;
    if (this.isDown) this.#touch('cancel');
    this.isDown = false;
  }

  #press(event) {
    const direction = directions[event.key];
    if (event.ctrlKey || event.altKey || event.metaKey || !(direction || isTouch(event))) return;
    event.preventDefault();
    if (direction) this.#move(...direction);
    this.mark.hidden = false;
    this.mark.style.left = `${100 * this.x}%`;
    this.mark.style.top = `${100 * this.y}%`;
    if (direction && this.isDown) this.#touch('move');
    if (direction || this.isDown) return;
    this.isDown = true;
    this.#touch('down');
  }

  #release(event) {
    if (!isTouch(event) || !this.isDown) return;
    this.isDown = false;
    this.#touch('up');
  }

  #move(x, y) {
    const { clientWidth, clientHeight } = this.element;
    const step = stride * Math.min(clientWidth, clientHeight);
    this.x = Math.min(1, Math.max(0, this.x + x * step / clientWidth));
    this.y = Math.min(1, Math.max(0, this.y + y * step / clientHeight));
  }

  #touch(phase) {
    this.send(phase, this.x, this.y, fingers);
  }
}

const isTouch = ({ key }) => key === ' ' || key === 'Enter';
