#include "factannotations.hpp"

#include <set>

namespace orane
{

FactAnnotations::FactAnnotations(const Story& story, const std::vector<SourceText>& sources)
    : scenes_(story.sceneCount())
{
    const auto kept = keptScenes(story, sources);
    // Every fact is numbered before any set is sized.
    const auto number = [this](const SourceText::Annotations& annotations) {
        for (const SourceText::Fact& fact : annotations.sets)
            factId(fact.name);
        for (const SourceText::Fact& fact : annotations.needs)
            factId(fact.name);
    };
    for (const auto& [scene, source] : kept) {
        number(source->facts);
        for (const SourceText::Choice& choice : source->choices)
            number(choice.facts);
    }
    for (Story::SceneId scene = 0; scene < story.sceneCount(); ++scene) {
        const Scene* stored = story.sceneAt(scene);
        const std::size_t choices = stored == nullptr || story.isSpecial(scene) ? 0 : stored->choices.size();
        scenes_[scene].sets = none();
        scenes_[scene].choiceSets.assign(choices, none());
        scenes_[scene].choiceNeeds.resize(choices);
    }
    for (const auto& [scene, source] : kept)
        read(scene, *source);
}

std::vector<std::pair<Story::SceneId, const SourceText::Scene*>>
FactAnnotations::keptScenes(const Story& story, const std::vector<SourceText>& sources)
{
    std::vector<std::pair<Story::SceneId, const SourceText::Scene*>> kept;
    std::set<Story::SceneId> annotated;
    for (const SourceText& source : sources) {
        for (const SourceText::Scene& scene : source.scenes()) {
            const Story::SceneId id = story.findSceneId(scene.name);
            if (id == Story::UNKNOWN_SCENE || story.isSpecial(id) || !annotated.insert(id).second)
                continue;
            scenes_[id].file = source.path();
            kept.emplace_back(id, &scene);
        }
    }
    return kept;
}

std::uint32_t FactAnnotations::factId(const sf::String& name)
{
    const auto [found, added] = factIds_.emplace(name, static_cast<std::uint32_t>(factNames_.size()));
    if (added) {
        factNames_.push_back(name);
        setPlaces_.emplace_back();
        needPlaces_.emplace_back();
    }
    return found->second;
}

void FactAnnotations::read(Story::SceneId scene, const SourceText::Scene& source)
{
    SceneFacts& facts = scenes_[scene];
    const auto sets = [this, &facts](const std::vector<SourceText::Fact>& named, FactBits& into) {
        for (const SourceText::Fact& fact : named) {
            const std::uint32_t id = factId(fact.name);
            into.insert(id);
            setPlaces_[id].emplace_back(facts.file, fact);
        }
    };
    const auto needs = [this, &facts](const std::vector<SourceText::Fact>& named, std::vector<Need>& into) {
        for (const SourceText::Fact& fact : named) {
            const std::uint32_t id = factId(fact.name);
            into.push_back(Need{id, fact});
            needPlaces_[id].emplace_back(facts.file, fact);
        }
    };
    sets(source.facts.sets, facts.sets);
    needs(source.facts.needs, facts.needs);
    for (std::size_t choice = 0; choice < source.choices.size() && choice < facts.choiceSets.size(); ++choice) {
        sets(source.choices[choice].facts.sets, facts.choiceSets[choice]);
        needs(source.choices[choice].facts.needs, facts.choiceNeeds[choice]);
    }
}

const FactBits& FactAnnotations::setBy(Story::SceneId scene) const
{
    return scenes_[scene].sets;
}

const FactBits& FactAnnotations::setBy(Story::SceneId scene, std::size_t choice) const
{
    return scenes_[scene].choiceSets[choice];
}

const std::vector<FactAnnotations::Need>& FactAnnotations::neededBy(Story::SceneId scene) const
{
    return scenes_[scene].needs;
}

const std::vector<FactAnnotations::Need>& FactAnnotations::neededBy(Story::SceneId scene, std::size_t choice) const
{
    return choice < scenes_[scene].choiceNeeds.size() ? scenes_[scene].choiceNeeds[choice] : noNeeds_;
}

} // namespace orane
