import assert from 'node:assert/strict';
import { test } from 'node:test';

import { readAddress, writeAddress } from '../../web/page/address.js';

const grounds = ['sand', 'night'];
const scenes = [{
  name: 'pond',
  parameters: [
    { name: 'kind', minimum: 0, maximum: 2, initial: 1, choices: ['brook', 'pond', 'lake'] },
    { name: 'depth', minimum: -1, maximum: 0.5, initial: 0.07, choices: [] },
    { name: 'rain', minimum: 0, maximum: 60, initial: 0, choices: [] },
  ],
  presets: [
    { name: 'clear', values: [0, 0.07, 0] },
    { name: 'calm', values: [1, 0.07, 0] },
    { name: 'storm', values: [2, 0.2, 45] },
  ],
}];

// [as it is opened, as it is written back: where both are the same, the second is left out]
const addresses = [
  ['#pond'],
  ['#pond&depth=0.1'],
  ['#pond&preset=storm&rain=20&seed=7&ground=night'],
  ['#pond&seed=4294967295'],
  ['#pond&kind=2&depth=0.2&rain=45', '#pond&preset=storm'],
  ['#pond&kind=0', '#pond&preset=clear'],
  ['#pond&depth=-1.5&seed=-3', '#pond&depth=-1&seed=0'],
  ['#pond&rain=61&seed=1e99', '#pond&rain=60&seed=4294967295'],
  ['#pond&rain=1&rain=2', '#pond&rain=2'],
  ['#pond&kind=1.4&depth=lots&rain&=&&rain=Infinity&seed=NaN&seed2=1', '#pond'],
  ['#pond&preset=toString&ground=length&__proto__=3&constructor=4', '#pond'],
];

test('an address comes back as it was, within all bounds and without junk', () => {
  for (const [opened, written = opened] of addresses) {
    const shown = readAddress(opened, scenes, grounds);
    assert.equal(writeAddress(scenes[shown.scene], shown), written);
    assert.deepEqual(readAddress(written, scenes, grounds), shown);
  }
  for (const hash of ['', '#', '#lake&rain=3', '#Pond', '#&pond']) {
    assert.deepEqual(readAddress(hash, scenes, grounds), { scene: -1, values: {}, seed: 1, ground: '' });
  }
});
