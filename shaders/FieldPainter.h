#pragma once

#include "shaders/Common.h"

namespace tidalume::shaders::fieldPainter {

/// `area` is the part of the field that covers the target: left, bottom, right, top in texture coordinates. Colours,
/// premultiplied, are linear below and above the middle, each of which has to be a quad of its own: in the fragment
/// stage they would cost more than the rest of it. Half floats hold colours of 8 bits, at half the varyings.
inline constexpr auto vertex = join(prologue, R"(
uniform vec4 area;
uniform vec4 bottom;
uniform vec4 middle;
uniform vec4 top;
layout(location = 0) in vec3 vertices;
out vec2 texcoord;
out mediump vec4 color;

void main() {
    texcoord = mix(area.xy, area.zw, vertices.xy * 0.5 + 0.5);
    color = mix(middle, vertices.y < 0.0 ? bottom : top, abs(vertices.y));
    gl_Position = vec4(vertices, 1.0);
}
)");

/// The distance to the outline, in pixels, is about the height above the threshold over its change from one pixel to
/// the next. The limit holds where the field is flat; it is about what half floats distinguish there.
inline constexpr auto fragment = join(prologue, R"(
uniform sampler2D textureField;
uniform float cut;
in vec2 texcoord;
in mediump vec4 color;
layout(location = 0) out vec4 outColor;

void main() {
    float field = texture(textureField, texcoord).r;
    float coverage = clamp((field - cut) / max(fwidth(field), 1e-4) + 0.5, 0.0, 1.0);
    outColor = color * coverage;
}
)");

} // namespace tidalume::shaders::fieldPainter
