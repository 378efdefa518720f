// The fuzzer's context on a real driver, in the place of the bare GL.

#include "headless/HeadlessContext.h"
#include "testing/BareGL.h"
#include "tests/support/LiveNames.h"

/// The driver keeps what it has allocated until the process ends.
extern "C" const char* __asan_default_options() {
    return "detect_leaks=0";
}

void bareGLReset() {
    static tidalume::headless::HeadlessContext context(64, 64);
    context.recreate();
}

/// Without textures: a name that is bound becomes one.
std::size_t bareGLLiveObjects() {
    return liveNames(glIsFramebuffer).size() + liveNames(glIsProgram).size() + liveNames(glIsShader).size();
}
