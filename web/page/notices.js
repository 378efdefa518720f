import { Unsupported } from './stage.js';

const part = (id) => document.getElementById(id);

/** Copies a text and says so with the words `done`. */
export async function copy(text, done) {
  try {
    await navigator.clipboard.writeText(text);
    showMessage(done);
  } catch {
    showMessage('This browser lets no page copy. Please select the text and copy it, or the address of this page.');
  }
}

/** Shows a text for some seconds. */
export function showMessage(text) {
  part('message').textContent = text;
  clearTimeout(showMessage.timer);
  showMessage.timer = setTimeout(() => { part('message').textContent = ''; }, 4000);
}

/** Shows how much of the module is there; as for Stage.create(). */
export function showLoaded(bytes, total) {
  const bar = part('loading');
  if (total > 0) Object.assign(bar, { max: total, value: bytes });
}

/** Says on the landing what the error is and what to do. */
export function showFailure(error) {
  part('view').hidden = true;
  part('landing').hidden = false;
  part('failure').hidden = false;
  part('failure').querySelector('p').textContent = error instanceof Unsupported ? error.message :
    `The effects did not load: ${error.message} Please check the connection and try again.`;
  part('again').addEventListener('click', () => location.reload());
}
