#pragma once

#include "book/book.hpp"
#include "scene/scene.hpp"

#include <SFML/Graphics/Color.hpp>
#include <SFML/Graphics/Font.hpp>
#include <SFML/System/String.hpp>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

namespace booktesting
{

/// The solid colours of the test textures (bookenvironment.cpp): a pixel tells its texture.
const sf::Color TEST_PAPER(236, 226, 200);
const sf::Color TEST_BLOOD_LEFT(150, 20, 20);
const sf::Color TEST_BLOOD_RIGHT(70, 110, 160);

inline sf::String u8(const std::string& text)
{
    return sf::String::fromUtf8(text.begin(), text.end());
}

inline std::string utf8(const sf::String& text)
{
    const std::basic_string<sf::Uint8> bytes = text.toUtf8();
    return std::string(bytes.begin(), bytes.end());
}

/// A font of the build's resource tree ("orane.ttf", "nathan.ttf"), loaded once per run.
inline const sf::Font& resourceFont(const std::string& name)
{
    static std::map<std::string, std::unique_ptr<sf::Font>> fonts;
    std::unique_ptr<sf::Font>& font = fonts[name];
    if (!font) {
        font = std::make_unique<sf::Font>();
        const std::string path = std::string(ORANE_BINARY_DIR) + "/resources/fonts/" + name;
        if (!font->loadFromFile(path))
            ADD_FAILURE() << "cannot load " << path
                          << ": the build makes it from Debian's font packages "
                             "(sh scripts/setup.sh installs them; build the target orane_resources)";
    }
    return *font;
}

inline orane::Scene scene(const std::string& oraneText, const std::string& nathanText)
{
    orane::Scene scene;
    scene.oraneText = u8(oraneText);
    scene.nathanText = u8(nathanText);
    return scene;
}

/// Loads the book's resources (once is enough) and writes `scenes` short scenes in it.
inline void fill(orane::Book& book, int scenes)
{
    if (book.getPages().empty()) {
        ASSERT_TRUE(book.loadResources());
    }
    for (int i = 0; i < scenes; ++i)
        book.addScene(scene("Orane, page " + std::to_string(book.getPages().size()) + ".\nJe vous écris vite.",
                            "Nathan.\nRépondez-moi."));
}

} // namespace booktesting
