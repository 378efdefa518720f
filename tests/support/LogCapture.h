#pragma once

#include <android/log.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

/// One line of the Android log.
struct LogLine {
    int priority;
    std::string tag;
    std::string message;

    bool operator==(const LogLine& other) const {
        return priority == other.priority && tag == other.tag && message == other.message;
    }
};

inline std::ostream& operator<<(std::ostream& stream, const LogLine& line) {
    return stream << line.priority << " " << line.tag << ": " << line.message;
}

/// Takes the process's Android log over while it lives, all priorities.
class LogCapture {
  public:
    LogCapture() {
        lines.clear();
        __android_log_set_minimum_priority(ANDROID_LOG_VERBOSE);
        __android_log_set_logger([](const __android_logger_data* data, const char* message) {
            lines.push_back({data->priority, data->tag, message});
        });
    }
    ~LogCapture() { __android_log_set_logger(__android_log_stderr_logger); }

    /// The lines since the last call.
    std::vector<LogLine> take() { return std::exchange(lines, {}); }

  private:
    static inline std::vector<LogLine> lines;
};
