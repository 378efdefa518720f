#pragma once

#include <stdexcept>

namespace tidalume::headless {

/// What went wrong, in one line for a person to read.
class Error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace tidalume::headless
