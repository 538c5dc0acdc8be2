#pragma once

#include "storyfinding.hpp"

#include <string>
#include <vector>

namespace orane
{

/// Every finding of `orane-story check` as one JSON document, for editors and scripts:
/// {"errors": N, "warnings": N, "diagnostics": [{"severity", "kind", "file", "line", "column",
/// "scene", "choice", "fact", "message", "suggestions", "path"}, ...]}. A field that does not
/// apply is left out; lines and columns count from 1 as in the text report.
std::string findingsToJson(const std::vector<StoryFinding>& findings, std::size_t errors, std::size_t warnings);

} // namespace orane
