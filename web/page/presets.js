/** The settings of a scene by name, as a preset of its has them. */
export function presetValues({ parameters }, { values }) {
  return Object.fromEntries(parameters.map(({ name }, index) => [name, values[index]]));
}

/** The parameters whose values differ. */
export function changedParameters({ parameters }, values, base) {
  return parameters.filter(({ name }) => values[name] !== base[name]);
}

/** The preset that has exactly these values; undefined where none has. */
export function presetOf(entry, values) {
  return entry.presets.find((preset) => changedParameters(entry, values, presetValues(entry, preset)).length === 0);
}

/** The preset from which the fewest values differ; of several, the first. */
export function closestPreset(entry, values) {
  const changes = entry.presets.map((preset) => changedParameters(entry, values, presetValues(entry, preset)).length);
  return entry.presets[changes.indexOf(Math.min(...changes))];
}
