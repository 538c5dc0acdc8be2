#pragma once

#include <SFML/System/String.hpp>

#include <array>

namespace orane
{

/// Words of the story language. A line holds a token when the token's text occurs anywhere in
/// it, case-sensitively; within a scene they are tried in the order FORWARD, ORANE, NATHAN, "*",
/// "->", and the first that matches decides what the line is.
inline const sf::String TOKEN_SCENE = L"SCENE";
inline const sf::String TOKEN_ORANE = L"ORANE";
inline const sf::String TOKEN_NATHAN = L"NATHAN";
inline const sf::String TOKEN_FORWARD = L"FORWARD";
inline const sf::String TOKEN_CHOICE = L"*";
inline const sf::String TOKEN_NEXT_SCENE = L"->";

/// The closing letter of a successful investigation (the game writes it unless the story does).
inline const sf::String END_SCENE_NAME = L"end";
/// The farewell of a failed investigation (the game writes it unless the story does).
inline const sf::String GAME_OVER_SCENE_NAME = L"game_over";
/// Where the player picks the next suspect; always composed by the game.
inline const sf::String HUB_SCENE_NAME = L"hub";
/// Where the player accuses a suspect; always composed by the game.
inline const sf::String ARREST_SCENE_NAME = L"arrest";

/// Scene names whose content comes from the program rather than from the story files.
inline const std::array<sf::String, 4> SPECIAL_SCENE_NAMES = {END_SCENE_NAME, GAME_OVER_SCENE_NAME, HUB_SCENE_NAME,
                                                              ARREST_SCENE_NAME};

/// True when `name` is one of SPECIAL_SCENE_NAMES, compared code point by code point.
bool isSpecialSceneName(const sf::String& name);

/// Who writes the text lines being read.
enum class Writer
{
    None,
    Orane,
    Nathan,
};

} // namespace orane
