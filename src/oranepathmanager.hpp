#pragma once

#include <ryn/core/pathmanager.hpp>

namespace orane
{

/// The game keeps the engine's resource tree, "resources/" under the working directory.
class OranePathManager : public ryn::PathManager
{};

} // namespace orane
