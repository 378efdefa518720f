#include "effects/metaball/ParticleManager.h"

static_assert(sizeof(Particle) == 6 * sizeof(float), "particles are handed to GL as an array of six floats each");

// Component by component: compilers turn the pairs of floats into vector operations, which calls of Vector2's
// operators would keep them from. The branch comes first: GCC would otherwise take the age and the velocity's x, which
// lie side by side, for a pair. Unrolled: the loop is so short that its own instructions and its place in memory count.
bool ParticleManager::step(float dt) {
    constexpr float damping = 0.998F;
    constexpr float matureAge = 40.0F;
    constexpr float shrinkPerStep = 3.0F;
#pragma GCC unroll 4
    for (Particle& particle : mParticles) {
        particle.age += dt;
        if (particle.age > matureAge) particle.radius -= shrinkPerStep; // kept: shrinking
        particle.velocity.x *= damping;
        particle.velocity.y *= damping;
        particle.position.x += particle.velocity.x * dt;
        particle.position.y += particle.velocity.y * dt;
    }
    return true;
}

int ParticleManager::getParticleNumber() {
    return static_cast<int>(mParticles.size());
}

std::vector<Particle>* ParticleManager::getParticleVector() {
    return &mParticles;
}

void ParticleManager::deleteAllParticle() {
    mParticles.clear();
}

void ParticleManager::addParticle(Particle& particle) {
    mParticles.push_back(particle);
}
