#pragma once

#include <dlfcn.h>

/// The driver's own function of this name, for who stands in front of it.
// NOLINTNEXTLINE(bugprone-macro-parentheses): a name in decltype
#define DRIVERS_OWN(function) reinterpret_cast<decltype(&function)>(dlsym(RTLD_NEXT, #function))
