#pragma once

#include <cstdint>

namespace orane
{

/// Fonts of the game, loaded from the path manager's fonts folder.
enum class FontId : std::uint32_t
{
    Monofonto = 0,
    Orane = 1,
    Nathan = 2,
};

/// Textures of the game, loaded from the path manager's textures folder.
enum class TextureId : std::uint32_t
{
    Shadow = 0,
    Paper = 1,
    PaperBloodLeft = 2,
    PaperBloodRight = 3,
    GameBackground = 4,
};

} // namespace orane
