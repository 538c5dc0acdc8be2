#pragma once

#include <SFML/Graphics/Shader.hpp>

namespace orane
{

/// Fragment shader that keeps what lies inside the rectangle spanned by a-b and a-d, darkening
/// it near the line a-b. Legacy GLSL without a version line.
extern const char* const INSIDE_SHADER_SOURCE;
/// The same, keeping what lies outside the rectangle.
extern const char* const OUTSIDE_SHADER_SOURCE;

/// Compiles `source` as a fragment shader. Strict GLSL 1.10 compilers (Mesa among them) refuse
/// the sources above for their float suffixes and int-to-float conversions, which GLSL 1.20
/// accepts: a refused source is compiled again behind "#version 120". The first refusal is
/// expected and kept off the error stream; SFML reports the second one itself.
bool loadFragmentShader(sf::Shader& shader, const char* source);

} // namespace orane
