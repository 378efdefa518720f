#pragma once

/// The part of the Android log that the library uses, for builds without one.

enum { ANDROID_LOG_VERBOSE = 2, ANDROID_LOG_ERROR = 6 };

/// Writes a line to the browser's console: errors as warnings, anything else as plain lines.
extern "C" int __android_log_print(int priority, const char* tag, const char* format, ...)
    __attribute__((format(printf, 3, 4)));
