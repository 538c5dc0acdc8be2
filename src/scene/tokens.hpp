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

/// Scene names whose content comes from the program rather than from the story files.
/// Index 0 "end", 1 "game_over", 2 "hub", 3 "arrest": the indices are relied upon.
inline const std::array<sf::String, 4> SPECIAL_SCENE_NAMES = {
    sf::String(L"end"), sf::String(L"game_over"), sf::String(L"hub"), sf::String(L"arrest")};

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
