#pragma once

#include <dlfcn.h>

/// The driver's own function of this name. A function that replaces it calls this one.
// NOLINTNEXTLINE(bugprone-macro-parentheses): a name in decltype
#define DRIVERS_OWN(function) reinterpret_cast<decltype(&function)>(dlsym(RTLD_NEXT, #function))
