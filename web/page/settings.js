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
    const { name, label: title, sentence } = parameter;
    const row = document.createElement('div');
    row.className = 'setting';
    const label = document.createElement('label');
    label.htmlFor = `set-${name}`;
    label.textContent = title;
    const says = document.createElement('p');
    says.id = `says-${name}`;
    says.textContent = sentence;
    const control = document.createElement(parameter.choices.length > 0 ? 'select' : 'input');
    control.id = label.htmlFor;
    control.name = name;
    control.setAttribute('aria-describedby', says.id);
    row.append(label, control, says);
    if (parameter.choices.length > 0) {
      this.#fillList(control, parameter, value);
    } else {
      label.after(this.#fillSlider(control, parameter, value));
    }
    return row;
  }

  #fillList(list, { name, choices }, value) {
    list.append(...choices.map((choice, index) => new Option(choice, index)));
    list.selectedIndex = value;
    list.addEventListener('change', () => this.changed(name, list.selectedIndex));
  }

  /** Returns the number beside it, which the slider itself says to readers of screens. */
  #fillSlider(slider, parameter, value) {
    const { name, unit, minimum: min, maximum: max } = parameter;
    const number = document.createElement('span');
    number.ariaHidden = 'true';
    const step = stepOf(parameter);
    Object.assign(slider, { type: 'range', min, max, step, value });
    const decimals = Math.max(0, -Math.floor(Math.log10(step)));
    const print = () => {
      number.textContent = `${slider.valueAsNumber.toFixed(decimals)} ${unit}`;
      slider.ariaValueText = number.textContent;
    };
    slider.addEventListener('input', () => {
      print();
      this.changed(name, slider.valueAsNumber);
    });
    print();
    return number;
  }
}

/** The power of ten that divides the range into 50 to 500 steps; 1 for counts. */
function stepOf({ minimum, maximum, initial }) {
  const isCount = [minimum, maximum, initial].every(Number.isInteger) && maximum - minimum >= 4;
  return isCount ? 1 : 10 ** Math.floor(Math.log10((maximum - minimum) / 50));
}
