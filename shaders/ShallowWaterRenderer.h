#pragma once

#include "shaders/Common.h"

namespace tidalume::shaders::shallowWaterRenderer {

inline constexpr auto vertex = texturedQuadVertex;

/// The refracted ray meets the ground in closed form. With N the normal, x and y exchanged, and eta the ratio of the
/// refractive indices, refract((0, 0, -1), N, eta) = (0, 0, -eta) - c N, where c = sqrt(1 - eta^2 (1 - N.z^2)) - eta
/// N.z (the root is real for every N.z, since eta < 1). From the height h such a ray reaches the plane z = 0 at -N.xy c
/// h / (eta + c N.z), whatever the length of N; and exactly at 0 where N.xy or h is 0.
// kept: swapped-normal, specular-alpha
inline constexpr auto fragment = join(prologue, R"(
uniform sampler2D textureNormal;
uniform sampler2D textureHeight;
uniform sampler2D textureBG;
uniform float heightMax;
uniform float screenWidth;
uniform float screenHeight;
uniform vec3 light;
uniform float materialSpecular;
uniform float materialShininess;
uniform float textureFlip;
in vec2 texcoord;
out vec4 outColor;

const float ETA = 1.0 / 1.33;

void main() {
    vec3 normal = texture(textureNormal, texcoord).xyz * 2.0 - 1.0;
    float height = texture(textureHeight, texcoord).r * heightMax;

    float c = sqrt(1.0 - ETA * ETA + ETA * ETA * normal.z * normal.z) - ETA * normal.z;
    vec2 shift = normal.yx * (c * height / (ETA + c * normal.z));
    vec2 ground = clamp(texcoord - shift / vec2(screenWidth, screenHeight), 0.0, 1.0);
    ground.y = abs(textureFlip - ground.y);

    float specular = 0.0;
    if (dot(normal, light) > 0.0) {
        vec3 halfVector = normalize(light + vec3(0.0, 0.0, 1.0)); // the camera looks straight down
        specular = materialSpecular * pow(max(0.0, dot(normal, halfVector)), materialShininess);
    }
    outColor = texture(textureBG, ground) + specular;
}
)");

} // namespace tidalume::shaders::shallowWaterRenderer
