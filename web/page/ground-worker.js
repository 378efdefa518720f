// Draws grounds, which takes longer than a frame has time for.

import createModule from './tidalume.js';

const module = createModule();

async function drawGround(ground, width, height) {
  const effects = await module;
  const address = effects._stageDrawGround(ground, width, height); // may replace HEAPU8 by a larger one
  return effects.HEAPU8.slice(address, address + 4 * width * height);
}

/** The middle part of a picture, scaled to cover the size, over black. */
function coverFit(picture, width, height) {
  const context = new OffscreenCanvas(width, height).getContext('2d', { alpha: false, willReadFrequently: true });
  const scale = Math.max(width / picture.width, height / picture.height);
  const [coveredWidth, coveredHeight] = [scale * picture.width, scale * picture.height];
  context.imageSmoothingQuality = 'high';
  context.drawImage(picture, (width - coveredWidth) / 2, (height - coveredHeight) / 2, coveredWidth, coveredHeight);
  return context.getImageData(0, 0, width, height).data;
}

// Which the page hears of as an error then.
addEventListener('unhandledrejection', ({ reason }) => { throw reason; });

addEventListener('message', async ({ data: { number, width, height, ground, picture } }) => {
  const drawn = picture ? coverFit(picture, width, height) : await drawGround(ground, width, height);
  const pixels = new Uint8ClampedArray(drawn.buffer);
  postMessage({ number, pixels }, [pixels.buffer]);
});
