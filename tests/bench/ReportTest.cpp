#include "bench/Report.h"

#include "bench/Measure.h"

#include <ctime>
#include <gmock/gmock.h>
#include <utility>

// A driver that draws when it is waited for, and nothing else takes time. In seconds.
static std::time_t queued = 0, drawn = 0;

extern "C" void __wrap_glFinish() {
    drawn += std::exchange(queued, 0);
}

extern "C" int __wrap_clock_gettime(clockid_t /*clock*/, timespec* time) {
    *time = {drawn, 0};
    return 0;
}

namespace tidalume::bench {

using testing::HasSubstr;

TEST(Bench, TablesSayWhatWasMeasured) {
    const std::pair<double, const char*> verdicts[] = {
        {0.0, " |  |  |\n"},
        {0.3, " | ≤ 0.30 | **missed** |\n"},
        {0.45, " | ≤ 0.45 | **missed**, within the spread |\n"},
        {0.6, " | ≤ 0.60 | met, within the spread |\n"},
        {0.8, " | ≤ 0.80 | met |\n"},
    };
    Results results;
    for (const auto& [goal, text] : verdicts) {
        results.comparisons = {{"step", "64x64", "plain form", goal}};
        summarize({4e-6, 2e-6, 3e-6, 5e-6, 1e-6}, {8e-6, 8e-6, 4e-6, 2e-6, 2.5e-6}, {7e-4, 9e-4, 1e-3},
                  results.comparisons[0]);
        EXPECT_THAT(markdownTables(results), HasSubstr("\n| step | 64x64 | plain form | 3.0 µs | 4.0 µs | 900.0 µs | "
                                                       "0.500 (0.400 to 0.750)" +
                                                       std::string(text)));
    }
    results.series = {{"fill", "pixels", {1, 10, 100}, {1e-6, 1e-4, 1e-2}}, {"a filtered one", "pixels", {1}, {1}}};
    EXPECT_THAT(markdownTables(results), HasSubstr("---:|\n| fill | pixels | 1 | 100 | 1.0 µs | 10.00 ms | 2.00 |\n"));
    EXPECT_THAT(markdownTables(results), Not(HasSubstr("filtered")));
    EXPECT_THAT(scalingPlot(results), HasSubstr(" points=\"70.0,440.0 330.0,40.0 590.0,-360.0 \"/>"));
}

TEST(Bench, ARunTakesUntilItIsDrawn) {
    EXPECT_EQ(seconds({[] { queued += 100; }, [] { queued += 2; }}, 3), 2);
}

} // namespace tidalume::bench
