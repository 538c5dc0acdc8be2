#pragma once

#include "scenemanager/scenemanager.hpp"

#include <string>
#include <vector>

namespace orane
{

/// A story directory loaded twice: once exactly as the game loads it (its verdict and every
/// line it prints), and once file by file, going on past a faulty file, so that the tools can
/// still look at every scene that could be read and say where each fault lies.
class LoadedStory
{
public:
    /// How one story file fared when read on its own.
    struct FileReport
    {
        enum class STATUS
        {
            READ,
            CANNOT_OPEN,
            FAULTY,
        };
        std::string path;
        STATUS status = STATUS::READ;
        /// What the game prints while reading this file alone.
        std::vector<std::string> messages;
    };

    /// `directory` may omit its final '/'. Prints nothing.
    explicit LoadedStory(std::string directory);

    const std::string& directory() const { return directory_; }
    std::string suspectsPath() const { return directory_ + "suspects.ini"; }

    /// True when the game would start with this story.
    bool loads() const { return loads_; }
    /// Every line the game prints while loading, in order.
    const std::vector<std::string>& gameReport() const { return gameReport_; }
    /// The game's scene manager after loading: when loads(), play has started at "begin".
    const SceneManager& game() const { return game_; }

    /// story.txt then the suspects' files, in the order the game reads them; empty when
    /// suspects.ini could not be read.
    const std::vector<FileReport>& files() const { return files_; }
    /// True when every file was opened and read without a fault (links may still be broken).
    bool everyFileRead() const;
    /// True when some file that opened holds a fault (a file that cannot be opened is not one).
    bool anyFileFaulty() const;
    /// The first file the game could not get through, or null.
    const FileReport* firstFailedFile() const;

    /// Every scene of every file up to that file's first fault, with the fixed scenes; the
    /// scenes the game keeps when a name is taken twice, and the ones it drops.
    const SceneManager& allScenes() const { return allScenes_; }

private:
    void readEachFile();

    std::string directory_;
    bool loads_ = false;
    std::vector<std::string> gameReport_;
    SceneManager game_{nullptr};
    std::vector<FileReport> files_;
    SceneManager allScenes_{nullptr};
};

} // namespace orane
