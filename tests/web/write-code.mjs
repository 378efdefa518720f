// Writes what the page's code tab shows for every scene and preset with some settings at their ends, each in a package
// of its own; and in `expected` what the looks in Java have to be set to.
// usage: write-code.mjs PAGE_DIR OUT_DIR, which has the folders

import { readFileSync, writeFileSync } from 'node:fs';
import { resolve } from 'node:path';

const [page, out] = process.argv.slice(2).map((path) => resolve(path));
const { codeFor, languages } = await import(`${page}/code.js`);
const { presetValues } = await import(`${page}/presets.js`);
const { default: createModule } = await import(`${page}/tidalume.js`);
const module = await createModule({ wasmBinary: readFileSync(`${page}/tidalume.wasm`) });
const scenes = JSON.parse(module.UTF8ToString(module._stageScenes()));

/** Some settings at their ends and others as the preset has them: in three variants each is once at either end. */
function valuesOf(entry, preset, variant) {
  const values = presetValues(entry, preset);
  entry.parameters.forEach(({ name, minimum, maximum, choices }, index) => {
    const end = (index + variant) % 3;
    if (choices.length > 0) values[name] = variant % choices.length;
    else if (end < 2) values[name] = [minimum, maximum][end];
  });
  return values;
}

const program = (name, isLook) => `
#include "headless/HeadlessContext.h"

int main() {
    headless::HeadlessContext context(90, 160);
    ${name} renderer;
    renderer.contextCreated();
    renderer.setSize(90, 160);
    ${isLook ? `renderer.touch(0, 45, 80, TouchPhase::Down);
    renderer.draw(0);` : 'renderer.draw();'}
}
`;

const expected = [];
let count = 0;

function write(entry, values) {
  const code = Object.fromEntries(languages.map(({ name }) => [name, codeFor(name, entry, values)]));
  const id = `case${count++}`;
  const name = /class (\w+)/.exec(code.java)[1];
  const isLook = entry.name !== 'vector';
  writeFileSync(`${out}/res/layout/${id}.xml`, code.xml);
  writeFileSync(`${out}/${id}.kt`, `package ${id}\nimport snippets.R\n${code.kotlin}`);
  writeFileSync(`${out}/${id}.${name}.java`, `package ${id};\n${code.java}`);
  writeFileSync(`${out}/${id}.cpp`, code.cpp + program(name, isLook));
  if (isLook) expected.push(...Object.entries(values).map(([key, value]) => `${id}.${name} ${key} ${value}\n`));
}

for (const entry of scenes) {
  const variants = Math.max(3, entry.presets.length, ...entry.parameters.map(({ choices }) => choices.length));
  for (let variant = 0; variant < variants; ++variant) {
    write(entry, valuesOf(entry, entry.presets[variant % entry.presets.length], variant));
  }
}
writeFileSync(`${out}/expected`, expected.join(''));
console.log(`write-code: ${count} cases`);
