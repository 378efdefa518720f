#pragma once

#include "effects/metaball/ParticleManager.h"

#include <vector>

namespace tidalume::bench::plain {

/// The particles' step in the form of its formulas, with the vectors' operators.
inline void step(std::vector<Particle>& particles, float dt) {
    for (Particle& particle : particles) {
        particle.velocity = particle.velocity * 0.998F;
        particle.age = particle.age + dt;
        particle.position = particle.position + particle.velocity * dt;
        if (particle.age > 40.0F) particle.radius = particle.radius - 3.0F;
    }
}

} // namespace tidalume::bench::plain
