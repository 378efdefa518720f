#pragma once

namespace tidalume {

/// Which row of a texture is the top of the picture that it shows.
enum class PictureTop {
    LastRow, ///< as in textures that have been drawn into
    FirstRow ///< as in bitmaps that have been uploaded from the top
};

} // namespace tidalume
