#include "oraneresourcemanager.hpp"

#include "resourceids.hpp"

#include <ryn/core/components.hpp>
#include <ryn/core/pathmanager.hpp>

namespace orane
{

bool OraneResourceManager::init()
{
    return true;
}

bool OraneResourceManager::load()
{
    const ryn::PathManager& paths = *ryn::components().pathManager();
    const std::string fonts = paths.fontsPath();
    loadFont(FontId::Monofonto, fonts + "monofonto.ttf");
    loadFont(FontId::Nathan, fonts + "nathan.ttf");
    loadFont(FontId::Orane, fonts + "orane.ttf");

    const std::string textures = paths.texturesPath();
    loadTexture(TextureId::Paper, textures + "paper.png");
    loadTexture(TextureId::PaperBloodLeft, textures + "paper_blood_left.png");
    loadTexture(TextureId::PaperBloodRight, textures + "paper_blood_right.png");
    loadTexture(TextureId::Shadow, textures + "shadow.png");
    loadTexture(TextureId::GameBackground, textures + "game_background.png");
    return true;
}

} // namespace orane
