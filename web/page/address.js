// The part of the address after "#": a scene's name and the settings that differ from their initial values, as in
// "#metaballs&radius=1.2". Without a scene it names the gallery.

export function initialValues({ parameters }) {
  return Object.fromEntries(parameters.map(({ name, initial }) => [name, initial]));
}

/**
 * The scene (its index in the table, -1 for the gallery) and all its settings by name. Settings that the address leaves
 * out have their initial values. Unknown names are ignored.
 */
export function readAddress(hash, scenes) {
  const [name, ...settings] = hash.replace(/^#/, '').split('&');
  const scene = scenes.findIndex((entry) => entry.name === name);
  if (scene < 0) return { scene, values: {} };
  const values = initialValues(scenes[scene]);
  for (const [key, text] of settings.map((setting) => setting.split('='))) {
    const parameter = scenes[scene].parameters.find((candidate) => candidate.name === key);
    const value = Number.parseFloat(text);
    if (!parameter || !Number.isFinite(value)) continue;
    const whole = parameter.choices.length > 0 ? Math.round(value) : value;
    values[key] = Math.min(parameter.maximum, Math.max(parameter.minimum, whole));
  }
  return { scene, values };
}

export function writeAddress(entry, values) {
  const changed = entry.parameters.filter(({ name, initial }) => values[name] !== initial);
  return '#' + [entry.name, ...changed.map(({ name }) => `${name}=${values[name]}`)].join('&');
}
