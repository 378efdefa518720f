// The part of the address after "#": the scene's name and the settings that differ from their initial values,
// as in "#metaballs&radius=1.2". Without a scene it is the gallery.

/** The scene (its place in the table, -1 for the gallery) and the settings by name; what is unknown is left out. */
export function readAddress(hash, scenes) {
  const [name, ...settings] = hash.replace(/^#/, '').split('&');
  const scene = scenes.findIndex((entry) => entry.name === name);
  const values = {};
  for (const [key, text] of settings.map((setting) => setting.split('='))) {
    const parameter = scenes[scene]?.parameters.find((candidate) => candidate.name === key);
    const value = Number.parseFloat(text);
    if (!parameter || !Number.isFinite(value)) continue;
    values[key] = Math.min(parameter.maximum, Math.max(parameter.minimum, value));
  }
  return { scene, values };
}

export function writeAddress(entry, values) {
  const changed = entry.parameters.filter(({ name, initial }) => values[name] !== initial);
  return '#' + [entry.name, ...changed.map(({ name }) => `${name}=${values[name]}`)].join('&');
}
