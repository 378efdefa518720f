/**
 * Looks: effects ready to use. A look keeps its own time, follows touches, fits itself to the surface and survives the
 * loss of the context. {@link com.vyn.effect.tidalume.looks.Look} says how all of them are used.
 */
@ParametersAreNonnullByDefault
package com.vyn.effect.tidalume.looks;

import javax.annotation.ParametersAreNonnullByDefault;
