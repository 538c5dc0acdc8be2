#pragma once

#include "storyindex.hpp"
#include "workspace.hpp"

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace orane::lsp
{

using Json = nlohmann::json;

/// The error codes of JSON-RPC and of the protocol that the server answers with.
namespace error
{
constexpr int PARSE_ERROR = -32700;
constexpr int INVALID_REQUEST = -32600;
constexpr int METHOD_NOT_FOUND = -32601;
constexpr int INVALID_PARAMS = -32602;
constexpr int INTERNAL_ERROR = -32603;
constexpr int SERVER_NOT_INITIALIZED = -32002;
constexpr int REQUEST_FAILED = -32803;
constexpr int REQUEST_CANCELLED = -32800;
} // namespace error

/// A request that cannot be answered as asked: becomes the error response.
struct RequestError : std::runtime_error
{
    RequestError(int errorCode, const std::string& message)
        : std::runtime_error(message)
        , code(errorCode)
    {}
    int code;
};

/// Turns the protocol's documents, positions and ranges into the workspace's paths and byte
/// offsets and back, in the position encoding agreed with the client.
class Locator
{
public:
    Locator(Workspace& workspace, PositionEncoding encoding)
        : workspace_(workspace)
        , encoding_(encoding)
    {}

    /// The path of params.textDocument.uri; throws RequestError when it is no file URI.
    [[nodiscard]] std::string path(const Json& params) const;
    /// The byte offset of params.position in `path`'s text.
    [[nodiscard]] std::size_t offset(const std::string& path, const Json& position) const;
    [[nodiscard]] Json position(const std::string& path, std::size_t offset) const;
    [[nodiscard]] Json range(const Span& span) const;
    [[nodiscard]] Json location(const Span& span) const;

    [[nodiscard]] Workspace& workspace() const { return workspace_; }
    [[nodiscard]] PositionEncoding encoding() const { return encoding_; }

private:
    Workspace& workspace_;
    PositionEncoding encoding_;
};

/// Position from JSON, rejecting what is not one (negative or missing numbers).
[[nodiscard]] Position readPosition(const Json& position);

} // namespace orane::lsp
