import assert from 'node:assert/strict';
import { test } from 'node:test';

import { Pace } from '../../web/page/pace.js';

let now = 0;
performance.now = () => now;

/** The scales of all frames that are drawn in that time, each of which takes as long as millisecondsAt(scale) says. */
function scalesOf(pace, seconds, millisecondsAt, isHeld = false) {
  const scales = [];
  for (const end = now + 1000 * seconds; now < end; now += millisecondsAt(pace.scale)) {
    const { scale } = pace;
    pace.tick(isHeld);
    if (pace.scale !== scale) pace.restart(); // since the canvas gets another size
    scales.push(pace.scale);
  }
  return scales;
}

test('the resolution is the finest that comes in time', () => {
  const display = (milliseconds) => () => milliseconds;
  for (const milliseconds of [8, 17, 33]) {
    const pace = new Pace();
    assert.deepEqual(new Set(scalesOf(pace, 10, display(milliseconds))), new Set([1]));
    assert.equal(pace.framesPerSecond, Math.round(1000 / milliseconds));
    assert.equal(scalesOf(pace, 3, display(60), true).at(-1), 1, 'it does not change under fingers');
    assert.equal(scalesOf(pace, 6, display(60)).at(-1), 0.5);
    assert.deepEqual(new Set(scalesOf(pace, 60, display(60))), new Set([0.5]), 'it is late whatever it draws');
    assert.equal(scalesOf(pace, 60, display(milliseconds)).at(-1), 1, `${milliseconds} ms: it does not come back`);
  }
});

test('a machine that is too slow is tried again, ever more seldom but not never', () => {
  const pace = new Pace();
  const tries = (seconds) => scalesOf(pace, seconds, (scale) => (scale === 1 ? 50 : 17))
    .filter((scale, index, scales) => scale === 1 && scales[index - 1] < 1).length;
  const first = tries(60);
  tries(480);
  const tenth = tries(60);
  assert.ok(first <= 8 && tenth >= 1 && tenth <= 3, `${first} tries in the first minute, ${tenth} in the tenth`);
});
