#pragma once

#include "oraneapp.hpp"
#include "previewoptions.hpp"

#include <string>

namespace orane
{

class PreviewStates;

/// The game's application around the preview's state: the same window, components and
/// notebook, with the preview's keys, its resource search and a main loop that wakes on saves.
class PreviewApp : public OraneApp
{
public:
    PreviewApp(PreviewOptions options, std::string executableDirectory);

    /// The game's start-up, the preview's keys, and the clock that watches the story folder.
    bool init() override;
    bool createComponents() override;

private:
    PreviewOptions options_;
    std::string executableDirectory_;
    PreviewStates* states_ = nullptr;
};

/// `orane-story preview`: runs until the window is closed; answers the exit status.
int runPreview(const PreviewOptions& options, const std::string& executableDirectory);

} // namespace orane
