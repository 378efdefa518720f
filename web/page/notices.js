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

