#pragma once

#include "math/Vector2.h"

#include <vector>

/// One moving ball, which is at once one vertex of `Metaball2DRenderer::addMetaballs`: six floats without padding.
struct Particle {
    Vector2 position;    ///< in pixels, origin top-left, y downwards
    float radius = 0.0F; ///< in pixels
    float age = 0.0F;    ///< sum of the time steps it has gone through
    Vector2 velocity;    ///< in pixels per unit of time
};

/// The particles of a MetaballRenderer in the order in which they were added, and their motion.
class ParticleManager {
  public:
    /// Advances every particle by a time step: its velocity is damped by 0.998, then moves it; a particle older than 40
    /// units of time shrinks by 3 pixels. Radii may fall below 0, and no particle is removed. Always true.
    /// @param dt  units of time
    bool step(float dt);

    /// How many there are.
    int getParticleNumber();

    /// The particles themselves, to read and to write; never null. A pointer to an element is valid until the next
    /// `addParticle`.
    std::vector<Particle>* getParticleVector();

    /// Removes all particles and keeps the storage.
    void deleteAllParticle();

    /// Appends a copy.
    void addParticle(Particle& particle);

  private:
    std::vector<Particle> mParticles;
};
