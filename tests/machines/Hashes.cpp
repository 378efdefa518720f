// Prints hashes of what the library computes on the processor. They are the same on every machine.

#include "effects/comet/CometRenderer.h"
#include "effects/metaball/ParticleManager.h"
#include "math/Matrix.h"

#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr uint64_t emptyHash = 0xCBF29CE484222325U;

/// Adds the bytes of floats to a hash: FNV-1a, 64 bits.
void add(uint64_t& hash, const float* values, size_t count) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(values);
    for (size_t i = 0; i < count * sizeof(float); ++i)
        hash = (hash ^ bytes[i]) * 0x100000001B3U;
}

/// Drawn one after another: compilers evaluate the arguments of a call in different orders.
template <size_t count>
std::array<float, count> uniform() {
    std::array<float, count> values = {};
    for (float& value : values)
        value = static_cast<float>(drand48() * 400 - 200);
    return values;
}

/// Without RotationY and PerspectiveFovLH, which no effect uses: they take sines and tangents from the C library, whose
/// last bit differs between machines.
uint64_t matrices() {
    uint64_t hash = emptyHash;
    for (int i = 0; i < 2000; ++i) {
        auto v = uniform<24>();
        Matrix product;
        Matrix other;
        product.LookAtRH(&v[0], &v[3], &v[6]);
        other.PerspectiveOffCenterRH(v[9], v[10], v[11], v[12], v[13], v[14]);
        product.mul(&product, &other);
        other.OrthoOffCenterRH(v[15], v[16], v[17], v[18], v[19], v[20]);
        product.mul(&product, &other);
        product.AppendTranslate(v[21], v[22], v[23]);
        add(hash, product.m, 16);
    }
    return hash;
}

uint64_t particles() {
    uint64_t hash = emptyHash;
    ParticleManager manager;
    for (int i = 0; i < 500; ++i) {
        const auto v = uniform<5>();
        Particle particle = {Vector2(v[0], v[1]), v[2], 0, Vector2(v[3], v[4])};
        manager.addParticle(particle);
    }
    for (int step = 0; step < 400; ++step)
        manager.step(0.2F);
    for (const Particle& particle : *manager.getParticleVector())
        add(hash, &particle.position.x, 6);
    return hash;
}

/// Without a context: init makes the meshes, and its programs come to nothing.
uint64_t comets() {
    constexpr size_t floatsPerMesh = 3 * 101 * 3;
    uint64_t hash = emptyHash;
    CometRenderer comets;
    comets.init();
    comets.setScreenSize(1080, 1920);
    for (int flight = 0; flight < 200; ++flight) {
        const auto touch = uniform<2>();
        comets.push(touch[0] + 500, touch[1] + 900, 0);
        comets.updateControlPoints();
        for (const float t : {0.0F, 0.3F, 0.7F, 1.0F}) {
            comets.updateMesh(t);
            for (int mesh = 0; mesh < 4; ++mesh)
                add(hash, comets.getVertices(mesh), floatsPerMesh);
        }
    }
    return hash;
}

} // namespace

int main() {
    srand48(6);
    std::printf("matrices %016" PRIx64 "\n", matrices());
    std::printf("particles %016" PRIx64 "\n", particles());
    std::printf("comets %016" PRIx64 "\n", comets());
}
