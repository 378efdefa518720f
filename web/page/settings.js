/** A slider for each parameter of a scene. */
export class Settings {
  /** @param changed  called with (name, value) when a person moves a slider */
  constructor(form, changed) {
    this.form = form;
    this.changed = changed;
  }

  show(parameters, values) {
    this.form.replaceChildren(...parameters.map((parameter) => this.#row(parameter, values[parameter.name])));
  }

  #row(parameter, value) {
    const label = document.createElement('label');
    const output = document.createElement('output');
    const slider = document.createElement('input');
    const step = stepOf(parameter);
    Object.assign(slider, {
      type: 'range', name: parameter.name, min: parameter.minimum, max: parameter.maximum, step, value,
    });
    const decimals = Math.max(0, -Math.floor(Math.log10(step)));
    const print = () => { output.textContent = slider.valueAsNumber.toFixed(decimals); };
    slider.addEventListener('input', () => {
      print();
      this.changed(parameter.name, slider.valueAsNumber);
    });
    print();
    label.append(parameter.label, output, slider);
    return label;
  }
}

/** The power of ten that divides the range into 50 to 500 steps; 1 for counts. */
function stepOf({ minimum, maximum, initial }) {
  const isCount = [minimum, maximum, initial].every(Number.isInteger) && maximum - minimum >= 4;
  return isCount ? 1 : 10 ** Math.floor(Math.log10((maximum - minimum) / 50));
}
