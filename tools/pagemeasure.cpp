#include "pagemeasure.hpp"

#include "book/book.hpp"
#include "choicebuttonlook.hpp"

#include <ryn/core/console.hpp>
#include <ryn/gui/shapeshifter.hpp>

#include <fstream>

namespace orane
{
namespace
{

// The notebook's writer texts are set this way.
constexpr unsigned int WRITER_CHARACTER_SIZE = 20;

const char* const FONT_FILE_NAMES[2] = {"orane.ttf", "nathan.ttf"};
/// What the build copies under those names, for a tool run outside a build folder.
const char* const DEBIAN_FONT_FILES[2] = {"/usr/share/fonts/opentype/dancingscript/DancingScript-Regular.otf",
                                          "/usr/share/fonts/opentype/kaushanscript/KaushanScript-Regular.otf"};

bool isReadable(const std::string& path)
{
    return static_cast<bool>(std::ifstream(path));
}

/// The notebook's geometry, without the notebook's shaders and their graphics context.
sf::Vector2f pageSize()
{
    static const BookGeometry geometry;
    return geometry.pageSize();
}

/// The game's choice button, as the game dresses it.
void dressAsChoiceButton(ryn::ShapeShifter& button, const sf::Font& font, const sf::String& label)
{
    ChoiceButtonLook::dress(button, font);
    button.setString(ryn::console::toUtf8(label.toWideString()));
}

std::u32string codePoints(const sf::String& text)
{
    return std::u32string(text.begin(), text.end());
}

/// A key of a writer and a text.
std::u32string writerKey(const sf::String& text, PageWriter writer)
{
    return static_cast<char32_t>(writer) + codePoints(text);
}

} // namespace

template <typename Value>
const Value* PageMeasure::Memo<Value>::find(const std::u32string& key)
{
    const auto found = recent.find(key);
    if (found != recent.end())
        return &found->second;
    const auto old = older.find(key);
    if (old == older.end())
        return nullptr;
    return &keep(key, old->second);
}

template <typename Value>
const Value& PageMeasure::Memo<Value>::keep(std::u32string key, Value value)
{
    return recent.insert_or_assign(std::move(key), std::move(value)).first->second;
}

template <typename Value>
void PageMeasure::Memo<Value>::age()
{
    older = std::move(recent);
    recent.clear();
}

void PageMeasure::forgetUnused()
{
    broken_.age();
    textBottoms_.age();
    buttonBounds_.age();
    buttonsBottoms_.age();
}

std::vector<std::string> PageMeasure::fontDirectories(const std::string& executableDirectory)
{
    std::vector<std::string> directories{"resources/fonts/"};
    if (!executableDirectory.empty()) {
        directories.push_back(executableDirectory + "/resources/fonts/");
        // Installed, the tool is in bin/ and the game's fonts under share/orane/.
        directories.push_back(executableDirectory + "/../share/orane/resources/fonts/");
    }
    return directories;
}

std::array<std::string, 2> PageMeasure::fontFiles(const std::vector<std::string>& directories)
{
    std::array<std::string, 2> paths;
    for (std::size_t writer = 0; writer < 2; ++writer) {
        paths[writer] = DEBIAN_FONT_FILES[writer];
        for (const std::string& directory : directories) {
            if (isReadable(directory + FONT_FILE_NAMES[writer])) {
                paths[writer] = directory + FONT_FILE_NAMES[writer];
                break;
            }
        }
    }
    return paths;
}

bool PageMeasure::loadFonts(const std::vector<std::string>& directories)
{
    const std::array<std::string, 2> paths = fontFiles(directories);
    for (std::size_t writer = 0; writer < 2; ++writer) {
        const std::string& path = paths[writer];
        if (!isReadable(path) || !fonts_[writer].loadFromFile(path)) {
            error_ = std::string("cannot read the font ") + FONT_FILE_NAMES[writer]
                     + " (looked in resources/fonts/ and at " + path + ")";
            return false;
        }
        fontPaths_[writer] = path;
    }
    writerTexts_.resize(2);
    for (std::size_t writer = 0; writer < 2; ++writer) {
        writerTexts_[writer].setFont(fonts_[writer]);
        writerTexts_[writer].setCharacterSize(WRITER_CHARACTER_SIZE);
    }
    writerLayouts_.clear();
    writerLayouts_.reserve(writerTexts_.size());
    for (const sf::Text& text : writerTexts_)
        writerLayouts_.emplace_back(text);
    return true;
}

sf::Vector2f PageMeasure::writingArea() const
{
    const sf::Vector2f page = pageSize();
    return {page.x - 2.f * Book::TEXT_PADDING.x, page.y - 2.f * Book::TEXT_PADDING.y};
}

sf::String PageMeasure::brokenText(const sf::String& text, PageWriter writer)
{
    std::u32string key = writerKey(text, writer);
    if (const sf::String* known = broken_.find(key))
        return *known;
    Page page{text, writer};
    Book::wrapText(page, writerTexts_, pageSize(), Book::TEXT_PADDING);
    return broken_.keep(std::move(key), page.text);
}

float PageMeasure::textBottom(const sf::String& text, PageWriter writer)
{
    if (text.isEmpty())
        return 0.f;
    std::u32string key = writerKey(text, writer);
    if (const float* known = textBottoms_.find(key))
        return *known;
    const sf::FloatRect bounds = writerLayouts_[static_cast<std::size_t>(writer)].localBounds(brokenText(text, writer));
    return textBottoms_.keep(std::move(key), bounds.top + bounds.height);
}

sf::String PageMeasure::withAnswer(const sf::String& nathanText, const sf::String& longDescription)
{
    // As the notebook appends a taken answer: on its own line, then the page broken again.
    const sf::String page = brokenText(nathanText, PageWriter::NATHAN);
    return page.isEmpty() ? longDescription : page + sf::String(L"\n") + longDescription;
}

float PageMeasure::buttonWidth(const sf::String& label)
{
    const sf::FloatRect& bounds = buttonBounds(label);
    return bounds.left + bounds.width;
}

const sf::FloatRect& PageMeasure::buttonBounds(const sf::String& label)
{
    std::u32string key = codePoints(label);
    if (const sf::FloatRect* known = buttonBounds_.find(key))
        return *known;
    ryn::ShapeShifter button(ryn::ShapeShifter::TEXT | ryn::ShapeShifter::SHAPE, ryn::ShapeShifter::RECTANGLE);
    dressAsChoiceButton(button, fonts_[static_cast<std::size_t>(PageWriter::NATHAN)], label);
    return buttonBounds_.keep(std::move(key), button.bounds({0.f, 0.f}));
}

float PageMeasure::buttonsBottom(const sf::String& pageText, const std::vector<sf::String>& labels)
{
    std::u32string key = codePoints(pageText);
    for (const sf::String& label : labels)
        key += U'\0' + codePoints(label);
    if (const float* known = buttonsBottoms_.find(key))
        return *known;
    return buttonsBottoms_.keep(std::move(key), measureButtonsBottom(pageText, labels));
}

float PageMeasure::measureButtonsBottom(const sf::String& pageText, const std::vector<sf::String>& labels)
{
    const sf::String broken = brokenText(pageText, PageWriter::NATHAN);
    if (labels.empty())
        return textBottom(broken, PageWriter::NATHAN);
    const float lastTop =
        textHeight(broken, PageWriter::NATHAN) + ChoiceButtonLook::SPACING * static_cast<float>(labels.size() - 1);
    // Laid lower, the button's bounds move by the offset: the same sums as the button's own.
    const sf::FloatRect& bounds = buttonBounds(labels.back());
    return (bounds.top + lastTop) + bounds.height;
}

float PageMeasure::textHeight(const sf::String& brokenPageText, PageWriter writer)
{
    // The play state asks the untransformed text for its global bounds: an identity transform
    // turns the local rectangle into its corners and back, and only the height's rounding stays.
    const sf::FloatRect local = writerLayouts_[static_cast<std::size_t>(writer)].localBounds(brokenPageText);
    return (local.top + local.height) - local.top;
}

} // namespace orane
