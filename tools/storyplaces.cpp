#include "storyplaces.hpp"

namespace orane::storyplaces
{

std::string place(const std::string& file, std::uint32_t fileLine, const std::string& directory)
{
    if (file.empty())
        return directory;
    return fileLine == 0 ? file : file + ":" + std::to_string(fileLine);
}

std::string placeOf(const Diagnostic& diagnostic, const std::string& directory)
{
    return place(diagnostic.file, diagnostic.fileLine, directory);
}

std::string scenePlace(const Story& story, const sf::String& scene, const std::string& directory)
{
    const SceneSource* source = story.findSource(scene);
    return source == nullptr ? directory : place(story.pathOf(*source), source->scene.fileLine, directory);
}

std::string choicePlace(const Story& story, const sf::String& scene, std::size_t choice, const std::string& directory)
{
    const SceneSource* source = story.findSource(scene);
    if (source == nullptr)
        return directory;
    if (choice >= source->choices.size())
        return scenePlace(story, scene, directory);
    return place(story.pathOf(*source), source->choices[choice].label.fileLine, directory);
}

std::string suspectPlace(const Story& story, const sf::String& suspect)
{
    return place(story.suspectsFile(), story.suspectFileLine(suspect), story.suspectsFile());
}

} // namespace orane::storyplaces
