/** A control for each parameter of a scene: a slider, or a list of choices. */
export class Settings {
  /** @param changed  called with (name, value) when a person changes one */
  constructor(form, changed) {
    this.form = form;
    this.changed = changed;
  }

  show(parameters, values) {
    this.form.replaceChildren(...parameters.map((parameter) => this.#row(parameter, values[parameter.name])));
  }

  #row(parameter, value) {
    const label = document.createElement('label');
    const controls = parameter.choices.length > 0 ? this.#list(parameter, value) : this.#slider(parameter, value);
    label.title = parameter.unit ? `${parameter.sentence} In ${parameter.unit}.` : parameter.sentence;
    label.append(parameter.label, ...controls);
    return label;
  }

  #list({ name, choices }, value) {
    const list = document.createElement('select');
    list.name = name;
    list.append(...choices.map((choice, index) => new Option(choice, index)));
    list.selectedIndex = value;
    list.addEventListener('change', () => this.changed(name, list.selectedIndex));
    return [list];
  }

  #slider(parameter, value) {
    const { name, minimum: min, maximum: max } = parameter;
    const output = document.createElement('output');
    const slider = document.createElement('input');
    const step = stepOf(parameter);
    Object.assign(slider, { type: 'range', name, min, max, step, value });
    const decimals = Math.max(0, -Math.floor(Math.log10(step)));
    const print = () => { output.textContent = slider.valueAsNumber.toFixed(decimals); };
    slider.addEventListener('input', () => {
      print();
      this.changed(name, slider.valueAsNumber);
    });
    print();
    return [output, slider];
  }
}

/** The power of ten that divides the range into 50 to 500 steps; 1 for counts. */
function stepOf({ minimum, maximum, initial }) {
  const isCount = [minimum, maximum, initial].every(Number.isInteger) && maximum - minimum >= 4;
  return isCount ? 1 : 10 ** Math.floor(Math.log10((maximum - minimum) / 50));
}
