// Prints hashes of what the library computes on the processor. They are the same on every machine.

#include "effects/comet/CometRenderer.h"
#include "effects/metaball/ParticleManager.h"
#include "math/Matrix.h"

#include <array>
#include <cinttypes>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

/// FNV-1a, 64 bits, of the bits of floats.
class Hash {
  public:
    void add(const float* values, size_t count) {
        for (size_t i = 0; i < count; ++i) {
            uint32_t bits = 0;
            std::memcpy(&bits, &values[i], sizeof(bits));
            for (int byte = 0; byte < 4; ++byte)
                mValue = (mValue ^ ((bits >> (8 * byte)) & 0xFFU)) * 0x100000001B3U;
        }
    }
    void print(const char* name) const { std::printf("%s %016" PRIx64 "\n", name, mValue); }

  private:
    uint64_t mValue = 0xCBF29CE484222325U;
};

/// Drawn one after another: compilers evaluate the arguments of a call in different orders.
template <size_t count>
std::array<float, count> uniform() {
    std::array<float, count> values = {};
    for (float& value : values)
        value = static_cast<float>(drand48() * 400.0 - 200.0);
    return values;
}

/// Without RotationY and PerspectiveFovLH, which no effect uses: they take sines and tangents from the C library, whose
/// last bit differs between machines.
Hash matrices() {
    Hash hash;
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
        hash.add(product.m, 16);
    }
    return hash;
}

Hash particles() {
    Hash hash;
    ParticleManager manager;
    for (int i = 0; i < 500; ++i) {
        const auto v = uniform<5>();
        Particle particle = {Vector2(v[0], v[1]), v[2], 0.0F, Vector2(v[3], v[4])};
        manager.addParticle(particle);
    }
    for (int step = 0; step < 400; ++step)
        manager.step(0.2F);
    for (const Particle& particle : *manager.getParticleVector())
        hash.add(&particle.position.x, 6);
    return hash;
}

/// Without a context: init makes the meshes, and its programs come to nothing.
Hash comets() {
    constexpr size_t floatsPerMesh = 3 * 101 * 3;
    Hash hash;
    CometRenderer comets;
    comets.init();
    comets.setScreenSize(1080, 1920);
    for (int flight = 0; flight < 200; ++flight) {
        const auto touch = uniform<2>();
        comets.push(touch[0] + 500.0F, touch[1] + 900.0F, 0);
        comets.updateControlPoints();
        for (const float t : {0.0F, 0.3F, 0.7F, 1.0F}) {
            comets.updateMesh(t);
            for (int mesh = 0; mesh < 4; ++mesh)
                hash.add(comets.getVertices(mesh), floatsPerMesh);
        }
    }
    return hash;
}

} // namespace

int main() {
    srand48(6);
    matrices().print("matrices");
    particles().print("particles");
    comets().print("comets");
}
