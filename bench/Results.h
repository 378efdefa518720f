#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tidalume::bench {

/// An operation in the library's form against another one, in pairs that were measured in turn.
struct Comparison {
    std::string operation;
    std::string size; ///< of the screen; empty where there is none
    std::string against;
    double goal;          ///< largest ratio; 0: none is set
    double library = 0.0; ///< median seconds
    double other = 0.0;
    double floor = 0.0; ///< 0: none was measured
    double ratio = 0.0; ///< median of the pairs' ratios
    double lowerQuartile = 0.0;
    double upperQuartile = 0.0;
};

/// The cost of an operation against one number.
struct Series {
    std::string operation;
    std::string variable;
    std::vector<double> values;
    std::vector<double> seconds;
};

/// Frames of a look with a field of some size.
struct FieldScale {
    std::string look;
    std::string texelsAPixel;
    double seconds;    ///< of a frame
    double difference; ///< of a channel from the look's first, on average, in steps of 8 bits
};

/// The `init` calls of all effects.
struct StartUp {
    std::string name;
    double seconds;
    double instructions; ///< 0: not counted
};

/// What frames of all effects and looks do beside drawing.
struct FrameCosts {
    static constexpr int frames = 100;
    int allocations; ///< on the heap, in so many frames
    int transfers;   ///< uploads and read-backs in as many
};

struct Results {
    std::string driver;
    std::string clock; ///< what the seconds are
    std::vector<Comparison> comparisons;
    std::vector<Series> series;
    std::vector<FieldScale> fieldScales;
    std::vector<StartUp> startUps;
    std::optional<FrameCosts> frame;
};

} // namespace tidalume::bench
