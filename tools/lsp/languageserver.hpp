#pragma once

#include "protocol.hpp"
#include "storydiagnostics.hpp"
#include "storyindex.hpp"
#include "workspace.hpp"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace orane
{
class PageMeasure;
class VirtualDisplay;
} // namespace orane

namespace orane::lsp
{

/// The story language server: answers one message at a time and says what to send back.
/// Transport-free, so tests drive it with JSON values.
class LanguageServer
{
public:
    using Send = std::function<void(const Json& message)>;

    /// `fontDirectories`: where the game's fonts are looked for (see PageMeasure).
    LanguageServer(Send send, std::vector<std::string> fontDirectories);
    ~LanguageServer();
    LanguageServer(const LanguageServer&) = delete;
    LanguageServer& operator=(const LanguageServer&) = delete;

    /// Handles one message (a request, a notification or a response to the server).
    void handle(const Json& message);
    /// Answers a message whose body is not JSON.
    void rejectUnreadable(const std::string& reason);
    /// Answers a request that the client cancelled before it was handled.
    void cancelled(const Json& id);

    /// Publishes the diagnostics of what changed since the last call; cheap when nothing did.
    /// The transport calls it once the messages that arrived together have been handled.
    void publishDiagnostics();

    /// True once "exit" arrived; exitCode() then tells how to end the process.
    [[nodiscard]] bool finished() const { return finished_; }
    [[nodiscard]] int exitCode() const { return shutdown_ ? 0 : 1; }

private:
    Json dispatch(const std::string& method, const Json& params);
    void notify(const std::string& method, const Json& params);
    void initialize(const Json& params, Json& result);
    void open(const Json& params);
    void change(const Json& params);
    void closeDocument(const Json& params);
    /// Picks the stories directory from the first document when the workspace folder has none.
    void adoptDirectoryOf(const std::string& path);
    void ensureMeasure();
    void refreshIndex();

    Send send_;
    std::vector<std::string> fontDirectories_;
    Workspace workspace_;
    StoryIndex index_;
    PositionEncoding encoding_ = PositionEncoding::UTF16;
    bool initialized_ = false;
    bool shutdown_ = false;
    bool finished_ = false;
    bool documentChanges_ = false;
    /// Something changed since diagnostics were last published.
    bool dirty_ = false;
    std::set<std::string> published_;
    std::unique_ptr<VirtualDisplay> display_;
    std::unique_ptr<PageMeasure> measure_;
    bool measureTried_ = false;
    std::string unmeasuredReason_;
    std::unique_ptr<StoryDiagnostics> diagnostics_;
};

} // namespace orane::lsp
