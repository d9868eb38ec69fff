// The text functions behind preview links: finding a deploy bot's link in a
// comment body, learning an address pattern from such a link, voting on the
// learned pattern, expanding a pattern, and choosing a row's preview. Also
// the two-letter initials that stand in for a browser's icon.
#include "Formats.h"

#include <uriparser/Uri.h>

#include <algorithm>
#include <array>
#include <map>

#include "Text.h"

namespace velmar {

namespace {

std::string replaceAll(std::string_view text, std::string_view what, std::string_view with) {
    std::string out;
    std::size_t start = 0;
    for (std::size_t at = text.find(what); at != std::string_view::npos;
         at = text.find(what, start)) {
        out.append(text.substr(start, at - start));
        out.append(with);
        start = at + what.size();
    }
    out.append(text.substr(start));
    return out;
}

std::optional<std::string> firstWebURL(const std::vector<std::string>& candidates) {
    for (const auto& link : candidates)
        if (Formats::isWebURL(link)) return link;
    return std::nullopt;
}

// The table row of a deploy summary: "| name | Deploy Preview | [open](url) |".
std::optional<std::string> fromTableRow(std::string_view line) {
    const auto cells = text::splitCharacters(line, U'|', false);
    const std::string cell = cells.size() >= 3 ? cells[2] : std::string();
    if (auto link = firstWebURL(Formats::links("](", cell))) return link;
    std::string trimmed = text::trimWhitespace(cell);
    if (Formats::isWebURL(trimmed)) return trimmed;
    return std::nullopt;
}

}  // namespace

namespace Formats {

std::vector<std::string> links(std::string_view after, std::string_view in) {
    std::vector<std::string> out;
    if (after.empty()) return out;
    for (std::size_t at = in.find(after); at != std::string_view::npos;) {
        at += after.size();
        // The text behind an occurrence runs up to the next occurrence, so one
        // without a ")" of its own gives nothing and the next is still tried.
        const std::size_t next = in.find(after, at);
        const std::string_view behind = in.substr(at, next == std::string_view::npos ? next : next - at);
        at = next;
        const auto close = behind.find(')');
        if (close == std::string_view::npos) continue;
        out.push_back(text::trimWhitespace(behind.substr(0, close)));
    }
    return out;
}

bool isWebURL(std::string_view text) {
    UriUriA uri;
    const char* errorPos = nullptr;
    if (uriParseSingleUriExA(&uri, text.data(), text.data() + text.size(), &errorPos) !=
        URI_SUCCESS) {
        return false;
    }
    bool web = false;
    if (uri.scheme.first != nullptr) {
        std::string scheme(uri.scheme.first, uri.scheme.afterLast);
        std::transform(scheme.begin(), scheme.end(), scheme.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        const bool hasHost = uri.hostText.first != nullptr && uri.hostText.afterLast > uri.hostText.first;
        web = (scheme == "http" || scheme == "https") && hasHost;
    }
    uriFreeUriMembersA(&uri);
    return web;
}

std::optional<std::string> previewFromComment(std::string_view body) {
    // Labels are tried in this order, not by where they stand in the body.
    for (std::string_view label : {"[Web](", "[Preview](", "[Visit Preview]("})
        if (auto link = firstWebURL(links(label, body))) return link;

    // Split at U+000A only; a CR LF pair is one character and not a break.
    const auto bodyLines = text::splitCharacters(body, U'\n', false);
    for (const auto& line : bodyLines) {
        if (line.find("Deploy Preview |") == std::string::npos) continue;
        if (auto link = fromTableRow(line)) return link;
    }

    for (const auto& line : bodyLines) {
        if (!line.starts_with("<!-- [") || line.find(" Preview](") == std::string::npos) continue;
        // Only the first such line counts, even when its link is unusable.
        return firstWebURL(links(" Preview](", line));
    }
    return std::nullopt;
}

std::optional<std::string> detectPattern(std::string_view url, std::int64_t number) {
    if (!isWebURL(url)) return std::nullopt;
    const auto chars = text::characters(url);
    const auto digits = text::characters(std::to_string(number));
    auto isNumber = [&](std::size_t i) { return text::isNumeric(text::firstScalar(chars[i])); };

    std::string out;
    bool replaced = false;
    std::size_t i = 0;
    while (i < chars.size()) {
        const bool digitsHere =
            i + digits.size() <= chars.size() &&
            std::equal(digits.begin(), digits.end(), chars.begin() + static_cast<std::ptrdiff_t>(i));
        // Only a whole run counts: 123 is not found inside 1234 or 5123.
        if (digitsHere && (i == 0 || !isNumber(i - 1)) &&
            (i + digits.size() == chars.size() || !isNumber(i + digits.size()))) {
            out += "{number}";
            i += digits.size();
            replaced = true;
        } else {
            out += chars[i];
            ++i;
        }
    }
    if (!replaced) return std::nullopt;
    return out;
}

std::optional<std::string> votePattern(const std::vector<std::string>& patterns,
                                       std::string_view current, std::string_view repoName) {
    if (patterns.empty()) return std::nullopt;
    std::map<std::string_view, std::size_t> counts;
    std::size_t most = 0;
    for (const auto& p : patterns) most = std::max(most, ++counts[p]);

    std::vector<std::string_view> leaders;
    for (const auto& p : patterns)
        if (counts[p] == most) leaders.push_back(p);

    // A tie never dislodges the pattern in use.
    if (std::find(leaders.begin(), leaders.end(), current) != leaders.end())
        return std::string(current);
    if (!repoName.empty()) {
        for (auto leader : leaders)
            if (text::containsCaseInsensitive(leader, repoName)) return std::string(leader);
    }
    return std::string(leaders.front());
}

std::string expandPreview(std::string_view pattern, std::string_view repo, std::int64_t number,
                          std::string_view branch) {
    if (pattern.empty()) return {};
    const auto slash = repo.find('/');
    const std::string_view owner = repo.substr(0, slash);
    const std::string_view name =
        slash == std::string_view::npos ? std::string_view() : repo.substr(slash + 1);
    // Each step works on the previous result, so the order is part of the meaning.
    std::string out = replaceAll(pattern, "{number}", std::to_string(number));
    out = replaceAll(out, "{branch}", branch);
    out = replaceAll(out, "{owner}", owner);
    out = replaceAll(out, "{name}", name);
    return replaceAll(out, "{repo}", repo);
}

std::string initials(std::string_view name) {
    auto isSeparator = [](const std::string& ch) {
        // A blank carrying a combining mark is a letter-like character, not a gap.
        return !ch.empty() && text::trimWhitespace(ch).empty();
    };
    std::vector<std::vector<std::string>> pieces(1);
    for (auto& ch : text::characters(name)) {
        if (isSeparator(ch)) {
            if (!pieces.back().empty()) pieces.emplace_back();
        } else {
            pieces.back().push_back(std::move(ch));
        }
    }
    if (pieces.back().empty()) pieces.pop_back();

    std::string out;
    if (pieces.size() == 1) {
        for (std::size_t i = 0; i < std::min<std::size_t>(2, pieces[0].size()); ++i) out += pieces[0][i];
    } else if (pieces.size() >= 2) {
        out = pieces[0][0] + pieces[1][0];
    }
    return text::uppercased(out);
}

}  // namespace Formats

Repo::ResolvedPreview Repo::resolvePreview(std::int64_t number, std::string_view branch,
                                           std::string_view comment,
                                           std::string_view deployment) const {
    // A bot's link is taken as found; it was tested when it was read.
    if (!comment.empty()) return {std::string(comment), PreviewSource::comment};
    if (Formats::isWebURL(deployment)) return {std::string(deployment), PreviewSource::deployment};
    const std::array<std::pair<const std::string*, PreviewSource>, 2> candidates{
        {{&pattern, PreviewSource::pattern}, {&detectedPattern, PreviewSource::detected}}};
    for (const auto& [text, source] : candidates) {
        if (text->empty()) continue;
        std::string url = Formats::expandPreview(*text, name, number, branch);
        if (Formats::isWebURL(url)) return {std::move(url), source};
    }
    return {};
}

void PR::resolvePreview(const Repo& repo) {
    auto resolved = repo.resolvePreview(number, branch, commentPreview, deployUrl.value_or(std::string()));
    preview = std::move(resolved.url);
    previewSource = resolved.source;
}

}  // namespace velmar
