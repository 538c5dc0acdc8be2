#pragma once

#include "book/page.hpp"

#include <SFML/Graphics/Text.hpp>
#include <SFML/System/Vector2.hpp>

#include <cstdint>
#include <vector>

namespace ryn
{
class ResourceManager;
}

namespace orane
{

struct Choice;
struct Scene;

/// The pages written so far, two per scene (Orane's on the left, Nathan's on the right), each
/// broken into lines in its writer's hand, ink and size.
class BookText
{
public:
    /// `pageSize` less `textPadding` on both sides is the width a line may take.
    BookText(sf::Vector2f pageSize, sf::Vector2f textPadding);

    /// The two writers' fonts; needed before addScene.
    void loadFonts(ryn::ResourceManager& resources);

    /// Writes the scene as a new spread behind the others.
    void addScene(const Scene& scene);
    /// Adds the answer's long description at the end of the last page, on its own line.
    void appendChoice(const Choice& choice);
    /// Breaks `page`'s text to the page width, measured with its writer's text object.
    static void wrapText(Page& page, std::vector<sf::Text>& writerTexts, sf::Vector2f pageSize,
                         sf::Vector2f textPadding);
    /// Height of the last page's text as set; needs at least one page.
    [[nodiscard]] float lastTextHeight() const;

    [[nodiscard]] const std::vector<Page>& pages() const { return pages_; }
    [[nodiscard]] sf::Vector2f textPadding() const { return textPadding_; }
    /// The text object that sets `page`: its string and placement are the caller's to change.
    /// Null before loadFonts.
    [[nodiscard]] sf::Text* writerText(const Page& page);
    /// Changes whenever any page's text does.
    [[nodiscard]] std::uint64_t revision() const { return revision_; }

private:
    void wrap(Page& page);

    std::vector<Page> pages_;
    std::vector<sf::Text> writerTexts_;
    sf::Vector2f pageSize_;
    sf::Vector2f textPadding_;
    std::uint64_t revision_ = 0;
};

} // namespace orane
