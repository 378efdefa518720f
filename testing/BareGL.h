#pragma once

#include <cstddef>

/// A GL that answers only what every GL must. It draws nothing and keeps no pixels, leaves limits, errors and the
/// framebuffer status unanswered, and gives uniforms and attributes locations of its own, whatever the shaders' text
/// asks for. A draw reads every vertex and index that it is given, so that sanitizers see what lies outside.
///
/// It stands in for the driver where it is linked before the driver's library, or where the recorder is told its file.
/// One context for the process. It ends the process where a draw needs an array that is not enabled, and where a call
/// uses or asks a program that is none.
extern "C" {
/// Begins a new context.
void bareGLReset();

/// How many textures, framebuffers, shaders and programs the context has made and not deleted.
std::size_t bareGLLiveObjects();
}
