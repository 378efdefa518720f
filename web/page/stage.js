import createModule from './tidalume.js';

/** The effects cannot run here. The message is for the visitor. */
export class Unsupported extends Error {}

const maxBackgroundSide = 2048;

/** The scenes, which take turns on one WebGL canvas. A scene is named by its index in `scenes`. */
export class Stage {
  /**
   * Throws Unsupported where the browser lacks what the effects need.
   * @param {HTMLCanvasElement} canvas  without a context
   */
  static async create(canvas) {
    const module = createModule(); // fetched while the browser makes the context
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
    return new Stage(canvas, gl, await module);
  }

  constructor(canvas, gl, module) {
    this.canvas = canvas;
    this.gl = gl;
    this.module = module;
    this.lost = false;
    this.scenes = JSON.parse(module.UTF8ToString(module._stageScenes()));
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

  /** Starts a scene, or starts it anew. */
  start(scene, seed) {
    this.module._stageStart(scene, seed);
  }

  set(scene, name, value) {
    this.module.ccall('stageSet', null, ['number', 'string', 'number'], [scene, name, value]);
  }

  /** @param phase  'down', 'move', 'up' or 'cancel';  x, y in pixels of the canvas from the upper left;  pointer from 0 */
  touch(scene, phase, x, y, pointer) {
    this.module._stageTouch(scene, x, y, ['down', 'move', 'up', 'cancel'].indexOf(phase), pointer);
  }

  /** Advances a scene by a time in seconds. Returns whether the canvas shows a new picture. */
  advance(scene, seconds) {
    if (this.lost || this.gl.isContextLost()) return false;
    return this.module._stageAdvance(scene, this.canvas.width, this.canvas.height, seconds) > 0;
  }

  /** Draws the scene's next step. */
  step(scene) {
    this.module._stageStep(scene, this.canvas.width, this.canvas.height);
  }

  /** Sets the size of the canvas in pixels. The same size leaves the picture as it is. */
  resize(width, height) {
    if (this.canvas.width !== width) this.canvas.width = width;
    if (this.canvas.height !== height) this.canvas.height = height;
  }

  /** Shows a picture file in the scenes that have a background. Throws if the browser cannot read the file. */
  async showBackground(file) {
    const bitmap = await createImageBitmap(file);
    const scale = Math.min(1, maxBackgroundSide / Math.max(bitmap.width, bitmap.height));
    const width = Math.max(1, Math.round(bitmap.width * scale));
    const height = Math.max(1, Math.round(bitmap.height * scale));
    const context = new OffscreenCanvas(width, height).getContext('2d', { willReadFrequently: true });
    context.imageSmoothingQuality = 'high';
    context.drawImage(bitmap, 0, 0, width, height);
    bitmap.close();
    const address = this.module._stageBackground(width, height);
    this.module.HEAPU8.set(context.getImageData(0, 0, width, height).data, address);
    this.module._stageUseBackground();
  }

  showOwnGrounds() {
    this.module._stageBackground(0, 0);
    this.module._stageUseBackground();
  }
}
