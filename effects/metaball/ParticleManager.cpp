#include "effects/metaball/ParticleManager.h"

static_assert(sizeof(Particle) == 6 * sizeof(float), "particles are handed to GL as an array of six floats each");

// Component by component: compilers turn the pairs of floats into vector operations, which calls of Vector2's
// operators would keep them from.
bool ParticleManager::step(float dt) {
    constexpr float damping = 0.998F;
    constexpr float matureAge = 40.0F;
    constexpr float shrinkPerStep = 3.0F;
    for (Particle& particle : mParticles) {
        particle.velocity.x *= damping;
        particle.velocity.y *= damping;
        particle.age += dt;
        particle.position.x += particle.velocity.x * dt;
        particle.position.y += particle.velocity.y * dt;
        if (particle.age > matureAge) particle.radius -= shrinkPerStep;
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
