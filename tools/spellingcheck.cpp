#include "spellingcheck.hpp"

#include "letters.hpp"
#include "scene/storytext.hpp"
#include "scenemanager/textfile.hpp"
#include "tooltext.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <hunspell/hunspell.hxx>
#include <iterator>
#include <map>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace orane
{
namespace
{

constexpr sf::Uint32 RIGHT_QUOTE = U'\u2019';
constexpr std::size_t MAX_SUGGESTIONS = 5;
/// Hunspell's own suggestions take about a second each with the French dictionary: only for
/// the first few words that no single edit puts right.
constexpr std::size_t MAX_SLOW_SUGGESTIONS = 8;
/// Beyond any French word: such a "word" gets no suggestion, whose cost grows with its length.
constexpr std::size_t MAX_SUGGESTED_LENGTH = 40;

bool isJoiner(sf::Uint32 c)
{
    return c == U'-' || c == U'\'' || c == RIGHT_QUOTE;
}

std::string fileStamp(const std::string& path)
{
    struct stat status
    {};
    if (stat(path.c_str(), &status) != 0)
        return "none";
    return std::to_string(status.st_size) + "." + std::to_string(status.st_mtim.tv_sec);
}

/// A letter without its accent, lower case, for ranking suggestions that differ only by accents.
sf::Uint32 baseLetter(sf::Uint32 c)
{
    static const std::u32string accented = U"àâäáãåçéèêëíìîïñóòôöõúùûüýÿÀÂÄÁÃÅÇÉÈÊËÍÌÎÏÑÓÒÔÖÕÚÙÛÜÝŸ";
    static const std::u32string plain = U"aaaaaaceeeeiiiinooooouuuuyyaaaaaaceeeeiiiinooooouuuuyy";
    const std::size_t at = accented.find(static_cast<char32_t>(c));
    if (at != std::u32string::npos)
        return plain[at];
    return c >= U'A' && c <= U'Z' ? c - U'A' + U'a' : c;
}

bool differsOnlyByAccents(const sf::String& a, const sf::String& b)
{
    if (a.getSize() != b.getSize())
        return false;
    for (std::size_t i = 0; i < a.getSize(); ++i) {
        if (baseLetter(a[i]) != baseLetter(b[i]))
            return false;
    }
    return true;
}

/// French elisions: the part after them is a word of its own.
std::size_t elisionLength(const sf::String& word)
{
    for (std::size_t i = 1; i < word.getSize() && i <= 7; ++i) {
        if (word[i] == U'\'' || word[i] == RIGHT_QUOTE)
            return i + 1 < word.getSize() ? i + 1 : 0;
    }
    return 0;
}

} // namespace

const char* const SpellingCheck::WORD_LIST = "lexique.txt";

SpellingCheck::SpellingCheck(std::string dictionaryDirectory, const std::string& wordList, std::string cacheFile)
    : dictionaryDirectory_(std::move(dictionaryDirectory))
    , cacheFile_(std::move(cacheFile))
{
    if (!dictionaryDirectory_.empty() && dictionaryDirectory_.back() != '/')
        dictionaryDirectory_ += '/';
    if (!TextFile::readBytes(wordList, wordListText_))
        wordListText_.clear();
    std::istringstream lines(wordListText_);
    for (std::string line; std::getline(lines, line);) {
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t'))
            line.pop_back();
        const std::size_t start = line.find_first_not_of(" \t");
        if (start == std::string::npos || line[start] == '#')
            continue;
        wordList_.insert(line.substr(start));
    }
    cacheKey_ = "orane-story spelling 2 " + fileStamp(dictionaryDirectory_ + "fr.aff") + " "
                + fileStamp(dictionaryDirectory_ + "fr.dic") + " "
                + std::to_string(std::hash<std::string>()(wordListText_));
    readCache();
}

SpellingCheck::~SpellingCheck()
{
    writeCache();
}

std::string SpellingCheck::defaultCacheFile()
{
    const char* cacheHome = std::getenv("XDG_CACHE_HOME");
    const char* home = std::getenv("HOME");
    std::string directory;
    if (cacheHome != nullptr && cacheHome[0] == '/')
        directory = cacheHome;
    else if (home != nullptr && home[0] != '\0')
        directory = std::string(home) + "/.cache";
    else
        return {};
    return directory + "/orane-story/spelling.cache";
}

bool SpellingCheck::available()
{
    if (std::ifstream(dictionaryDirectory_ + "fr.aff") && std::ifstream(dictionaryDirectory_ + "fr.dic"))
        return true;
    error_ = "the French dictionary is missing from " + dictionaryDirectory_ + " (Debian package hunspell-fr)";
    return false;
}

bool SpellingCheck::loadDictionary()
{
    if (tried_)
        return hunspell_ != nullptr;
    tried_ = true;
    if (!available())
        return false;
    // Loading the dictionary takes most of a second: a process that checks again and again (the
    // language server, at every edit) loads it once for each word list.
    static std::map<std::string, std::shared_ptr<Hunspell>> loaded;
    std::shared_ptr<Hunspell>& shared = loaded[dictionaryDirectory_ + '\n' + wordListText_];
    if (!shared) {
        shared = std::make_shared<Hunspell>((dictionaryDirectory_ + "fr.aff").c_str(),
                                            (dictionaryDirectory_ + "fr.dic").c_str());
        // Names take the forms a French proper name takes ("d’Aymar", "l’abbé Sarrazin").
        for (const std::string& word : wordList_)
            shared->add_with_affix(word, "Paris");
    }
    hunspell_ = shared;
    return true;
}

std::vector<std::pair<std::size_t, sf::String>> SpellingCheck::words(const sf::String& text)
{
    std::vector<std::pair<std::size_t, sf::String>> found;
    const std::size_t size = text.getSize();
    std::size_t i = 0;
    while (i < size) {
        if (!isLetter(text[i]) && !isDigit(text[i])) {
            ++i;
            continue;
        }
        const std::size_t start = i;
        bool digits = false;
        while (i < size) {
            if (isLetter(text[i]) || isDigit(text[i])) {
                digits = digits || isDigit(text[i]);
                ++i;
            } else if (isJoiner(text[i]) && i + 1 < size && isLetter(text[i + 1]) && i > start) {
                ++i;
            } else {
                break;
            }
        }
        if (!digits)
            found.emplace_back(start, text.substring(start, i - start));
    }
    return found;
}

SpellingCheck::Verdict& SpellingCheck::verdictOf(const std::string& word)
{
    const auto known = verdicts_.find(word);
    if (known != verdicts_.end())
        return known->second;
    Verdict verdict;
    verdict.right = wordList_.count(word) != 0 || (loadDictionary() && hunspell_->spell(word));
    if (!verdict.right) {
        const sf::String text = sf::String::fromUtf8(word.begin(), word.end());
        const std::size_t elided = elisionLength(text);
        if (elided > 0) {
            const sf::String rest = text.substring(elided);
            const std::string restWord = utf8(rest);
            verdict.right = verdictOf(restWord).right;
        }
    }
    cacheChanged_ = true;
    return verdicts_.emplace(word, std::move(verdict)).first->second;
}

bool SpellingCheck::check(const std::string& word, std::vector<std::string>* suggestions)
{
    Verdict& verdict = verdictOf(word);
    if (!verdict.right && suggestions != nullptr) {
        if (!verdict.suggested) {
            verdict.suggestions = suggest(word);
            verdict.suggested = true;
            cacheChanged_ = true;
        }
        *suggestions = verdict.suggestions;
    }
    return verdict.right;
}

std::vector<std::string> SpellingCheck::suggest(const std::string& word)
{
    if (!loadDictionary())
        return {};
    // Every word one edit away that the dictionary or the word list accepts; those that differ
    // only by accents first, as they are the usual slip in French.
    static const std::string letters = "abcdefghijklmnopqrstuvwxyzàâäçéèêëîïôöùûüÿœæ";
    static const sf::String alphabet = sf::String::fromUtf8(letters.begin(), letters.end());
    const sf::String text = sf::String::fromUtf8(word.begin(), word.end());
    if (text.getSize() > MAX_SUGGESTED_LENGTH)
        return {};
    std::vector<sf::String> candidates;
    const std::size_t size = text.getSize();
    for (std::size_t i = 0; i < size; ++i)
        candidates.push_back(text.substring(0, i) + text.substring(i + 1));
    for (std::size_t i = 0; i + 1 < size; ++i) {
        sf::String swapped = text;
        std::swap(swapped[i], swapped[i + 1]);
        candidates.push_back(swapped);
    }
    for (std::size_t i = 0; i <= size; ++i) {
        for (const sf::Uint32 letter : alphabet) {
            if (i < size) {
                sf::String changed = text;
                changed[i] = letter;
                candidates.push_back(changed);
            }
            candidates.push_back(text.substring(0, i) + sf::String(letter) + text.substring(i));
        }
    }
    std::vector<std::string> accents;
    std::vector<std::string> others;
    for (const sf::String& candidate : candidates) {
        if (candidate == text || candidate.isEmpty())
            continue;
        const std::string spelt = utf8(candidate);
        if (wordList_.count(spelt) == 0 && !hunspell_->spell(spelt))
            continue;
        std::vector<std::string>& into = differsOnlyByAccents(candidate, text) ? accents : others;
        if (std::find(into.begin(), into.end(), spelt) == into.end())
            into.push_back(spelt);
    }
    accents.insert(accents.end(), others.begin(), others.end());
    if (accents.empty() && slowSuggestions_ < MAX_SLOW_SUGGESTIONS) {
        ++slowSuggestions_;
        accents = hunspell_->suggest(word);
    }
    if (accents.size() > MAX_SUGGESTIONS)
        accents.resize(MAX_SUGGESTIONS);
    return accents;
}

std::vector<StoryFinding> SpellingCheck::findings(const std::vector<SourceText>& sources)
{
    std::vector<StoryFinding> found;
    for (const SourceText& source : sources) {
        for (const SourceText::Scene& scene : source.scenes()) {
            for (const SourceText::TextLine& text : scene.texts) {
                for (const auto& [index, word] : words(text.text)) {
                    std::string spelt = utf8(word);
                    std::vector<std::string> suggestions;
                    if (check(spelt, &suggestions))
                        continue;
                    // Initials: "J." is a word of its own.
                    const std::size_t next = index + word.getSize();
                    if (next < text.text.getSize() && text.text[next] == U'.' && check(spelt + ".", nullptr))
                        continue;
                    StoryFinding finding;
                    finding.severity = StoryFinding::SEVERITY::WARNING;
                    finding.kind = "spelling";
                    finding.file = source.path();
                    finding.line = text.line;
                    finding.column = text.column + index;
                    finding.scene = scene.name;
                    finding.message = quoted(spelt) + " is in neither the French dictionary nor " + WORD_LIST;
                    if (!suggestions.empty()) {
                        finding.message += "; did you mean ";
                        for (std::size_t s = 0; s < suggestions.size(); ++s)
                            finding.message += (s == 0                        ? ""
                                                : s + 1 == suggestions.size() ? " or "
                                                                              : ", ")
                                               + quoted(suggestions[s]);
                        finding.message += "?";
                    }
                    finding.suggestions = std::move(suggestions);
                    found.push_back(std::move(finding));
                }
            }
        }
    }
    writeCache();
    return found;
}

void SpellingCheck::readCache()
{
    if (cacheFile_.empty())
        return;
    std::ifstream file(cacheFile_, std::ios::binary);
    std::string line;
    if (!std::getline(file, line) || line != cacheKey_)
        return;
    while (std::getline(file, line)) {
        std::vector<std::string> fields;
        std::size_t start = 0;
        for (std::size_t tab = line.find('\t'); tab != std::string::npos; tab = line.find('\t', start)) {
            fields.push_back(line.substr(start, tab - start));
            start = tab + 1;
        }
        fields.push_back(line.substr(start));
        if (fields.size() < 2 || (fields[1] != "1" && fields[1] != "0" && fields[1] != "?"))
            continue;
        Verdict verdict;
        verdict.right = fields[1] == "1";
        verdict.suggested = fields[1] == "0";
        verdict.suggestions.assign(fields.begin() + 2, fields.end());
        verdicts_[fields[0]] = std::move(verdict);
    }
}

void SpellingCheck::writeCache()
{
    if (cacheFile_.empty() || !cacheChanged_)
        return;
    const std::size_t slash = cacheFile_.rfind('/');
    if (slash != std::string::npos)
        mkdir(cacheFile_.substr(0, slash).c_str(), 0755);
    // Written aside and renamed, so that two checks at once never read half a cache.
    const std::string aside = cacheFile_ + "." + std::to_string(::getpid());
    {
        std::ofstream file(aside, std::ios::binary | std::ios::trunc);
        if (!file)
            return;
        file << cacheKey_ << '\n';
        for (const auto& [word, verdict] : verdicts_) {
            file << word << '\t' << (verdict.right ? "1" : verdict.suggested ? "0" : "?");
            for (const std::string& suggestion : verdict.suggestions)
                file << '\t' << suggestion;
            file << '\n';
        }
    }
    if (std::rename(aside.c_str(), cacheFile_.c_str()) == 0)
        cacheChanged_ = false;
}

} // namespace orane
