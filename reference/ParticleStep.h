#pragma once

#include "effects/metaball/ParticleManager.h"

#include <cstdlib>
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

/// One frame of a finger that streams: perhaps one particle more, as the random stream says.
/// @param direction  of the drag, a unit vector
inline void emit(std::vector<Particle>& particles, Vector2 origin, Vector2 direction) {
    const auto draw = [] { return static_cast<float>(lrand48()) / 2147483648.0F; };
    const float chance = 0.15F + 0.1F * draw();
    if (!(chance > draw())) return;
    Vector2 heading;
    while (static_cast<double>(Vector2::dot(&heading.x, &direction.x)) < 0.85) {
        heading.x = (draw() - 0.5F) * 2.0F;
        heading.y = (draw() - 0.5F) * 2.0F;
        heading.normalize();
    }
    const float speed = 20.0F + 55.0F * draw();
    const float radius = 10.0F + 80.0F * draw();
    particles.push_back({origin, radius, 0.0F, heading * speed});
}

} // namespace tidalume::reference::plain
