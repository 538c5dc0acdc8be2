#pragma once

#include <string>

namespace orane::lsp
{

/// "file://" URIs as editors send them, to and from absolute paths (percent-encoding undone
/// and redone). Anything that is not a file URI gives the empty path.
[[nodiscard]] std::string pathFromUri(const std::string& uri);
[[nodiscard]] std::string uriFromPath(const std::string& path);

} // namespace orane::lsp
