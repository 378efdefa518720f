#pragma once

#include "bench/phones/Figures.h"

namespace tidalume::phones {

/// Both forms of all programs on a GPU.
struct Result {
    const Gpu& gpu;
    Compilation library;
    Compilation plain;
};

/// Limits, an overview, and a table a GPU, in Markdown.
std::string markdownTables(const std::vector<Result>& results);

/// Everything that the drivers said, by GPU, form, program and stage.
std::string json(const std::vector<Result>& results);

/// A figure of which a fragment program has more than its plain form.
struct Excess {
    std::string text;
    std::string excuse; ///< why that may be; empty: it must not
};

std::vector<Excess> excesses(const std::vector<Result>& results);

} // namespace tidalume::phones
