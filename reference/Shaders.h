#pragma once

#include "shaders/Common.h"

#include <vector>

/// What the library's shaders are measured against, with the same prologue, uniforms and attributes.
///
/// Plain forms compute every formula where and as it is written down. Floors write to the same targets and read the
/// same textures as often, and compute next to nothing: what a pass costs in any form.
namespace tidalume::reference {

/// The shaders that take the place of a program's own.
struct ProgramForm {
    const char* cacheName; ///< of the program
    const char* vertex;
    const char* fragment;
};

namespace plain {

using shaders::join;
using shaders::prologue;

// Quads

/// Hands on the corner, in the units of the vertices, and the place on the target, (0, 0) at its lower-left corner.
inline constexpr char place[] = R"(
out vec3 position;
out vec2 texcoord;

void place(vec3 corner, mat4 toTarget) {
    vec4 p = vec4(corner, 1.0) * toTarget;
    p = p / p.w;
    position = corner;
    texcoord = p.xy * 0.5 + 0.5;
    gl_Position = p;
}
)";

inline constexpr auto quad = join(prologue, place, R"(
uniform mat4 matrixMVP;
layout(location = 0) in vec3 vertices;

void main() {
    place(vertices, matrixMVP);
}
)");

inline constexpr auto texturedQuad = join(prologue, place, R"(
uniform mat4 matrixMVP;
layout(location = 0) in vec3 vertices;
layout(location = 1) in vec2 texcoords;
out vec2 texcoordAlpha;

void main() {
    place(vertices, matrixMVP);
    texcoordAlpha = texcoord;
    texcoord = texcoords;
}
)");

inline constexpr auto pondQuad = join(prologue, place, R"(
uniform mat4 mvpMatrix;
layout(location = 0) in vec3 quadCoord;

void main() {
    place(quadCoord, mvpMatrix);
}
)");

// Metaballs

inline constexpr auto ballVertex = join(prologue, R"(
uniform float qualityMultiplyFactor;
uniform float radiusMultiplyFactor;
uniform mat4 matrixMVP;
layout(location = 0) in vec4 metaballs;

void main() {
    gl_PointSize = metaballs.z * radiusMultiplyFactor * 2.0 * qualityMultiplyFactor;
    gl_Position = vec4(metaballs.xy, 0.0, 1.0) * matrixMVP;
}
)");

inline constexpr auto ballFragment = join(prologue, R"(
out float outColor;

void main() {
    vec2 c = gl_PointCoord - vec2(0.5);
    float d = length(c);
    if (d > 0.5) discard;
    d = 2.0 * d;
    outColor = (1.0 - d * d) * (1.0 - d * d);
}
)");

inline constexpr auto fieldDraw = join(prologue, R"(
uniform sampler2D textureField;
uniform vec4 color;
uniform float cut;
in vec3 position;
in vec2 texcoord;
layout(location = 0) out vec4 outColor;

void main() {
    float field = texture(textureField, texcoord).r;
    if (field > cut) {
        outColor = color;
    } else {
        discard;
    }
}
)");

// Water

inline constexpr char disturbance[] = R"(
uniform float radius;
uniform float strength;
in vec3 position;
in vec2 texcoord;
const float PI = 3.141592653589793;

float raisedCosine(float dist) {
    return (cos(min(1.0, dist / radius) * PI) * 0.5 + 0.5) * strength;
}
)";

inline constexpr char point[] = R"(
uniform vec2 center;
float shapeDistance() {
    return distance(position.xy, center);
}
)";

inline constexpr char segment[] = R"(
uniform vec2 center;
uniform vec2 center2;
float shapeDistance() {
    vec2 along = center2 - center;
    float squaredLength = dot(along, along);
    if (squaredLength == 0.0) return distance(position.xy, center);
    float t = dot(position.xy - center, along) / squaredLength;
    if (t < 0.0) return distance(position.xy, center);
    if (t > 1.0) return distance(position.xy, center2);
    return distance(position.xy, center + t * along);
}
)";

inline constexpr char wave[] = R"(
uniform float center;
uniform float waveRadius;
uniform float waveCount;
float shapeDistance() {
    float centerY = center + sin(texcoord.x * PI * 2.0 * waveCount) * waveRadius;
    return abs(centerY - position.y);
}
)";

inline constexpr char store[] = R"(
out float outColor;

void main() {
    outColor = raisedCosine(shapeDistance());
}
)";

inline constexpr char raise[] = R"(
uniform sampler2D textureWater;
uniform float preserveWeight;
out vec2 outColor;

void main() {
    vec2 info = texture(textureWater, texcoord).xy;
    info.r = info.r * preserveWeight + raisedCosine(shapeDistance());
    outColor = info;
}
)";

inline constexpr auto storePoint = join(prologue, disturbance, point, store);
inline constexpr auto storeSegment = join(prologue, disturbance, segment, store);
inline constexpr auto storeWave = join(prologue, disturbance, wave, store);
inline constexpr auto raisePoint = join(prologue, disturbance, point, raise);
inline constexpr auto raiseSegment = join(prologue, disturbance, segment, raise);
inline constexpr auto raiseWave = join(prologue, disturbance, wave, raise);

inline constexpr auto twoDrops = join(prologue, R"(
uniform sampler2D textureWater;
uniform vec2 center;
uniform vec2 center2;
uniform float radius;
uniform float strength;
in vec2 texcoord;
out float outColor;
const float PI = 3.141592653589793;

void main() {
    float info = texture(textureWater, texcoord).x;
    vec2 c1 = center * 0.5 + 0.5;
    vec2 c2 = center2 * 0.5 + 0.5;
    float a = max(0.0, 1.0 - length(c1 - texcoord) / radius);
    info += (0.5 - cos(a * PI) * 0.5) * (strength * 0.4);
    a = max(0.0, 1.0 - length(c2 - texcoord) / radius);
    info += (0.5 - cos(a * PI) * 0.5) * (strength * 0.4);
    if (info > strength) info = strength;
    outColor = info;
}
)");

/// Heights to the left, to the right, below and above.
inline constexpr char neighbours[] = R"(
in vec2 texcoord;

vec4 neighbours(sampler2D heights) {
    return vec4(textureOffset(heights, texcoord, ivec2(-1, 0)).x, textureOffset(heights, texcoord, ivec2(1, 0)).x,
                textureOffset(heights, texcoord, ivec2(0, -1)).x, textureOffset(heights, texcoord, ivec2(0, 1)).x);
}
)";

inline constexpr auto iterativeUpdate = join(prologue, neighbours, R"(
uniform sampler2D textureWater;
out vec2 outColor;

void main() {
    vec2 info = texture(textureWater, texcoord).rg;
    vec4 n = neighbours(textureWater);
    float average = (n.x + n.y + n.z + n.w) * 0.25;
    info.g += (average - info.r) * 2.0;
    info.g *= 0.99;
    info.r += info.g;
    info.r -= sign(info.g) * 0.00001;
    outColor = info;
}
)");

inline constexpr auto pondUpdate = join(prologue, neighbours, R"(
uniform sampler2D texture1;
uniform sampler2D texture2;
uniform vec3 Term;
out float outColor;

void main() {
    float z1 = texture(texture1, texcoord).x;
    vec4 n = neighbours(texture1);
    float z0 = texture(texture2, texcoord).x;
    outColor = Term.x * z1 + Term.y * z0 + Term.z * (n.x + n.y + n.z + n.w);
}
)");

inline constexpr auto normals = join(prologue, neighbours, R"(
uniform sampler2D textureHeight;
uniform float heightMax;
out vec3 outColor;

void main() {
    vec4 n = neighbours(textureHeight) * heightMax;
    vec3 va = normalize(vec3(2.0, 0.0, n.y - n.x));
    vec3 vb = normalize(vec3(0.0, 2.0, n.w - n.z));
    outColor = normalize(cross(va, vb)) * 0.5 + 0.5;
}
)");

inline constexpr auto refraction = join(prologue, R"(
uniform sampler2D textureNormal;
uniform sampler2D textureHeight;
uniform sampler2D textureBG;
uniform vec3 light;
uniform float materialSpecular;
uniform float materialShininess;
uniform float heightMax;
uniform float screenWidth;
uniform float screenHeight;
uniform float textureFlip;
in vec3 position;
in vec2 texcoord;
out vec4 outColor;
const float IOR_AIR = 1.0;
const float IOR_WATER = 1.33;

void main() {
    vec3 normal = (texture(textureNormal, texcoord).xyz - 0.5) * 2.0;
    float specular = 0.0;
    float nxDir = max(0.0, dot(normal, light));
    if (nxDir != 0.0) {
        vec3 cameraVector = normalize(vec3(0.0, 0.0, screenWidth));
        vec3 halfVector = normalize(light + cameraVector);
        float nxHalf = max(0.0, dot(normal, halfVector));
        specular = materialSpecular * pow(nxHalf, materialShininess);
    }
    float height = texture(textureHeight, texcoord).x * heightMax;
    vec3 ray = refract(vec3(0.0, 0.0, -1.0), normal.yxz, IOR_AIR / IOR_WATER);
    vec3 surface = vec3(position.xy, height);
    float t = -surface.z / ray.z;
    vec3 q = surface + ray * t;
    float u = clamp((q.x + screenWidth * 0.5) / screenWidth, 0.0, 1.0);
    float v = clamp((q.y + screenHeight * 0.5) / screenHeight, 0.0, 1.0);
    v = abs(textureFlip - v);
    outColor = texture(textureBG, vec2(u, v)) + vec4(specular);
}
)");

// Vector graphics

inline constexpr auto gradient = join(prologue, R"(
uniform vec2 referencePosition;
uniform float gradientBegin;
uniform vec4 gradientBeginColor;
uniform float gradientEnd;
uniform vec4 gradientEndColor;
in vec3 position;
in vec2 texcoord;
layout(location = 0) out vec4 outColor;

void main() {
    float d = distance(position.xy, referencePosition);
    float w = clamp((d - gradientBegin) / (gradientEnd - gradientBegin), 0.0, 1.0);
    outColor = mix(gradientBeginColor, gradientEndColor, w);
}
)");

inline constexpr auto bitmap = join(prologue, R"(
uniform sampler2D textureBitmap;
in vec2 texcoord;
layout(location = 0) out vec4 outColor;

void main() {
    outColor = texture(textureBitmap, texcoord);
}
)");

inline constexpr auto maskedBitmap = join(prologue, R"(
uniform sampler2D textureBitmap;
uniform sampler2D textureMask;
in vec2 texcoord;
in vec2 texcoordAlpha;
layout(location = 0) out vec4 outColor;

void main() {
    vec4 c = texture(textureBitmap, texcoord);
    c.a = texture(textureMask, texcoordAlpha).r;
    outColor = c;
}
)");

inline constexpr auto discVertex = join(prologue, R"(
layout(location = 0) in vec4 vertices;

void main() {
    gl_PointSize = vertices.z;
    gl_Position = vec4(vertices.x, vertices.y, 0.0, 1.0);
}
)");

inline constexpr char cutDisc[] = R"(
uniform vec4 color;
layout(location = 0) out vec4 outColor;

void cutDisc() {
    vec2 q = gl_PointCoord - vec2(0.5, 0.5);
    if (length(q) > 0.5) discard;
}
)";

inline constexpr auto disc = join(prologue, cutDisc, R"(
void main() {
    cutDisc();
    outColor = color;
}
)");

inline constexpr auto bitmapDisc = join(prologue, cutDisc, R"(
uniform sampler2D bitmap;
uniform vec2 size;

void main() {
    cutDisc();
    vec2 t = gl_FragCoord.xy / size;
    outColor = vec4(texture(bitmap, t).rgb, color.a);
}
)");

// Comets

inline constexpr auto cometTailVertex = join(prologue, R"(
layout(location = 0) in vec3 vertices;
layout(location = 1) in vec2 texcoords;
out vec2 texCoord;

void main() {
    texCoord = texcoords;
    gl_Position = vec4(vertices.x, vertices.z, 1.0, 1.0);
}
)");

inline constexpr auto cometTail = join(prologue, R"(
uniform float t0;
in vec2 texCoord;
out vec4 outColor;

void main() {
    outColor = vec4(1.0, 1.0, 1.0, (1.0 - texCoord.x) * 0.2 * sin(t0 * 3.141592));
}
)");

inline constexpr auto cometCoreVertex = join(prologue, R"(
uniform float radius;
layout(location = 0) in vec4 vertices;
out float vRadius;

void main() {
    gl_PointSize = radius;
    vRadius = radius;
    gl_Position = vec4(vertices.x, vertices.y, 0.0, 1.0);
}
)");

inline constexpr auto cometCore = join(prologue, R"(
uniform float t0;
uniform int fillMode;
in float vRadius;
out vec4 outColor;

void main() {
    vec2 c = gl_PointCoord - vec2(0.5, 0.5);
    float d = sqrt(c.x * c.x + c.y * c.y) * vRadius;
    if (fillMode == 0 && 0.5 * vRadius - 3.0 <= d && d <= 0.5 * vRadius) {
        outColor = vec4(1.0, 1.0, 1.0, t0);
    } else if (fillMode == 1 && d <= 0.5 * vRadius) {
        outColor = vec4(1.0, 1.0, 1.0, t0);
    } else {
        discard;
    }
}
)");

// The looks

inline constexpr auto paintedFieldVertex = join(prologue, R"(
uniform vec4 area;
layout(location = 0) in vec3 vertices;
out vec2 texcoord;
out vec2 position;

void main() {
    texcoord = mix(area.xy, area.zw, vertices.xy * 0.5 + 0.5);
    position = vertices.xy;
    gl_Position = vec4(vertices, 1.0);
}
)");

inline constexpr auto paintedField = join(prologue, R"(
uniform sampler2D textureField;
uniform float cut;
uniform vec4 bottom;
uniform vec4 middle;
uniform vec4 top;
in vec2 texcoord;
in vec2 position;
layout(location = 0) out vec4 outColor;

void main() {
    vec4 color = mix(middle, position.y < 0.0 ? bottom : top, abs(position.y));
    float field = texture(textureField, texcoord).r;
    outColor = color * clamp((field - cut) / max(fwidth(field), 1e-4) + 0.5, 0.0, 1.0);
}
)");

inline const std::vector<ProgramForm> programs = {
    {"Metaball2DRendererProgramMetaball", ballVertex, ballFragment},
    {"Metaball2DRendererProgramDraw", texturedQuad, fieldDraw},
    {"IntensityMapBuilderProgramDropLine", quad, storeSegment},
    {"IntensityMapBuilderProgramHorizontalWave", quad, storeWave},
    {"NormalMapBuilderProgram", quad, normals},
    {"ShallowWaterProgramDrop", pondQuad, storePoint},
    {"ShallowWaterProgramDropLine", pondQuad, twoDrops},
    {"ShallowWaterProgramUpdate", pondQuad, pondUpdate},
    {"ShallowWaterIterativeProgramDrop", quad, raisePoint},
    {"ShallowWaterIterativeProgramDropLine", quad, raiseSegment},
    {"ShallowWaterIterativeProgramHorizontalWave", quad, raiseWave},
    {"ShallowWaterIterativeProgramUpdate", quad, iterativeUpdate},
    {"ShallowWaterRendererProgram", texturedQuad, refraction},
    {"VectorGraphicRendererProgramGradientFill", quad, gradient},
    {"VectorGraphicRendererProgramBitmap", texturedQuad, bitmap},
    {"VectorGraphicRendererProgramAlphaMaskedBitmap", texturedQuad, maskedBitmap},
    {"VectorGraphicRendererProgramCircle", discVertex, disc},
    {"VectorGraphicRendererProgramBitmapCircle", discVertex, bitmapDisc},
    {"CometRendererProgramCoreOfComet", cometCoreVertex, cometCore},
    {"CometRendererProgramTailOfComet", cometTailVertex, cometTail},
    {"FieldPainterProgram", paintedFieldVertex, paintedField},
};

} // namespace plain

namespace floors {

using shaders::join;
using shaders::prologue;

inline constexpr char neighbourSum[] = R"(
float neighbourSum(sampler2D heights) {
    ivec2 texel = ivec2(gl_FragCoord.xy);
    ivec2 last = textureSize(heights, 0) - 1;
    return texelFetch(heights, ivec2(max(texel.x - 1, 0), texel.y), 0).r +
           texelFetch(heights, ivec2(min(texel.x + 1, last.x), texel.y), 0).r +
           texelFetch(heights, ivec2(texel.x, max(texel.y - 1, 0)), 0).r +
           texelFetch(heights, ivec2(texel.x, min(texel.y + 1, last.y)), 0).r;
}
)";

inline constexpr auto ball = join(prologue, R"(
out float outColor;

void main() {
    outColor = gl_PointCoord.x;
}
)");

inline constexpr auto iterativeUpdate = join(prologue, neighbourSum, R"(
uniform sampler2D textureWater;
out vec2 outColor;

void main() {
    outColor = texelFetch(textureWater, ivec2(gl_FragCoord.xy), 0).rg + neighbourSum(textureWater);
}
)");

inline constexpr auto pondUpdate = join(prologue, neighbourSum, R"(
uniform sampler2D texture1;
uniform sampler2D texture2;
out float outColor;

void main() {
    ivec2 texel = ivec2(gl_FragCoord.xy);
    outColor = texelFetch(texture1, texel, 0).r + texelFetch(texture2, texel, 0).r + neighbourSum(texture1);
}
)");

inline constexpr auto normals = join(prologue, neighbourSum, R"(
uniform sampler2D textureHeight;
out vec3 outColor;

void main() {
    outColor = vec3(neighbourSum(textureHeight));
}
)");

inline constexpr auto refraction = join(prologue, R"(
uniform sampler2D textureNormal;
uniform sampler2D textureHeight;
uniform sampler2D textureBG;
in vec2 texcoord;
out vec4 outColor;

void main() {
    vec2 ground = texture(textureNormal, texcoord).xy * 0.0001 + texcoord;
    outColor = texture(textureBG, ground) + texture(textureHeight, texcoord).r;
}
)");

inline constexpr auto gradient = join(prologue, R"(
in vec2 texcoord;
layout(location = 0) out vec4 outColor;

void main() {
    outColor = texcoord.xyxy;
}
)");

inline const std::vector<ProgramForm> programs = {
    {"Metaball2DRendererProgramMetaball", plain::ballVertex, ball},
    {"NormalMapBuilderProgram", plain::quad, normals},
    {"ShallowWaterProgramUpdate", plain::pondQuad, pondUpdate},
    {"ShallowWaterIterativeProgramUpdate", plain::quad, iterativeUpdate},
    {"ShallowWaterRendererProgram", plain::texturedQuad, refraction},
    {"VectorGraphicRendererProgramGradientFill", plain::quad, gradient},
};

} // namespace floors

/// The field of 64 balls, which every fragment adds up.
namespace loop {

inline constexpr auto vertex = shaders::join(shaders::prologue, R"(
layout(location = 0) in vec2 vertices;

void main() {
    gl_Position = vec4(vertices, 0.0, 1.0);
}
)");

inline constexpr auto fragment = shaders::join(shaders::prologue, R"(
uniform vec4 balls[64];
uniform float fieldHeight;
out float outColor;

void main() {
    vec2 position = vec2(gl_FragCoord.x, fieldHeight - gl_FragCoord.y) - 120.0;
    float sum = 0.0;
    for (int i = 0; i < 64; ++i) {
        vec2 c = (position - balls[i].xy) / (balls[i].z * 1.2093284);
        float k = max(0.0, 1.0 - dot(c, c));
        sum += k * k;
    }
    outColor = sum;
}
)");

} // namespace loop

} // namespace tidalume::reference
