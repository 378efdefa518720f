#pragma once

#include <android/log.h>

#include <string>
#include <utility>
#include <vector>

/// Takes the process's Android log over while it lives, all priorities.
class LogCapture {
  public:
    LogCapture() {
        lines.clear();
        __android_log_set_minimum_priority(ANDROID_LOG_VERBOSE);
        __android_log_set_logger([](const __android_logger_data* data, const char* message) {
            lines.push_back(std::to_string(data->priority) + " " + data->tag + ": " + message);
        });
    }
    ~LogCapture() { __android_log_set_logger(__android_log_stderr_logger); }

    /// The lines since the last call: priority, tag and message, as "6 EGLUtils: GL Version = 3\n".
    std::vector<std::string> take() { return std::exchange(lines, {}); }

  private:
    static inline std::vector<std::string> lines;
};
