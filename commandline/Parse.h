#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>

/// What the command lines of gallery, viewer and benchmark share.
namespace tidalume {

/// Accepts whole numbers from the least to the most.
CLI::Validator numberCheck(std::int64_t least, std::int64_t most);

/// Accepts anything but the empty string, of which it says that nothing of the kind is named.
CLI::Validator namedCheck(const std::string& kind);

/// Parses the command line. Where it asks for help, or is wrong, prints that, in one line that begins with the
/// program's name, and ends the process with status 0 or 2.
void parse(CLI::App& app, int argc, char** argv);

} // namespace tidalume
