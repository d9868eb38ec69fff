// JSON forms of records, messages and effects, and the ways decoding a message
// can fail. The headless transcripts in tests/data/headless hold further forms
// and errors; rows here cover what they do not.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

#include "Json.h"

using namespace velmar;

namespace {

std::string text(const Json& j) { return dumpCompact(j); }

/// A value as the text writer gives it.
template <typename T> std::string written(const T& value) {
    std::string out;
    JsonWriter writer(out);
    write(writer, value);
    return out;
}

/// The decoded message written back, or the error.
std::string decoded(std::string_view line) {
    auto d = decodeMsg(line);
    if (auto* e = std::get_if<DecodeError>(&d)) return describe(*e);
    return text(toJson(std::get<Msg>(d)));
}

}  // namespace

TEST(json_records, optionals_are_written_when_present_even_if_false_or_empty) {
    PR pr{.id = 7, .repoId = 2, .repo = "o/r", .number = 12, .title = "Fix \"x\"", .author = "ana",
          .branch = "b", .isDraft = true, .url = "u", .preview = "https://c", .previewSource = PreviewSource::comment,
          .commentPreview = "https://c"};
    Model m;
    m.selectedBrowser = 0;
    m.browserPref = "";
    m.hoveredPr = 5;
    m.editingRepo = 2;
    m.flash.reset();
    m.gh = GhStatus::loggedOut;
    m.prs = {pr};
    Json j = toJson(m);
    EXPECT_EQ(text({j["selectedBrowser"], j["browserPref"], j["hoveredPr"], j["editingRepo"], j["gh"]}),
              R"([0,"",5,2,"logged_out"])");
    EXPECT_FALSE(j.contains("flash"));
    EXPECT_EQ(written(m), text(j));
    EXPECT_EQ(text(j["prs"][0]),
              R"({"author":"ana","branch":"b","commentPreview":"https://c","id":7,"isDraft":true,"number":12,)"
              R"("preview":"https://c","previewSource":"comment","repo":"o/r","repoId":2,"title":"Fix \"x\"","url":"u"})");
}

TEST(json_msg, every_case_reads_back_as_written) {
    // A bare name stands for {"msg":name}, "#name" for {"id":1,"msg":name}; keys sorted.
    const char* lines[] = {
        "boot",
        R"({"frame":{"height":760.0,"width":620.0,"x":-1.5,"y":0.1},"msg":"window_restored"})",
        R"({"home":"/home/ü","msg":"home_resolved"})", R"({"msg":"path_resolved","path":""})",
        R"({"browsers":[{"app":"Firefox","running":true},{"app":"Safari","running":false}],"msg":"browsers_detected"})",
        "browsers_detect_failed",
        R"({"contents":"o/r\thttps://x/{number}\n","file":"repos","msg":"file_read"})",
        R"({"file":"window","msg":"file_written","ok":false})", R"({"msg":"prs_fetched","ok":true,"output":"o/r\n"})",
        "prs_spawn_failed", R"({"msg":"suggestions_fetched","ok":true,"output":"a/b\n","source":"shared"})",
        R"({"exit":-2147483648,"msg":"gh_checked"})", R"({"installed":false,"msg":"brew_probed"})",
        "open_failed", "auto_tick", "detect_tick", "onboarding_tick", "refresh",
        R"({"msg":"set_auto","on":true})", R"({"appearance":"system","msg":"set_appearance"})",
        R"({"msg":"navigate","screen":"manage"})", R"({"id":9223372036854775807,"msg":"open_pr"})",
        R"({"id":-1,"msg":"copy_pr_link"})", R"({"browser":3,"id":1,"msg":"open_preview"})",
        "#copy_preview", "#hover_pr", "#unhover_pr", "#select_browser", R"({"mode":"manual","msg":"set_browser_mode"})",
        "#toggle_browser_shown", "open_add", "close_add", R"({"msg":"add_text","text":"vercel/next.js"})",
        "submit_add", R"({"msg":"pick_suggestion","name":"a/b"})", R"({"msg":"edit_pattern","repo_id":1})",
        R"({"msg":"edit_text","text":"https://{branch}.x"})", "save_pattern", "cancel_edit", "#remove_repo",
        R"({"id":1,"index":0,"msg":"move_repo"})", "#copy_repo_name", "#open_repo", "#copy_repo_link",
        "onboarding_continue", "onboarding_skip", "open_install_page",
        R"({"command":"gh auth login","msg":"copy_command"})",
        R"({"frame":{"height":1.0,"width":2.0,"x":3.0,"y":4.0},"msg":"window_moved"})",
        R"({"msg":"set_checks","on":true})",
        R"({"msg":"batch_fetched","ok":false,"output":"{}","repos":["acme/web","o/r"]})",
        R"({"msg":"comments_fetched","ok":true,"output":""})", "rate_wait_over", "#open_repo_pulls",
        R"({"msg":"set_yours","on":false})",
        R"({"msg":"set_notify","on":true})", R"({"kind":"new_prs","msg":"set_notify_kind","on":false})",
        R"({"msg":"set_tray","on":true})",
        R"({"action":"preview","key":"acme/web#12","msg":"notification_action"})",
        R"({"key":"summary","msg":"notification_closed"})",
    };
    ASSERT_EQ(std::size(lines), std::variant_size_v<Msg>);
    for (std::size_t i = 0; i < std::size(lines); ++i) {
        std::string s = lines[i];
        if (s[0] == '#') s = R"({"id":1,"msg":")" + s.substr(1) + "\"}";
        else if (s[0] != '{') s = R"({"msg":")" + s + "\"}";
        auto d = decodeMsg(std::string_view(s));
        ASSERT_TRUE(std::holds_alternative<Msg>(d)) << s << ": " << decoded(s);
        EXPECT_EQ(std::get<Msg>(d).index(), i) << s;  // names tried in table order
        EXPECT_EQ(decoded(s), s);
        EXPECT_EQ(written(std::get<Msg>(d)), s);
    }
}

TEST(json_msg, lenient_forms_decode_to_their_canonical_form) {
    const std::pair<const char*, const char*> rows[] = {
        {R"({"msg":"open_preview","id":1,"browser":null})", R"({"id":1,"msg":"open_preview"})"},
        {R"({"msg":"open_pr","id":1.0})", R"({"id":1,"msg":"open_pr"})"},
        {R"({"msg":"open_pr","id":2e3})", R"({"id":2000,"msg":"open_pr"})"},
        {R"({"msg":"window_moved","frame":{"x":1,"y":2,"width":3,"height":4,"z":0}})",
         R"({"frame":{"height":4.0,"width":3.0,"x":1.0,"y":2.0},"msg":"window_moved"})"},
        {" \t{\"msg\":\"refresh\"}\r\n", R"({"msg":"refresh"})"},
        {R"({"msg":"set_auto","on":false,"msg":"set_auto"})", R"({"msg":"set_auto","on":false})"},
        {R"({"msg":"add_text","text":"a\/b \u00e9 \ud83d\ude00"})", R"({"msg":"add_text","text":"a/b é 😀"})"},
    };
    for (const auto& [in, out] : rows) EXPECT_EQ(decoded(in), out) << in;
}

TEST(json_msg, decoding_failures_name_the_first_fault) {
    const std::pair<const char*, const char*> rows[] = {
        {R"({"id":1})", "missing field 'msg'"},
        {R"({"msg":null})", "missing value (expected String) at 'msg'"},
        {R"({"msg":7})", "type mismatch (expected String) at 'msg'"},
        {R"({"msg":"move_repo","index":"0"})", "missing field 'id'"},
        {R"({"msg":"suggestions_fetched","ok":1,"output":2,"source":"mine"})",
         "unknown SuggestionSource text at 'source'"},
        {R"({"msg":"open_pr","id":"1"})", "type mismatch (expected Int) at 'id'"},
        {R"({"msg":"open_preview","id":1,"browser":0.5})", "type mismatch (expected Int) at 'browser'"},
        {R"({"msg":"file_read","file":"window.tsv"})", "unknown ConfigFile text at 'file'"},
        {R"({"msg":"window_restored","frame":{"x":1,"y":null,"width":3,"height":4}})",
         "missing value (expected Double) at 'frame.y'"},
        {R"({"msg":"browsers_detected","browsers":{}})", "type mismatch (expected Array) at 'browsers'"},
        {R"({"msg":"browsers_detected","browsers":[null]})", "missing value (expected Object) at 'browsers.0'"},
        {R"({"msg":"browsers_detected","browsers":[{"app":"a","running":true},"b"]})",
         "type mismatch (expected Object) at 'browsers.1'"},
        {"null", "missing value (expected Object) at ''"},
        {"", "not valid JSON: unexpected end of input at byte 1"},
        {"{\"msg\":\"boot\"} x", "not valid JSON: unexpected character at byte 16"},
        {R"({"msg":"boot)", "not valid JSON: unterminated string at byte 13"},
        {R"({"msg":"open_pr","id":1e})", "not valid JSON: malformed number at byte 25"},
        {R"({"msg":"\uZZ"})", "not valid JSON: invalid \\u escape at byte 11"},
        {R"({"msg":"\ud800"})", "not valid JSON: invalid \\u escape at byte 15"},
        {"{\"msg\":\"bo\xFFot\"}", "not valid JSON: ill-formed UTF-8 at byte 11"},
        {"{\"msg\":\"a\nb\"}", "not valid JSON: unescaped control character in a string at byte 10"},
    };
    for (const auto& [in, error] : rows) EXPECT_EQ(decoded(in), error) << in;
}

TEST(json_msg, integer_keys_take_their_whole_range_and_refuse_one_past_either_end) {
    // {fields before the number, number text, expected}: the message written back, or the error.
    const std::string id = R"("msg":"open_pr","id")", exit = R"("msg":"gh_checked","exit")";
    const std::tuple<std::string, const char*, const char*> rows[] = {
        {id, "9223372036854775807", R"({"id":9223372036854775807,"msg":"open_pr"})"},
        {id, "-9223372036854775808", R"({"id":-9223372036854775808,"msg":"open_pr"})"},
        {id, "9223372036854775808", "type mismatch (expected Int) at 'id'"},
        {id, "-9223372036854775809", "type mismatch (expected Int) at 'id'"},
        // The same limits spelt as floats: decided on the digits, not on a rounded double.
        {id, "-9223372036854775808.0", R"({"id":-9223372036854775808,"msg":"open_pr"})"},
        {id, "-92233720368547758.08e2", R"({"id":-9223372036854775808,"msg":"open_pr"})"},
        {id, "-9223372036854775809.0", "type mismatch (expected Int) at 'id'"},
        {id, "-9.223372036854775809e18", "type mismatch (expected Int) at 'id'"},
        {id, "9223372036854775807.5", "type mismatch (expected Int) at 'id'"},
        {id, "9007199254740993.5", "type mismatch (expected Int) at 'id'"},
        {id, "-18446744073709551616", "type mismatch (expected Int) at 'id'"},
        {id, "-0.0e400", R"({"id":0,"msg":"open_pr"})"},
        {id, "1500e-3", "type mismatch (expected Int) at 'id'"},
        {id, "15000e-4", "type mismatch (expected Int) at 'id'"},
        {id, "100000e-5", R"({"id":1,"msg":"open_pr"})"},
        {exit, "2147483647", R"({"exit":2147483647,"msg":"gh_checked"})"},
        {exit, "-2147483648", R"({"exit":-2147483648,"msg":"gh_checked"})"},
        {exit, "2147483648", "type mismatch (expected Int32) at 'exit'"},
        {exit, "-2147483649", "type mismatch (expected Int32) at 'exit'"},
        {exit, "-2147483648.0", R"({"exit":-2147483648,"msg":"gh_checked"})"},
        {exit, "-9223372036854775809", "type mismatch (expected Int32) at 'exit'"},
        // Every integer key reads through the same path, optional and nested ones too.
        {R"("msg":"open_preview","id":1,"browser")", "-9223372036854775809", "type mismatch (expected Int) at 'browser'"},
        {R"("msg":"move_repo","id":1,"index")", "-9223372036854775809", "type mismatch (expected Int) at 'index'"},
        {R"("msg":"edit_pattern","repo_id")", "-1e19", "type mismatch (expected Int) at 'repo_id'"},
    };
    for (const auto& [fields, number, expected] : rows) {
        const std::string line = "{" + fields + ":" + number + "}";
        EXPECT_EQ(decoded(line), expected) << line;
    }
}

TEST(json_msg, hostile_input_gives_one_line_without_echoing_it) {
    const std::string deep = "not valid JSON: nested deeper than 512 levels";
    const std::pair<std::string, std::string> rows[] = {
        {R"({"msg":"boot","x":)" + std::string(600, '[') + std::string(600, ']') + "}", deep},
        {R"({"msg":"boot","x":)" + std::string(100000, '['), deep},
        {std::string(10 << 20, '\x80'), "not valid JSON: unexpected character at byte 1"},
        {"{\"msg\":\"" + std::string(10 << 20, 'a') + "\xC3(\"}", "not valid JSON: ill-formed UTF-8 at byte 10485770"},
        {std::string("{\"msg\":\0}", 9), "not valid JSON: unexpected NUL byte at byte 8"},
    };
    for (const auto& [in, error] : rows) EXPECT_EQ(decoded(in), error) << error;
    // Within the depth limit, unknown keys are ignored whatever they hold; a large payload goes through whole.
    EXPECT_EQ(decoded(R"({"msg":"boot","x":)" + std::string(500, '[') + std::string(500, ']') + "}"),
              R"({"msg":"boot"})");
    std::string big(10 << 20, 'x');
    auto d = decodeMsg(std::string_view(R"({"msg":"prs_fetched","ok":true,"output":")" + big + "\"}"));
    ASSERT_TRUE(std::holds_alternative<Msg>(d));
    EXPECT_EQ(std::get<msg::PrsFetched>(std::get<Msg>(d)).output.size(), big.size());
}

TEST(json_effect, forms_with_absent_or_empty_fields_and_escapes) {
    const std::pair<Effect, const char*> rows[] = {
        {effect::WriteFile{ConfigFile::settings, "/h/s.tsv", ""},
         R"({"contents":"","effect":"write_file","file":"settings","path":"/h/s.tsv"})"},
        {effect::FetchPrs{"o/r", std::nullopt}, R"({"effect":"fetch_prs","repo":"o/r"})"},
        {effect::FetchSuggestions{SuggestionSource::owned, ""},
         R"({"effect":"fetch_suggestions","path":"","source":"owned"})"},
        {effect::GhPreflight{}, R"({"effect":"gh_preflight"})"},
        {effect::OpenURL{"https://x/a?b=1&c", ""}, R"({"app":"","effect":"open_url","url":"https://x/a?b=1&c"})"},
        {effect::CopyToClipboard{"tab\there"}, R"({"effect":"copy_to_clipboard","text":"tab\there"})"},
    };
    for (const auto& [e, json] : rows) {
        EXPECT_EQ(text(toJson(e)), json);
        EXPECT_EQ(written(e), json);
    }
}

TEST(json_text, writer_escapes_and_formats_as_the_document_dump_does) {
    // The dump keeps text readable: sorted keys, no escaped slash or letter.
    EXPECT_EQ(dumpCompact(Json{{"b", "a/b"}, {"a", "é\x01"}, {"B", 1}}), "{\"B\":1,\"a\":\"é\\u0001\",\"b\":\"a/b\"}");
    std::string everyAscii;
    for (int c = 0; c < 0x80; ++c) everyAscii += static_cast<char>(c);
    const std::string valid[] = {everyAscii, "", "a/b", "é ü", "\u2028\u2029", "😀\U0010FFFF", "\xEF\xBF\xBD",
                                 std::string(3000, 'x') + "\t\"\n" + std::string(3000, '=')};
    for (const auto& s : valid) {
        std::string out;
        JsonWriter(out).string(s);
        EXPECT_EQ(out, dumpCompact(Json(s))) << s;
    }
    // Truncated, overlong, surrogate, beyond U+10FFFF, stray continuation.
    const std::string invalid[] = {"\xC3", "a\xE2\x82", "\xC0\x80", "\xE0\x9F\xBF", "\xED\xA0\x80",
                                   "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\x80", "ok\xFF"};
    for (const auto& s : invalid) {
        std::string out;
        EXPECT_THROW(JsonWriter(out).string(s), InvalidUtf8) << s;
        EXPECT_THROW(dumpCompact(Json(s)), Json::exception) << s;
    }
    const double doubles[] = {0.0, -0.0, 0.1, 760.0, -1.5, 1e-300, 5e-324, 1.7976931348623157e308, 123456789.123456789,
                              1e21, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()};
    for (double d : doubles) {
        std::string out;
        JsonWriter(out).number(d);
        EXPECT_EQ(out, dumpCompact(Json(d))) << d;
        // A finite one reads back as the same value.
        const Msg moved = msg::WindowMoved{{d, -d, d, 1}};
        if (std::isfinite(d)) EXPECT_EQ(decodeMsg(std::string_view(text(toJson(moved)))), DecodeResult(moved)) << d;
    }
    for (std::int64_t i : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1}, std::int64_t{0},
                           std::numeric_limits<std::int64_t>::max()}) {
        std::string out;
        JsonWriter(out).integer(i);
        EXPECT_EQ(out, dumpCompact(Json(i)));
    }
    // Commas and colons between nested values.
    std::string out;
    JsonWriter w(out);
    w.beginObject(), w.key("a"), w.beginArray(), w.beginObject(), w.endObject(), w.beginArray(), w.endArray();
    w.boolean(false), w.endArray(), w.key("b"), w.integer(1), w.endObject();
    EXPECT_EQ(out, dumpCompact(Json{{"a", {Json::object(), Json::array(), false}}, {"b", 1}}));
}
