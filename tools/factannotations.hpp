#pragma once

#include "factbits.hpp"
#include "scenemanager/story.hpp"
#include "sourcetext.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orane
{

/// The "# sets:" and "# needs:" of a story's kept scenes, by the story's scene ids and by fact
/// numbers: what showing a scene or taking a choice teaches the reader, and what its texts
/// presume. The game's own scenes (the hub, the arrest scene, the endings) carry none.
class FactAnnotations
{
public:
    /// A fact a scene's or a choice's texts presume, and where the annotation names it.
    struct Need
    {
        std::uint32_t fact = 0;
        SourceText::Fact place;
    };
    /// A file and the place in it where an annotation names a fact.
    using Place = std::pair<std::string, SourceText::Fact>;

    /// `sources`: the story files in the order the game reads them; the first scene of a name
    /// is the one the game keeps, and so are its annotations. `story` must outlive this.
    FactAnnotations(const Story& story, const std::vector<SourceText>& sources);

    [[nodiscard]] std::size_t factCount() const { return factNames_.size(); }
    [[nodiscard]] const sf::String& factName(std::uint32_t fact) const { return factNames_[fact]; }
    /// A set of facts sized for this story.
    [[nodiscard]] FactBits none() const { return FactBits(factCount()); }

    [[nodiscard]] const FactBits& setBy(Story::SceneId scene) const;
    [[nodiscard]] const FactBits& setBy(Story::SceneId scene, std::size_t choice) const;
    [[nodiscard]] const std::vector<Need>& neededBy(Story::SceneId scene) const;
    [[nodiscard]] const std::vector<Need>& neededBy(Story::SceneId scene, std::size_t choice) const;
    [[nodiscard]] std::size_t choiceCount(Story::SceneId scene) const { return scenes_[scene].choiceSets.size(); }
    /// The file a scene's annotations were read from; empty for a scene without a source.
    [[nodiscard]] const std::string& fileOf(Story::SceneId scene) const { return scenes_[scene].file; }

    /// Every annotation that sets, or needs, `fact`, in the order of the files.
    [[nodiscard]] const std::vector<Place>& setPlaces(std::uint32_t fact) const { return setPlaces_[fact]; }
    [[nodiscard]] const std::vector<Place>& needPlaces(std::uint32_t fact) const { return needPlaces_[fact]; }
    [[nodiscard]] bool isSetSomewhere(std::uint32_t fact) const { return !setPlaces_[fact].empty(); }

private:
    struct SceneFacts
    {
        std::string file;
        FactBits sets;
        std::vector<Need> needs;
        std::vector<FactBits> choiceSets;
        std::vector<std::vector<Need>> choiceNeeds;
    };

    /// The source scene the game kept for each annotated scene id.
    std::vector<std::pair<Story::SceneId, const SourceText::Scene*>> keptScenes(const Story& story,
                                                                                const std::vector<SourceText>& sources);
    std::uint32_t factId(const sf::String& name);
    void read(Story::SceneId scene, const SourceText::Scene& source);

    std::vector<SceneFacts> scenes_;
    std::vector<sf::String> factNames_;
    std::map<sf::String, std::uint32_t> factIds_;
    std::vector<std::vector<Place>> setPlaces_;
    std::vector<std::vector<Place>> needPlaces_;
    std::vector<Need> noNeeds_;
};

} // namespace orane
