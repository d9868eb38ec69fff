// The JSON forms of the records, of Msg and of Effect, and the Msg decoder.
//
// Each record and message case lists its fields once, in `fieldsOf`, in the
// order in which the decoder reads them; the same list drives the writer, so
// the two directions cannot drift apart. Text is parsed by our own DOM builder
// on nlohmann's SAX interface, which bounds the nesting depth and words parse
// failures without echoing the input.
#include "Json.h"

#include <algorithm>
#include <limits>
#include <ostream>
#include <type_traits>
#include <utility>

namespace velmar {

namespace {

template <typename T, typename U>
concept Is = std::same_as<std::remove_const_t<T>, U>;

template <typename T>
concept Enumeration = std::is_enum_v<T>;

template <typename T>
concept Record = std::is_class_v<T>;

// ---- Field lists: the keys of each record and case, in reading order ----

void fieldsOf(Is<WindowFrame> auto& f, auto&& v) {
    v("x", f.x);
    v("y", f.y);
    v("width", f.width);
    v("height", f.height);
}
void fieldsOf(Is<DetectedBrowser> auto& b, auto&& v) {
    v("app", b.app);
    v("running", b.running);
}
void fieldsOf(Is<Suggestion> auto& s, auto&& v) {
    v("name", s.name);
    v("mine", s.mine);
}
void fieldsOf(Is<Repo> auto& r, auto&& v) {
    v("id", r.id);
    v("name", r.name);
    v("pattern", r.pattern);
    v("state", r.state);
    v("count", r.count);
    v("failed", r.failed);
    v("detectedPattern", r.detectedPattern);
}
void fieldsOf(Is<PR> auto& p, auto&& v) {
    v("id", p.id);
    v("repoId", p.repoId);
    v("repo", p.repo);
    v("number", p.number);
    v("title", p.title);
    v("author", p.author);
    v("branch", p.branch);
    v("isDraft", p.isDraft);
    v("url", p.url);
    v("preview", p.preview);
    v("previewSource", p.previewSource);
    v("commentPreview", p.commentPreview);
    v("checks", p.checks);
    v("review", p.review);
    v("conflicts", p.conflicts);
    v("deploy", p.deploy);
    v("deployOlder", p.deployOlder);
    v("deployUrl", p.deployUrl);
    v("nodeId", p.nodeId);
    v("headOid", p.headOid);
    v("updatedAt", p.updatedAt);
}
void fieldsOf(Is<Browser> auto& b, auto&& v) {
    v("id", b.id);
    v("name", b.name);
    v("app", b.app);
    v("initials", b.initials);
    v("running", b.running);
    v("shown", b.shown);
}
void fieldsOf(Is<Model> auto& m, auto&& v) {
    v("screen", m.screen);
    v("repos", m.repos);
    v("prs", m.prs);
    v("browsers", m.browsers);
    v("suggestions", m.suggestions);
    v("nextRepoId", m.nextRepoId);
    v("nextBrowserId", m.nextBrowserId);
    v("selectedBrowser", m.selectedBrowser);
    v("browserPref", m.browserPref);
    v("browserMode", m.browserMode);
    v("manualConfigured", m.manualConfigured);
    v("storedShown", m.storedShown);
    v("browsersDetected", m.browsersDetected);
    v("auto", m.autoRefresh);
    v("appearance", m.appearance);
    v("gh", m.gh);
    v("brewInstalled", m.brewInstalled);
    v("onboarded", m.onboarded);
    v("settingsLoaded", m.settingsLoaded);
    v("reposLoaded", m.reposLoaded);
    v("browsersLoaded", m.browsersLoaded);
    v("userNavigated", m.userNavigated);
    v("hoveredPr", m.hoveredPr);
    v("addOpen", m.addOpen);
    v("addText", m.addText);
    v("editingRepo", m.editingRepo);
    v("editText", m.editText);
    v("home", m.home);
    v("path", m.path);
    v("pathResolved", m.pathResolved);
    v("fetchInFlight", m.fetchInFlight);
    v("lastFrame", m.lastFrame);
    v("flash", m.flash);
    v("checks", m.checks);
    v("viewer", m.viewer);
    v("reviewPrs", m.reviewPrs);
    v("yours", m.yours);
    v("yourPrs", m.yourPrs);
    v("rateLimitedUntil", m.rateLimitedUntil);
    v("batchCount", m.batchCount);
    v("commentsQueue", m.commentsQueue);
    v("commentsHost", m.commentsHost);
    v("batchLimit", m.batchLimit);
    v("notify", m.notify);
    v("notifyNew", m.notifyNew);
    v("notifyChecks", m.notifyChecks);
    v("notifyReview", m.notifyReview);
    v("tray", m.tray);
    v("seen", m.seen);
    v("notices", m.notices);
}
void fieldsOf(Is<SeenPr> auto& p, auto&& v) {
    v("repo", p.repo);
    v("number", p.number);
    v("author", p.author);
    v("checks", p.checks);
}
void fieldsOf(Is<Seen> auto& s, auto&& v) {
    v("repos", s.repos);
    v("failed", s.failed);
    v("prs", s.prs);
    v("review", s.review);
}
void fieldsOf(Is<Notice> auto& n, auto&& v) {
    v("key", n.key);
    v("url", n.url);
    v("preview", n.preview);
}

void fieldsOf(Is<msg::WindowRestored> auto& m, auto&& v) { v("frame", m.frame); }
void fieldsOf(Is<msg::HomeResolved> auto& m, auto&& v) { v("home", m.home); }
void fieldsOf(Is<msg::PathResolved> auto& m, auto&& v) { v("path", m.path); }
void fieldsOf(Is<msg::BrowsersDetected> auto& m, auto&& v) { v("browsers", m.browsers); }
void fieldsOf(Is<msg::FileRead> auto& m, auto&& v) {
    v("file", m.file);
    v("contents", m.contents);
}
void fieldsOf(Is<msg::FileWritten> auto& m, auto&& v) {
    v("file", m.file);
    v("ok", m.ok);
}
void fieldsOf(Is<msg::PrsFetched> auto& m, auto&& v) {
    v("output", m.output);
    v("ok", m.ok);
}
void fieldsOf(Is<msg::SuggestionsFetched> auto& m, auto&& v) {
    v("source", m.source);
    v("output", m.output);
    v("ok", m.ok);
}
void fieldsOf(Is<msg::GhChecked> auto& m, auto&& v) { v("exit", m.exit); }
void fieldsOf(Is<msg::BrewProbed> auto& m, auto&& v) { v("installed", m.installed); }
void fieldsOf(Is<msg::SetAuto> auto& m, auto&& v) { v("on", m.on); }
void fieldsOf(Is<msg::SetAppearance> auto& m, auto&& v) { v("appearance", m.appearance); }
void fieldsOf(Is<msg::Navigate> auto& m, auto&& v) { v("screen", m.screen); }
void fieldsOf(Is<msg::OpenPr> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::CopyPrLink> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::OpenPreview> auto& m, auto&& v) {
    v("id", m.id);
    v("browser", m.browser);
}
void fieldsOf(Is<msg::CopyPreview> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::HoverPr> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::UnhoverPr> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::SelectBrowser> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::SetBrowserMode> auto& m, auto&& v) { v("mode", m.mode); }
void fieldsOf(Is<msg::ToggleBrowserShown> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::AddText> auto& m, auto&& v) { v("text", m.text); }
void fieldsOf(Is<msg::PickSuggestion> auto& m, auto&& v) { v("name", m.name); }
void fieldsOf(Is<msg::EditPattern> auto& m, auto&& v) { v("repo_id", m.repoId); }
void fieldsOf(Is<msg::EditText> auto& m, auto&& v) { v("text", m.text); }
void fieldsOf(Is<msg::RemoveRepo> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::MoveRepo> auto& m, auto&& v) {
    v("id", m.id);
    v("index", m.toIndex);
}
void fieldsOf(Is<msg::CopyRepoName> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::OpenRepo> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::CopyRepoLink> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::CopyCommand> auto& m, auto&& v) { v("command", m.command); }
void fieldsOf(Is<msg::WindowMoved> auto& m, auto&& v) { v("frame", m.frame); }
void fieldsOf(Is<msg::SetChecks> auto& m, auto&& v) { v("on", m.on); }
void fieldsOf(Is<msg::BatchFetched> auto& m, auto&& v) {
    v("repos", m.repos);
    v("output", m.output);
    v("ok", m.ok);
    v("http", m.http);
}
void fieldsOf(Is<msg::CommentsFetched> auto& m, auto&& v) {
    v("output", m.output);
    v("ok", m.ok);
}
void fieldsOf(Is<msg::OpenRepoPulls> auto& m, auto&& v) { v("id", m.id); }
void fieldsOf(Is<msg::SetYours> auto& m, auto&& v) { v("on", m.on); }
void fieldsOf(Is<msg::SetNotify> auto& m, auto&& v) { v("on", m.on); }
void fieldsOf(Is<msg::SetNotifyKind> auto& m, auto&& v) {
    v("kind", m.kind);
    v("on", m.on);
}
void fieldsOf(Is<msg::SetTray> auto& m, auto&& v) { v("on", m.on); }
void fieldsOf(Is<msg::NotificationAction> auto& m, auto&& v) {
    v("key", m.key);
    v("action", m.action);
}
void fieldsOf(Is<msg::NotificationClosed> auto& m, auto&& v) { v("key", m.key); }

void fieldsOf(Is<effect::ReadFile> auto& e, auto&& v) {
    v("file", e.file);
    v("path", e.path);
}
void fieldsOf(Is<effect::WriteFile> auto& e, auto&& v) {
    v("file", e.file);
    v("path", e.path);
    v("contents", e.contents);
}
void fieldsOf(Is<effect::FetchPrs> auto& e, auto&& v) {
    v("repo", e.repo);
    v("path", e.path);
}
void fieldsOf(Is<effect::FetchSuggestions> auto& e, auto&& v) {
    v("source", e.source);
    v("path", e.path);
}
void fieldsOf(Is<effect::GhPreflight> auto& e, auto&& v) { v("path", e.path); }
void fieldsOf(Is<effect::BrewProbe> auto& e, auto&& v) { v("path", e.path); }
void fieldsOf(Is<effect::OpenURL> auto& e, auto&& v) {
    v("url", e.url);
    v("app", e.app);
}
void fieldsOf(Is<effect::CopyToClipboard> auto& e, auto&& v) { v("text", e.text); }
void fieldsOf(Is<effect::FetchBatch> auto& e, auto&& v) {
    v("repos", e.repos);
    v("viewer", e.viewer);
    v("path", e.path);
    v("yours", e.yours);
    v("host", e.host);
}
void fieldsOf(Is<effect::FetchComments> auto& e, auto&& v) {
    v("ids", e.ids);
    v("path", e.path);
    v("host", e.host);
}
void fieldsOf(Is<effect::WaitUntil> auto& e, auto&& v) { v("until", e.until); }
void fieldsOf(Is<effect::Notify> auto& e, auto&& v) {
    v("key", e.key);
    v("summary", e.summary);
    v("body", e.body);
    v("url", e.url);
    v("preview", e.preview);
}

// Cases without payload have no field list.
template <typename T, typename Visitor>
void eachField(T& value, Visitor&& v) {
    if constexpr (!std::is_empty_v<std::remove_const_t<T>>) fieldsOf(value, v);
}

// ---- Names ----

constexpr std::string_view msgNames[] = {
    "boot", "window_restored", "home_resolved", "path_resolved", "browsers_detected",
    "browsers_detect_failed", "file_read", "file_written", "prs_fetched", "prs_spawn_failed",
    "suggestions_fetched", "gh_checked", "brew_probed", "open_failed", "auto_tick",
    "detect_tick", "onboarding_tick", "refresh", "set_auto", "set_appearance", "navigate",
    "open_pr", "copy_pr_link", "open_preview", "copy_preview", "hover_pr", "unhover_pr",
    "select_browser", "set_browser_mode", "toggle_browser_shown", "open_add", "close_add",
    "add_text", "submit_add", "pick_suggestion", "edit_pattern", "edit_text", "save_pattern",
    "cancel_edit", "remove_repo", "move_repo", "copy_repo_name", "open_repo", "copy_repo_link",
    "onboarding_continue", "onboarding_skip", "open_install_page", "copy_command",
    "window_moved", "set_checks", "batch_fetched", "comments_fetched", "rate_wait_over",
    "open_repo_pulls", "set_yours", "set_notify", "set_notify_kind", "set_tray",
    "notification_action", "notification_closed"};
static_assert(std::size(msgNames) == std::variant_size_v<Msg>);

constexpr std::string_view effectNames[] = {
    "read_file",      "write_file",   "fetch_prs",    "fetch_suggestions",
    "gh_preflight",   "brew_probe",   "open_url",     "copy_to_clipboard",
    "resolve_home",   "resolve_path", "detect_browsers", "fetch_batch",
    "fetch_comments", "wait_until", "notify"};
static_assert(std::size(effectNames) == std::variant_size_v<Effect>);

template <Enumeration E> constexpr std::string_view enumName();
template <> constexpr std::string_view enumName<Screen>() { return "Screen"; }
template <> constexpr std::string_view enumName<Appearance>() { return "Appearance"; }
template <> constexpr std::string_view enumName<BrowserMode>() { return "BrowserMode"; }
template <> constexpr std::string_view enumName<GhStatus>() { return "GhStatus"; }
template <> constexpr std::string_view enumName<RepoState>() { return "RepoState"; }
template <> constexpr std::string_view enumName<PreviewSource>() { return "PreviewSource"; }
template <> constexpr std::string_view enumName<SuggestionSource>() { return "SuggestionSource"; }
template <> constexpr std::string_view enumName<ConfigFile>() { return "ConfigFile"; }
template <> constexpr std::string_view enumName<ChecksState>() { return "ChecksState"; }
template <> constexpr std::string_view enumName<ReviewState>() { return "ReviewState"; }
template <> constexpr std::string_view enumName<DeployState>() { return "DeployState"; }
template <> constexpr std::string_view enumName<NotifyKind>() { return "NotifyKind"; }

// ---- Writing ----
//
// One encoder, two sinks: DomSink builds the nlohmann value that toJson gives,
// JsonWriter writes the text directly. Both see the same keys and values in
// the same order, so the text and the document cannot disagree.

// Builds a document from the encoder's events.
class DomSink {
public:
    void string(std::string_view v) { place(Json(std::string(v))); }
    void boolean(bool v) { place(Json(v)); }
    void integer(std::int64_t v) { place(Json(v)); }
    void number(double v) { place(Json(v)); }
    void beginObject() { stack_.push_back(place(Json::object())); }
    void key(std::string_view k) { key_ = k; }
    void endObject() { stack_.pop_back(); }
    void beginArray() { stack_.push_back(place(Json::array())); }
    void endArray() { stack_.pop_back(); }
    Json take() { return std::move(root_); }

private:
    Json* place(Json&& value) {
        if (stack_.empty()) {
            root_ = std::move(value);
            return &root_;
        }
        Json& top = *stack_.back();
        if (top.is_array()) {
            top.push_back(std::move(value));
            return &top.back();
        }
        Json& slot = top[std::string(key_)];
        slot = std::move(value);
        return &slot;
    }
    Json root_;
    std::vector<Json*> stack_;
    std::string_view key_;
};

// The keys of a record or case in sorted order, the order in which objects are
// written: each with its index in the field list, or -1 for the key of the
// case's name. A type is always written with the same name key (or none).
template <typename T>
const std::vector<std::pair<std::string_view, int>>& writingOrder(std::string_view nameKey) {
    static const auto order = [nameKey] {
        std::vector<std::pair<std::string_view, int>> keys;
        if (!nameKey.empty()) keys.emplace_back(nameKey, -1);
        int index = 0;
        const T probe{};
        eachField(probe, [&](const char* key, const auto&) { keys.emplace_back(key, index++); });
        std::sort(keys.begin(), keys.end());
        return keys;
    }();
    return order;
}

template <typename Sink> void emit(Sink& sink, const std::string& s) { sink.string(s); }
template <typename Sink> void emit(Sink& sink, bool b) { sink.boolean(b); }
template <typename Sink> void emit(Sink& sink, std::int64_t i) { sink.integer(i); }
template <typename Sink> void emit(Sink& sink, std::int32_t i) { sink.integer(i); }
template <typename Sink> void emit(Sink& sink, double d) { sink.number(d); }
template <typename Sink, Enumeration E> void emit(Sink& sink, E e) { sink.string(jsonText(e)); }
template <typename Sink, Record R> void emit(Sink& sink, const R& r);
template <typename Sink, typename T> void emit(Sink& sink, const std::vector<T>& list) {
    sink.beginArray();
    for (const auto& item : list) emit(sink, item);
    sink.endArray();
}

template <typename Sink, typename T> void emitField(Sink& sink, std::string_view key, const T& value) {
    sink.key(key);
    emit(sink, value);
}
// Absent optionals are left out, never written as null.
template <typename Sink, typename T>
void emitField(Sink& sink, std::string_view key, const std::optional<T>& value) {
    if (value) emitField(sink, key, *value);
}

template <typename Sink, typename T>
void emitObject(Sink& sink, const T& value, std::string_view nameKey, std::string_view name) {
    sink.beginObject();
    for (const auto& [key, index] : writingOrder<T>(nameKey)) {
        if (index < 0) {
            sink.key(key);
            sink.string(name);
            continue;
        }
        int at = 0;
        eachField(value, [&, key = key, index = index](const char*, const auto& field) {
            if (at++ == index) emitField(sink, key, field);
        });
    }
    sink.endObject();
}

template <typename Sink, Record R> void emit(Sink& sink, const R& r) { emitObject(sink, r, {}, {}); }

template <typename Sink, typename Variant>
void emitCase(Sink& sink, const Variant& value, std::string_view nameKey, std::string_view name) {
    std::visit([&](const auto& alternative) { emitObject(sink, alternative, nameKey, name); }, value);
}

template <typename T> Json document(const T& value) {
    DomSink sink;
    emit(sink, value);
    return sink.take();
}

// ---- Reading ----

// Thrown inside the decoder only; decodeMsg turns it into its result.
struct Failed {
    DecodeError error;
};

[[noreturn]] void fail(DecodeError::Kind kind, std::string key, std::string type,
                       std::string path, std::string description) {
    throw Failed{{kind, std::move(key), std::move(type), std::move(path), std::move(description)}};
}

template <typename T> std::string typeName() {
    if constexpr (std::is_same_v<T, std::string> || std::is_enum_v<T>) return "String";
    else if constexpr (std::is_same_v<T, bool>) return "Bool";
    else if constexpr (std::is_same_v<T, std::int64_t>) return "Int";
    else if constexpr (std::is_same_v<T, std::int32_t>) return "Int32";
    else if constexpr (std::is_same_v<T, double>) return "Double";
    else if constexpr (requires { typename T::value_type; }) return "Array";
    else return "Object";
}

[[noreturn]] void mismatch(std::string type, const std::string& path) {
    fail(DecodeError::Kind::typeMismatch, {}, std::move(type), path, {});
}

std::string joinPath(const std::string& prefix, std::string_view key) {
    if (prefix.empty()) return std::string(key);
    std::string path = prefix;
    path += '.';
    path += key;
    return path;
}

// An integral JSON number that fits in [low, high]; anything else is absent.
// Parsed text stores every number that names an integer in the 64-bit range as
// an integer (see integerFromLexeme), so a float here is never one: its value
// may have been rounded into range on the way, and must not be trusted.
std::optional<std::int64_t> integral(const Json& v, std::int64_t low, std::int64_t high) {
    std::int64_t i = 0;
    if (v.is_number_unsigned()) {
        auto u = v.get<std::uint64_t>();
        if (u > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) return {};
        i = static_cast<std::int64_t>(u);
    } else if (v.is_number_integer()) {
        i = v.get<std::int64_t>();
    } else {
        return {};
    }
    if (i < low || i > high) return {};
    return i;
}

void read(Json& v, const std::string& path, std::string& out) {
    if (!v.is_string()) mismatch("String", path);
    // The parsed document is thrown away after decoding, so its text can move.
    out = std::move(v.get_ref<std::string&>());
}
void read(Json& v, const std::string& path, bool& out) {
    if (!v.is_boolean()) mismatch("Bool", path);
    out = v.get<bool>();
}
void read(Json& v, const std::string& path, std::int64_t& out) {
    auto i = integral(v, std::numeric_limits<std::int64_t>::min(),
                      std::numeric_limits<std::int64_t>::max());
    if (!i) mismatch("Int", path);
    out = *i;
}
void read(Json& v, const std::string& path, std::int32_t& out) {
    auto i = integral(v, std::numeric_limits<std::int32_t>::min(),
                      std::numeric_limits<std::int32_t>::max());
    if (!i) mismatch("Int32", path);
    out = static_cast<std::int32_t>(*i);
}
void read(Json& v, const std::string& path, double& out) {
    if (!v.is_number()) mismatch("Double", path);
    out = v.get<double>();
}
template <Enumeration E> void read(Json& v, const std::string& path, E& out) {
    if (!v.is_string()) mismatch("String", path);
    auto value = fromJsonText<E>(v.get_ref<const std::string&>());
    if (!value)
        fail(DecodeError::Kind::dataCorrupted, {}, {}, path,
             "unknown " + std::string(enumName<E>()) + " text at '" + path + "'");
    out = *value;
}
template <Record R> void read(Json& v, const std::string& path, R& out);
template <typename T> void read(Json& v, const std::string& path, std::vector<T>& out) {
    if (!v.is_array()) mismatch("Array", path);
    out.clear();
    out.reserve(v.size());
    std::size_t index = 0;
    for (auto& element : v) {
        std::string at = joinPath(path, std::to_string(index++));
        if (element.is_null()) fail(DecodeError::Kind::valueNotFound, {}, typeName<T>(), at, {});
        read(element, at, out.emplace_back());
    }
}

class Reader {
public:
    Reader(Json& object, std::string path) : object_(object), path_(std::move(path)) {}

    template <typename T> void operator()(const char* key, T& out) const {
        Json* value = find(key);
        if (!value) fail(DecodeError::Kind::keyNotFound, key, {}, path_, {});
        if (value->is_null())
            fail(DecodeError::Kind::valueNotFound, {}, typeName<T>(), joinPath(path_, key), {});
        read(*value, joinPath(path_, key), out);
    }
    // Missing and null both leave an optional absent.
    template <typename T> void operator()(const char* key, std::optional<T>& out) const {
        Json* value = find(key);
        if (!value || value->is_null()) {
            out.reset();
            return;
        }
        read(*value, joinPath(path_, key), out.emplace());
    }

private:
    Json* find(const char* key) const {
        auto it = object_.find(key);
        return it == object_.end() ? nullptr : &*it;
    }
    Json& object_;
    std::string path_;
};

template <Record R> void read(Json& v, const std::string& path, R& out) {
    if (!v.is_object()) mismatch("Object", path);
    eachField(out, Reader(v, path));
}

// One decoder per case, indexed like the variant.
template <std::size_t I> Msg decodeCase(Json& object) {
    std::variant_alternative_t<I, Msg> m{};
    eachField(m, Reader(object, {}));
    return m;
}
using CaseDecoder = Msg (*)(Json&);
template <std::size_t... I>
constexpr auto makeDecoders(std::index_sequence<I...>) {
    return std::array<CaseDecoder, sizeof...(I)>{&decodeCase<I>...};
}
constexpr auto caseDecoders = makeDecoders(std::make_index_sequence<std::variant_size_v<Msg>>{});

// ---- Parsing text ----

// The integer that a JSON number's text names exactly, when it lies in the
// 64-bit range: "1.0", "2e3" and "-9223372036854775808.0" do, "1.5",
// "-9223372036854775809" and "1e19" do not. Decided on the digits, since the
// double that the parser also makes of the text may already be rounded.
std::optional<std::int64_t> integerFromLexeme(std::string_view text) {
    const bool negative = !text.empty() && text.front() == '-';
    if (negative) text.remove_prefix(1);
    std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
    std::int64_t scale = 0;  // the value is digits * 10^scale
    if (mantissa.size() < text.size()) {
        std::string_view exponent = text.substr(mantissa.size() + 1);
        const bool down = !exponent.empty() && exponent.front() == '-';
        if (!exponent.empty() && (exponent.front() == '-' || exponent.front() == '+'))
            exponent.remove_prefix(1);
        // Held below a bound that no digit count reaches, so it cannot overflow.
        for (char c : exponent) scale = std::min<std::int64_t>(scale * 10 + (c - '0'), 1'000'000'000'000);
        if (down) scale = -scale;
    }
    std::string digits;
    for (char c : mantissa) {
        if (c == '.') continue;
        if (!digits.empty() || c != '0') digits += c;  // leading zeros say nothing
    }
    if (auto point = mantissa.find('.'); point != std::string_view::npos)
        scale -= static_cast<std::int64_t>(mantissa.size() - point - 1);
    if (digits.empty()) return 0;  // zero, whatever its exponent or sign
    while (scale < 0 && digits.back() == '0') {
        digits.pop_back();
        ++scale;
    }
    if (scale < 0 || static_cast<std::int64_t>(digits.size()) + scale > 19) return {};
    std::uint64_t magnitude = 0;  // at most 19 digits: below 2^64
    for (char c : digits) magnitude = magnitude * 10 + static_cast<std::uint64_t>(c - '0');
    for (std::int64_t k = 0; k < scale; ++k) magnitude *= 10;
    constexpr auto limit = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (magnitude > limit + (negative ? 1 : 0)) return {};
    return negative ? static_cast<std::int64_t>(0 - magnitude) : static_cast<std::int64_t>(magnitude);
}

// Builds the DOM like nlohmann's own parser, but stops at a nesting depth that
// no message needs, so hostile input costs bounded memory and time.
class BoundedDomBuilder final : public nlohmann::json_sax<Json> {
public:
    static constexpr std::size_t maxDepth = 512;

    BoundedDomBuilder(Json& root, std::size_t size) : root_(root), size_(size) {}

    bool null() override { return add(nullptr); }
    bool boolean(bool v) override { return add(v); }
    bool number_integer(number_integer_t v) override { return add(v); }
    bool number_unsigned(number_unsigned_t v) override { return add(v); }
    // A number with a fraction or an exponent, or an integer too large for
    // the 64-bit types: kept as an integer if its text names one exactly.
    bool number_float(number_float_t v, const string_t& text) override {
        if (auto i = integerFromLexeme(text)) return add(*i);
        return add(v);
    }
    // The lexer clears its buffer before the next token, so the text can be moved.
    bool string(string_t& v) override { return add(std::move(v)); }
    bool binary(binary_t&) override { return add(nullptr); }  // JSON text has no binary values
    bool start_object(std::size_t) override { return open(Json::value_t::object); }
    bool key(string_t& k) override {
        slot_ = &(*stack_.back())[std::move(k)];
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(Json::value_t::array); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t position, const std::string&,
                     const nlohmann::detail::exception& ex) override {
        position_ = position;
        reason_ = reasonOf(ex.what(), position);
        return false;
    }

    /// One line in our own words; the offending bytes are never quoted.
    std::string failure() const {
        if (tooDeep_)
            return "not valid JSON: nested deeper than " + std::to_string(maxDepth) + " levels";
        return "not valid JSON: " + reason_ + " at byte " + std::to_string(position_);
    }

private:
    // Sorts nlohmann's message into a few fixed phrases of our own.
    std::string reasonOf(std::string_view what, std::size_t position) const {
        auto has = [&](std::string_view part) { return what.find(part) != std::string_view::npos; };
        if (has("UTF-8")) return "ill-formed UTF-8";
        if (has("control character")) return "unescaped control character in a string";
        if (has("\\u") || has("surrogate")) return "invalid \\u escape";
        if (has("missing closing quote")) return "unterminated string";
        if (has("invalid number")) return "malformed number";
        if (has("unexpected end of input"))
            // The lexer reads a NUL byte as the end of the text.
            return position <= size_ ? "unexpected NUL byte" : "unexpected end of input";
        return "unexpected character";
    }

    template <typename V> bool add(V&& value) {
        place(Json(std::forward<V>(value)));
        return true;
    }
    Json* place(Json&& value) {
        if (stack_.empty()) {
            root_ = std::move(value);
            return &root_;
        }
        Json& top = *stack_.back();
        if (top.is_array()) {
            auto& array = top.get_ref<Json::array_t&>();
            array.push_back(std::move(value));
            return &array.back();
        }
        *slot_ = std::move(value);
        return slot_;
    }
    bool open(Json::value_t type) {
        if (stack_.size() >= maxDepth) {
            tooDeep_ = true;
            return false;
        }
        stack_.push_back(place(Json(type)));
        return true;
    }
    bool close() {
        stack_.pop_back();
        return true;
    }

    Json& root_;
    std::size_t size_;
    std::vector<Json*> stack_;
    Json* slot_ = nullptr;
    bool tooDeep_ = false;
    std::size_t position_ = 0;
    std::string reason_;
};

DecodeError corrupted(std::string description) {
    return {DecodeError::Kind::dataCorrupted, {}, {}, {}, std::move(description)};
}

// Decodes from a document that the caller no longer needs: strings are moved out.
DecodeResult decodeOwned(Json& value) {
    try {
        // A message is an object: anything else at the top level is the wrong
        // type (or a missing value for null), with an empty path.
        if (value.is_null()) fail(DecodeError::Kind::valueNotFound, {}, "Object", {}, {});
        if (!value.is_object()) mismatch("Object", {});
        std::string name;
        Reader(value, {})("msg", name);
        for (std::size_t i = 0; i < std::size(msgNames); ++i)
            if (msgNames[i] == name) return caseDecoders[i](value);
        return DecodeError{DecodeError::Kind::dataCorrupted, {}, {}, "msg",
                           "unknown msg '" + name + "'"};
    } catch (const Failed& f) {
        return f.error;
    }
}

}  // namespace

// ---- Public interface ----

std::string_view msgName(const Msg& m) { return msgNames[m.index()]; }
std::string_view effectName(const Effect& e) { return effectNames[e.index()]; }

Json toJson(const Model& v) { return document(v); }
Json toJson(const Repo& v) { return document(v); }
Json toJson(const PR& v) { return document(v); }
Json toJson(const Browser& v) { return document(v); }
Json toJson(const DetectedBrowser& v) { return document(v); }
Json toJson(const Suggestion& v) { return document(v); }
Json toJson(const WindowFrame& v) { return document(v); }
Json toJson(const Msg& m) {
    DomSink sink;
    emitCase(sink, m, "msg", msgName(m));
    return sink.take();
}
Json toJson(const Effect& e) {
    DomSink sink;
    emitCase(sink, e, "effect", effectName(e));
    return sink.take();
}

void write(JsonWriter& writer, const Model& v) { emit(writer, v); }
void write(JsonWriter& writer, const Msg& m) { emitCase(writer, m, "msg", msgName(m)); }
void write(JsonWriter& writer, const Effect& e) { emitCase(writer, e, "effect", effectName(e)); }

std::string describe(const DecodeError& e) {
    switch (e.kind) {
    case DecodeError::Kind::keyNotFound:
        return "missing field '" + e.key + "'";
    case DecodeError::Kind::valueNotFound:
        return "missing value (expected " + e.type + ") at '" + e.path + "'";
    case DecodeError::Kind::typeMismatch:
        return "type mismatch (expected " + e.type + ") at '" + e.path + "'";
    case DecodeError::Kind::dataCorrupted:
        return e.description;
    }
    return e.description;
}

DecodeResult decodeMsg(const Json& value) {
    Json copy = value;
    return decodeOwned(copy);
}

namespace {

// The parsed value, or the words of the failure.
std::variant<Json, std::string> parse(std::string_view text) {
    Json value;
    BoundedDomBuilder builder(value, text.size());
    bool ok = Json::sax_parse(text.begin(), text.end(), &builder, Json::input_format_t::json,
                              /*strict=*/true);
    if (!ok) return builder.failure();
    return value;
}

}  // namespace

std::optional<Json> parseJson(std::string_view text) {
    auto parsed = parse(text);
    if (auto* value = std::get_if<Json>(&parsed)) return std::move(*value);
    return std::nullopt;
}

DecodeResult decodeMsg(std::string_view text) {
    auto parsed = parse(text);
    if (auto* failure = std::get_if<std::string>(&parsed)) return corrupted(std::move(*failure));
    return decodeOwned(std::get<Json>(parsed));
}

std::string dumpCompact(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::strict);
}

namespace {
template <typename T>
void printJson(const T& value, std::ostream* os) {
    // Replace rather than throw: a test that fails on bad UTF-8 must still print.
    *os << toJson(value).dump(-1, ' ', false, Json::error_handler_t::replace);
}
}  // namespace

void PrintTo(const Msg& m, std::ostream* os) { printJson(m, os); }
void PrintTo(const Effect& e, std::ostream* os) { printJson(e, os); }
void PrintTo(const Model& m, std::ostream* os) { printJson(m, os); }
void PrintTo(const Repo& r, std::ostream* os) { printJson(r, os); }
void PrintTo(const PR& p, std::ostream* os) { printJson(p, os); }
void PrintTo(const Browser& b, std::ostream* os) { printJson(b, os); }

}  // namespace velmar
