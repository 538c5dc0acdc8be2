#pragma once

#include "scenemanager/scenemanager.hpp"

#include <ryn/core/console.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace storytesting
{

using Lines = std::vector<std::string>;

inline sf::String u8(const std::string& text)
{
    return sf::String::fromUtf8(text.begin(), text.end());
}

inline std::string utf8(const sf::String& text)
{
    return ryn::console::toUtf8(text.toWideString());
}

/// A whole scene on one line: name|orane|nathan|forward then |*brief>long>next per choice.
inline std::string describe(const orane::Scene& scene)
{
    std::string text =
        utf8(scene.name) + "|" + utf8(scene.oraneText) + "|" + utf8(scene.nathanText) + "|" + utf8(scene.forward);
    for (const orane::Choice& choice : scene.choices)
        text += "|*" + utf8(choice.briefDescription) + ">" + utf8(choice.longDescription) + ">"
                + utf8(choice.nextSceneName);
    return text;
}

/// A story folder of its own under the system's temporary folder, removed afterwards.
class StoryTree
{
public:
    StoryTree()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "orane-story-XXXXXX").string();
        EXPECT_NE(::mkdtemp(pattern.data()), nullptr);
        path_ = pattern;
    }
    ~StoryTree()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    StoryTree(const StoryTree&) = delete;
    StoryTree& operator=(const StoryTree&) = delete;

    void write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
    }
    /// Ends with '/', as the loader expects.
    [[nodiscard]] std::string directory() const { return path_.string() + "/"; }

private:
    std::filesystem::path path_;
};

/// Loads and plays a story as the play state would, writing down every call it receives and
/// everything printed while loading.
class Player : public orane::SceneManagerOwner
{
public:
    explicit Player(const StoryTree& tree)
    {
        manager_.setNewSceneCallback([this](const orane::Scene& scene) {
            events.push_back("scene " + utf8(manager_.currentSceneName()));
            if (&manager_.getCurrentScene() != &scene)
                events.push_back("getCurrentScene is not the scene shown");
        });
        manager_.setChoiceAppliedCallback(
            [this](const orane::Choice& choice) { events.push_back("choice" + utf8(choice.briefDescription)); });
        ryn::console::Capture capture;
        loaded = manager_.loadStoryFrom(tree.directory());
        report = capture.lines();
    }

    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    void onGameOver() override { events.push_back("game over"); }

    /// Takes the choice with this label in the current scene.
    void take(const std::string& label)
    {
        const auto& choices = manager_.getCurrentScene().choices;
        for (std::size_t i = 0; i < choices.size(); ++i) {
            if (utf8(choices[i].briefDescription) == label) {
                events.clear();
                manager_.applyChoice(static_cast<std::int32_t>(i));
                return;
            }
        }
        ADD_FAILURE() << "no choice " << label << " in " << utf8(manager_.currentSceneName());
    }

    [[nodiscard]] const orane::SceneManager& manager() const { return manager_; }
    [[nodiscard]] std::string current() const { return describe(manager_.getCurrentScene()); }

    bool loaded = false;
    Lines report;
    Lines events;

private:
    orane::SceneManager manager_{this};
};

} // namespace storytesting
