#pragma once

#include <android/log.h>

namespace tidalume {

/// Tag of the messages of the diagnostics and of the program builder. An effect's own messages carry its class name.
inline constexpr char logTag[] = "EGLUtils";

/// Writes the line that checkGLError writes for one GL error.
/// @param op  label of the call that raised it, or would have raised it
void logGLError(const char* op, unsigned int error);

} // namespace tidalume
