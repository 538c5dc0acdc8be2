#pragma once

#include "scenemanager/story.hpp"
#include "sourcetext.hpp"
#include "storyfinding.hpp"

#include <SFML/System/String.hpp>

#include <map>
#include <string>
#include <vector>

namespace orane
{
class SpellingCheck;

/// What the authors' checks look at: the story as the game loaded it and the text of its files
/// (from disk, or an editor's unsaved buffers).
struct AuthorStory
{
    /// The story as the game loaded it; null when it did not load (then nothing is proved over
    /// play).
    const Story* story = nullptr;
    /// The suspects in the game's order.
    std::vector<sf::String> suspects;
    /// story.txt then each suspect's file, in the order the game reads them.
    std::vector<SourceText> sources;
    /// The stories directory, ending with '/': the word list is read from there.
    std::string directory;
};

/// Which checks run. Each kind of prose check can be switched off on its own.
struct AuthorCheckOptions
{
    bool continuity = true;
    bool spelling = true;
    bool typography = true;
    bool glyphs = true;
    bool slips = true;
    /// Hunspell's French dictionary (fr.aff, fr.dic).
    std::string dictionaryDirectory = "/usr/share/hunspell/";
    /// Where spelling verdicts are kept between runs; empty for none.
    std::string spellingCache;
    /// A spelling check kept between runs by a caller that checks again and again (an editor's
    /// server), its word list already read; null: one is made for this run. Not owned.
    SpellingCheck* spellingCheck = nullptr;
    /// The files of Orane's and Nathan's fonts, for the glyph check.
    std::string oraneFont;
    std::string nathanFont;
};

/// Runs the annotation, continuity and fair-play, and prose checks over `story`, and answers
/// every finding in reading order (file, line, column). This is the entry point for `check`
/// and for editors: it prints nothing and reads no story file itself.
std::vector<StoryFinding> runAuthorChecks(const AuthorStory& story, const AuthorCheckOptions& options);

/// Reads story.txt and the suspects' files of `directory` (ending with '/') from disk, in the
/// game's order, for runAuthorChecks.
std::vector<SourceText> readSourceTexts(const std::string& directory, const std::vector<sf::String>& suspects);

} // namespace orane
