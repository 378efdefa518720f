#pragma once

#include <string>
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

std::ostream& operator<<(std::ostream& stream, const LogLine& line);

/// Takes the process's Android log over while it lives, all priorities.
class LogCapture {
  public:
    LogCapture();
    ~LogCapture();

    /// The lines since the last call.
    std::vector<LogLine> take();
};
