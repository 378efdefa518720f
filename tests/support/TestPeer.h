#pragma once

#include "testing/Peek.h"

/// The tests' look into the effects, whose friend it is.
struct TestPeer {
    TIDALUME_PEEK(mProgramMetaball)
    TIDALUME_PEEK(mProgramDraw)
    TIDALUME_PEEK(mControlPoints)
    TIDALUME_PEEK(mIndices)
    TIDALUME_PEEK(mRectTexcoords)
    TIDALUME_PEEK(mParticleManager)
    TIDALUME_PEEK(mTextureBG)
    TIDALUME_PEEK(mDrawFrameBuffer)
    TIDALUME_PEEK(mTerm)
    TIDALUME_PEEK(mCurrentBufferIndex)
    TIDALUME_PEEK(mTime)
    TIDALUME_PEEK(mNextStepTime)
};
