#pragma once

#include "tests/support/LogCapture.h"

/// Whether a line is one of those that an effect may write: its priority, its tag and its words, with any arguments.
bool isInCatalogue(const LogLine& line);
