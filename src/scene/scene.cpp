#include "scene/scene.hpp"

#include "scene/diagnosticprinter.hpp"
#include "scene/storytext.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/console.hpp>

#include <algorithm>

namespace orane
{
namespace
{

using KIND = Diagnostic::KIND;
using SEVERITY = Diagnostic::SEVERITY;

std::string utf8(const sf::String& text)
{
    return ryn::console::toUtf8(text.toWideString());
}

/// Reads the lines of one scene into it; lives for one call of Scene::deserialize. Texts grow
/// in the caller's buffers and reach the scene once, at their exact size.
class SceneReader
{
public:
    SceneReader(Scene& scene, std::uint32_t firstLine, Diagnostics& diagnostics, SceneTextBuffers& buffers,
                SceneLayout* layout)
        : scene_(scene)
        , firstLine_(firstLine)
        , diagnostics_(diagnostics)
        , buffers_(buffers)
        , layout_(layout)
    {}

    bool read(const std::vector<CodePointView>& lines)
    {
        if (layout_ != nullptr)
            *layout_ = SceneLayout();
        if (lines.empty()) {
            reportMissingSceneToken();
            return false;
        }
        if (!readSceneLine(lines.front()))
            return false;
        clearTexts();
        bool readToTheEnd = true;
        for (std::size_t k = 1; k < lines.size() && readToTheEnd; ++k)
            readToTheEnd = readLine(lines, k);
        storeWriterTexts();
        storeLongDescription();
        return readToTheEnd && scene_.checkGameLogic(firstLine_, diagnostics_);
    }

private:
    bool readSceneLine(CodePointView line)
    {
        if (!containsToken(line, viewOf(TOKEN_SCENE))) {
            reportMissingSceneToken();
            return false;
        }
        CodePointView name;
        if (!readSecondOfTwoWords(line, name)) {
            report(KIND::BAD_SCENE_LINE, formatError(TOKEN_SCENE), firstLine_);
            return false;
        }
        scene_.name = toString(trimWhitespace(name));
        return true;
    }

    /// Every choice line holds a "*": counting those from the first choice on spares copying
    /// the choices (and all their texts) as the vector grows.
    void reserveChoices(const std::vector<CodePointView>& lines, std::size_t first)
    {
        const auto holdsStar = [](CodePointView line) { return line.find(U'*') != CodePointView::npos; };
        const auto from = lines.begin() + static_cast<std::ptrdiff_t>(first);
        scene_.choices.reserve(static_cast<std::size_t>(std::count_if(from, lines.end(), holdsStar)));
    }

    void clearTexts()
    {
        for (CodePoints* text : {&buffers_.oraneText, &buffers_.nathanText, &buffers_.longDescription})
            text->clear();
    }

    static bool readSecondOfTwoWords(CodePointView line, CodePointView& second)
    {
        std::size_t index = 0;
        CodePointView word;
        return nextWord(line, index, word) && nextWord(line, index, second) && !nextWord(line, index, word);
    }

    void report(KIND kind, const sf::String& message, std::uint32_t line, SEVERITY severity = SEVERITY::ERROR,
                std::optional<std::size_t> choice = std::nullopt)
    {
        Diagnostic diagnostic;
        diagnostic.line = line;
        diagnostic.scene = scene_.name;
        diagnostic.choice = choice;
        diagnostic.kind = kind;
        diagnostic.severity = severity;
        diagnostic.message = utf8(message);
        diagnostics_.push_back(std::move(diagnostic));
    }

    void reportMissingSceneToken()
    {
        report(KIND::MISSING_SCENE_TOKEN, L"Scene doesn't start with token " + TOKEN_SCENE + L".", firstLine_);
    }

    /// Reads line `k` of the scene. Answers false at a fatal fault; warnings are reported and
    /// the line passed over.
    bool readLine(const std::vector<CodePointView>& lines, std::size_t k)
    {
        const CodePointView line = lines[k];
        const std::uint32_t number = firstLine_ + static_cast<std::uint32_t>(k);
        if (line.empty())
            return true;
        const LineTokens tokens = findLineTokens(line);
        if (tokens.forward)
            return readForwardLine(line, number, k);
        if (tokens.orane)
            return readWriterLine(TOKEN_ORANE, Writer::Orane, oraneSeen_, number);
        if (tokens.nathan)
            return readWriterLine(TOKEN_NATHAN, Writer::Nathan, nathanSeen_, number);
        if (tokens.choice) {
            if (!choicesBegun_)
                reserveChoices(lines, k);
            return readChoiceLine(line, number, k);
        }
        if (choicesBegun_ && tokens.nextScene)
            return readTargetLine(line, number, k);
        if (choicesBegun_)
            appendLine(buffers_.longDescription, line);
        else
            readTextLine(line, number);
        return true;
    }

    bool readForwardLine(CodePointView line, std::uint32_t number, std::size_t k)
    {
        if (forwardSeen_) {
            report(KIND::SECOND_FORWARD,
                   L"Found more than one " + TOKEN_FORWARD + L"  token. There can be only one forward per scene.",
                   number);
            return false;
        }
        if (choicesBegun_) {
            report(KIND::FORWARD_AFTER_CHOICE,
                   L"Found token " + TOKEN_FORWARD
                       + L" after a choice. The Forward token must be written before the choices.",
                   number);
            return false;
        }
        CodePointView target;
        if (!readSecondOfTwoWords(line, target)) {
            report(KIND::BAD_FORWARD_LINE, formatError(TOKEN_FORWARD), number);
            return false;
        }
        scene_.forward = toString(trimWhitespace(target));
        forwardSeen_ = true;
        writer_ = Writer::None;
        if (layout_ != nullptr)
            layout_->forward = k;
        return true;
    }

    bool readWriterLine(const sf::String& token, Writer writer, bool& seen, std::uint32_t number)
    {
        if (seen) {
            const sf::String lowerName = writer == Writer::Orane ? L"orane" : L"nathan";
            report(KIND::SECOND_WRITER,
                   L"Found more than one " + token + L" token. There can be only one text for " + lowerName
                       + L" per scene.",
                   number);
            return false;
        }
        if (choicesBegun_) {
            report(KIND::WRITER_AFTER_CHOICE,
                   L"Found token " + token
                       + L" after a choice. Description text for orane or nathan must be written before the "
                         L"choices.",
                   number);
            return false;
        }
        seen = true;
        writer_ = writer;
        return true;
    }

    bool readChoiceLine(CodePointView line, std::uint32_t number, std::size_t k)
    {
        if (!choicesBegun_) {
            choicesBegun_ = true;
            writer_ = Writer::None;
        } else {
            // The previous choice is complete only once its text is in.
            storeLongDescription();
            if (!scene_.choices.back().isValid()) {
                // The invalid choice stays: the game-logic check lists it with its missing texts.
                report(KIND::CHOICE_AFTER_INVALID_CHOICE, L"Found new choice while previous one was still invalid.",
                       number, SEVERITY::WARNING, scene_.choices.size() - 1);
            }
        }
        scene_.choices.emplace_back();
        if (readChoiceBrief(line, scene_.choices.back(), number, diagnostics_)) {
            if (layout_ != nullptr)
                layout_->choices.push_back(SceneLayout::ChoiceLines{k, 0});
            return true;
        }
        scene_.choices.pop_back();
        return false;
    }

    bool readTargetLine(CodePointView line, std::uint32_t number, std::size_t k)
    {
        std::vector<Choice>& choices = scene_.choices;
        if (!RYN_CHECK(choices.size() > 0))
            return false;
        Choice& choice = choices.back();
        if (!readChoiceTarget(line, choice, number, diagnostics_))
            return false;
        if (layout_ != nullptr && !layout_->choices.empty())
            layout_->choices.back().target = k;
        std::size_t index = 0;
        CodePointView word;
        const CodePointView name = viewOf(choice.nextSceneName);
        if (!nextWord(name, index, word) || nextWord(name, index, word)) {
            report(KIND::BAD_NEXT_SCENE_NAME, L"Read incorrect next scene name \"" + choice.nextSceneName + L"\"",
                   number, SEVERITY::ERROR, choices.size() - 1);
            return false;
        }
        return true;
    }

    void readTextLine(CodePointView line, std::uint32_t number)
    {
        switch (writer_) {
        case Writer::Orane: appendLine(buffers_.oraneText, line); break;
        case Writer::Nathan: appendLine(buffers_.nathanText, line); break;
        case Writer::None:
            report(KIND::TEXT_WITHOUT_WRITER,
                   L"Found text without token without previous tokens " + TOKEN_ORANE + L" or " + TOKEN_NATHAN
                       + L". Normal text must be placed after those tokens to define who wrote it.",
                   number, SEVERITY::WARNING);
            break;
        }
    }

    static void appendLine(CodePoints& text, CodePointView line)
    {
        text += line;
        text += U'\n';
    }

    void storeWriterTexts()
    {
        scene_.oraneText = toString(buffers_.oraneText);
        scene_.nathanText = toString(buffers_.nathanText);
    }

    /// Gives the text read since the last choice line to that choice.
    void storeLongDescription()
    {
        if (!scene_.choices.empty())
            scene_.choices.back().longDescription = toString(buffers_.longDescription);
        buffers_.longDescription.clear();
    }

    static sf::String formatError(const sf::String& token)
    {
        return L"Found token " + token + L" with incorrect format. (Correct format is : " + token
               + L" a_valid_scene_name)";
    }

    Scene& scene_;
    std::uint32_t firstLine_ = 0;
    Diagnostics& diagnostics_;
    SceneTextBuffers& buffers_;
    SceneLayout* layout_ = nullptr;
    Writer writer_ = Writer::None;
    bool forwardSeen_ = false;
    bool oraneSeen_ = false;
    bool nathanSeen_ = false;
    bool choicesBegun_ = false;
};

/// The record of a fault of `scene` at `line`, as Scene::logError has always printed it.
Diagnostic sceneFault(const sf::String& message, const sf::String& sceneName, std::uint32_t line)
{
    Diagnostic diagnostic;
    diagnostic.line = line;
    diagnostic.scene = sceneName;
    diagnostic.message = utf8(message);
    return diagnostic;
}

} // namespace

void logError(const sf::String& message, const sf::String& sceneName, std::uint32_t line)
{
    DiagnosticPrinter::print(sceneFault(message, sceneName, line));
}

bool Scene::deserialize(const std::vector<sf::String>& lines, std::uint32_t firstLine)
{
    std::vector<CodePointView> views;
    views.reserve(lines.size());
    for (const sf::String& line : lines)
        views.push_back(viewOf(line));
    return deserialize(views, firstLine);
}

bool Scene::deserialize(const std::vector<CodePointView>& lines, std::uint32_t firstLine)
{
    Diagnostics diagnostics;
    SceneTextBuffers buffers;
    const bool read = deserialize(lines, firstLine, diagnostics, buffers);
    DiagnosticPrinter::print(diagnostics);
    return read;
}

bool Scene::deserialize(const std::vector<CodePointView>& lines, std::uint32_t firstLine, Diagnostics& diagnostics,
                        SceneTextBuffers& buffers, SceneLayout* layout)
{
    SceneReader reader(*this, firstLine, diagnostics, buffers, layout);
    return reader.read(lines);
}

void Scene::logError(const sf::String& message, std::uint32_t line) const
{
    orane::logError(message, name, line);
}

bool Scene::checkGameLogic(std::uint32_t firstLine) const
{
    Diagnostics diagnostics;
    const bool playable = checkGameLogic(firstLine, diagnostics);
    DiagnosticPrinter::print(diagnostics);
    return playable;
}

bool Scene::checkGameLogic(std::uint32_t firstLine, Diagnostics& diagnostics) const
{
    const bool hasForward = !forward.isEmpty();
    const bool hasText = !oraneText.isEmpty() || !nathanText.isEmpty();
    std::vector<std::size_t> invalidChoices;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (!choices[i].isValid())
            invalidChoices.push_back(i);
    }
    const bool choicesUsable = !choices.empty() && invalidChoices.empty();
    const bool waysOnAreSound = hasForward ? choices.empty() : choicesUsable;
    if (hasText && waysOnAreSound)
        return true;

    Diagnostic found = sceneFault(L"Found the following game logic errors :", name, firstLine);
    found.kind = Diagnostic::KIND::GAME_LOGIC;
    std::vector<Diagnostic::Detail>& details = found.details;
    if (!hasText) {
        details.push_back({1, "No valid description text was found. A scene must have at least one valid text, "
                              "for orane or nathan. (Choices don't count.)"});
    }
    if (!hasForward && choices.empty()) {
        details.push_back({1, "No choices were found, and no " + TOKEN_FORWARD.toAnsiString()
                                  + " was found. The scene must contain exactly one of the two, or the game can't "
                                    "know where to go next"});
    }
    if (hasForward && !choices.empty()) {
        details.push_back({1, "Found " + std::to_string(choices.size()) + " choices and " + TOKEN_FORWARD.toAnsiString()
                                  + " was found. You can't put both."});
    }
    if (!invalidChoices.empty()) {
        details.push_back({1, "Found " + std::to_string(invalidChoices.size()) + " invalid choices."});
        for (std::size_t i : invalidChoices) {
            details.push_back({1, "Choice " + std::to_string(i)});
            for (std::string& missing : choices[i].missingFields())
                details.push_back({2, std::move(missing)});
        }
    }
    diagnostics.push_back(std::move(found));
    return false;
}

} // namespace orane
