#include "tests/support/LogCapture.h"

#include <android/log.h>

#include <ostream>
#include <utility>

namespace {

std::vector<LogLine>& lines() {
    static std::vector<LogLine> all;
    return all;
}

void append(const __android_logger_data* data, const char* message) {
    lines().push_back({data->priority, data->tag, message});
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const LogLine& line) {
    return stream << line.priority << " " << line.tag << ": " << line.message;
}

LogCapture::LogCapture() {
    lines().clear();
    __android_log_set_minimum_priority(ANDROID_LOG_VERBOSE);
    __android_log_set_logger(append);
}

LogCapture::~LogCapture() {
    __android_log_set_logger(__android_log_stderr_logger);
}

std::vector<LogLine> LogCapture::take() {
    return std::exchange(lines(), {});
}
