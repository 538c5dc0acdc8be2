#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace orane::test
{

/// A working directory of its own for one test: "resources/" with the build's fonts, textures
/// and audio linked in and a story written by the test. The test runs inside it (the game reads
/// everything relative to the working directory) until the tree is destroyed.
class GameTree
{
public:
    /// `stories` maps file names ("story.txt", "suspects.ini", ...) to their UTF-8 content;
    /// `leftOut` names files under resources/ (e.g. "textures/shadow.png") not to link.
    explicit GameTree(const std::map<std::string, std::string>& stories, const std::set<std::string>& leftOut = {});
    ~GameTree();
    GameTree(const GameTree&) = delete;
    GameTree& operator=(const GameTree&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    std::string path_;
    std::string previousDirectory_;
};

/// A story of one opening scene whose choices carry `labels`, each leading to a
/// scene "suite" with two choices of its own; suspects.ini is empty.
std::map<std::string, std::string> storyWithChoices(const std::vector<std::string>& labels);

} // namespace orane::test
