/**
 * GPU effects for Android: water that ripples over a picture, blobs that merge, comets that chase a touch, discs,
 * gradients and masked bitmaps, drawn with OpenGL ES 3.0.
 *
 * <p><b>Threads.</b> Create effects anywhere; call everything else on the GL thread with the context current.
 *
 * <p><b>Life of an effect.</b> {@code new}, {@code init}, {@code setScreenSize}, then its drawing calls in every frame,
 * and {@code close} at the end. When the GL context is lost, call {@code GLContextDestroyed} on <em>every</em> object
 * first, then {@code init} and {@code setScreenSize} on every object: objects of one class share their programs, so an
 * object that is told late would forget what another has just built.
 *
 * <p><b>GL state.</b> Vertices come from native memory, so vertex array 0 must be bound and no buffer object may be.
 * Effects leave program 0 bound; textures that they hand out are named by {@code int}s, as in {@code GLES30}.
 *
 * <p><b>Errors.</b> A null array throws {@link java.lang.NullPointerException}; an array too short or a size below 1
 * {@link java.lang.IllegalArgumentException}; {@code init} where no GL context is current on the thread, a call after
 * {@code close}, or a drawing call before {@code init} and {@code setScreenSize},
 * {@link java.lang.IllegalStateException}; {@code new} without native memory {@link java.lang.OutOfMemoryError}. GL's
 * own errors and shader messages are in the Android log.
 */
package com.vyn.effect.tidalume;
