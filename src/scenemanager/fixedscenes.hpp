#pragma once

#include "scene/scene.hpp"

#include <SFML/System/String.hpp>

#include <map>

namespace orane
{

/// Where play starts; every story must define a scene of this name.
inline const sf::String START_SCENE_NAME = L"begin";
/// A suspect's investigation starts at the scene named after the suspect with this suffix.
inline const sf::String SUSPECT_BEGIN_SUFFIX = L"_begin";
/// Accusing a suspect leads to the scene named after the suspect with this suffix.
inline const sf::String SUSPECT_ARREST_SUFFIX = L"_arrest";

/// The farewell of a failed investigation, in Nathan's hand; stored under "game_over".
Scene makeGameOverScene();

/// The closing letter of a successful investigation; stored under "end".
Scene makeEndScene();

/// Rewrites the hub's text and choices: one choice per suspect not yet visited, in map order,
/// then the arrest choice when `offerArrest`. Other fields are left as they are.
void composeHub(Scene& hub, const std::map<sf::String, bool>& suspectsVisited, bool offerArrest);

/// Rewrites the arrest scene's text and choices: the retreat to the hub, then one choice per
/// visited suspect, in map order. Other fields are left as they are.
void composeArrest(Scene& arrest, const std::map<sf::String, bool>& suspectsVisited);

} // namespace orane
