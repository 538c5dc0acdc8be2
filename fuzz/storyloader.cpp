// The whole story loader: one input becomes a story tree on disk, which is loaded and, when it
// loads, played to an end along choices picked by the input's own bytes.
//
// Input layout: files separated by a line "--8<--". The first is suspects.ini, the second
// story.txt; each later one is written under the name of the next distinct suspect, in the
// order suspects.ini lists them.

#include "fuzzing.hpp"
#include "scene/storytext.hpp"
#include "scenemanager/scenemanager.hpp"
#include "scenemanager/textfile.hpp"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

const std::string SEPARATOR = "\n--8<--\n";
/// Far more than any path through a story that this input size can hold.
constexpr std::size_t MAX_CHOICES_TAKEN = 500;

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

/// The file names the loader will look for, in the order suspects.ini gives the suspects.
std::vector<std::string> suspectFileNames(const std::string& suspectsIni)
{
    std::vector<std::string> names;
    std::set<std::string> seen;
    const orane::TextFile file = orane::TextFile::decode(suspectsIni);
    for (const sf::String& line : file.lines()) {
        const std::string name = ryn::console::toUtf8(orane::trimWhitespace(line).toWideString()) + ".txt";
        if (seen.insert(name).second)
            names.push_back(name);
    }
    return names;
}

/// A name that stays a plain file inside the tree; others are not written, and the loader
/// then meets a missing file.
bool staysInTree(const std::string& fileName)
{
    return fileName.size() < 200 && fileName.find('/') == std::string::npos && fileName.find('\0') == std::string::npos;
}

class StoryFolder
{
public:
    StoryFolder()
    {
        const char* shm = "/dev/shm";
        std::string pattern =
            (std::filesystem::is_directory(shm) ? std::filesystem::path(shm) : std::filesystem::temp_directory_path())
            / "orane-fuzz-XXXXXX";
        if (::mkdtemp(pattern.data()) == nullptr)
            std::abort();
        path_ = pattern;
    }
    ~StoryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    void clear()
    {
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            std::filesystem::remove_all(entry.path());
    }
    void write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
    }
    std::string directory() const { return path_.string() + "/"; }

private:
    std::filesystem::path path_;
};

/// Plays a loaded story along the choices that `picks` name, checking that play never gets
/// stuck: every scene shown either offers a choice or ends the game.
class Walk : public orane::SceneManagerOwner
{
public:
    explicit Walk(const std::string& picks)
        : picks_(picks)
    {
        manager_.setNewSceneCallback([this](const orane::Scene& scene) {
            ++shown_;
            choicesShown_ = scene.choices.size();
        });
        manager_.setChoiceAppliedCallback([](const orane::Choice&) {});
    }

    void onGameOver() override {}

    bool load(const std::string& directory) { return manager_.loadStoryFrom(directory); }

    void play()
    {
        fuzzing::require(shown_ > 0, "a loaded story shows its first scene");
        for (std::size_t taken = 0; taken < MAX_CHOICES_TAKEN; ++taken) {
            requireShownIsCurrent();
            if (choicesShown_ == 0) {
                const sf::String& name = manager_.currentSceneName();
                // A story without suspects is allowed to reach the hub, which then has nothing to offer.
                const bool emptyHub = name == orane::HUB_SCENE_NAME && manager_.suspectsVisited().empty();
                const bool ends = name == orane::END_SCENE_NAME || name == orane::GAME_OVER_SCENE_NAME;
                if (emptyHub)
                    return;
                if (!ends)
                    std::fprintf(stderr, "stuck at scene \"%s\"\n", ryn::console::toUtf8(name.toWideString()).c_str());
                fuzzing::require(ends, "a scene without choices ends the game");
                return;
            }
            const std::size_t pick = picks_.empty() ? 0 : static_cast<unsigned char>(picks_[taken % picks_.size()]);
            shown_ = 0;
            manager_.applyChoice(static_cast<std::int32_t>(pick % choicesShown_));
            fuzzing::require(shown_ > 0, "a choice shows a scene");
        }
    }

private:
    void requireShownIsCurrent() const
    {
        fuzzing::require(manager_.getCurrentScene().choices.size() == choicesShown_,
                         "the scene shown last is the current scene");
    }

    std::string picks_;
    orane::SceneManager manager_{this};
    std::size_t shown_ = 0;
    std::size_t choicesShown_ = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static StoryFolder folder;
    fuzzing::installAbortingAssertHandler();
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> files = splitFiles(input);

    folder.clear();
    folder.write("suspects.ini", files[0]);
    if (files.size() > 1)
        folder.write("story.txt", files[1]);
    const std::vector<std::string> suspectFiles = suspectFileNames(files[0]);
    for (std::size_t k = 0; k + 2 < files.size() && k < suspectFiles.size(); ++k) {
        if (staysInTree(suspectFiles[k]))
            folder.write(suspectFiles[k], files[k + 2]);
    }

    ryn::console::Capture quiet;
    Walk walk(input);
    if (walk.load(folder.directory()))
        walk.play();
    return 0;
}
