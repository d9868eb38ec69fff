// JSON forms of records, messages and effects, and every way decoding a
// message can fail.
#include <gtest/gtest.h>

#include <sstream>

#include "Json.h"

using namespace velmar;

namespace {

std::string text(const Json& j) { return dumpCompact(j); }

std::string roundTrip(std::string_view line) {
    auto decoded = decodeMsg(line);
    if (auto* e = std::get_if<DecodeError>(&decoded)) return "error: " + describe(*e);
    return text(toJson(std::get<Msg>(decoded)));
}

std::string errorOf(std::string_view line) {
    auto decoded = decodeMsg(line);
    if (auto* e = std::get_if<DecodeError>(&decoded)) return describe(*e);
    return "decoded: " + text(toJson(std::get<Msg>(decoded)));
}

}  // namespace

TEST(json_records, write_every_field_and_leave_absent_optionals_out) {
    PR bare{.id = 7, .repoId = 2, .repo = "o/r", .number = 12, .title = "Fix \"x\"",
            .author = "ana", .branch = "feat/x", .isDraft = true, .url = "https://github.com/o/r/pull/12"};
    PR resolved = bare;
    resolved.preview = "https://p.example/12";
    resolved.previewSource = PreviewSource::detected;
    resolved.commentPreview = "https://c.example";
    struct Row {
        const char* what;
        Json json;
        std::string expected;
    };
    const Row rows[] = {
        {"repo", toJson(Repo{.id = 3, .name = "o/r", .pattern = "", .state = RepoState::loading,
                             .count = 4, .failed = true, .detectedPattern = "https://{branch}.x"}),
         R"({"count":4,"detectedPattern":"https://{branch}.x","failed":true,"id":3,"name":"o/r","pattern":"","state":"loading"})"},
        {"pr without preview source", toJson(bare),
         R"({"author":"ana","branch":"feat/x","commentPreview":"","id":7,"isDraft":true,"number":12,"preview":"","repo":"o/r","repoId":2,"title":"Fix \"x\"","url":"https://github.com/o/r/pull/12"})"},
        {"pr with preview source", toJson(resolved),
         R"({"author":"ana","branch":"feat/x","commentPreview":"https://c.example","id":7,"isDraft":true,"number":12,"preview":"https://p.example/12","previewSource":"detected","repo":"o/r","repoId":2,"title":"Fix \"x\"","url":"https://github.com/o/r/pull/12"})"},
        {"browser", toJson(Browser{1, "System default", "", "SD", false, true}),
         R"({"app":"","id":1,"initials":"SD","name":"System default","running":false,"shown":true})"},
        {"detected browser", toJson(DetectedBrowser{"Firefox", true}), R"({"app":"Firefox","running":true})"},
        {"suggestion", toJson(Suggestion{"o/ü", false}), R"({"mine":false,"name":"o/ü"})"},
        {"frame", toJson(WindowFrame{-10.5, 0, 620, 760}),
         R"({"height":760.0,"width":620.0,"x":-10.5,"y":0.0})"},
    };
    for (const auto& r : rows) EXPECT_EQ(text(r.json), r.expected) << r.what;
}

TEST(json_records, fresh_model_form) {
    Json j = toJson(Model());
    for (const char* absent : {"selectedBrowser", "browserPref", "brewInstalled", "hoveredPr",
                               "editingRepo", "home", "path", "lastFrame", "autoRefresh"})
        EXPECT_FALSE(j.contains(absent)) << absent;
    EXPECT_EQ(text(j),
              R"({"addOpen":false,"addText":"","appearance":"dark","auto":false,"browserMode":"open",)"
              R"("browsers":[],"browsersDetected":false,"browsersLoaded":false,"editText":"",)"
              R"("fetchInFlight":false,"flash":"Loading...","gh":"unknown","manualConfigured":false,)"
              R"("nextBrowserId":1,"nextRepoId":1,"onboarded":false,"pathResolved":false,"prs":[],)"
              R"("repos":[],"reposLoaded":false,"screen":"list","settingsLoaded":false,)"
              R"("storedShown":[],"suggestions":[],"userNavigated":false})");
}

TEST(json_records, model_optionals_are_written_when_present_even_if_false_or_empty) {
    Model m;
    m.brewInstalled = false;
    m.selectedBrowser = 0;
    m.browserPref = "";
    m.hoveredPr = 5;
    m.editingRepo = 2;
    m.home = "/home/u";
    m.path = "/usr/bin:/bin";
    m.lastFrame = WindowFrame{1, 2, 3, 4};
    m.flash.reset();
    m.gh = GhStatus::loggedOut;
    m.storedShown = {"@default", "Firefox"};
    Json j = toJson(m);
    EXPECT_EQ(j["brewInstalled"], false);
    EXPECT_EQ(j["selectedBrowser"], 0);
    EXPECT_EQ(j["browserPref"], "");
    EXPECT_EQ(j["hoveredPr"], 5);
    EXPECT_EQ(j["editingRepo"], 2);
    EXPECT_EQ(j["home"], "/home/u");
    EXPECT_EQ(j["path"], "/usr/bin:/bin");
    EXPECT_EQ(text(j["lastFrame"]), R"({"height":4.0,"width":3.0,"x":1.0,"y":2.0})");
    EXPECT_FALSE(j.contains("flash"));
    EXPECT_EQ(j["gh"], "logged_out");
    EXPECT_EQ(text(j["storedShown"]), R"(["@default","Firefox"])");
}

TEST(json_msg, every_case_reads_back_as_written) {
    // One line per case, keys sorted, so decoding then writing gives the line back.
    const char* lines[] = {
        R"({"msg":"boot"})",
        R"({"frame":{"height":760.0,"width":620.0,"x":-1.5,"y":0.1},"msg":"window_restored"})",
        R"({"home":"/home/ü","msg":"home_resolved"})",
        R"({"msg":"path_resolved","path":""})",
        R"({"browsers":[{"app":"Firefox","running":true},{"app":"Safari","running":false}],"msg":"browsers_detected"})",
        R"({"msg":"browsers_detect_failed"})",
        R"({"contents":"o/r\thttps://x/{number}\n","file":"repos","msg":"file_read"})",
        R"({"file":"window","msg":"file_written","ok":false})",
        R"({"msg":"prs_fetched","ok":true,"output":"o/r\n"})",
        R"({"msg":"prs_spawn_failed"})",
        R"({"msg":"suggestions_fetched","ok":true,"output":"a/b\n","source":"shared"})",
        R"({"exit":-2147483648,"msg":"gh_checked"})",
        R"({"installed":false,"msg":"brew_probed"})",
        R"({"msg":"open_failed"})",
        R"({"msg":"auto_tick"})",
        R"({"msg":"detect_tick"})",
        R"({"msg":"onboarding_tick"})",
        R"({"msg":"refresh"})",
        R"({"msg":"set_auto","on":true})",
        R"({"appearance":"system","msg":"set_appearance"})",
        R"({"msg":"navigate","screen":"manage"})",
        R"({"id":9223372036854775807,"msg":"open_pr"})",
        R"({"id":-1,"msg":"copy_pr_link"})",
        R"({"browser":3,"id":1,"msg":"open_preview"})",
        R"({"id":1,"msg":"copy_preview"})",
        R"({"id":1,"msg":"hover_pr"})",
        R"({"id":1,"msg":"unhover_pr"})",
        R"({"id":1,"msg":"select_browser"})",
        R"({"mode":"manual","msg":"set_browser_mode"})",
        R"({"id":1,"msg":"toggle_browser_shown"})",
        R"({"msg":"open_add"})",
        R"({"msg":"close_add"})",
        R"({"msg":"add_text","text":"vercel/next.js"})",
        R"({"msg":"submit_add"})",
        R"({"msg":"pick_suggestion","name":"a/b"})",
        R"({"msg":"edit_pattern","repo_id":1})",
        R"({"msg":"edit_text","text":"https://{branch}.x"})",
        R"({"msg":"save_pattern"})",
        R"({"msg":"cancel_edit"})",
        R"({"id":1,"msg":"remove_repo"})",
        R"({"id":1,"index":0,"msg":"move_repo"})",
        R"({"id":1,"msg":"copy_repo_name"})",
        R"({"id":1,"msg":"open_repo"})",
        R"({"id":1,"msg":"copy_repo_link"})",
        R"({"msg":"onboarding_continue"})",
        R"({"msg":"onboarding_skip"})",
        R"({"msg":"open_install_page"})",
        R"({"command":"gh auth login","msg":"copy_command"})",
        R"({"frame":{"height":1.0,"width":2.0,"x":3.0,"y":4.0},"msg":"window_moved"})",
    };
    ASSERT_EQ(std::size(lines), std::variant_size_v<Msg>);
    for (std::size_t i = 0; i < std::size(lines); ++i) {
        auto decoded = decodeMsg(std::string_view(lines[i]));
        ASSERT_TRUE(std::holds_alternative<Msg>(decoded)) << lines[i] << ": " << errorOf(lines[i]);
        EXPECT_EQ(std::get<Msg>(decoded).index(), i) << lines[i];  // names tried in table order
        EXPECT_EQ(roundTrip(lines[i]), lines[i]);
    }
}

TEST(json_msg, lenient_forms_decode_to_their_canonical_form) {
    struct Row {
        const char* in;
        const char* out;
    };
    const Row rows[] = {
        {R"({"msg":"boot","id":3})", R"({"msg":"boot"})"},
        {R"({"msg":"window_restored"})", R"({"msg":"window_restored"})"},
        {R"({"msg":"window_restored","frame":null})", R"({"msg":"window_restored"})"},
        {R"({"msg":"file_read","file":"repos"})", R"({"file":"repos","msg":"file_read"})"},
        {R"({"msg":"file_read","file":"repos","contents":null})", R"({"file":"repos","msg":"file_read"})"},
        {R"({"msg":"open_preview","id":1})", R"({"id":1,"msg":"open_preview"})"},
        {R"({"msg":"open_preview","id":1,"browser":null})", R"({"id":1,"msg":"open_preview"})"},
        {R"({"msg":"edit_pattern","repo_id":1,"repoId":5})", R"({"msg":"edit_pattern","repo_id":1})"},
        {R"({"msg":"open_pr","id":1.0})", R"({"id":1,"msg":"open_pr"})"},
        {R"({"msg":"open_pr","id":2e3})", R"({"id":2000,"msg":"open_pr"})"},
        {R"({"msg":"window_moved","frame":{"x":1,"y":2,"width":3,"height":4,"z":0}})",
         R"({"frame":{"height":4.0,"width":3.0,"x":1.0,"y":2.0},"msg":"window_moved"})"},
        {R"({"msg":"navigate","screen":"list","msg2":"x"})", R"({"msg":"navigate","screen":"list"})"},
        {" \t{\"msg\":\"refresh\"}\r\n", R"({"msg":"refresh"})"},
        {R"({"msg":"set_auto","on":false,"msg":"set_auto"})", R"({"msg":"set_auto","on":false})"},
        {R"({"msg":"add_text","text":"a\/b \u00e9 \ud83d\ude00"})", R"({"msg":"add_text","text":"a/b é 😀"})"},
    };
    for (const auto& r : rows) EXPECT_EQ(roundTrip(r.in), r.out) << r.in;
}

TEST(json_msg, decoding_failures_name_the_first_fault) {
    struct Row {
        const char* in;
        const char* error;
    };
    const Row rows[] = {
        // The name itself.
        {R"({"id":1})", "missing field 'msg'"},
        {R"({"msg":null})", "missing value (expected String) at 'msg'"},
        {R"({"msg":7})", "type mismatch (expected String) at 'msg'"},
        {R"({"msg":"nope"})", "unknown msg 'nope'"},
        {R"({"msg":"Boot"})", "unknown msg 'Boot'"},
        {R"({"msg":" boot"})", "unknown msg ' boot'"},
        // Required keys: missing, null, wrong type; read in table order.
        {R"({"msg":"set_auto"})", "missing field 'on'"},
        {R"({"msg":"set_auto","on":null})", "missing value (expected Bool) at 'on'"},
        {R"({"msg":"set_auto","on":1})", "type mismatch (expected Bool) at 'on'"},
        {R"({"msg":"set_auto","on":"true"})", "type mismatch (expected Bool) at 'on'"},
        {R"({"msg":"window_moved"})", "missing field 'frame'"},
        {R"({"msg":"window_moved","frame":null})", "missing value (expected Object) at 'frame'"},
        {R"({"msg":"window_moved","frame":[1,2,3,4]})", "type mismatch (expected Object) at 'frame'"},
        {R"({"msg":"move_repo","id":1,"toIndex":0})", "missing field 'index'"},
        {R"({"msg":"move_repo","index":"0"})", "missing field 'id'"},
        {R"({"msg":"edit_pattern","repoId":1})", "missing field 'repo_id'"},
        {R"({"msg":"file_written","ok":true})", "missing field 'file'"},
        {R"({"msg":"file_written","file":"repos","ok":"yes"})", "type mismatch (expected Bool) at 'ok'"},
        {R"({"msg":"prs_fetched","ok":true})", "missing field 'output'"},
        {R"({"msg":"suggestions_fetched","ok":1,"output":2,"source":"mine"})",
         "unknown SuggestionSource text at 'source'"},
        {R"({"msg":"home_resolved","home":["/h"]})", "type mismatch (expected String) at 'home'"},
        // Integers.
        {R"({"msg":"open_pr","id":1.5})", "type mismatch (expected Int) at 'id'"},
        {R"({"msg":"open_pr","id":"1"})", "type mismatch (expected Int) at 'id'"},
        {R"({"msg":"open_pr","id":true})", "type mismatch (expected Int) at 'id'"},
        {R"({"msg":"open_pr","id":9223372036854775808})", "type mismatch (expected Int) at 'id'"},
        {R"({"msg":"open_pr","id":1e19})", "type mismatch (expected Int) at 'id'"},
        {R"({"msg":"open_preview","id":1,"browser":0.5})", "type mismatch (expected Int) at 'browser'"},
        {R"({"msg":"gh_checked","exit":2147483648})", "type mismatch (expected Int32) at 'exit'"},
        {R"({"msg":"gh_checked","exit":-2147483649})", "type mismatch (expected Int32) at 'exit'"},
        {R"({"msg":"gh_checked","exit":null})", "missing value (expected Int32) at 'exit'"},
        // Enumerations: wrong type, then unknown text (case-sensitive).
        {R"({"msg":"navigate","screen":1})", "type mismatch (expected String) at 'screen'"},
        {R"({"msg":"navigate","screen":"List"})", "unknown Screen text at 'screen'"},
        {R"({"msg":"set_appearance","appearance":"auto"})", "unknown Appearance text at 'appearance'"},
        {R"({"msg":"set_browser_mode","mode":""})", "unknown BrowserMode text at 'mode'"},
        {R"({"msg":"file_read","file":"window.tsv"})", "unknown ConfigFile text at 'file'"},
        {R"({"msg":"file_read","file":"repos","contents":5})", "type mismatch (expected String) at 'contents'"},
        // Nested records: paths lead to the value; a missing key is named alone.
        {R"({"msg":"window_moved","frame":{"x":1,"y":2,"width":3}})", "missing field 'height'"},
        {R"({"msg":"window_moved","frame":{"x":"1","y":2}})", "type mismatch (expected Double) at 'frame.x'"},
        {R"({"msg":"window_restored","frame":{"x":1,"y":null,"width":3,"height":4}})",
         "missing value (expected Double) at 'frame.y'"},
        {R"({"msg":"browsers_detected"})", "missing field 'browsers'"},
        {R"({"msg":"browsers_detected","browsers":{}})", "type mismatch (expected Array) at 'browsers'"},
        {R"({"msg":"browsers_detected","browsers":[null]})", "missing value (expected Object) at 'browsers.0'"},
        {R"({"msg":"browsers_detected","browsers":[{"app":"a","running":true},"b"]})",
         "type mismatch (expected Object) at 'browsers.1'"},
        {R"({"msg":"browsers_detected","browsers":[{"app":1,"running":true}]})",
         "type mismatch (expected String) at 'browsers.0.app'"},
        {R"({"msg":"browsers_detected","browsers":[{"app":"a"}]})", "missing field 'running'"},
        // Not a message at all.
        {"[1,2]", "not a JSON object"},
        {"\"boot\"", "not a JSON object"},
        {"null", "not a JSON object"},
        {"", "not valid JSON: unexpected end of input at byte 1"},
        {"{\"msg\":\"boot\"", "not valid JSON: unexpected end of input at byte 14"},
        {"{\"msg\":\"boot\"} x", "not valid JSON: unexpected character at byte 16"},
        {"{'msg':'boot'}", "not valid JSON: unexpected character at byte 2"},
        {R"({"msg":"boot)", "not valid JSON: unterminated string at byte 13"},
        {R"({"msg":"open_pr","id":1e})", "not valid JSON: malformed number at byte 25"},
        {R"({"msg":"\uZZ"})", "not valid JSON: invalid \\u escape at byte 11"},
        {"{\"msg\":\"bo\xFFot\"}", "not valid JSON: ill-formed UTF-8 at byte 11"},
        {"{\"msg\":\"a\nb\"}", "not valid JSON: unescaped control character in a string at byte 10"},
        {R"({"msg":"\ud800"})", "not valid JSON: invalid \\u escape at byte 15"},
    };
    for (const auto& r : rows) EXPECT_EQ(errorOf(r.in), r.error) << r.in;
}

TEST(json_msg, hostile_input_gives_one_line_without_echoing_it) {
    struct Row {
        const char* what;
        std::string in;
        std::string error;
    };
    const std::string deep = std::string(100000, '[') + std::string(100000, ']');
    const std::string deepUnclosed = R"({"msg":"boot","x":)" + std::string(100000, '[');
    const Row rows[] = {
        {"deep arrays", deep, "not valid JSON: nested deeper than 512 levels"},
        {"deep objects under a valid name", R"({"msg":"boot","x":)" + std::string(600, '[') + std::string(600, ']') + "}",
         "not valid JSON: nested deeper than 512 levels"},
        {"unclosed deep arrays", deepUnclosed, "not valid JSON: nested deeper than 512 levels"},
        {"object without keys", R"({"msg":"boot","x":{{)", "not valid JSON: unexpected character at byte 20"},
        {"10 MB of garbage", std::string(10 << 20, '\x80'), "not valid JSON: unexpected character at byte 1"},
        {"10 MB inside a string", "{\"msg\":\"" + std::string(10 << 20, 'a') + "\xC3(\"}",
         "not valid JSON: ill-formed UTF-8 at byte 10485770"},
        {"NUL byte", std::string("{\"msg\":\0}", 9), "not valid JSON: unexpected NUL byte at byte 8"},
    };
    for (const auto& r : rows) {
        std::string e = errorOf(r.in);
        EXPECT_EQ(e, r.error) << r.what;
        EXPECT_EQ(e.find('\n'), std::string::npos) << r.what;
    }
    // Depth within the limit is fine: unknown keys are ignored whatever they hold.
    std::string nested = R"({"msg":"boot","x":)" + std::string(500, '[') + std::string(500, ']') + "}";
    EXPECT_EQ(roundTrip(nested), R"({"msg":"boot"})");
    // A large valid payload goes through whole.
    std::string big(10 << 20, 'x');
    auto decoded = decodeMsg(std::string_view(R"({"msg":"prs_fetched","ok":true,"output":")" + big + "\"}"));
    ASSERT_TRUE(std::holds_alternative<Msg>(decoded));
    EXPECT_EQ(std::get<msg::PrsFetched>(std::get<Msg>(decoded)).output.size(), big.size());
}

TEST(json_msg, doubles_read_back_as_the_same_value) {
    for (double d : {0.1, -0.0, 1e-300, 123456789.123456789, 5e-324, 1.7976931348623157e308}) {
        Msg m = msg::WindowMoved{{d, -d, d, 1}};
        auto back = decodeMsg(std::string_view(text(toJson(m))));
        ASSERT_TRUE(std::holds_alternative<Msg>(back)) << d;
        EXPECT_EQ(std::get<Msg>(back), m) << d;
    }
}

TEST(json_effect, forms_of_every_case) {
    struct Row {
        Effect effect;
        const char* json;
    };
    const Row rows[] = {
        {effect::ReadFile{ConfigFile::repos, "/h/.config/velmar/repos.tsv"},
         R"({"effect":"read_file","file":"repos","path":"/h/.config/velmar/repos.tsv"})"},
        {effect::WriteFile{ConfigFile::settings, "/h/s.tsv", ""},
         R"({"contents":"","effect":"write_file","file":"settings","path":"/h/s.tsv"})"},
        {effect::FetchPrs{"o/r", std::nullopt}, R"({"effect":"fetch_prs","repo":"o/r"})"},
        {effect::FetchPrs{"o/r", "/bin"}, R"({"effect":"fetch_prs","path":"/bin","repo":"o/r"})"},
        {effect::FetchSuggestions{SuggestionSource::owned, ""},
         R"({"effect":"fetch_suggestions","path":"","source":"owned"})"},
        {effect::GhPreflight{}, R"({"effect":"gh_preflight"})"},
        {effect::BrewProbe{"/opt/homebrew/bin"}, R"({"effect":"brew_probe","path":"/opt/homebrew/bin"})"},
        {effect::OpenURL{"https://x/a?b=1&c", ""}, R"({"app":"","effect":"open_url","url":"https://x/a?b=1&c"})"},
        {effect::CopyToClipboard{"tab\there \u2028"}, "{\"effect\":\"copy_to_clipboard\",\"text\":\"tab\\there \u2028\"}"},
        {effect::ResolveHome{}, R"({"effect":"resolve_home"})"},
        {effect::ResolvePath{}, R"({"effect":"resolve_path"})"},
        {effect::DetectBrowsers{}, R"({"effect":"detect_browsers"})"},
    };
    for (const auto& r : rows) EXPECT_EQ(text(toJson(r.effect)), r.json) << r.json;
}

TEST(json_text, compact_writer_keeps_text_readable_and_refuses_bad_utf8) {
    EXPECT_EQ(dumpCompact(Json{{"b", "a/b"}, {"a", "é\x01"}, {"B", 1}}),
              "{\"B\":1,\"a\":\"é\\u0001\",\"b\":\"a/b\"}");
    EXPECT_THROW(dumpCompact(Json("\xC3")), Json::exception);
}

TEST(json_text, printer_shows_messages_and_effects_as_json) {
    struct Row {
        std::string printed, contains;
    };
    const Row rows[] = {
        {testing::PrintToString(Msg(msg::SetAuto{true})), R"({"msg":"set_auto","on":true})"},
        {testing::PrintToString(Effects{effect::ResolveHome{}}), R"({"effect":"resolve_home"})"},
        {testing::PrintToString(Effect(effect::OpenURL{"u", "a"})), R"({"app":"a","effect":"open_url","url":"u"})"},
    };
    for (const auto& r : rows) EXPECT_NE(r.printed.find(r.contains), std::string::npos) << r.printed;
}
