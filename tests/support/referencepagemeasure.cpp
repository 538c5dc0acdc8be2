#include "referencepagemeasure.hpp"

#include "choicebuttonlook.hpp"
#include "scene/scene.hpp"

#include <ryn/core/console.hpp>
#include <ryn/gui/shapeshifter.hpp>

#include <SFML/Graphics/Text.hpp>

#include <gtest/gtest.h>

namespace
{

constexpr unsigned int WRITER_CHARACTER_SIZE = 20;

void dressAsChoiceButton(ryn::ShapeShifter& button, const sf::Font& font, const sf::String& label)
{
    orane::ChoiceButtonLook::dress(button, font);
    button.setString(ryn::console::toUtf8(label.toWideString()));
}

} // namespace

ReferencePageMeasure::ReferencePageMeasure(const orane::PageMeasure& measure)
{
    EXPECT_TRUE(fonts_[0].loadFromFile(measure.oraneFontPath()));
    EXPECT_TRUE(fonts_[1].loadFromFile(measure.nathanFontPath()));
}

float ReferencePageMeasure::textBottom(const sf::String& brokenText, orane::PageWriter writer) const
{
    if (brokenText.isEmpty())
        return 0.f;
    const sf::Text text(brokenText, fonts_[static_cast<std::size_t>(writer)], WRITER_CHARACTER_SIZE);
    const sf::FloatRect bounds = text.getLocalBounds();
    return bounds.top + bounds.height;
}

float ReferencePageMeasure::buttonsBottom(const sf::String& brokenPage, const std::vector<sf::String>& labels) const
{
    if (labels.empty())
        return textBottom(brokenPage, orane::PageWriter::NATHAN);
    const sf::Font& nathan = fonts_[static_cast<std::size_t>(orane::PageWriter::NATHAN)];
    ryn::ShapeShifter button(ryn::ShapeShifter::TEXT | ryn::ShapeShifter::SHAPE, ryn::ShapeShifter::RECTANGLE);
    dressAsChoiceButton(button, nathan, labels.back());
    const sf::Text page(brokenPage, nathan, WRITER_CHARACTER_SIZE);
    const float lastTop =
        page.getGlobalBounds().height + orane::ChoiceButtonLook::SPACING * static_cast<float>(labels.size() - 1);
    const sf::FloatRect bounds = button.bounds({0.f, lastTop});
    return bounds.top + bounds.height;
}

float ReferencePageMeasure::buttonWidth(const sf::String& label) const
{
    ryn::ShapeShifter button(ryn::ShapeShifter::TEXT | ryn::ShapeShifter::SHAPE, ryn::ShapeShifter::RECTANGLE);
    dressAsChoiceButton(button, fonts_[static_cast<std::size_t>(orane::PageWriter::NATHAN)], label);
    const sf::FloatRect bounds = button.bounds({0.f, 0.f});
    return bounds.left + bounds.width;
}

void expectSameMeasures(orane::PageMeasure& measure, const ReferencePageMeasure& reference, const orane::Scene& scene,
                        const std::string& place)
{
    using orane::PageWriter;
    SCOPED_TRACE(place);
    EXPECT_EQ(measure.textBottom(scene.oraneText, PageWriter::ORANE),
              reference.textBottom(measure.brokenText(scene.oraneText, PageWriter::ORANE), PageWriter::ORANE));
    EXPECT_EQ(measure.textBottom(scene.nathanText, PageWriter::NATHAN),
              reference.textBottom(measure.brokenText(scene.nathanText, PageWriter::NATHAN), PageWriter::NATHAN));
    std::vector<sf::String> labels;
    for (const orane::Choice& choice : scene.choices)
        labels.push_back(choice.briefDescription);
    for (const orane::Choice& choice : scene.choices) {
        const sf::String page = measure.withAnswer(scene.nathanText, choice.longDescription);
        EXPECT_EQ(measure.buttonsBottom(page, labels),
                  reference.buttonsBottom(measure.brokenText(page, PageWriter::NATHAN), labels));
        EXPECT_EQ(measure.buttonWidth(choice.briefDescription), reference.buttonWidth(choice.briefDescription));
    }
}
