// The part of the address after "#": a scene's name and what differs from how the scene begins, as in
// "#water&preset=storm&rain=20&seed=7&ground=night". Without a scene it names the gallery.

import { changedParameters, closestPreset, presetValues } from './presets.js';

const largestSeed = 2 ** 32 - 1;

export function initialValues({ parameters }) {
  return Object.fromEntries(parameters.map(({ name, initial }) => [name, initial]));
}

/**
 * What the address shows; whatever it leaves out, or says in a way that is not understood, is as the scene begins.
 * @param scenes   of the stage
 * @param grounds  names that may be given
 * @return scene: its index, -1 for the gallery; values: all its settings by name; seed: a whole number, at first 1;
 *   ground: a name, '' for the scene's own
 */
export function readAddress(hash, scenes, grounds) {
  const [name, ...settings] = hash.replace(/^#/, '').split('&');
  const scene = scenes.findIndex((entry) => entry.name === name);
  if (scene < 0) return { scene, values: {}, seed: 1, ground: '' };
  const entry = scenes[scene];
  const texts = new Map(settings.map((setting) => setting.split('=')));
  const preset = entry.presets.find((candidate) => candidate.name === texts.get('preset'));
  const values = preset ? presetValues(entry, preset) : initialValues(entry);
  for (const { name: key, minimum, maximum, choices } of entry.parameters) {
    values[key] = numberIn(texts.get(key), minimum, maximum, choices.length > 0) ?? values[key];
  }
  const ground = grounds.includes(texts.get('ground')) ? texts.get('ground') : '';
  return { scene, values, seed: numberIn(texts.get('seed'), 0, largestSeed, true) ?? 1, ground };
}

/** The nearest number in the range; undefined where the text is none. */
function numberIn(text, minimum, maximum, isWhole) {
  const value = Number.parseFloat(text);
  if (!Number.isFinite(value)) return undefined;
  return Math.min(maximum, Math.max(minimum, isWhole ? Math.round(value) : value));
}

/** The address of a scene, so that readAddress() gives the same values, seed and ground. */
export function writeAddress(entry, { values, seed, ground }) {
  const initial = initialValues(entry);
  const settings = [];
  if (changedParameters(entry, values, initial).length > 0) {
    const preset = closestPreset(entry, values);
    const base = presetValues(entry, preset);
    if (changedParameters(entry, base, initial).length > 0) settings.push(`preset=${preset.name}`);
    settings.push(...changedParameters(entry, values, base).map(({ name }) => `${name}=${values[name]}`));
  }
  if (seed !== 1) settings.push(`seed=${seed}`);
  if (ground !== '') settings.push(`ground=${ground}`);
  return '#' + [entry.name, ...settings].join('&');
}
