#pragma once

#include "protocol.hpp"
#include "storyindex.hpp"
#include "storynavigation.hpp"

#include <set>
#include <string>

namespace orane
{
class PageMeasure;
}

namespace orane::lsp
{

/// Completion and hover: what an author is offered while typing and when pointing at a scene.
class StoryAssist
{
public:
    /// `measure` may be null: the hover then says why pages are not measured.
    StoryAssist(const StoryIndex& index, const Locator& locator, PageMeasure* measure, std::string unmeasuredReason)
        : index_(index)
        , locator_(locator)
        , measure_(measure)
        , unmeasuredReason_(std::move(unmeasuredReason))
    {}

    [[nodiscard]] Json completion(const Json& params) const;
    [[nodiscard]] Json hover(const Json& params) const;

    /// For every scene reached from "begin", the facts set on every way to it (before it is
    /// shown); scenes that are never reached are left out.
    [[nodiscard]] std::map<std::string, std::set<std::string>> factsKnown() const;

private:
    [[nodiscard]] std::string pagesOf(const StoryIndex::File& file, const StoryIndex::Scene& scene) const;
    [[nodiscard]] std::string waysInto(const std::string& sceneName) const;

    const StoryIndex& index_;
    const Locator& locator_;
    PageMeasure* measure_ = nullptr;
    std::string unmeasuredReason_;
};

} // namespace orane::lsp
