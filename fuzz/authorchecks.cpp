// The authors' checks: one input becomes a story tree on disk (the layout of the storyloader
// target), whose files are read for their annotations and texts and checked: the facts' proof
// over play when the story loads, typography, glyphs and slips, and the spelling of the words.
// Every finding must stand at a place inside its file.
//
// Input layout: files separated by a line "--8<--". The first is suspects.ini, the second
// story.txt; each later one is written under the name of the next distinct suspect.

#include "authorchecks.hpp"

#include "factflow.hpp"
#include "fuzzing.hpp"
#include "scene/storytext.hpp"
#include "scenemanager/scenemanager.hpp"
#include "scenemanager/textfile.hpp"
#include "spellingcheck.hpp"
#include "tooltext.hpp"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

const std::string SEPARATOR = "\n--8<--\n";
/// Few enough that one input stays far under the run's time limit per input.
constexpr std::size_t STATE_LIMIT = 20000;
constexpr std::size_t WORDS_SPELT = 200;

std::vector<std::string> splitFiles(const std::string& input)
{
    std::vector<std::string> files;
    std::size_t start = 0;
    for (std::size_t found; (found = input.find(SEPARATOR, start)) != std::string::npos;
         start = found + SEPARATOR.size())
        files.push_back(input.substr(start, found - start));
    files.push_back(input.substr(start));
    return files;
}

std::filesystem::path makeFolder()
{
    const char* shm = "/dev/shm";
    std::string pattern =
        (std::filesystem::is_directory(shm) ? std::filesystem::path(shm) : std::filesystem::temp_directory_path())
        / "orane-fuzz-authors-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr)
        std::abort();
    return pattern;
}

/// How many lines each file of the tree holds, as an editor counts them.
std::size_t lineCount(const std::string& bytes)
{
    std::size_t lines = 1;
    for (const char c : bytes)
        lines += c == '\n' ? 1 : 0;
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::filesystem::path folder = makeFolder();
    static orane::SpellingCheck spelling("/usr/share/hunspell/", "", "");
    fuzzing::installAbortingAssertHandler();
    const std::vector<std::string> files = splitFiles(std::string(reinterpret_cast<const char*>(data), size));
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        std::filesystem::remove_all(entry.path());
    const std::string directory = folder.string() + "/";

    std::map<std::string, std::size_t> lines;
    const auto write = [&](const std::string& name, const std::string& bytes) {
        if (name.size() > 200 || name.find('/') != std::string::npos || name.find('\0') != std::string::npos)
            return;
        std::ofstream(directory + name, std::ios::binary) << bytes;
        lines[directory + name] = lineCount(bytes);
    };
    write("suspects.ini", files[0]);
    if (files.size() > 1)
        write("story.txt", files[1]);
    std::vector<std::string> suspectFiles;
    std::set<std::string> seen;
    for (const sf::String& line : orane::TextFile::decode(files[0]).lines()) {
        const std::string name = ryn::console::toUtf8(orane::trimWhitespace(line).toWideString()) + ".txt";
        if (seen.insert(name).second)
            suspectFiles.push_back(name);
    }
    for (std::size_t k = 0; k + 2 < files.size() && k < suspectFiles.size(); ++k)
        write(suspectFiles[k], files[k + 2]);

    ryn::console::Capture quiet;
    orane::SceneManager manager(nullptr);
    manager.setNewSceneCallback([](const orane::Scene&) {});
    manager.setChoiceAppliedCallback([](const orane::Choice&) {});
    const bool loads = manager.loadStoryFrom(directory);

    orane::AuthorStory story;
    story.story = loads ? &manager.story() : nullptr;
    for (const auto& suspect : manager.suspectsVisited())
        story.suspects.push_back(suspect.first);
    story.sources = orane::readSourceTexts(directory, story.suspects);
    story.directory = directory;
    orane::AuthorCheckOptions options;
    options.continuity = false; // below, with a bound on the states of play
    options.spelling = false;   // below, without the dictionary's slow suggestions
    options.oraneFont = "/usr/share/fonts/opentype/dancingscript/DancingScript-Regular.otf";
    options.nathanFont = "/usr/share/fonts/opentype/kaushanscript/KaushanScript-Regular.otf";
    std::vector<orane::StoryFinding> findings = orane::runAuthorChecks(story, options);
    if (loads) {
        orane::FactFlow flow(manager.story(), story.sources);
        flow.solve(STATE_LIMIT);
        const std::vector<orane::StoryFinding> proved = flow.findings();
        findings.insert(findings.end(), proved.begin(), proved.end());
        (void)flow.factsAtEndings();
    }
    std::size_t spelt = 0;
    for (const orane::SourceText& source : story.sources)
        for (const auto& scene : source.scenes())
            for (const auto& text : scene.texts)
                for (const auto& word : orane::SpellingCheck::words(text.text))
                    if (spelt++ < WORDS_SPELT)
                        (void)spelling.check(orane::utf8(word.second), nullptr);

    for (const orane::StoryFinding& finding : findings) {
        const auto file = lines.find(finding.file);
        if (file != lines.end())
            fuzzing::require(finding.line <= file->second, "a finding stands on a line of its file");
        fuzzing::require(!finding.message.empty(), "a finding says something");
    }
    return 0;
}
