// Writes what the library computes on the processor, as bytes: the same on every machine.

#include "effects/comet/CometRenderer.h"
#include "effects/metaball/ParticleManager.h"
#include "math/Matrix.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

void write(const float* values, size_t count) {
    std::fwrite(values, sizeof(float), count, stdout);
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
void writeMatrix() {
    auto v = uniform<24>();
    Matrix product;
    Matrix other;
    product.LookAtRH(&v[0], &v[3], &v[6]);
    other.PerspectiveOffCenterRH(v[9], v[10], v[11], v[12], v[13], v[14]);
    product.mul(&product, &other);
    other.OrthoOffCenterRH(v[15], v[16], v[17], v[18], v[19], v[20]);
    product.mul(&product, &other);
    product.AppendTranslate(v[21], v[22], v[23]);
    write(product.m, 16);
}

/// One more, and a step of all.
void writeParticles(ParticleManager& manager) {
    const auto v = uniform<5>();
    Particle particle = {Vector2(v[0], v[1]), v[2], 0, Vector2(v[3], v[4])};
    manager.addParticle(particle);
    manager.step(0.2F);
    for (const Particle& moved : *manager.getParticleVector())
        write(&moved.position.x, 6);
}

void writeFlight(CometRenderer& comets) {
    const auto touch = uniform<2>();
    comets.push(touch[0] + 500, touch[1] + 900, 0);
    comets.updateControlPoints();
    for (const float t : {0.0F, 0.3F, 0.7F, 1.0F}) {
        comets.updateMesh(t);
        for (int mesh = 0; mesh < 4; ++mesh)
            write(comets.getVertices(mesh), 3 * 101 * 3);
    }
}

} // namespace

int main() {
    srand48(6);
    ParticleManager particles;
    CometRenderer comets;
    comets.init(); // makes the meshes; without a context its programs come to nothing
    comets.setScreenSize(1080, 1920);
    for (int i = 0; i < 500; ++i) {
        writeMatrix();
        writeParticles(particles);
        writeFlight(comets);
    }
}
