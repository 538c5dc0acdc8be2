#pragma once

#include <ryn/core/graphics.hpp>

namespace orane
{

/// The game's window cannot be resized: titlebar and close button only. It opens centred on the
/// screen, scaled down as a whole on a desktop too small for it.
class OraneGraphics : public ryn::Graphics
{
public:
    void createWindow(unsigned width, unsigned height) override;
};

} // namespace orane
