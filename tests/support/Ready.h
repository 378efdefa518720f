#pragma once

/// An effect after init and setScreenSize.
/// @param arguments  those of init
template <typename Effect>
struct Ready : Effect {
    template <typename... Arguments>
    Ready(int width, int height, Arguments... arguments) {
        this->init(arguments...);
        this->setScreenSize(width, height);
    }
};
