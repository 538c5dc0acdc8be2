#include "book/bookshaders.hpp"

#include <SFML/System/Err.hpp>

#include <ostream>
#include <streambuf>
#include <string>

namespace orane
{
namespace
{

/// Swallows SFML's error stream for its lifetime.
class SilencedErrors
{
public:
    SilencedErrors()
        : previous_(sf::err().rdbuf(&discard_))
    {}
    ~SilencedErrors() { sf::err().rdbuf(previous_); }
    SilencedErrors(const SilencedErrors&) = delete;
    SilencedErrors& operator=(const SilencedErrors&) = delete;

private:
    class Discard : public std::streambuf
    {
    protected:
        int overflow(int character) override { return traits_type::not_eof(character); }
        std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
    };

    Discard discard_;
    std::streambuf* previous_ = nullptr;
};

} // namespace

const char* const INSIDE_SHADER_SOURCE = R"glsl(uniform vec2 a;
uniform vec2 b;
uniform vec2 d;
uniform int height;
uniform sampler2D texture;
uniform float darkestAlpha;
uniform float shadowFadeDistance;
uniform float shadowCoefficient;
float isPointInRectangle(const vec2 p, const vec2 a, const vec2 b, const vec2 d)
{
	vec2 AB = b - a;
	vec2 AD = d - a;
	vec2 AP = p - a;
	float dotBP = dot(AB, AP);
	float dotBB = dot(AB, AB);
	float dotDP = dot(AD, AP);
	float dotDD = dot(AD, AD);
	return float((0 <= dotBP) && (dotBP <= dotBB) && (0 <= dotDP) && (dotDP <= dotDD));
}
float distancePointLine(vec2 p, vec2 a, vec2 b)
{
	return abs((b.y - a.y) * p.x - (b.x - a.x) * p.y + b.x * a.y - b.y * a.x)	/ sqrt((b.y - a.y)*(b.y - a.y) + (b.x - a.x) * (b.x - a.x));
}
void main()
{
	vec2 p = gl_FragCoord.xy;
	p.y = height - p.y;
	float alpha = isPointInRectangle(p,a,b,d);
	vec4 pixel = texture2D(texture, gl_TexCoord[0].xy);	float dst = distancePointLine(p, a, b);
	float shadowFinal = darkestAlpha + (clamp(dst, 0.f, shadowFadeDistance) * (1 - darkestAlpha) / shadowFadeDistance);
	pixel.xyz = pixel.xyz * mix(shadowFinal, 1, shadowCoefficient);
	gl_FragColor = gl_Color * pixel * alpha ;
}
)glsl";

const char* const OUTSIDE_SHADER_SOURCE = R"glsl(uniform vec2 a;
uniform vec2 b;
uniform vec2 d;
uniform int height;
uniform sampler2D texture;
uniform float darkestAlpha;
uniform float shadowFadeDistance;
uniform float shadowCoefficient;
float isPointInRectangle(const vec2 p, const vec2 a, const vec2 b, const vec2 d)
{
	vec2 AB = b - a;
	vec2 AD = d - a;
	vec2 AP = p - a;
	float dotBP = dot(AB, AP);
	float dotBB = dot(AB, AB);
	float dotDP = dot(AD, AP);
	float dotDD = dot(AD, AD);
	return float((0 <= dotBP) && (dotBP <= dotBB) && (0 <= dotDP) && (dotDP <= dotDD));
}
float distancePointLine(vec2 p, vec2 a, vec2 b)
{
	return abs((b.y - a.y) * p.x - (b.x - a.x) * p.y + b.x * a.y - b.y * a.x)	/ sqrt((b.y - a.y)*(b.y - a.y) + (b.x - a.x) * (b.x - a.x));
}
void main()
{
	vec2 p = gl_FragCoord.xy;
	p.y = height - p.y;
	float alpha = isPointInRectangle(p,a,b,d);
	alpha = 1 - alpha;
	vec4 pixel = texture2D(texture, gl_TexCoord[0].xy);	float dst = distancePointLine(p, a, b);
	float shadowFinal = darkestAlpha + (clamp(dst, 0.f, shadowFadeDistance) * (1 - darkestAlpha) / shadowFadeDistance);
	pixel.xyz = pixel.xyz * mix(shadowFinal, 1, shadowCoefficient);
	gl_FragColor = gl_Color * pixel * alpha ;
}
)glsl";

bool loadFragmentShader(sf::Shader& shader, const char* source)
{
    {
        const SilencedErrors silence;
        if (shader.loadFromMemory(source, sf::Shader::Fragment))
            return true;
    }
    return shader.loadFromMemory(std::string("#version 120\n") + source, sf::Shader::Fragment);
}

} // namespace orane
