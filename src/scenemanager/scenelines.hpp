#pragma once

#include "scene/codepoints.hpp"

#include <SFML/Config.hpp>

#include <string_view>
#include <vector>

namespace orane
{

/// The lines of one scene block, decoded from UTF-8 into a single buffer that is kept from one
/// block to the next: a story of any size is read with a handful of allocations.
class SceneLines
{
public:
    /// Replaces the lines with the decoded `utf8Lines`, which must be well-formed.
    void assign(const std::vector<std::string_view>& utf8Lines);

    /// Valid until the next assign.
    [[nodiscard]] const std::vector<CodePointView>& views() const { return views_; }

private:
    /// Only ever grows: its size is its capacity, so that decoding never first fills it.
    std::vector<sf::Uint32> codePoints_;
    std::vector<CodePointView> views_;
};

} // namespace orane
