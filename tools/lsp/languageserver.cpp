#include "languageserver.hpp"

#include "pagemeasure.hpp"
#include "storyassist.hpp"
#include "storynavigation.hpp"
#include "uri.hpp"
#include "virtualdisplay.hpp"

#include <sys/stat.h>

namespace orane::lsp
{
namespace
{

constexpr int SYNC_INCREMENTAL = 2;

Json errorResponse(const Json& id, int code, const std::string& message)
{
    return Json{{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", code}, {"message", message}}}};
}

bool isDirectory(const std::string& path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isFile(const std::string& path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

std::string directoryOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

} // namespace

LanguageServer::LanguageServer(Send send, std::vector<std::string> fontDirectories)
    : send_(std::move(send))
    , fontDirectories_(std::move(fontDirectories))
{}

LanguageServer::~LanguageServer() = default;

void LanguageServer::handle(const Json& message)
{
    if (!message.is_object() || (message.contains("method") && !message["method"].is_string())) {
        send_(errorResponse(nullptr, error::INVALID_REQUEST, "a message is a JSON-RPC 2.0 object"));
        return;
    }
    if (!message.contains("method"))
        return; // a response to the server, which asks nothing
    const std::string method = message["method"].get<std::string>();
    const Json params = message.value("params", Json::object());
    const bool isRequest = message.contains("id");
    if (!isRequest) {
        if (method == "exit")
            finished_ = true;
        else if (initialized_ && !shutdown_)
            notify(method, params);
        return;
    }
    const Json& id = message["id"];
    if (!id.is_string() && !id.is_number_integer()) {
        send_(errorResponse(nullptr, error::INVALID_REQUEST, "a request's id is a number or a string"));
        return;
    }
    try {
        if (!initialized_ && method != "initialize")
            throw RequestError(error::SERVER_NOT_INITIALIZED, "initialize comes first");
        if (shutdown_)
            throw RequestError(error::INVALID_REQUEST, "the server is shutting down");
        const Json result = dispatch(method, params);
        send_(Json{{"jsonrpc", "2.0"}, {"id", id}, {"result", result}});
    } catch (const RequestError& fault) {
        send_(errorResponse(id, fault.code, fault.what()));
    } catch (const nlohmann::json::exception& fault) {
        send_(errorResponse(id, error::INVALID_PARAMS, std::string("invalid params: ") + fault.what()));
    } catch (const std::exception& fault) {
        send_(errorResponse(id, error::INTERNAL_ERROR, fault.what()));
    }
}

void LanguageServer::rejectUnreadable(const std::string& reason)
{
    send_(errorResponse(nullptr, error::PARSE_ERROR, reason));
}

void LanguageServer::cancelled(const Json& id)
{
    send_(errorResponse(id, error::REQUEST_CANCELLED, "cancelled"));
}

Json LanguageServer::dispatch(const std::string& method, const Json& params)
{
    const Locator locator(workspace_, encoding_);
    if (method == "initialize") {
        if (initialized_)
            throw RequestError(error::INVALID_REQUEST, "initialize comes once");
        Json result;
        initialize(params, result);
        return result;
    }
    if (method == "shutdown") {
        shutdown_ = true;
        return nullptr;
    }
    refreshIndex();
    const StoryNavigation navigation(index_, locator);
    if (method == "textDocument/definition")
        return navigation.definition(params);
    if (method == "textDocument/references")
        return navigation.references(params);
    if (method == "textDocument/prepareRename")
        return navigation.prepareRename(params);
    if (method == "textDocument/rename")
        return navigation.rename(params, documentChanges_);
    if (method == "textDocument/documentSymbol")
        return navigation.documentSymbols(params);
    if (method == "workspace/symbol")
        return navigation.workspaceSymbols(params);
    if (method == "textDocument/completion")
        return StoryAssist(index_, locator, nullptr, {}).completion(params);
    if (method == "textDocument/hover") {
        ensureMeasure();
        return StoryAssist(index_, locator, measure_.get(), unmeasuredReason_).hover(params);
    }
    throw RequestError(error::METHOD_NOT_FOUND, "no method " + method);
}

void LanguageServer::notify(const std::string& method, const Json& params)
{
    try {
        if (method == "textDocument/didOpen")
            open(params);
        else if (method == "textDocument/didChange")
            change(params);
        else if (method == "textDocument/didClose")
            closeDocument(params);
        else if (method == "textDocument/didSave" || method == "workspace/didChangeWatchedFiles")
            dirty_ = true; // the files on disk are looked at again before the next diagnostics
    } catch (const std::exception&) {
        // A notification gets no answer, even when its params are wrong: it is dropped.
    }
}

void LanguageServer::initialize(const Json& params, Json& result)
{
    std::string root;
    if (params.contains("workspaceFolders") && params["workspaceFolders"].is_array()
        && !params["workspaceFolders"].empty())
        root = pathFromUri(params["workspaceFolders"][0].value("uri", std::string()));
    if (root.empty() && params.contains("rootUri") && params["rootUri"].is_string())
        root = pathFromUri(params["rootUri"].get<std::string>());
    if (root.empty() && params.contains("rootPath") && params["rootPath"].is_string())
        root = params["rootPath"].get<std::string>();
    if (!root.empty() && isDirectory(root))
        workspace_.setDirectory(root);

    const Json encodings = params.value("/capabilities/general/positionEncodings"_json_pointer, Json::array());
    std::string encoding = "utf-16";
    for (const Json& offered : encodings) {
        // utf-8 spares every conversion; utf-16 is the protocol's default.
        if (offered == "utf-8") {
            encoding_ = PositionEncoding::UTF8;
            encoding = "utf-8";
        }
    }
    const Json operations =
        params.value("/capabilities/workspace/workspaceEdit/resourceOperations"_json_pointer, Json::array());
    documentChanges_ = params.value("/capabilities/workspace/workspaceEdit/documentChanges"_json_pointer, false)
                       && std::find(operations.begin(), operations.end(), "rename") != operations.end();
    initialized_ = true;
    dirty_ = true;
    result = Json{
        {"capabilities",
         {{"positionEncoding", encoding},
          {"textDocumentSync", {{"openClose", true}, {"change", SYNC_INCREMENTAL}, {"save", {{"includeText", false}}}}},
          {"definitionProvider", true},
          {"referencesProvider", true},
          {"renameProvider", {{"prepareProvider", true}}},
          {"completionProvider", {{"triggerCharacters", {">", " ", ":", ","}}}},
          {"hoverProvider", true},
          {"documentSymbolProvider", true},
          {"workspaceSymbolProvider", true}}},
        {"serverInfo", {{"name", "orane-story"}}}};
}

void LanguageServer::adoptDirectoryOf(const std::string& path)
{
    const std::string directory = directoryOf(path);
    if (workspace_.hasDirectory() && isFile(workspace_.suspectsPath()))
        return;
    if (!directory.empty() && (isFile(directory + "suspects.ini") || !workspace_.hasDirectory()))
        workspace_.setDirectory(directory);
}

void LanguageServer::open(const Json& params)
{
    const Json& document = params.at("textDocument");
    const std::string path = pathFromUri(document.at("uri").get<std::string>());
    if (path.empty())
        return;
    adoptDirectoryOf(path);
    workspace_.open(path, document.at("text").get<std::string>());
    dirty_ = true;
}

void LanguageServer::change(const Json& params)
{
    const std::string path = pathFromUri(params.at("textDocument").at("uri").get<std::string>());
    TextDocument* document = workspace_.openDocument(path);
    if (document == nullptr)
        return;
    for (const Json& change : params.at("contentChanges")) {
        const std::string text = change.at("text").get<std::string>();
        if (!change.contains("range")) {
            document->setText(text);
            continue;
        }
        const Json& range = change["range"];
        const std::size_t from = document->offsetAt(readPosition(range.at("start")), encoding_);
        const std::size_t to = document->offsetAt(readPosition(range.at("end")), encoding_);
        document->replace(from, to, text);
    }
    workspace_.changed(path);
    dirty_ = true;
}

void LanguageServer::closeDocument(const Json& params)
{
    workspace_.close(pathFromUri(params.at("textDocument").at("uri").get<std::string>()));
    dirty_ = true;
}

void LanguageServer::ensureMeasure()
{
    if (measureTried_)
        return;
    measureTried_ = true;
    display_ = std::make_unique<VirtualDisplay>();
    auto measure = std::make_unique<PageMeasure>();
    if (!display_->ensure())
        unmeasuredReason_ = display_->error();
    else if (!measure->loadFonts(fontDirectories_))
        unmeasuredReason_ = measure->error();
    else
        measure_ = std::move(measure);
}

void LanguageServer::refreshIndex()
{
    if (workspace_.hasDirectory())
        index_.update(workspace_);
}

void LanguageServer::publishDiagnostics()
{
    if (!dirty_ || !initialized_ || shutdown_ || !workspace_.hasDirectory())
        return;
    dirty_ = false;
    workspace_.checkDisk();
    refreshIndex();
    ensureMeasure();
    if (!diagnostics_)
        diagnostics_ = std::make_unique<StoryDiagnostics>(measure_.get(), unmeasuredReason_,
                                                          PageMeasure::fontFiles(fontDirectories_));
    const Locator locator(workspace_, encoding_);
    const std::map<std::string, std::vector<Diagnostic>> found = diagnostics_->run(workspace_, index_);
    // An open document always hears the verdict, even when it is clean.
    std::set<std::string> files = published_;
    for (const std::string& path : workspace_.openPaths())
        files.insert(path);
    for (const auto& entry : found)
        files.insert(entry.first);
    published_.clear();
    for (const std::string& file : files) {
        Json list = Json::array();
        const auto diagnostics = found.find(file);
        if (diagnostics != found.end()) {
            for (const Diagnostic& diagnostic : diagnostics->second)
                list.push_back(Json{{"range", locator.range(diagnostic.span)},
                                    {"severity", static_cast<int>(diagnostic.severity)},
                                    {"source", "orane-story"},
                                    {"message", diagnostic.message}});
            published_.insert(file);
        }
        send_(Json{{"jsonrpc", "2.0"},
                   {"method", "textDocument/publishDiagnostics"},
                   {"params", {{"uri", uriFromPath(file)}, {"diagnostics", list}}}});
    }
}

} // namespace orane::lsp
