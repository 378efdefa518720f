const width = 270;
const height = 360;
const frameBudget = 10; // milliseconds of each frame of the page that the thumbnails may take

/** A grid of cards, each a link with a live picture of its scene. */
export class Gallery {
  constructor(element, stage) {
    this.stage = stage;
    this.cards = stage.scenes.map((entry, scene) => new Card(entry, scene));
    this.next = 0; // index of the next card to advance
    const observer = new IntersectionObserver((changes) => {
      for (const { target, isIntersecting } of changes) this.cards[target.dataset.scene].visible = isIntersecting;
    }, { rootMargin: '80px' });
    for (const card of this.cards) {
      element.append(card.link);
      observer.observe(card.link);
    }
  }

  /**
   * Advances the cards that are in sight. Cards for which no time is left have their turn in the next frame. At most
   * one card starts in each frame, so that the first ones move while the others are being made.
   */
  advance(seconds) {
    this.stage.resize(width, height);
    const end = performance.now() + frameBudget;
    const cards = this.cards.filter((card) => card.visible && card.started);
    for (const card of cards) card.elapsed += seconds;
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
    this.elapsed = 0; // seconds since it was drawn
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
    if (stage.advance(this.scene, this.elapsed)) this.picture.drawImage(stage.canvas, 0, 0);
    this.elapsed = 0;
  }
}
