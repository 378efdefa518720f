// What shows while the effects are loading and where they do not: the poster of a linked effect, how much is there, and
// what to do. It needs no other script.

const part = (id) => document.getElementById(id);

// As long as there is no page that answers.
function showLinked() {
  const name = location.hash.slice(1).split('&')[0];
  const isScene = document.querySelector(`.card[data-scene="${CSS.escape(name)}"]`) !== null;
  part('landing').hidden = isScene;
  part('view').hidden = !isScene;
  if (isScene) part('poster').src = `posters/${name}.webp`;
  part(isScene ? 'frame' : 'words').append(part('failure'));
}

function showFailure(error) {
  part('failure').hidden = false;
  part('failure').querySelector('p').textContent = error.name === 'Unsupported' ? error.message :
    `The effects did not load: ${error.message} Please check the connection and try again.`;
  part('again').addEventListener('click', () => location.reload());
}

async function start() {
  let hasFollowed = false; // a link of the page
  const follow = () => {
    hasFollowed = true;
    showLinked();
  };
  addEventListener('hashchange', follow);
  showLinked();
  try {
    const { openPage } = await import('./main.js');
    await openPage((bytes) => { part('loading').value = bytes; });
    removeEventListener('hashchange', follow);
    if (hasFollowed) document.querySelector('#frame canvas')?.focus({ preventScroll: true });
  } catch (error) {
    showFailure(error);
  } finally {
    part('loading').hidden = true;
  }
}

start();
