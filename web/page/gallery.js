const posterSteps = 45; // until something is to be seen, the poster stays
const frameBudget = 10; // milliseconds of each frame of the page that the cards may take

export const cardWidth = 270;
export const cardHeight = 360;

/** The cards of the page, each a link with a live picture of its scene over a poster. */
export class Gallery {
  constructor(element, stage) {
    this.stage = stage;
    const linkTo = (name) => element.querySelector(`[data-scene="${name}"]`);
    this.cards = stage.scenes.map(({ name }, scene) => new Card(linkTo(name), scene));
    this.next = 0; // index of the next card to advance
    const observer = new IntersectionObserver((changes) => {
      for (const { target, isIntersecting } of changes) this.#cardOf(target).visible = isIntersecting;
    }, { rootMargin: '80px' });
    for (const card of this.cards) observer.observe(card.link);
  }

  /**
   * Advances the cards that are in sight. Cards for which no time is left have their turn in the next frame. At most
   * one card starts in each frame, so that the first ones move while the others are being made.
   * @param mayDraw  whether the canvas, whose corner they use, is free
   */
  advance(seconds, mayDraw) {
    const end = performance.now() + frameBudget;
    const cards = this.cards.filter((card) => card.visible && card.started);
    for (const card of cards) card.elapsed += seconds;
    if (!mayDraw) return;
    for (let drawn = 0; drawn < cards.length && performance.now() < end; ++drawn) {
      cards[this.next++ % cards.length].advance(this.stage);
    }
    this.cards.find((card) => card.visible && !card.started)?.advance(this.stage);
  }

  #cardOf(link) {
    return this.cards.find((card) => card.link === link);
  }
}

class Card {
  constructor(link, scene) {
    this.link = link;
    this.scene = scene;
    this.visible = false;
    this.started = false;
    this.steps = 0; // that have been drawn
    this.elapsed = 0; // seconds since it was drawn
    this.canvas = document.createElement('canvas');
    this.canvas.width = cardWidth;
    this.canvas.height = cardHeight;
    this.canvas.ariaHidden = 'true';
    this.picture = this.canvas.getContext('2d', { alpha: false });
  }

  advance(stage) {
    this.started = true;
    const isNew = stage.fit(this.scene, cardWidth, cardHeight);
    const steps = stage.advance(this.scene, isNew ? Math.max(this.elapsed, 1 / 60) : this.elapsed);
    if (steps > 0) {
      const top = stage.canvas.height - cardHeight;
      this.picture.drawImage(stage.canvas, 0, top, cardWidth, cardHeight, 0, 0, cardWidth, cardHeight);
      this.steps += steps;
      if (this.steps >= posterSteps) this.link.firstElementChild.append(this.canvas);
    }
    this.elapsed = 0;
  }
}
