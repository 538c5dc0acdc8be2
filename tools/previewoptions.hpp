#pragma once

#include "previewplace.hpp"

#include <optional>
#include <string>
#include <vector>

namespace orane
{

/// The command line of `orane-story preview DIR [--scene NAME] [--investigated NAME,NAME]
/// [--hub-seen]`.
struct PreviewOptions
{
    /// Ends with '/'.
    std::string directory;
    /// "begin" with nothing investigated unless the options say otherwise.
    PreviewPlace start;

    /// `arguments` are those after "preview"; empty, with `error` set, for a bad command line.
    [[nodiscard]] static std::optional<PreviewOptions> parse(const std::vector<std::string>& arguments,
                                                             std::string& error);
};

} // namespace orane
