#pragma once

#include <android/log.h>

namespace tidalume {

/// Tag of the messages of the diagnostics and of the program builder. An effect's own messages carry its class name.
inline constexpr char logTag[] = "EGLUtils";

} // namespace tidalume
