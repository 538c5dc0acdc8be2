#include "scene/tokens.hpp"

#include <algorithm>

namespace orane
{

bool isSpecialSceneName(const sf::String& name)
{
    return std::find(SPECIAL_SCENE_NAMES.begin(), SPECIAL_SCENE_NAMES.end(), name)
           != SPECIAL_SCENE_NAMES.end();
}

} // namespace orane
