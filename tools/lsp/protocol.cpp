#include "protocol.hpp"

#include "uri.hpp"

namespace orane::lsp
{

Position readPosition(const Json& position)
{
    const Json& line = position.at("line");
    const Json& character = position.at("character");
    if (!line.is_number_integer() || !character.is_number_integer() || line.get<std::int64_t>() < 0
        || character.get<std::int64_t>() < 0)
        throw RequestError(error::INVALID_PARAMS, "a position is two numbers from 0");
    // Beyond the text is the text's end, however far beyond.
    const auto clamp = [](const Json& number) {
        return static_cast<std::uint32_t>(std::min<std::uint64_t>(number.get<std::uint64_t>(), UINT32_MAX));
    };
    return Position{clamp(line), clamp(character)};
}

std::string Locator::path(const Json& params) const
{
    const std::string file = pathFromUri(params.at("textDocument").at("uri").get<std::string>());
    if (file.empty())
        throw RequestError(error::INVALID_PARAMS, "only file: documents are served");
    return file;
}

std::size_t Locator::offset(const std::string& path, const Json& position) const
{
    return workspace_.document(path).offsetAt(readPosition(position), encoding_);
}

Json Locator::position(const std::string& path, std::size_t offset) const
{
    const Position at = workspace_.document(path).positionAt(offset, encoding_);
    return Json{{"line", at.line}, {"character", at.character}};
}

Json Locator::range(const Span& span) const
{
    return Json{{"start", position(span.file, span.begin)}, {"end", position(span.file, span.end)}};
}

Json Locator::location(const Span& span) const
{
    return Json{{"uri", uriFromPath(span.file)}, {"range", range(span)}};
}

} // namespace orane::lsp
