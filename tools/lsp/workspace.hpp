#pragma once

#include "textdocument.hpp"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace orane::lsp
{

/// The stories directory the editor works on: every file as the editor sees it. An open
/// document (an unsaved buffer) takes the place of the file on disk until it is closed.
class Workspace
{
public:
    /// `directory` is absolute; a final '/' is added when missing.
    void setDirectory(std::string directory);
    [[nodiscard]] const std::string& directory() const { return directory_; }
    [[nodiscard]] bool hasDirectory() const { return !directory_.empty(); }
    [[nodiscard]] std::string suspectsPath() const { return directory_ + "suspects.ini"; }

    void open(const std::string& path, std::string text);
    void close(const std::string& path);
    /// Null when `path` is not open.
    [[nodiscard]] TextDocument* openDocument(const std::string& path);
    [[nodiscard]] bool isOpen(const std::string& path) const { return open_.count(path) > 0; }
    [[nodiscard]] std::vector<std::string> openPaths() const;
    /// Says that an open document's text changed (after editing it through openDocument).
    void changed(const std::string& path);

    /// The file as the editor sees it; an empty document when it neither is open nor can be read.
    [[nodiscard]] const TextDocument& document(const std::string& path);
    /// True when the file is open or can be read.
    [[nodiscard]] bool exists(const std::string& path);
    /// Counts changes to `path`'s text: equal counts mean equal text.
    [[nodiscard]] std::uint64_t revision(const std::string& path);

    /// The suspects' names as the game reads them: suspects.ini's lines trimmed, without repeats,
    /// in code-point order (the order of the hub and of reading their files).
    [[nodiscard]] std::vector<std::string> suspects();
    /// story.txt, then each suspect's file, in the order the game reads them.
    [[nodiscard]] std::vector<std::string> storyFiles();
    /// Files on disk may have changed behind the editor's back: read them again when they did.
    void checkDisk();

private:
    struct FileState
    {
        TextDocument document;
        std::uint64_t revision = 0;
        bool readable = false;
        /// When read from disk: what it looked like then, to notice changes.
        std::int64_t modified = -1;
        std::int64_t size = -1;
    };
    FileState& state(const std::string& path);
    void readFromDisk(const std::string& path, FileState& file);

    std::string directory_;
    std::map<std::string, FileState> open_;
    std::map<std::string, FileState> disk_;
    std::uint64_t nextRevision_ = 1;
};

/// `text` without the white space the game trims from the ends of suspects.ini's lines.
[[nodiscard]] std::string trimmedLikeTheGame(std::string_view text);

} // namespace orane::lsp
