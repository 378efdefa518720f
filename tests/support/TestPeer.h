#pragma once

/// The tests' one look into private members: TestPeer::mTime(effect) is effect.mTime, class-wide members
/// included.
struct TestPeer {
#define TIDALUME_PEEK(member)                                                                                          \
    template <typename Effect>                                                                                         \
    static auto& member(Effect& effect) {                                                                              \
        return effect.member;                                                                                          \
    }

    TIDALUME_PEEK(mControlPoints)
    TIDALUME_PEEK(mIndices)
    TIDALUME_PEEK(mCoreOfCometVertices)
    TIDALUME_PEEK(mTailOfCometVertices)
    TIDALUME_PEEK(mRectTexcoords)
    TIDALUME_PEEK(mParticleManager)
    TIDALUME_PEEK(mTextureBG)
    TIDALUME_PEEK(mDrawFrameBuffer)
    TIDALUME_PEEK(mTerm)
    TIDALUME_PEEK(mCurrentBufferIndex)
    TIDALUME_PEEK(mTime)
    TIDALUME_PEEK(mNextStepTime)

#undef TIDALUME_PEEK
};
