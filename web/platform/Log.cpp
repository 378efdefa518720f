#include <android/log.h>

#include <cstdarg>
#include <cstdio>

int __android_log_print(int priority, const char* tag, const char* format, ...) {
    if (priority < ANDROID_LOG_INFO) return 0;
    // What goes to stderr becomes a warning in the console.
    std::FILE* const stream = priority >= ANDROID_LOG_WARN ? stderr : stdout;
    std::va_list arguments;
    va_start(arguments, format);
    std::fprintf(stream, "%s: ", tag);
    const int length = std::vfprintf(stream, format, arguments);
    std::fputc('\n', stream);
    va_end(arguments);
    return length;
}
