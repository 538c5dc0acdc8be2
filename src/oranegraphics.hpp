#pragma once

#include "ryn/core/graphics.hpp"

namespace orane
{

/// The game's window cannot be resized: titlebar and close button only.
class OraneGraphics : public ryn::Graphics
{
public:
    void createWindow(unsigned width, unsigned height) override;
};

} // namespace orane
