#pragma once

#include "scene/diagnostic.hpp"
#include "scenemanager/story.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

/// Places in a story as every orane-story command gives them: "file:line" with the line as
/// editors count it (from 1, comment lines included), "file" alone when there is no line, and
/// the stories directory for what belongs to no file.
namespace orane::storyplaces
{

std::string place(const std::string& file, std::uint32_t fileLine, const std::string& directory);
/// Where a diagnostic points.
std::string placeOf(const Diagnostic& diagnostic, const std::string& directory);
/// A stored scene's SCENE line.
std::string scenePlace(const Story& story, const sf::String& scene, const std::string& directory);
/// The "*" line of one of a stored scene's choices.
std::string choicePlace(const Story& story, const sf::String& scene, std::size_t choice, const std::string& directory);
/// The first line of suspects.ini that names `suspect`.
std::string suspectPlace(const Story& story, const sf::String& suspect);

} // namespace orane::storyplaces
