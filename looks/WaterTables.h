#pragma once

/// The numbers behind WaterLook. Times are in seconds, lengths in texels of the field unless said otherwise.
namespace tidalume::water {

inline constexpr float stepTime = 1.0F / 60;
inline constexpr float maxPasses =
    24; // of a step, on surfaces so large that rings could not be as fast as they are set

/// What one pass does.
inline constexpr float brookCourant = 0.70710678F; // texels that a ring runs
inline constexpr float brookDecay = 0.995F;        // of a ring's height: its velocity loses 1 %
/// Every drop stops the pond for a moment, which raises the shortest waves, by 1 / sqrt(1 - 2 c^2) where a ring runs c
/// texels a pass; drops one after the other would pile them up where that is much more than 1.
inline constexpr float pondTimeStep = 0.08F;
inline constexpr float pondWaveSpeed = 2;
inline constexpr float pondGridSpacing = 0.4F;
inline constexpr float pondCourant = pondTimeStep * pondWaveSpeed / pondGridSpacing;
inline constexpr float pondStepRate = 100; // an update is a step

inline constexpr float brookDrop = 2.2F;    // height that a finger of strength 1 raises when it comes down
inline constexpr float brookStroke = 0.16F; // and in each step in which it moves
inline constexpr float brookLimit = 6;      // of waves that meet, however many strokes there were
inline constexpr float drainFrom = 0.02F;   // mean height
inline constexpr float drain = 0.99F;       // share of the heights that a step leaves
inline constexpr float pondDrop = 1.2F;     // but below 1, since every drop squares all heights
inline constexpr float pondDropLimit = 0.95F;
inline constexpr float pondPause = 4;  // radii that a ring runs before the next drop, since they swing each other up
inline constexpr float pondHeight = 3; // of the highest wave that a drop raises, in its strengths
inline constexpr float pondLimit = 12; // of waves that meet, however many drops there were
inline constexpr float pondDistance = 3.7F; // between the drops of a moving finger, in its radii

/// From steepness 1 to shorter sides: rings of both simulations look alike, though a brook's are higher.
inline constexpr float brookRelief = 0.333F;
inline constexpr float pondRelief = 0.139F;

inline constexpr float usualSteepness = 0.4F;
inline constexpr float usualDepth = 0.07F;
inline constexpr float visible = 1.0F / 255; // difference of a channel
/// Change of a channel with the slope: more than a quarter of 12.6 shorter sides times the sky's 0.3, and more than the
/// steepest part of a highlight.
inline constexpr float skyGain = 4;
inline constexpr float lightGain = 8;

} // namespace tidalume::water
