#include "storyfinding.hpp"

#include <algorithm>
#include <tuple>

namespace orane
{

std::string severityName(StoryFinding::SEVERITY severity)
{
    switch (severity) {
    case StoryFinding::SEVERITY::ERROR: return "error";
    case StoryFinding::SEVERITY::WARNING: return "warning";
    case StoryFinding::SEVERITY::NOTE: return "note";
    }
    return "note";
}

std::string formatFinding(const StoryFinding& finding)
{
    std::string place = finding.file;
    if (finding.line > 0) {
        place += ":" + std::to_string(finding.line);
        if (finding.column > 0)
            place += ":" + std::to_string(finding.column);
    }
    return (place.empty() ? std::string() : place + ": ") + severityName(finding.severity) + ": " + finding.message;
}

void sortFindings(std::vector<StoryFinding>& findings)
{
    std::stable_sort(findings.begin(), findings.end(), [](const StoryFinding& a, const StoryFinding& b) {
        return std::tie(a.file, a.line, a.column) < std::tie(b.file, b.line, b.column);
    });
}

} // namespace orane
