#include "scene/diagnostic.hpp"

#include <algorithm>

namespace orane
{

bool holdsError(const Diagnostics& diagnostics)
{
    return std::any_of(diagnostics.begin(), diagnostics.end(),
                       [](const Diagnostic& diagnostic) { return diagnostic.severity == Diagnostic::SEVERITY::ERROR; });
}

} // namespace orane
