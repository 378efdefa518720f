import { Grounds } from './grounds.js';

/** The effects cannot run here. The message is for the visitor. */
class Unsupported extends Error {
  name = 'Unsupported';
}

/**
 * Players of the scenes, which take turns on one WebGL canvas. A scene is named by its index in `scenes`, a player by a
 * number; each scene's first player has the scene's own.
 */
export class Stage {
  /**
   * Throws Unsupported where the browser lacks what the effects need.
   * @param {HTMLCanvasElement} canvas  without a context
   * @param loaded  called with how many bytes of the module are there
   */
  static async create(canvas, loaded = () => {}) {
    const binary = fetchBytes(new URL('tidalume.wasm', import.meta.url), loaded); // while the browser makes the context
    const settings = { alpha: false, antialias: false, depth: false, stencil: false };
    const gl = canvas.getContext('webgl2', settings);
    if (!gl) {
      throw new Unsupported('This browser does not offer WebGL 2, with which the effects are drawn. ' +
        'A current browser does; graphics acceleration may have to be switched on in its settings.');
    }
    if (!gl.getExtension('EXT_color_buffer_float') && !gl.getExtension('EXT_color_buffer_half_float')) {
      throw new Unsupported('The graphics driver of this device cannot draw into floating-point textures ' +
        '(EXT_color_buffer_float or EXT_color_buffer_half_float), in which the effects keep their waves.');
    }
    if (!globalThis.WebAssembly) {
      throw new Unsupported('This browser does not run WebAssembly, or has it switched off, as a strict safety mode ' +
        'does. Please allow it for this page.');
    }
    const { default: createModule } = await import('./tidalume.js'); // here, so that the visitor is told where it fails
    return new Stage(canvas, gl, await createModule({ wasmBinary: await binary }));
  }

  constructor(canvas, gl, module) {
    this.canvas = canvas;
    this.gl = gl;
    this.module = module;
    this.lost = false;
    this.scenes = JSON.parse(module.UTF8ToString(module._stageScenes()));
    this.grounds = new Grounds(module, (player) => this.sceneOf[player].ground);
    this.sceneOf = []; // by player
    this.driver = gl.getParameter(gl.getExtension('WEBGL_debug_renderer_info')?.UNMASKED_RENDERER_WEBGL ?? gl.RENDERER);
    this.#registerContext();
    canvas.addEventListener('webglcontextlost', (event) => {
      event.preventDefault(); // otherwise it is never restored
      this.lost = true;
      module._stageContextLost();
    });
    canvas.addEventListener('webglcontextrestored', () => {
      module.GL.deleteContext(this.context);
      this.#registerContext();
      this.lost = false;
    });
  }

  // What emscripten holds for a context (buffers, extensions) goes with it, so each context is registered anew.
  #registerContext() {
    this.context = this.module.GL.registerContext(this.gl, { majorVersion: 2, minorVersion: 0 });
    this.module.GL.makeContextCurrent(this.context);
  }

  /** Starts a player of a scene, or starts it anew. */
  start(player, seed, scene = player) {
    this.sceneOf[player] = this.scenes[scene];
    this.module._stageStart(player, scene, seed);
  }

  set(player, name, value) {
    this.module.ccall('stageSet', null, ['number', 'string', 'number'], [player, name, value]);
  }

  /**
   * @param phase   'down', 'move', 'up' or 'cancel'
   * @param x, y    in pixels of the player, from the upper left
   * @param finger  from 0
   */
  touch(player, phase, x, y, finger) {
    this.module._stageTouch(player, x, y, ['down', 'move', 'up', 'cancel'].indexOf(phase), finger);
  }

  /**
   * Makes a player fill the lower left width x height pixels of the canvas.
   * @return whether something was new, so that this took its time and a frame is due
   */
  fit(player, width, height) {
    if (this.#isLost()) return false;
    this.grounds.fit(player, width, height);
    return Boolean(this.module._stageFit(player, width, height));
  }

  /** Whether advance() by a time in seconds would draw. */
  isDue(player, seconds) {
    return Boolean(this.module._stageIsDue(player, seconds));
  }

  /** Advances a player that fits by a time in seconds. Returns how many steps that were; 0 leaves the picture. */
  advance(player, seconds) {
    return this.#isLost() ? 0 : this.module._stageAdvance(player, seconds);
  }

  /** Draws a player's next step, on the whole canvas. */
  step(player) {
    this.fit(player, this.canvas.width, this.canvas.height);
    this.module._stageStep(player);
  }

  /** Sets the size of the canvas in pixels. The same size leaves the picture as it is. */
  resize(width, height) {
    if (this.canvas.width !== width) this.canvas.width = width;
    if (this.canvas.height !== height) this.canvas.height = height;
  }

  #isLost() {
    return this.lost || this.gl.isContextLost();
  }
}

async function fetchBytes(url, loaded) {
  const response = await fetch(url);
  if (!response.ok) throw new Error(`${url.pathname} was not found (${response.status}).`);
  const chunks = [];
  let length = 0;
  const reader = response.body.getReader();
  for (let part = await reader.read(); !part.done; part = await reader.read()) {
    chunks.push(part.value);
    length += part.value.length;
    loaded(length);
  }
  return new Blob(chunks).arrayBuffer();
}
