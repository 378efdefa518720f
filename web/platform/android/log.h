#pragma once

/// The part of the Android log that the library uses, for builds without one.

enum { ANDROID_LOG_VERBOSE = 2, ANDROID_LOG_DEBUG, ANDROID_LOG_INFO, ANDROID_LOG_WARN, ANDROID_LOG_ERROR };

/// Writes a line to the browser's console: warnings and errors as warnings, information as plain lines, and anything
/// less not at all, as the real log does by default. Returns the number of characters of the message.
extern "C" int __android_log_print(int priority, const char* tag, const char* format, ...)
    __attribute__((format(printf, 3, 4)));
