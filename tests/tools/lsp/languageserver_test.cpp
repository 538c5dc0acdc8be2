// The server driven message by message, as an editor would, on a small story of its own.
#include "languageserver.hpp"
#include "uri.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace
{

using orane::lsp::Json;

const char* const STORY = "SCENE begin\n"
                          "# sets: carte\n"
                          "ORANE\n"
                          "Bonjour.\n"
                          "* Entrer\n"
                          "J'entre.\n"
                          "-> salle\n"
                          "* Partir\n"
                          "Je pars.\n"
                          "-> game_over\n"
                          "SCENE salle\n"
                          "# needs: carte\n"
                          "NATHAN\n"
                          "Une salle.\n"
                          "FORWARD hub\n";

const char* const DUPONT = "SCENE Dupont_begin\n"
                           "ORANE\n"
                           "Dupont ment.\n"
                           "FORWARD hub\n"
                           "SCENE Dupont_arrest\n"
                           "ORANE\n"
                           "Il avoue.\n"
                           "FORWARD end\n";

class LanguageServerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "orane-lsp-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        directory_ = pattern + "/";
        write("suspects.ini", "Dupont\n");
        write("story.txt", STORY);
        write("Dupont.txt", DUPONT);
        server_ = std::make_unique<orane::lsp::LanguageServer>(
            [this](const Json& message) { sent_.push_back(message); },
            std::vector<std::string>{std::string(ORANE_BINARY_DIR) + "/resources/fonts/"});
    }
    void TearDown() override
    {
        server_.reset();
        std::filesystem::remove_all(directory_);
    }

    void write(const std::string& name, const std::string& text) const
    {
        std::ofstream(directory_ + name, std::ios::binary) << text;
    }
    std::string uri(const std::string& name) const { return orane::lsp::uriFromPath(directory_ + name); }

    Json request(const std::string& method, const Json& params)
    {
        sent_.clear();
        server_->handle(Json{{"jsonrpc", "2.0"}, {"id", ++lastId_}, {"method", method}, {"params", params}});
        for (const Json& message : sent_) {
            if (message.value("id", Json()) == lastId_)
                return message;
        }
        ADD_FAILURE() << "no answer to " << method << (sent_.empty() ? std::string() : sent_.back().dump());
        return Json();
    }
    Json result(const std::string& method, const Json& params)
    {
        return request(method, params).value("result", Json());
    }
    void notify(const std::string& method, const Json& params)
    {
        server_->handle(Json{{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
    }
    void initialize(const Json& capabilities = Json::object())
    {
        ASSERT_TRUE(
            request("initialize", {{"rootUri", orane::lsp::uriFromPath(directory_)}, {"capabilities", capabilities}})
                .contains("result"));
        notify("initialized", Json::object());
    }
    void open(const std::string& name, const std::string& text)
    {
        notify("textDocument/didOpen",
               {{"textDocument", {{"uri", uri(name)}, {"languageId", "orane-story"}, {"version", 1}, {"text", text}}}});
    }
    void edit(const std::string& name, int line, int from, int to, const std::string& text)
    {
        notify("textDocument/didChange",
               {{"textDocument", {{"uri", uri(name)}, {"version", 2}}},
                {"contentChanges", Json::array({{{"range",
                                                  {{"start", {{"line", line}, {"character", from}}},
                                                   {"end", {{"line", line}, {"character", to}}}}},
                                                 {"text", text}}})}});
    }
    /// Publishes and answers the diagnostics of `name` (null when none were published).
    Json diagnosticsOf(const std::string& name)
    {
        sent_.clear();
        server_->publishDiagnostics();
        for (const Json& message : sent_) {
            if (message.value("method", "") == "textDocument/publishDiagnostics"
                && message["params"]["uri"] == uri(name))
                return message["params"]["diagnostics"];
        }
        return nullptr;
    }
    static Json at(const std::string& documentUri, int line, int character)
    {
        return {{"textDocument", {{"uri", documentUri}}}, {"position", {{"line", line}, {"character", character}}}};
    }

    std::string directory_;
    std::vector<Json> sent_;
    std::unique_ptr<orane::lsp::LanguageServer> server_;
    int lastId_ = 0;
};

TEST_F(LanguageServerTest, LifecycleAndProtocolErrors)
{
    EXPECT_EQ(request("textDocument/hover", at(uri("story.txt"), 0, 7))["error"]["code"], -32002);
    initialize({{"general", {{"positionEncodings", {"utf-8", "utf-16"}}}}});
    EXPECT_EQ(request("initialize", Json::object())["error"]["code"], -32600);
    EXPECT_EQ(request("textDocument/formatting", Json::object())["error"]["code"], -32601);
    EXPECT_EQ(request("textDocument/definition", {{"textDocument", {{"uri", uri("story.txt")}}}})["error"]["code"],
              -32602);
    EXPECT_EQ(request("textDocument/definition", at("untitled:1", 0, 0))["error"]["code"], -32602);
    sent_.clear();
    server_->handle(Json::array({1, 2}));
    server_->handle(Json{{"jsonrpc", "2.0"}, {"method", "$/unknownNotification"}});
    notify("textDocument/didChange", {{"textDocument", {{"uri", 5}}}});
    ASSERT_EQ(sent_.size(), 1U);
    EXPECT_EQ(sent_[0]["error"]["code"], -32600);

    EXPECT_TRUE(request("shutdown", nullptr).contains("result"));
    EXPECT_EQ(request("textDocument/hover", at(uri("story.txt"), 0, 7))["error"]["code"], -32600);
    notify("exit", nullptr);
    EXPECT_TRUE(server_->finished());
    EXPECT_EQ(server_->exitCode(), 0);
}

TEST_F(LanguageServerTest, DiagnosticsFollowTheBufferNotTheDisk)
{
    initialize();
    open("story.txt", STORY);
    EXPECT_EQ(diagnosticsOf("story.txt"), Json::array());

    // Typing a letter into a link breaks it; the finding sits on the link's name, and the
    // scene it led to is left without a way in; the closest name is offered on the link.
    edit("story.txt", 6, 3, 3, "x");
    const Json broken = diagnosticsOf("story.txt");
    ASSERT_EQ(broken.size(), 3U) << broken.dump();
    EXPECT_EQ(broken[1]["severity"], 2);
    EXPECT_EQ(broken[2]["message"], "no scene is named \"xsalle\"; did you mean \"salle\"?");
    EXPECT_EQ(broken[2]["range"]["start"], (Json{{"line", 6}, {"character", 3}}));
    EXPECT_EQ(broken[0]["severity"], 1);
    EXPECT_EQ(broken[0]["message"], "ERROR : Scene \"begin\" choice 0 points to non-existing scene \"xsalle\".");
    EXPECT_EQ(broken[0]["range"]["start"], (Json{{"line", 6}, {"character", 3}}));
    EXPECT_EQ(broken[0]["range"]["end"], (Json{{"line", 6}, {"character", 9}}));

    edit("story.txt", 6, 3, 4, "");
    EXPECT_EQ(diagnosticsOf("story.txt"), Json::array());

    // A scene the game cannot read: the game's report and its details, on the faulty line.
    edit("story.txt", 14, 0, 0, "* Trop tard\n");
    const Json parse = diagnosticsOf("story.txt");
    ASSERT_FALSE(parse.empty());
    EXPECT_NE(parse[0]["message"].get<std::string>().find("Found token FORWARD after a choice"), std::string::npos);
    EXPECT_EQ(parse[0]["range"]["start"]["line"], 15);

    // Closing the buffer goes back to the file on disk, which was never broken.
    notify("textDocument/didClose", {{"textDocument", {{"uri", uri("story.txt")}}}});
    EXPECT_EQ(diagnosticsOf("story.txt"), Json::array());
}

TEST_F(LanguageServerTest, WarningsOfCheckArriveToo)
{
    initialize();
    open("story.txt", std::string(STORY) + "SCENE oubliee\nORANE\nPersonne ne vient ici.\nFORWARD end\n");
    const Json found = diagnosticsOf("story.txt");
    ASSERT_EQ(found.size(), 1U) << found.dump();
    EXPECT_EQ(found[0]["severity"], 2);
    EXPECT_EQ(found[0]["message"], "scene \"oubliee\" is never reached: no path from \"begin\" leads to it");
    EXPECT_EQ(found[0]["range"]["start"], (Json{{"line", 15}, {"character", 6}}));
}

TEST_F(LanguageServerTest, AuthorsFindingsSitOnTheWordTheySpeakOf)
{
    initialize();
    open("story.txt", STORY);
    // A slip of the pen in Nathan's text: the word alone is marked, and goes with the fix.
    edit("story.txt", 13, 7, 7, "l");
    const Json slip = diagnosticsOf("story.txt");
    ASSERT_EQ(slip.size(), 1U) << slip.dump();
    EXPECT_EQ(slip[0]["severity"], 2);
    EXPECT_EQ(slip[0]["message"].get<std::string>().rfind("\"sallle\" is in neither the French dictionary", 0), 0U);
    EXPECT_EQ(slip[0]["range"]["start"], (Json{{"line", 13}, {"character", 4}}));
    EXPECT_EQ(slip[0]["range"]["end"], (Json{{"line", 13}, {"character", 10}}));
    edit("story.txt", 13, 7, 8, "");
    EXPECT_EQ(diagnosticsOf("story.txt"), Json::array());

    // A need that nothing meets is an error on the fact's name; the fact set for nothing is
    // a note, shown as information.
    edit("story.txt", 11, 9, 14, "plan");
    const Json need = diagnosticsOf("story.txt");
    ASSERT_EQ(need.size(), 2U) << need.dump();
    EXPECT_EQ(need[0]["severity"], 3);
    EXPECT_EQ(need[0]["range"]["start"], (Json{{"line", 1}, {"character", 8}}));
    EXPECT_EQ(need[1]["severity"], 1);
    EXPECT_EQ(need[1]["message"], "the fact \"plan\" is needed here, but no scene or choice sets it");
    EXPECT_EQ(need[1]["range"]["start"], (Json{{"line", 11}, {"character", 9}}));
    EXPECT_EQ(need[1]["range"]["end"], (Json{{"line", 11}, {"character", 13}}));
}

TEST_F(LanguageServerTest, DefinitionAndReferences)
{
    initialize();
    open("story.txt", STORY);
    const Json definition = result("textDocument/definition", at(uri("story.txt"), 6, 5));
    EXPECT_EQ(definition["uri"], uri("story.txt"));
    EXPECT_EQ(definition["range"]["start"], (Json{{"line", 10}, {"character", 6}}));

    const Json toFile = result("textDocument/definition", at(uri("suspects.ini"), 0, 2));
    EXPECT_EQ(toFile["uri"], uri("Dupont.txt"));

    const Json setters = result("textDocument/definition", at(uri("story.txt"), 11, 10));
    ASSERT_EQ(setters.size(), 1U);
    EXPECT_EQ(setters[0]["range"]["start"], (Json{{"line", 1}, {"character", 8}}));

    Json params = at(uri("story.txt"), 10, 7);
    params["context"] = {{"includeDeclaration", true}};
    EXPECT_EQ(result("textDocument/references", params).size(), 2U);
    // The hub opens Dupont_begin because suspects.ini names Dupont.
    params = at(uri("Dupont.txt"), 0, 8);
    params["context"] = {{"includeDeclaration", false}};
    const Json hubWay = result("textDocument/references", params);
    ASSERT_EQ(hubWay.size(), 1U);
    EXPECT_EQ(hubWay[0]["uri"], uri("suspects.ini"));
}

TEST_F(LanguageServerTest, RenameASceneAndASuspect)
{
    initialize({{"workspace",
                 {{"workspaceEdit", {{"documentChanges", true}, {"resourceOperations", {"create", "rename"}}}}}}});
    open("story.txt", STORY);
    Json params = at(uri("story.txt"), 6, 4);
    params["newName"] = "grande_salle";
    const Json edit = result("textDocument/rename", params);
    ASSERT_EQ(edit["documentChanges"].size(), 1U);
    EXPECT_EQ(edit["documentChanges"][0]["edits"].size(), 2U);

    params["newName"] = "a b";
    EXPECT_EQ(request("textDocument/rename", params)["error"]["code"], -32803);
    params["newName"] = "begin";
    EXPECT_EQ(request("textDocument/rename", params)["error"]["code"], -32803);
    EXPECT_EQ(request("textDocument/prepareRename", at(uri("story.txt"), 14, 9))["error"]["code"], -32803);
    EXPECT_EQ(request("textDocument/prepareRename", at(uri("Dupont.txt"), 0, 8))["error"]["code"], -32803);

    Json suspect = at(uri("suspects.ini"), 0, 1);
    suspect["newName"] = "Durand";
    const Json renamed = result("textDocument/rename", suspect);
    const Json& changes = renamed["documentChanges"];
    ASSERT_EQ(changes.size(), 3U) << renamed.dump();
    EXPECT_EQ(changes[0]["edits"].size(), 2U); // Dupont.txt: both SCENE lines
    EXPECT_EQ(changes[0]["edits"][0]["newText"], "Durand_begin");
    EXPECT_EQ(changes[1]["edits"][0]["newText"], "Durand");
    EXPECT_EQ(changes[2]["kind"], "rename");
    EXPECT_EQ(changes[2]["newUri"], uri("Durand.txt"));
}

TEST_F(LanguageServerTest, CompletionOffersWhatFitsWhereTheCursorIs)
{
    initialize();
    open("story.txt", STORY);
    const auto labels = [this](int line, int character) {
        std::vector<std::string> found;
        for (const Json& item : result("textDocument/completion", at(uri("story.txt"), line, character)))
            found.push_back(item["label"]);
        return found;
    };
    const std::vector<std::string> scenes = labels(6, 3);
    EXPECT_EQ(scenes, (std::vector<std::string>{"Dupont_arrest", "Dupont_begin", "begin", "salle", "end", "game_over",
                                                "hub", "arrest"}));
    EXPECT_EQ(labels(14, 8), scenes);
    // What is typed narrows the list: "-> sa", "FORWARD h".
    EXPECT_EQ(labels(6, 5), std::vector<std::string>{"salle"});
    EXPECT_EQ(labels(14, 9), std::vector<std::string>{"hub"});
    EXPECT_EQ(labels(11, 9), std::vector<std::string>{"carte"});
    EXPECT_EQ(labels(12, 1), (std::vector<std::string>{"NATHAN"}));
    EXPECT_TRUE(labels(3, 7).empty());
}

TEST_F(LanguageServerTest, HoverAndSymbols)
{
    initialize();
    open("story.txt", STORY);
    const std::string hover = result("textDocument/hover", at(uri("story.txt"), 10, 8))["contents"]["value"];
    EXPECT_NE(hover.find("Orane's page: 0 px of 600 px (0 %)"), std::string::npos) << hover;
    EXPECT_NE(hover.find("Nathan's page: "), std::string::npos);
    EXPECT_NE(hover.find("choice 0 of begin, « Entrer »"), std::string::npos);
    EXPECT_NE(hover.find("Facts known here: carte"), std::string::npos);

    const Json outline = result("textDocument/documentSymbol", {{"textDocument", {{"uri", uri("story.txt")}}}});
    ASSERT_EQ(outline.size(), 2U);
    EXPECT_EQ(outline[0]["name"], "begin");
    EXPECT_EQ(outline[0]["children"][1]["detail"], "-> game_over");
    EXPECT_EQ(outline[1]["range"]["end"]["line"], 14);

    const Json symbols = result("workspace/symbol", {{"query", "dpbg"}});
    ASSERT_EQ(symbols.size(), 1U);
    EXPECT_EQ(symbols[0]["name"], "Dupont_begin");
}

} // namespace
