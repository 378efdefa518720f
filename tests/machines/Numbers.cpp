// Writes what the library computes on the processor, as bytes: the same on every machine. Without RotationY and
// PerspectiveFovLH, which no effect uses: they take sines and tangents from the C library, whose last bit differs
// between machines.

#include "effects/comet/CometMesh.h"
#include "effects/comet/CometPath.h"
#include "effects/metaball/ParticleManager.h"
#include "math/Matrix.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>

static void write(const float* values, size_t count) {
    std::fwrite(values, sizeof(float), count, stdout);
}

int main() {
    ParticleManager particles;
    srand48(6);
    for (int i = 0; i < 500; ++i) {
        float v[31];
        for (float& value : v)
            value = static_cast<float>(drand48() * 400 - 200);

        Matrix product, other;
        product.LookAtRH(v, v + 3, v + 6);
        other.PerspectiveOffCenterRH(v[9], v[10], v[11], v[12], v[13], v[14]);
        product.mul(&product, &other);
        other.OrthoOffCenterRH(v[15], v[16], v[17], v[18], v[19], v[20]);
        product.mul(&product, &other);
        product.AppendTranslate(v[21], v[22], v[23]);
        write(product.m, 16);

        Particle particle = {Vector2(v[24], v[25]), v[26], 0, Vector2(v[27], v[28])};
        particles.addParticle(particle);
        particles.step(0.2F);
        for (const Particle& moved : *particles.getParticleVector())
            write(&moved.position.x, 6);

        const Vector3 start(v[0] / 200, -1.1F, 0), touch(v[29] / 200, v[30] / 200, 0);
        const tidalume::CometPath path = tidalume::cometPath(start, touch, v[1] / 400, v[2] / 2000);
        for (const float t : {0.0F, 0.3F, 0.7F, 1.0F}) {
            float vertices[3 * tidalume::CometMesh::vertices];
            tidalume::computeCometTail(path.coefficients, t, 0.25F, 1080, 1920, vertices);
            write(vertices, std::size(vertices));
        }
    }
}
