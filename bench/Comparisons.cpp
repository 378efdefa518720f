#include "bench/Benchmarks.h"
#include "bench/GLReplay.h"
#include "bench/Measure.h"
#include "reference/CometMesh.h"
#include "reference/ParticleStep.h"

#include <benchmark/benchmark.h>

namespace tidalume::bench {
namespace {

struct Sides {
    Batch library;
    Batch other;
    std::optional<Batch> floor;
};

/// Measures the sides in turn, who begins in turn too, so that what else the machine does falls on both alike.
Comparison measure(benchmark::State& state, const Sides& sides, double batch) {
    const int runs = runsThatFill(sides.library, batch);
    runsThatFill(sides.other, batch);
    if (sides.floor) runsThatFill(*sides.floor, batch);

    std::vector<double> library;
    std::vector<double> other;
    std::vector<double> ratios;
    std::vector<double> floors;
    bool libraryFirst = true;
    for (auto iteration : state) {
        if (libraryFirst) library.push_back(seconds(sides.library, runs));
        other.push_back(seconds(sides.other, runs));
        if (!libraryFirst) library.push_back(seconds(sides.library, runs));
        if (sides.floor) floors.push_back(seconds(*sides.floor, runs));
        libraryFirst = !libraryFirst;
        ratios.push_back(library.back() / other.back());
        state.SetIterationTime(library.back());
    }
    Comparison comparison = {};
    comparison.library = quantile(library, 0.5);
    comparison.other = quantile(other, 0.5);
    comparison.ratio = quantile(ratios, 0.5);
    comparison.lowerQuartile = quantile(ratios, 0.25);
    comparison.upperQuartile = quantile(ratios, 0.75);
    comparison.floor = floors.empty() ? 0.0 : quantile(floors, 0.5);
    state.counters["library_us"] = 1e6 * comparison.library;
    state.counters["other_us"] = 1e6 * comparison.other;
    state.counters["ratio"] = comparison.ratio;
    if (!floors.empty()) state.counters["floor_us"] = 1e6 * comparison.floor;
    return comparison;
}

/// What the comparison is called, and how its sides come about when its turn has come.
struct Entry {
    std::string operation;
    std::string size;
    std::string against;
    double goal;
    std::function<Sides()> sides;
};

void add(const Entry& entry, const Effort& effort, Results& results) {
    const std::string name = entry.operation + (entry.size.empty() ? "" : "/" + entry.size) + "/" + entry.against;
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=, &results](benchmark::State& state) {
                                     Comparison comparison = measure(state, entry.sides(), effort.batch);
                                     comparison.operation = entry.operation;
                                     comparison.size = entry.size;
                                     comparison.against = entry.against;
                                     comparison.goal = entry.goal;
                                     results.comparisons.push_back(comparison);
                                 })
        ->Iterations(effort.pairs)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
}

Batch inForm(Stage& stage, Form form, const std::function<void()>& run) {
    return {[&stage, form] { stage.use(form); }, run};
}

Sides againstPlain(Stage& stage, const Operation& operation) {
    Sides sides = {inForm(stage, Form::Library, operation.run), inForm(stage, Form::Plain, operation.run), {}};
    if (operation.hasFloor) sides.floor = inForm(stage, Form::Floor, operation.run);
    return sides;
}

/// The host's side alone, on a small screen: the same shaders, drawn by the bare list of the operation's GL calls.
Sides againstCalls(Stage& stage, const Operation& operation) {
    if (!operation.canReplay) return againstPlain(stage, operation);
    stage.use(Form::Library);
    const GLCalls calls = record(operation.run);
    return {inForm(stage, Form::Library, operation.run), inForm(stage, Form::Library, [calls] { calls.replay(); }), {}};
}

Sides ballsAgainstLoop(Stage& stage, const Operation& operation) {
    return {inForm(stage, Form::Library, operation.run),
            inForm(stage, Form::Library, [&stage] { stage.sumBallsInFragments(); }),
            {}};
}

Sides cometMeshes(Stage& stage) {
    static const Vector3 path[3] = {{-1.0F, 0.3F, 0.0F}, {1.2F, 0.4F, 0.0F}, {0.3F, -0.2F, 0.0F}};
    static float vertices[909];
    return {{[] {}, [&stage] { stage.comets.updateMesh(0.6F); }},
            {[] {},
             [] {
                 for (const float spread : {0.25F, 0.15F, 0.25F, 0.15F})
                     reference::plain::computeTailMesh(path, 540.0F, 960.0F, 0.6F, spread, vertices);
             }},
            {}};
}

Sides particleSteps(void (*plainStep)(std::vector<Particle>&, float)) {
    std::vector<Particle> start(65535);
    for (size_t i = 0; i < start.size(); ++i) {
        const auto n = static_cast<float>(i);
        start[i] = {{n, 0.5F * n}, 40.0F, 0.0005F * n, {0.001F * n, 60.0F}};
    }
    const auto manager = std::make_shared<ParticleManager>();
    const auto particles = std::make_shared<std::vector<Particle>>(start);
    return {{[=] { *manager->getParticleVector() = start; }, [=] { manager->step(0.2F); }},
            {[=] { *particles = start; }, [=] { plainStep(*particles, 0.2F); }},
            {}};
}

} // namespace

void registerComparisons(Theatre& theatre, const Effort& effort, Results& results) {
    const auto size = [](int width, int height) { return std::to_string(width) + "x" + std::to_string(height); };
    const size_t count = theatre.stage(64, 64).operations().size();
    for (const auto& [width, height] : {std::pair{540, 960}, {1080, 1920}, {64, 64}}) {
        const bool small = width == 64;
        for (size_t i = 0; i < count; ++i) {
            const auto operation = [&theatre, w = width, h = height, i] { return theatre.stage(w, h).operations()[i]; };
            const Operation now = theatre.stage(64, 64).operations()[i];
            const double goal = small ? 1.10 : now.goal;
            const bool replays = small && now.canReplay;
            add({now.name, size(width, height), replays ? "its GL calls alone" : "plain form", goal,
                 [&theatre, operation, small, w = width, h = height] {
                     Stage& stage = theatre.stage(w, h);
                     return small ? againstCalls(stage, operation()) : againstPlain(stage, operation());
                 }},
                effort, results);
            if (small || now.name.find("64 balls") == std::string::npos) continue;
            add({now.name, size(width, height), "loop over the balls", 0.25,
                 [&theatre, operation, w = width, h = height] {
                     return ballsAgainstLoop(theatre.stage(w, h), operation());
                 }},
                effort, results);
        }
    }
    add({"CometRenderer::updateMesh", "", "plain form", 0.20,
         [&theatre] { return cometMeshes(theatre.stage(64, 64)); }},
        effort, results);
    const std::string particles = "ParticleManager::step, 65,535 particles";
    add({particles, "", "plain form", 0.75, [] { return particleSteps(reference::plain::step); }}, effort, results);
    add({particles, "", "plain form, by calls", 0.0, [] { return particleSteps(reference::plain::stepByCalls); }},
        effort, results);
}

Stage& Theatre::stage(int width, int height) {
    if (mStage && mStage->width() == width && mStage->height() == height) return *mStage;
    mStage.reset();
    if (!mContext) mContext = std::make_unique<headless::HeadlessContext>(width, height);
    mContext->resize(width, height);
    mStage = std::make_unique<Stage>(width, height);
    return *mStage;
}

void Theatre::close() {
    mStage.reset();
    mContext.reset();
}

} // namespace tidalume::bench
