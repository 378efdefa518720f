import { codeFor, languages } from './code.js';

/** The lines that show the scene with its settings in an application. */
export class CodeTab {
  /** @param element  that holds a list of languages, the text and a button to copy it */
  constructor(element) {
    this.text = element.querySelector('code');
    this.list = element.querySelector('select');
    this.list.append(...languages.map(({ name, title }) => new Option(title, name)));
    this.list.addEventListener('change', () => this.#print());
  }

  show(entry, values) {
    this.entry = entry;
    this.values = values;
    this.#print();
  }

  #print() {
    this.text.textContent = codeFor(this.list.value, this.entry, this.values);
  }
}
