#include "bench/BallField.h"
#include "bench/Benchmarks.h"
#include "bench/LookFrames.h"
#include "bench/Particles.h"
#include "effects/comet/CometRenderer.h"
#include "reference/CometMesh.h"
#include "reference/ParticleStep.h"

#include <optional>

namespace tidalume::bench {
namespace {

/// The same done by the library and in another form, which are measured in turn.
struct Pair {
    Action library;
    Action other;
    std::optional<Action> floor = std::nullopt;
};

/// The two take turns at going first, so that other load falls on both.
void measure(benchmark::State& state, const Pair& pair, double duration, Comparison& found) {
    const int runs = runsThatFill(pair.library, duration);
    runsThatFill(pair.other, duration);
    if (pair.floor) runsThatFill(*pair.floor, duration);

    std::vector<double> library;
    std::vector<double> other;
    std::vector<double> floors;
    bool libraryFirst = true;
    for (auto iteration : state) {
        if (libraryFirst) library.push_back(seconds(pair.library, runs));
        other.push_back(seconds(pair.other, runs));
        if (!libraryFirst) library.push_back(seconds(pair.library, runs));
        if (pair.floor) floors.push_back(seconds(*pair.floor, runs));
        libraryFirst = !libraryFirst;
        state.SetIterationTime(library.back());
    }
    summarize(library, other, floors, found);
    state.counters["library_us"] = 1e6 * found.library;
    state.counters["other_us"] = 1e6 * found.other;
    state.counters["ratio"] = found.ratio;
    if (pair.floor) state.counters["floor_us"] = 1e6 * found.floor;
}

/// @param makePair  makes the pair when its turn has come
void add(Run& run, const Comparison& row, const std::function<Pair()>& makePair) {
    const std::string name = row.operation + (row.size.empty() ? "" : "/" + row.size) + "/" + row.against;
    registerTimed(name, run.pairs, [=, &run](benchmark::State& state) {
        run.results.comparisons.push_back(row);
        measure(state, makePair(), run.measurement, run.results.comparisons.back());
    });
}

Action inForm(Screen& screen, Form form, const std::function<void()>& action) {
    return {[&screen, form] { screen.use(form); }, action};
}

Pair againstPlain(Screen& screen, const MeasuredOperation& operation) {
    const std::function<void()> action = screen.operation(operation.name);
    Pair pair = {inForm(screen, Form::Library, action), inForm(screen, Form::Plain, action)};
    if (operation.measured.hasFloor) pair.floor = inForm(screen, Form::Floor, action);
    return pair;
}

/// The host's side alone, on a small screen: the same shaders, drawn by the bare list of the operation's GL calls.
Pair againstCalls(Screen& screen, const MeasuredOperation& operation) {
    const std::function<void()> action = screen.operation(operation.name);
    return {inForm(screen, Form::Library, action),
            inForm(screen, Form::Library, [calls = record(action)] { calls.replay(); })};
}

/// Two frames, which have the same number of passes on any screen. The calls are those of the frames before.
Pair lookAgainstCalls(const Screen& screen, const LookCase& look) {
    const auto frames = std::make_shared<LookFrames>(look.make(), screen.width(), screen.height());
    const auto calls = std::make_shared<GLCalls>();
    const auto two = [=] {
        frames->draw();
        frames->draw();
    };
    return {{[] {}, two}, {[=] { *calls = record(two); }, [=] { calls->replay(); }}};
}

Pair pointsAgainstLoop(Screen& screen) {
    const auto field =
        std::make_shared<BallField>(screen.width(), screen.height(), 64, 0.08F * static_cast<float>(screen.width()));
    return {inForm(screen, Form::Library, [=] { field->drawPoints(); }),
            inForm(screen, Form::Library, [=] { field->sumInLoop(); })};
}

Pair cometMeshes(Run& run) {
    static const Vector3 path[3] = {{-1.0F, 0.3F, 0.0F}, {1.2F, 0.4F, 0.0F}, {0.3F, -0.2F, 0.0F}};
    static float vertices[909];
    const Screen& screen = run.screen(64, 64);
    const auto comets = std::make_shared<CometRenderer>();
    comets->init();
    comets->setScreenSize(screen.width(), screen.height());
    comets->push(32.0F, 29.0F, 0);
    comets->updateControlPoints();
    return {{[] {}, [=] { comets->updateMesh(0.6F); }},
            {[] {},
             [] {
                 for (const float spread : {0.25F, 0.15F, 0.25F, 0.15F})
                     reference::plain::computeTailMesh(path, 540.0F, 960.0F, 0.6F, spread, vertices);
             }}};
}

Pair particleSteps(Run& run, void (*plainStep)(std::vector<Particle>&, float)) {
    run.screen(64, 64); // the clock asks its driver
    constexpr int count = 65535;
    const auto particles = std::make_shared<std::vector<Particle>>();
    return {particleStep(count), {[=] { *particles = manyParticles(count); }, [=] { plainStep(*particles, 0.2F); }}};
}

void addOnScreen(Run& run, int width, int height) {
    const std::string size = std::to_string(width) + "x" + std::to_string(height);
    for (const MeasuredOperation& operation : measuredOperations()) {
        const std::string& name = operation.name;
        const auto screen = [&run, width, height]() -> Screen& { return run.screen(width, height); };
        if (width > 64) {
            add(run, {name, size, "plain form", operation.measured.goal},
                [=] { return againstPlain(screen(), operation); });
            if (name == "Metaball2DRenderer::addMetaballs, 64 balls")
                add(run, {name, size, "loop over the balls", 0.25}, [=] { return pointsAgainstLoop(screen()); });
        } else {
            add(run, {name, size, "its GL calls alone", 1.10}, [=] { return againstCalls(screen(), operation); });
        }
    }
    for (const LookCase& look : lookCases) {
        add(run, {std::string(look.name) + "::draw, twice", size, "its GL calls alone", 1.10},
            [=, &run, &look] { return lookAgainstCalls(run.screen(width, height), look); });
    }
}

} // namespace

void registerComparisons(Run& run) {
    addOnScreen(run, 540, 960);
    addOnScreen(run, 1080, 1920);
    addOnScreen(run, 64, 64);
    add(run, {"CometRenderer::updateMesh", "", "plain form", 0.20}, [&run] { return cometMeshes(run); });
    const std::string particles = "ParticleManager::step, 65,535 particles";
    add(run, {particles, "", "plain form", 0.75}, [&run] { return particleSteps(run, reference::plain::step); });
    add(run, {particles, "", "plain form, by calls", 0.0},
        [&run] { return particleSteps(run, reference::plain::stepByCalls); });
}

Screen& Run::screen(int width, int height) {
    if (!current || current->width() != width || current->height() != height) {
        current.reset();
        current = std::make_unique<Screen>(width, height);
    }
    current->use(Form::Library);
    return *current;
}

} // namespace tidalume::bench
