// What shows a scene with its current settings in an application, as text to copy.

import { changedParameters, closestPreset, presetValues } from './presets.js';

export const languages = [
  { name: 'xml', title: 'XML' },
  { name: 'kotlin', title: 'Kotlin' },
  { name: 'java', title: 'Java' },
  { name: 'cpp', title: 'C++' },
];

// A look `NameLook` for each scene but the last, and its view if it has one.
const effects = {
  water: { name: 'Water', view: 'RippleView', hasPicture: true },
  waves: { name: 'Waves', hasPicture: true },
  pond: { name: 'Water', view: 'RippleView', hasPicture: true },
  metaballs: { name: 'Blobs', view: 'BlobsView' },
  particles: { name: 'Spray', view: 'SprayView' },
  comet: { name: 'Comets', view: 'CometsView' },
  vector: { name: 'Vector' },
};

/**
 * The text of a file: with a view for Android in XML and Kotlin where there is one, otherwise with a renderer.
 * @param language  one of languages, by name
 * @param entry     a scene of the stage
 * @param values    of all its settings, by name; the code takes the closest preset and sets what differs from it
 */
export function codeFor(language, entry, values) {
  const preset = closestPreset(entry, values);
  const settings = {
    preset: preset.name,
    changes: changedParameters(entry, values, presetValues(entry, preset))
      .map(({ name, choices }) => ({ name, choice: choices[values[name]], value: rounded(values[name]) })),
  };
  const effect = effects[entry.name];
  if (language === 'xml') return effect.view ? viewXml(effect, settings) : surfaceXml(effect);
  if (language === 'kotlin' && effect.view) return viewKotlin(effect, settings);
  const dialect = dialects[language];
  const parts = entry.name === 'vector' ? drawingParts(dialect, values) : lookParts(dialect, effect, settings);
  return dialect.renderer(`${effect.name}Renderer`, parts);
}

const capitalized = (name) => name[0].toUpperCase() + name.slice(1);
const constant = (name) => name.replace(/[A-Z]/g, (letter) => `_${letter}`).toUpperCase();
const lines = (indent, texts) => texts.map((text) => `${' '.repeat(indent)}${text}\n`).join('');
const rounded = (value) => Number(value.toPrecision(6)); // as many digits as a float keeps
const float = (value) => `${/[.e]/.test(value) ? value : `${value}.0`}f`;

// ---- Views

/** The attribute of a view for a parameter of its look. */
const attribute = (parameter) => (parameter === 'fieldScale' ? parameter : `effect${capitalized(parameter)}`);

function viewXml({ view, hasPicture }, { preset, changes }) {
  const attributes = [
    'xmlns:app="http://schemas.android.com/apk/res-auto"',
    'android:layout_width="match_parent"',
    'android:layout_height="match_parent"',
    ...(hasPicture ? ['app:src="@drawable/picture"'] : []),
    `app:preset="${preset}"`,
    ...changes.map(({ name, choice, value }) => `app:${attribute(name)}="${choice ?? value}"`),
  ];
  return `<com.vyn.effect.tidalume.views.${view} xmlns:android="http://schemas.android.com/apk/res/android"
${lines(4, attributes).trimEnd()} />
`;
}

const surfaceXml = ({ name }) => `<!-- Kotlin and Java have the renderer for it. -->
<android.opengl.GLSurfaceView xmlns:android="http://schemas.android.com/apk/res/android"
    android:id="@+id/${name.toLowerCase()}"
    android:layout_width="match_parent"
    android:layout_height="match_parent" />
`;

function viewKotlin({ name, view, hasPicture }, { preset, changes }) {
  const look = `${name}Look`;
  const { choiceOf } = dialects.kotlin;
  const calls = [
    ...(hasPicture ? ['view.setPicture(R.drawable.picture)'] : []),
    `view.usePreset(${look}.${constant(preset)})`,
    ...changes.map(({ name: parameter, choice, value }) =>
      `view.set("${parameter}", ${choice ? `${choiceOf(look, parameter, choice)}.ordinal.toFloat()` : float(value)})`),
  ];
  return `import android.app.Activity
import android.os.Bundle
import com.vyn.effect.tidalume.looks.${look}
import com.vyn.effect.tidalume.views.${view}

class ${name}Activity : Activity() {
    override fun onCreate(savedState: Bundle?) {
        super.onCreate(savedState)
        val view = ${view}(this)
${lines(8, calls)}        setContentView(view)
    }
}
`;
}

// ---- Renderers, for a surface of one's own

// The parts of a renderer. Statements stand without what ends them.

function lookParts(dialect, { name, hasPicture }, { preset, changes }) {
  const look = `${name}Look`;
  return {
    uses: dialect.usesLook(look, hasPicture),
    fields: [dialect.instance(look, 'look')],
    setUp: [
      `look.usePreset(${dialect.presetOf(look, preset)})`,
      ...changes.map(({ name: parameter, choice, value }) =>
        `look.set${capitalized(parameter)}(${choice ? dialect.choiceOf(look, parameter, choice) : float(value)})`),
    ],
    created: ['look.contextLost()', 'look.contextCreated()'],
    resized: ['look.setSize(width, height)'],
    picture: hasPicture ? [`look.setPicture(texture, width, height, ${dialect.pictureTop})`] : [],
    drawn: [...(hasPicture ? [] : [dialect.clear]), `look.draw(${dialect.seconds})`],
    touched: ['look.touch(finger, x, y, phase)'],
    isAnimated: true,
  };
}

const colors = {
  glass: [1, 0.95, 0.88, 0.55],
  red: [0.95, 0.12, 0.2, 0.9],
  green: [0.1, 0.85, 0.3, 0.9],
  blue: [0.15, 0.3, 1, 0.9],
};

// By the index of the choice: the equation and the factors of source and destination.
const blends = [
  ['ADD', 'SRC_ALPHA', 'ONE_MINUS_SRC_ALPHA'],
  ['ADD', 'SRC_ALPHA', 'ONE'],
  ['ADD', 'DST_COLOR', 'ZERO'],
  ['ADD', 'ONE', 'ONE_MINUS_SRC_COLOR'],
  ['MAX', 'ONE', 'ONE'],
  ['REVERSE_SUBTRACT', 'SRC_ALPHA', 'ONE'],
];

// A lens, and three lights that are blended as was chosen.
function drawingParts(dialect, { lens, blend }) {
  const setBlend = ([equation, source, destination]) => [
    `graphics.setBlendEquation(${dialect.equationOf(equation)})`,
    `graphics.setBlendFunction(${[source, destination, 'ZERO', 'ONE'].map(dialect.factorOf).join(', ')})`,
  ];
  return {
    uses: dialect.usesGraphics,
    fields: [
      dialect.instance('VectorGraphicRenderer', 'graphics'),
      ...Object.entries(colors).map(([name, color]) => dialect.array(name, color.map(float).join(', '))),
    ],
    setUp: [],
    created: ['graphics.GLContextDestroyed()', 'graphics.init()'],
    resized: ['graphics.setScreenSize(width, height)'],
    picture: [],
    drawn: [
      dialect.clear,
      ...setBlend(blends[0]),
      `graphics.renderCircle(270.0f, 300.0f, ${float(rounded(lens / 2))}, glass)`,
      ...setBlend(blends[blend]),
      'graphics.renderCircle(270.0f, 664.0f, 58.0f, red)',
      'graphics.renderCircle(301.0f, 718.0f, 58.0f, green)',
      'graphics.renderCircle(239.0f, 718.0f, 58.0f, blue)',
    ],
    touched: [],
    isAnimated: false,
  };
}

// What Java and Kotlin have in common.
const android = {
  seconds: 'System.nanoTime() / 1e9',
  clear: 'GLES30.glClear(GLES30.GL_COLOR_BUFFER_BIT)',
  pictureTop: 'PictureTop.FIRST_ROW',
  presetOf: (look, preset) => `${look}.${constant(preset)}`,
  choiceOf: (look, parameter, choice) => `${look}.${capitalized(parameter)}.${constant(choice)}`,
  equationOf: (name) => `EQUATION_${name}`,
  factorOf: (name) => `FACTOR_${name}`,
  usesLook: (look, hasPicture) => [look, 'TouchPhase', ...(hasPicture ? ['PictureTop'] : [])]
    .map((type) => `com.vyn.effect.tidalume.looks.${type}`),
};

const dialects = {
  kotlin: {
    ...android,
    instance: (type, name) => `private val ${name} = ${type}()`,
    array: (name, floats) => `private val ${name} = floatArrayOf(${floats})`,
    usesGraphics: ['com.vyn.effect.tidalume.VectorGraphicRenderer', 'com.vyn.effect.tidalume.VectorGraphicRenderer.*'],
    renderer: rendererKotlin,
  },
  java: {
    ...android,
    instance: (type, name) => `private final ${type} ${name} = new ${type}();`,
    array: (name, floats) => `private final float[] ${name} = {${floats}};`,
    usesGraphics: ['com.vyn.effect.tidalume.VectorGraphicRenderer',
      'static com.vyn.effect.tidalume.VectorGraphicRenderer.*'],
    renderer: rendererJava,
  },
  cpp: {
    seconds: 'seconds',
    clear: 'glClear(GL_COLOR_BUFFER_BIT)',
    pictureTop: 'PictureTop::FirstRow',
    presetOf: (look, preset) => `"${preset}"`,
    choiceOf: (look, parameter, choice) => `${look}::${constant(choice)}`,
    equationOf: (name) => (name === 'MAX' ? 'GL_MAX' : `GL_FUNC_${name}`),
    factorOf: (name) => `GL_${name}`,
    instance: (type, name) => `${type} ${name};`,
    array: (name, floats) => `float ${name}[4] = {${floats}};`,
    usesLook: (look) => `looks/${look}.h`,
    usesGraphics: 'effects/vector/VectorGraphicRenderer.h',
    renderer: rendererCpp,
  },
};

const importLines = ({ uses, drawn }, end) => lines(0, [
  'android.opengl.GLSurfaceView',
  'javax.microedition.khronos.egl.EGLConfig',
  'javax.microedition.khronos.opengles.GL10',
  ...(drawn.includes(android.clear) ? ['android.opengl.GLES30'] : []),
  ...uses,
].sort().map((name) => `import ${name}${end}`));

/** The methods, each a head and statements; those without statements are left out. */
const methods = (rows, end) => rows.filter(([, statements]) => statements.length > 0)
  .map(([head, statements]) => `
    ${head} {
${lines(8, statements.map((statement) => statement + end))}    }
`).join('');

function rendererKotlin(name, parts) {
  return `${importLines(parts, '')}
/** For a GLSurfaceView: call its setEGLContextClientVersion(3), then setRenderer(${name}()). */
class ${name} : GLSurfaceView.Renderer {
${lines(4, parts.fields)}${methods([
    ['init', parts.setUp],
    ['override fun onSurfaceCreated(gl: GL10, config: EGLConfig)', parts.created],
    ['override fun onSurfaceChanged(gl: GL10, width: Int, height: Int)', parts.resized],
    ['override fun onDrawFrame(gl: GL10)', parts.drawn],
    [`/** On the GL thread, for each new context. */
    fun setPicture(texture: Int, width: Int, height: Int)`, parts.picture],
    [`/** On the GL thread: surfaceView.queueEvent { renderer.touch(0, x, y, TouchPhase.DOWN) } */
    fun touch(finger: Int, x: Float, y: Float, phase: TouchPhase)`, parts.touched],
  ], '')}}
`;
}

function rendererJava(name, parts) {
  return `${importLines(parts, ';')}
/** For a GLSurfaceView: call its setEGLContextClientVersion(3), then setRenderer(new ${name}()). */
public final class ${name} implements GLSurfaceView.Renderer {
${lines(4, parts.fields)}${methods([
    [`public ${name}()`, parts.setUp],
    [`@Override
    public void onSurfaceCreated(GL10 gl, EGLConfig config)`, parts.created],
    [`@Override
    public void onSurfaceChanged(GL10 gl, int width, int height)`, parts.resized],
    [`@Override
    public void onDrawFrame(GL10 gl)`, parts.drawn],
    [`/** On the GL thread, for each new context. */
    public void setPicture(int texture, int width, int height)`, parts.picture],
    [`/** On the GL thread: surfaceView.queueEvent(() -> renderer.touch(0, x, y, TouchPhase.DOWN)); */
    public void touch(int finger, float x, float y, TouchPhase phase)`, parts.touched],
  ], ';')}}
`;
}

function rendererCpp(name, parts) {
  return `#include "${parts.uses}"

using namespace tidalume;

/// On the thread where your OpenGL ES 3.0 context is current.
class ${name} {
  public:${methods([
    [`${name}()`, parts.setUp],
    ['void contextCreated()', parts.created],
    ['void setSize(int width, int height)', parts.resized],
    [`void draw(${parts.isAnimated ? 'double seconds' : ''})`, parts.drawn],
    [`/// For each new context.
    void setPicture(GLuint texture, int width, int height)`, parts.picture],
    ['void touch(int finger, float x, float y, TouchPhase phase)', parts.touched],
  ], ';')}
  private:
${lines(4, parts.fields)}};
`;
}
