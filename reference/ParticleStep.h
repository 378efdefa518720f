#pragma once

#include "effects/metaball/ParticleManager.h"

#include <vector>

namespace tidalume::reference::plain {

/// The particles' step in the form of its formulas, one after another.
inline void step(std::vector<Particle>& particles, float dt) {
    for (Particle& particle : particles) {
        particle.velocity.x = particle.velocity.x * 0.998F;
        particle.velocity.y = particle.velocity.y * 0.998F;
        particle.age = particle.age + dt;
        particle.position.x = particle.position.x + particle.velocity.x * dt;
        particle.position.y = particle.position.y + particle.velocity.y * dt;
        if (particle.age > 40.0F) particle.radius = particle.radius - 3.0F;
    }
}

/// The same with the vectors' operators, which are calls.
inline void stepByCalls(std::vector<Particle>& particles, float dt) {
    for (Particle& particle : particles) {
        particle.velocity = particle.velocity * 0.998F;
        particle.age = particle.age + dt;
        particle.position = particle.position + particle.velocity * dt;
        if (particle.age > 40.0F) particle.radius = particle.radius - 3.0F;
    }
}

} // namespace tidalume::reference::plain
