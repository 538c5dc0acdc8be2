#include "choicelabel.hpp"

#include "scenemanager/fixedscenes.hpp"
#include "scenemanager/playrules.hpp"

#include <map>

namespace orane
{

sf::String choiceLabel(const Story& story, const PlayPosition& position, std::size_t choice)
{
    const bool atHub = position.scene == story.hubScene();
    if (!atHub && position.scene != story.arrestScene())
        return story.sceneAt(position.scene)->choices[choice].briefDescription;
    std::map<sf::String, bool> investigated;
    for (std::size_t suspect = 0; suspect < story.suspects().size(); ++suspect)
        investigated.emplace(story.suspects()[suspect], position.investigated.contains(suspect));
    Scene composed;
    if (atHub)
        composeHub(composed, investigated, PlayRules::hubOffersArrest(position));
    else
        composeArrest(composed, investigated);
    return composed.choices[choice].briefDescription;
}

} // namespace orane
