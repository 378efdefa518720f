#pragma once

/// The look that tests and benchmark take into the effects, whose friend it is: mTime(effect) stands for effect.mTime,
/// class-wide members included.
struct TestPeer {
// NOLINTBEGIN(bugprone-macro-parentheses): it defines a function
#define TIDALUME_PEEK(member)                                                                                          \
    template <typename Effect>                                                                                         \
    static auto& member(Effect& effect) {                                                                              \
        return effect.member;                                                                                          \
    }
    // NOLINTEND(bugprone-macro-parentheses)
    TIDALUME_PEEK(mControlPoints)
    TIDALUME_PEEK(mFBONormal)
    TIDALUME_PEEK(mParticleManager)
    TIDALUME_PEEK(mTextureBG)
    TIDALUME_PEEK(mDrawFrameBuffer)
    TIDALUME_PEEK(mCurrentBufferIndex)
    TIDALUME_PEEK(mTime)
    TIDALUME_PEEK(mNextStepTime)
#undef TIDALUME_PEEK
};
