#include "scene/tokens.hpp"

#include "scene/codepoints.hpp"

#include <algorithm>

namespace orane
{

bool isSpecialSceneName(const sf::String& name)
{
    // Compared as views: the checks ask this of every link of a story.
    const CodePointView view = viewOf(name);
    const auto sameName = [view](const sf::String& reserved) { return viewOf(reserved) == view; };
    return std::any_of(SPECIAL_SCENE_NAMES.begin(), SPECIAL_SCENE_NAMES.end(), sameName);
}

} // namespace orane
