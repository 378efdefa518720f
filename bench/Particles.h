#pragma once

#include "bench/Measure.h"
#include "effects/metaball/ParticleManager.h"

#include <memory>

namespace tidalume::bench {

/// Particles of all ages up to the one at which they begin to shrink.
inline std::vector<Particle> manyParticles(int count) {
    std::vector<Particle> particles(static_cast<size_t>(count));
    for (size_t i = 0; i < particles.size(); ++i) {
        const auto n = static_cast<float>(i);
        particles[i] = {{n, 0.5F * n}, 40.0F, 0.0005F * n, {0.001F * n, 60.0F}};
    }
    return particles;
}

/// The library's step, of new particles each time: velocities come to denormal numbers, which cost more, in 50,000
/// steps.
inline Action particleStep(int count) {
    const auto manager = std::make_shared<ParticleManager>();
    return {[=, start = manyParticles(count)] { *manager->getParticleVector() = start; }, [=] { manager->step(0.2F); }};
}

} // namespace tidalume::bench
