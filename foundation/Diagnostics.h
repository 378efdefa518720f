#pragma once

/// Diagnostics of OpenGL ES and EGL. They touch only the state of the calling thread and create no GL object. All of
/// them but printEGLConfiguration write to the Android log under the tag "EGLUtils" with priority ANDROID_LOG_ERROR.
/// Labels must not be null.

/// The name of an EGL error code, "EGL_SUCCESS" (0x3000) to "EGL_CONTEXT_LOST" (0x300E), or "UNKNOWN". A static string.
const char* stringEGLError(int error);

/// Logs and clears every pending GL error, oldest first. Logs nothing when there is none.
/// @param op  label of the call just made, printed as "after op() glError ..."
void checkGLError(const char* op);

/// Logs a failed EGL call, then logs and clears every pending EGL error.
/// @param op         label of the call just made
/// @param returnVal  the EGLBoolean that the call returned; any value but EGL_TRUE is logged
void checkEGLError(const char* op, unsigned int returnVal);

/// Logs one string of glGetString as "GL name = value".
/// @param name  label to print
/// @param s     the GL enum to query: GL_VENDOR, GL_RENDERER, GL_VERSION, GL_EXTENSIONS, ...
void printGLString(const char* name, unsigned int s);

/// Prints the attributes of an EGL configuration to standard output, as one line of " NAME: decimal (0xhex)" entries.
/// Attributes that cannot be read are left out: all of them where an argument is null.
/// @param display  an EGLDisplay
/// @param config   an EGLConfig of that display
void printEGLConfiguration(void* display, void* config);
