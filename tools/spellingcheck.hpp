#pragma once

#include "sourcetext.hpp"
#include "storyfinding.hpp"

#include <SFML/System/String.hpp>

#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

class Hunspell;

namespace orane
{

/// French spelling of the texts a reader sees, with Hunspell and Debian's French dictionary,
/// and the story's own word list of proper names and words of the period: "lexique.txt" beside
/// the story files, one word per line, "#" starting a comment line (the game never reads it).
/// Verdicts are kept in a cache file between runs, so that a story already checked is checked
/// again without loading the dictionary.
class SpellingCheck
{
public:
    /// The name of the word list in a stories directory.
    static const char* const WORD_LIST;

    /// `dictionaryDirectory` holds fr.aff and fr.dic (Debian: /usr/share/hunspell);
    /// `wordList` may name a file that does not exist. `cacheFile` empty: no cache.
    SpellingCheck(std::string dictionaryDirectory, const std::string& wordList, std::string cacheFile);
    ~SpellingCheck();
    SpellingCheck(const SpellingCheck&) = delete;
    SpellingCheck& operator=(const SpellingCheck&) = delete;

    /// Where the cache goes by default: under $XDG_CACHE_HOME (or ~/.cache) /orane-story/.
    static std::string defaultCacheFile();

    /// False, with the reason in error(), when the dictionary cannot be read.
    [[nodiscard]] bool available();
    [[nodiscard]] const std::string& error() const { return error_; }

    /// A warning for every word of the texts that the dictionary and the word list reject.
    [[nodiscard]] std::vector<StoryFinding> findings(const std::vector<SourceText>& sources);

    /// True when `word` is spelt right; fills `suggestions` (best first) when it is not.
    bool check(const std::string& word, std::vector<std::string>* suggestions);

    /// The words of `text` that a spelling check looks at, with their first code point's index:
    /// letters joined by inner hyphens and apostrophes; words with digits are left out.
    static std::vector<std::pair<std::size_t, sf::String>> words(const sf::String& text);

private:
    struct Verdict
    {
        bool right = true;
        bool suggested = false;
        std::vector<std::string> suggestions;
    };

    bool loadDictionary();
    Verdict& verdictOf(const std::string& word);
    std::vector<std::string> suggest(const std::string& word);
    void readCache();
    void writeCache();

    std::string dictionaryDirectory_;
    std::set<std::string> wordList_;
    std::string wordListText_;
    std::string cacheFile_;
    std::string cacheKey_;
    std::shared_ptr<Hunspell> hunspell_;
    bool tried_ = false;
    std::string error_;
    /// Looked up for every word of every text: hashed.
    std::unordered_map<std::string, Verdict> verdicts_;
    bool cacheChanged_ = false;
    std::size_t slowSuggestions_ = 0;
};

} // namespace orane
