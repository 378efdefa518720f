#pragma once

/// The version of these headers, major.minor.patch. It is the library's when both are of one installation.
#define TIDALUME_VERSION "0.2.0"
#define TIDALUME_VERSION_MAJOR 0
#define TIDALUME_VERSION_MINOR 2
#define TIDALUME_VERSION_PATCH 0
