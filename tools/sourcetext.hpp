#pragma once

#include "storyfinding.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace orane
{

/// One story file read the way the game reads it, keeping what the game throws away: the
/// fact annotations of its comment lines ("# sets: a, b" and "# needs: a") and the place of
/// every line of text, for the authors' checks. Lines and columns count from 1, comment lines
/// included, as editors show them.
class SourceText
{
public:
    /// A fact named in an annotation, and where.
    struct Fact
    {
        sf::String name;
        std::size_t line = 0;
        std::size_t column = 0;
    };

    struct Annotations
    {
        std::vector<Fact> sets;
        std::vector<Fact> needs;
    };

    /// A line of text a reader sees, with the column of its first character.
    struct TextLine
    {
        enum class KIND
        {
            ORANE,
            NATHAN,
            LABEL,  ///< what follows a choice's "*", shown on its button in Nathan's hand
            ANSWER, ///< written in Nathan's hand when the choice is taken
        };
        KIND kind = KIND::ORANE;
        std::size_t line = 0;
        std::size_t column = 1;
        sf::String text;
        /// For LABEL and ANSWER: the choice's index in its scene.
        std::size_t choice = 0;
        /// True for the last ORANE or NATHAN line of its scene: it ends the page.
        bool endsPage = false;
    };

    struct Choice
    {
        /// The "*" line and its column.
        std::size_t line = 0;
        std::size_t column = 0;
        /// What stands before the "*" on its line, trimmed: text there means the star was
        /// written inside a sentence.
        sf::String beforeStar;
        /// The "->" line and where the target's name starts; 0 when there is none.
        std::size_t targetLine = 0;
        std::size_t targetColumn = 0;
        sf::String target;
        Annotations facts;
    };

    struct Scene
    {
        sf::String name;
        /// The SCENE line.
        std::size_t line = 0;
        Annotations facts;
        std::vector<Choice> choices;
        std::vector<TextLine> texts;
        sf::String forward;
        std::size_t forwardLine = 0;
        std::size_t forwardColumn = 0;
    };

    /// Reads `bytes`, the content of the file at `path` (any bytes: what is not UTF-8 ends the
    /// reading at that line, which the game reports itself).
    static SourceText read(std::string path, std::string bytes);
    /// Reads the file at `path`; an unreadable file gives no scene.
    static SourceText load(const std::string& path);

    [[nodiscard]] const std::string& path() const { return path_; }
    /// In file order, duplicates included.
    [[nodiscard]] const std::vector<Scene>& scenes() const { return scenes_; }
    /// Annotations that cannot be read: misspelt ("# need:", "#sets:"), outside any scene,
    /// or naming something that is no fact.
    [[nodiscard]] const std::vector<StoryFinding>& annotationFindings() const { return findings_; }

private:
    void readLine(const sf::String& line, std::size_t number);
    void readComment(const sf::String& line, std::size_t number);
    void readFactList(const sf::String& line, std::size_t start, bool sets, std::size_t number);
    void annotationWarning(std::size_t number, std::size_t column, const std::string& message);
    void finishScene();

    std::string path_;
    std::vector<Scene> scenes_;
    std::vector<StoryFinding> findings_;
    // Reading state within the current scene.
    bool inScene_ = false;
    bool choicesBegun_ = false;
    int writer_ = 0; ///< 0 none, 1 Orane, 2 Nathan
};

/// True for a code point that may stand in a fact's name: a letter (accented ones included),
/// a digit or "_".
bool isFactCharacter(sf::Uint32 c);

} // namespace orane
