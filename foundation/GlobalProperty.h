#pragma once

/// Process-wide settings. Never instantiated. Java sets them through the class of the same name, C++ directly:
///
///     std::snprintf(GlobalProperty::ROOT_DIR, sizeof(GlobalProperty::ROOT_DIR), "%s/", folder);
///     GlobalProperty::BINARY_SHADER = true;
///
/// Set them before the first `init` of any effect: each setting is read at the moment an effect builds its programs, so
/// a later change reaches only programs that are built afterwards. Plain globals without locks; write them before
/// the GL thread uses the effects, or on the GL thread.
class GlobalProperty {
  public:
    GlobalProperty() = delete;

    /// Whether each `init` that builds programs logs how long that took, in milliseconds. Switches nothing else.
    static bool DEBUG_LOG;

    /// Prefix of every program cache file, used verbatim: it must end with the directory separator. NUL-terminated, at
    /// most 1,023 bytes; empty means the working directory.
    static char ROOT_DIR[1024];

    /// Whether programs are loaded from, and saved to, the binary program cache below ROOT_DIR.
    static bool BINARY_SHADER;
};
