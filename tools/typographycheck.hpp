#pragma once

#include "sourcetext.hpp"
#include "storyfinding.hpp"

#include <vector>

namespace orane
{

/// French typography of the texts a reader sees: a blank before ; : ! ? and », and after «;
/// none before , and .; « and » that pair up within a page; … rather than three dots; the
/// apostrophe the story uses elsewhere (’ when it mostly writes ’); no doubled blanks; no page
/// ending on a line of punctuation alone.
class TypographyCheck
{
public:
    /// The apostrophe rule compares each file with the whole story, so all files come at once.
    explicit TypographyCheck(const std::vector<SourceText>& sources);

    [[nodiscard]] std::vector<StoryFinding> findings() const;
    /// The findings of `source` alone, its apostrophes judged by the whole story's habit.
    [[nodiscard]] std::vector<StoryFinding> findings(const SourceText& source) const;
    /// True when the story mostly writes ’ rather than '.
    [[nodiscard]] bool curlyApostrophes() const { return curlyApostrophes_; }

private:
    void checkLine(const std::string& file, const SourceText::Scene& scene, const SourceText::TextLine& text,
                   std::vector<StoryFinding>& found) const;
    void checkQuotes(const std::string& file, const SourceText::Scene& scene, std::vector<StoryFinding>& found) const;

    const std::vector<SourceText>& sources_;
    bool curlyApostrophes_ = false;
};

} // namespace orane
