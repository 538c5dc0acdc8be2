#pragma once

#include "book/page.hpp"
#include "book/textlayout.hpp"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/Text.hpp>
#include <SFML/System/String.hpp>
#include <SFML/System/Vector2.hpp>

#include <array>
#include <string>
#include <unordered_map>
#include <vector>

namespace orane
{

/// Measures pages and choice buttons as the game sets them: the notebook's geometry, the two
/// handwriting fonts at the notebook's size, the notebook's own line breaker and a choice button
/// built the way the game builds one. Glyphs are rendered into textures, so an OpenGL context
/// (and under X11 a display) must be available.
class PageMeasure
{
public:
    /// Where the fonts are looked for, in order: "resources/fonts/" under the working directory,
    /// the same beside `executableDirectory`, then the files of Debian's font packages.
    static std::vector<std::string> fontDirectories(const std::string& executableDirectory);

    /// The files of Orane's and Nathan's fonts: "orane.ttf" and "nathan.ttf" from the first
    /// directory that holds each, Debian's own font files when none does.
    static std::array<std::string, 2> fontFiles(const std::vector<std::string>& directories);

    /// Loads "orane.ttf" and "nathan.ttf" from the first directory that holds them (Debian's
    /// own font files when none does). False, with the reason in error(), when one is missing.
    [[nodiscard]] bool loadFonts(const std::vector<std::string>& directories);
    const std::string& error() const { return error_; }
    /// The files the fonts were read from.
    const std::string& oraneFontPath() const { return fontPaths_[0]; }
    const std::string& nathanFontPath() const { return fontPaths_[1]; }

    /// Width and height of the space a page gives its writer (the page less its padding).
    sf::Vector2f writingArea() const;

    /// `text` broken into lines as the notebook breaks it on `writer`'s page.
    sf::String brokenText(const sf::String& text, PageWriter writer);
    /// How far below the top of the writing area the broken text reaches.
    float textBottom(const sf::String& text, PageWriter writer);
    /// Nathan's page once the answer `longDescription` has been written under `nathanText`.
    sf::String withAnswer(const sf::String& nathanText, const sf::String& longDescription);

    /// How far right of the text column's left edge the button of `label` reaches.
    float buttonWidth(const sf::String& label);
    /// How far below the top of the writing area the last of the buttons of `labels` reaches
    /// when they are laid under `pageText` on Nathan's page; the text's bottom when there is none.
    float buttonsBottom(const sf::String& pageText, const std::vector<sf::String>& labels);

    /// Measures are remembered by the texts they were taken from, so a story checked again
    /// after a small edit measures only what changed. This forgets what was not asked for
    /// since the previous call: a long editing session keeps only what the story still holds.
    void forgetUnused();

private:
    /// Results keyed by the code points they were measured from.
    template <typename Value>
    struct Memo
    {
        std::unordered_map<std::u32string, Value> recent;
        std::unordered_map<std::u32string, Value> older;
        /// Null when not remembered; found in the older half, the result is kept for the next round.
        const Value* find(const std::u32string& key);
        const Value& keep(std::u32string key, Value value);
        void age();
    };

    /// The bounds of the choice button of `label` laid at the origin.
    const sf::FloatRect& buttonBounds(const sf::String& label);
    float measureButtonsBottom(const sf::String& pageText, const std::vector<sf::String>& labels);
    /// What the play state takes for the height of the last page's text.
    float textHeight(const sf::String& brokenPageText, PageWriter writer);

    Memo<sf::String> broken_;
    Memo<float> textBottoms_;
    Memo<sf::FloatRect> buttonBounds_;
    Memo<float> buttonsBottoms_;
    sf::Font fonts_[2];
    std::string fontPaths_[2];
    std::vector<sf::Text> writerTexts_;
    /// The writers' texts measured glyph by glyph, as sf::Text would lay them.
    std::vector<TextLayout> writerLayouts_;
    std::string error_;
};

} // namespace orane
