#include "slipcheck.hpp"

#include "editdistance.hpp"
#include "scene/storytext.hpp"
#include "scene/tokens.hpp"
#include "scenemanager/textfile.hpp"
#include "tooltext.hpp"

#include <ryn/core/console.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

namespace orane
{
namespace
{

/// Precomposed Latin letters and the base letter and combining mark they decompose into.
struct Decomposition
{
    char32_t composed;
    char32_t base;
    char32_t mark;
};

const Decomposition DECOMPOSITIONS[] = {
    {U'À', U'A', 0x300}, {U'Á', U'A', 0x301}, {U'Â', U'A', 0x302}, {U'Ã', U'A', 0x303}, {U'Ä', U'A', 0x308},
    {U'Å', U'A', 0x30A}, {U'Ç', U'C', 0x327}, {U'È', U'E', 0x300}, {U'É', U'E', 0x301}, {U'Ê', U'E', 0x302},
    {U'Ë', U'E', 0x308}, {U'Ì', U'I', 0x300}, {U'Í', U'I', 0x301}, {U'Î', U'I', 0x302}, {U'Ï', U'I', 0x308},
    {U'Ñ', U'N', 0x303}, {U'Ò', U'O', 0x300}, {U'Ó', U'O', 0x301}, {U'Ô', U'O', 0x302}, {U'Õ', U'O', 0x303},
    {U'Ö', U'O', 0x308}, {U'Ù', U'U', 0x300}, {U'Ú', U'U', 0x301}, {U'Û', U'U', 0x302}, {U'Ü', U'U', 0x308},
    {U'Ý', U'Y', 0x301}, {U'à', U'a', 0x300}, {U'á', U'a', 0x301}, {U'â', U'a', 0x302}, {U'ã', U'a', 0x303},
    {U'ä', U'a', 0x308}, {U'å', U'a', 0x30A}, {U'ç', U'c', 0x327}, {U'è', U'e', 0x300}, {U'é', U'e', 0x301},
    {U'ê', U'e', 0x302}, {U'ë', U'e', 0x308}, {U'ì', U'i', 0x300}, {U'í', U'i', 0x301}, {U'î', U'i', 0x302},
    {U'ï', U'i', 0x308}, {U'ñ', U'n', 0x303}, {U'ò', U'o', 0x300}, {U'ó', U'o', 0x301}, {U'ô', U'o', 0x302},
    {U'õ', U'o', 0x303}, {U'ö', U'o', 0x308}, {U'ù', U'u', 0x300}, {U'ú', U'u', 0x301}, {U'û', U'u', 0x302},
    {U'ü', U'u', 0x308}, {U'ý', U'y', 0x301}, {U'ÿ', U'y', 0x308}, {U'Ÿ', U'Y', 0x308},
};

char32_t lower(char32_t c)
{
    if (c >= U'A' && c <= U'Z')
        return c - U'A' + U'a';
    return c;
}

StoryFinding slip(const std::string& file, std::size_t line, std::size_t column, const std::string& message)
{
    StoryFinding finding;
    finding.severity = StoryFinding::SEVERITY::WARNING;
    finding.kind = "slip";
    finding.file = file;
    finding.line = line;
    finding.column = column;
    finding.message = message;
    return finding;
}

std::string nameList(const std::vector<sf::String>& names)
{
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "" : i + 1 == names.size() ? " or " : ", ") + quoted(names[i]);
    return text;
}

} // namespace

SlipCheck::SlipCheck(const std::vector<SourceText>& sources, std::string directory, std::vector<sf::String> suspects)
    : sources_(sources)
    , directory_(std::move(directory))
    , suspects_(std::move(suspects))
{
    std::set<sf::String> names(SPECIAL_SCENE_NAMES.begin(), SPECIAL_SCENE_NAMES.end());
    for (const SourceText& source : sources_)
        for (const SourceText::Scene& scene : source.scenes())
            names.insert(scene.name);
    names_.assign(names.begin(), names.end());
}

std::u32string SlipCheck::fold(const sf::String& name, bool keepCase)
{
    std::u32string folded;
    for (const sf::Uint32 c : name) {
        const auto* found = std::find_if(std::begin(DECOMPOSITIONS), std::end(DECOMPOSITIONS),
                                         [c](const Decomposition& d) { return d.composed == c; });
        if (found != std::end(DECOMPOSITIONS)) {
            folded += keepCase ? found->base : lower(found->base);
            folded += found->mark;
        } else {
            folded += keepCase ? static_cast<char32_t>(c) : lower(static_cast<char32_t>(c));
        }
    }
    return folded;
}

std::vector<sf::String> SlipCheck::closestNames(const sf::String& missing) const
{
    const std::u32string wanted = fold(missing, false);
    std::size_t best = std::max<std::size_t>(2, wanted.size() / 3) + 1;
    std::vector<sf::String> closest;
    for (const sf::String& name : names_) {
        const std::u32string candidate = fold(name, false);
        const std::size_t gap =
            wanted.size() > candidate.size() ? wanted.size() - candidate.size() : candidate.size() - wanted.size();
        if (gap >= best)
            continue;
        const std::size_t distance = editDistance(wanted, candidate);
        if (distance < best) {
            best = distance;
            closest.clear();
        }
        if (distance == best && closest.size() < 3)
            closest.push_back(name);
    }
    return closest;
}

std::vector<StoryFinding> SlipCheck::findings() const
{
    std::vector<StoryFinding> found;
    checkLinks(found);
    checkSuspectFiles(found);
    checkStars(found);
    return found;
}

void SlipCheck::checkLinks(std::vector<StoryFinding>& found) const
{
    const auto exists = [this](const sf::String& name) {
        return std::binary_search(names_.begin(), names_.end(), name);
    };
    const auto suggest = [&](const std::string& file, const sf::String& scene, const sf::String& target,
                             std::size_t line, std::size_t column) {
        if (target.isEmpty() || exists(target))
            return;
        const std::vector<sf::String> closest = closestNames(target);
        if (closest.empty())
            return;
        StoryFinding finding = slip(
            file, line, column, "no scene is named " + quoted(target) + "; did you mean " + nameList(closest) + "?");
        finding.scene = scene;
        found.push_back(std::move(finding));
    };
    for (const SourceText& source : sources_) {
        for (const SourceText::Scene& scene : source.scenes()) {
            suggest(source.path(), scene.name, scene.forward, scene.forwardLine, scene.forwardColumn);
            for (const SourceText::Choice& choice : scene.choices)
                suggest(source.path(), scene.name, choice.target, choice.targetLine, choice.targetColumn);
        }
    }
}

void SlipCheck::checkSuspectFiles(std::vector<StoryFinding>& found) const
{
    const std::string suspectsPath = directory_ + "suspects.ini";
    const std::vector<sf::String> lines = TextFile::load(suspectsPath).lines();
    std::vector<std::pair<std::string, sf::String>> entries;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(directory_, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string file = entry->path().filename().string();
        entries.emplace_back(file, sf::String::fromUtf8(file.begin(), file.end()));
    }
    for (const sf::String& suspect : suspects_) {
        const sf::String wanted = suspect + sf::String(".txt");
        const std::string wantedFile = utf8(wanted);
        if (suspect.isEmpty() || std::ifstream(directory_ + wantedFile))
            continue;
        std::size_t line = 0;
        for (std::size_t i = 0; i < lines.size() && line == 0; ++i)
            if (trimWhitespace(lines[i]) == suspect)
                line = i + 1;
        for (const auto& [file, name] : entries) {
            if (file == wantedFile)
                continue;
            std::string how;
            if (fold(name, true) == fold(wanted, true))
                how = "by Unicode normalisation (an accent saved as a separate mark, or the other way round)";
            else if (fold(name, false) == fold(wanted, false))
                how = "by letter case";
            if (!how.empty())
                found.push_back(slip(suspectsPath, line, 0,
                                     "the file " + quoted(wanted) + " of suspect " + quoted(suspect)
                                         + " cannot be opened, but " + quoted(name) + " differs from it only " + how
                                         + ": rename one to match"));
        }
    }
}

void SlipCheck::checkStars(std::vector<StoryFinding>& found) const
{
    for (const SourceText& source : sources_) {
        for (const SourceText::Scene& scene : source.scenes()) {
            for (const SourceText::Choice& choice : scene.choices) {
                if (choice.beforeStar.isEmpty())
                    continue;
                StoryFinding finding = slip(source.path(), choice.line, choice.column,
                                            "a \"*\" inside a sentence: the game takes this line for a choice, and "
                                            "what follows for its answer");
                finding.scene = scene.name;
                found.push_back(std::move(finding));
            }
        }
    }
}

} // namespace orane
