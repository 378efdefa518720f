const width = 270;
const height = 360;
const millisecondsPerFrame = 10; // that the thumbnails may take of each frame of the page

/** A grid of cards, each a link with a live picture of its scene. */
export class Gallery {
  constructor(element, stage) {
    this.stage = stage;
    this.cards = stage.scenes.map((entry, scene) => new Card(entry, scene));
    this.next = 0; // card whose turn it is
    const observer = new IntersectionObserver((changes) => {
      for (const { target, isIntersecting } of changes) this.cards[target.dataset.scene].visible = isIntersecting;
    }, { rootMargin: '80px' });
    for (const card of this.cards) {
      element.append(card.link);
      observer.observe(card.link);
    }
  }

  /**
   * Lets the cards that are in sight go on. Those that there is no time for have their turn in the next frame, and at
   * most one starts in each, so that the first ones move while the others are being made.
   */
  advance(seconds) {
    this.stage.resize(width, height);
    const end = performance.now() + millisecondsPerFrame;
    const cards = this.cards.filter((card) => card.visible && card.started);
    for (const card of cards) card.waiting += seconds;
    for (let drawn = 0; drawn < cards.length && performance.now() < end; ++drawn) {
      cards[this.next++ % cards.length].advance(this.stage);
    }
    this.cards.find((card) => card.visible && !card.started)?.advance(this.stage);
  }
}

class Card {
  constructor(entry, scene) {
    this.scene = scene;
    this.visible = false;
    this.started = false;
    this.waiting = 0; // seconds that have passed since it was drawn
    this.link = document.createElement('a');
    this.link.className = 'card';
    this.link.href = '#' + entry.name;
    this.link.dataset.scene = scene;
    const canvas = document.createElement('canvas');
    canvas.width = width;
    canvas.height = height;
    this.picture = canvas.getContext('2d', { alpha: false });
    const text = document.createElement('div');
    const title = document.createElement('h2');
    title.textContent = entry.title;
    const sentence = document.createElement('p');
    sentence.textContent = entry.sentence;
    text.append(title, sentence);
    this.link.append(canvas, text);
  }

  advance(stage) {
    this.started = true;
    if (stage.advance(this.scene, this.waiting)) this.picture.drawImage(stage.canvas, 0, 0);
    this.waiting = 0;
  }
}
