#include "loadedstory.hpp"
#include "pagemeasure.hpp"
#include "referencepagemeasure.hpp"
#include "temporarystory.hpp"

#include <ryn/core/console.hpp>

#include <gtest/gtest.h>

namespace
{

// Every page and button of a generated story, with every answer written, measured glyph by
// glyph and by text objects: the two must agree to the bit, or check's overflow verdicts drift.
TEST(GeneratedPages, MeasureAsTheTextObjectsDo)
{
    const orane::bench::TemporaryStory generated(2000);
    ASSERT_TRUE(generated.ok());
    const orane::LoadedStory story(generated.directory());
    ASSERT_TRUE(story.loads());

    orane::PageMeasure measure;
    ASSERT_TRUE(measure.loadFonts({std::string(ORANE_BINARY_DIR) + "/resources/fonts/"})) << measure.error();
    const ReferencePageMeasure reference(measure);
    for (const auto& [name, scene] : story.story().scenes())
        expectSameMeasures(measure, reference, scene, ryn::console::toUtf8(name.toWideString()));
}

} // namespace
