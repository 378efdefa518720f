#pragma once

/// A look into a private member, for a class that is the effects' friend: TIDALUME_PEEK(mTime) makes mTime(effect)
/// stand for effect.mTime, class-wide members included.
// NOLINTBEGIN(bugprone-macro-parentheses): it defines a function
#define TIDALUME_PEEK(member)                                                                                          \
    template <typename Effect>                                                                                         \
    static auto& member(Effect& effect) {                                                                              \
        return effect.member;                                                                                          \
    }
// NOLINTEND(bugprone-macro-parentheses)
