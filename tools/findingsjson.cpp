#include "findingsjson.hpp"

#include "tooltext.hpp"

#include <nlohmann/json.hpp>

namespace orane
{

std::string findingsToJson(const std::vector<StoryFinding>& findings, std::size_t errors, std::size_t warnings)
{
    nlohmann::json diagnostics = nlohmann::json::array();
    for (const StoryFinding& finding : findings) {
        nlohmann::json record;
        record["severity"] = severityName(finding.severity);
        record["kind"] = finding.kind;
        if (!finding.file.empty())
            record["file"] = finding.file;
        if (finding.line > 0)
            record["line"] = finding.line;
        if (finding.column > 0)
            record["column"] = finding.column;
        if (!finding.scene.isEmpty())
            record["scene"] = utf8(finding.scene);
        if (finding.choice.has_value())
            record["choice"] = *finding.choice;
        if (!finding.fact.isEmpty())
            record["fact"] = utf8(finding.fact);
        record["message"] = finding.message;
        if (!finding.suggestions.empty())
            record["suggestions"] = finding.suggestions;
        if (finding.kind == "continuity" && !finding.path.empty()) {
            nlohmann::json path = nlohmann::json::array();
            for (const sf::String& label : finding.path)
                path.push_back(oneLine(label));
            record["path"] = path;
        }
        diagnostics.push_back(std::move(record));
    }
    const nlohmann::json document{{"errors", errors}, {"warnings", warnings}, {"diagnostics", diagnostics}};
    // Text from story files may hold anything: bytes that are not UTF-8 are replaced, never thrown on.
    return document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
}

} // namespace orane
