#pragma once

#include <string>

namespace tidalume {

/// What a shell command prints to standard output; throws std::runtime_error, with that output, where it fails.
std::string outputOf(const std::string& command);

} // namespace tidalume
