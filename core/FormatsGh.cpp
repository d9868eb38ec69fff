// Readers of what the GitHub CLI prints: one repository's pull requests (a
// slug line, then seven tab-separated columns per pull request) and the
// one-slug-per-line suggestion listings. A row that fails a test is dropped;
// the other rows still count.
#include "Formats.h"

#include <array>
#include <limits>
#include <unordered_set>

#include "Text.h"

namespace velmar::Formats {

namespace {

// Base-10, optional sign, ASCII digits only, no overflow of int64.
std::optional<std::int64_t> readInteger(std::string_view s) {
    bool negative = false;
    if (!s.empty() && (s.front() == '+' || s.front() == '-')) {
        negative = s.front() == '-';
        s.remove_prefix(1);
    }
    if (s.empty()) return std::nullopt;
    // Accumulate towards the negative side, which has the larger range.
    std::int64_t value = 0;
    constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    for (char c : s) {
        if (c < '0' || c > '9') return std::nullopt;
        const int digit = c - '0';
        if (value < (lowest + digit) / 10) return std::nullopt;
        value = value * 10 - digit;
    }
    if (negative) return value;
    if (value == lowest) return std::nullopt;
    return -value;
}

// The bodies arrive joined with U+001E; the last one holding a link wins.
std::string previewFromBlob(std::string_view field) {
    const auto bytes = decodeBase64(text::trimWhitespace(field));
    if (!bytes || !text::isValidUtf8(*bytes)) return {};
    const auto bodies = text::splitCharacters(*bytes, U'\u001E', false);
    for (auto body = bodies.rbegin(); body != bodies.rend(); ++body)
        if (auto link = previewFromComment(*body)) return *link;
    return {};
}

std::optional<PrRow> readRow(std::string_view piece) {
    const auto fields = text::splitCharacters(piece, U'\t', true);
    if (fields.size() < 6) return std::nullopt;
    const std::string numberText = text::trimWhitespace(fields[0]);
    const auto number = readInteger(numberText);
    if (!number) return std::nullopt;
    PrRow row;
    row.number = *number;
    row.title = fields[1];
    row.author = fields[2];
    row.branch = fields[3];
    row.isDraft = fields[4] == "true";
    row.url = text::trimWhitespace(fields[5]);
    if (fields.size() > 6) row.commentPreview = previewFromBlob(fields[6]);
    return row;
}

constexpr int invalid = -1;
constexpr int padding = -2;

constexpr std::array<int, 256> base64Table = [] {
    std::array<int, 256> table{};
    table.fill(invalid);
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        table[static_cast<unsigned char>(alphabet[i])] = static_cast<int>(i);
    table['='] = padding;
    return table;
}();

}  // namespace

std::optional<std::string> decodeBase64(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    // Sized once and written through a pointer: comment blobs run to hundreds of KB.
    std::string out(text.size() / 4 * 3, '\0');
    char* write = out.data();
    for (std::size_t i = 0; i < text.size(); i += 4) {
        int v[4];
        for (int k = 0; k < 4; ++k) v[k] = base64Table[static_cast<unsigned char>(text[i + k])];
        if ((v[0] | v[1] | v[2] | v[3]) >= 0) {  // the common case: four alphabet characters
            *write++ = static_cast<char>((v[0] << 2) | (v[1] >> 4));
            *write++ = static_cast<char>(((v[1] & 0xF) << 4) | (v[2] >> 2));
            *write++ = static_cast<char>(((v[2] & 0x3) << 6) | v[3]);
            continue;
        }
        // Padding may only close the last quantum: "xx==" or "xxx=".
        const bool last = i + 4 == text.size();
        if (v[0] < 0 || v[1] < 0) return std::nullopt;
        if (v[2] == invalid || v[3] == invalid) return std::nullopt;
        if (!last) return std::nullopt;
        if (v[2] == padding && v[3] != padding) return std::nullopt;
        *write++ = static_cast<char>((v[0] << 2) | (v[1] >> 4));
        if (v[2] != padding) *write++ = static_cast<char>(((v[1] & 0xF) << 4) | (v[2] >> 2));
    }
    out.resize(static_cast<std::size_t>(write - out.data()));
    return out;
}

PrOutput parsePrOutput(std::string_view output) {
    // Only U+000A ends a line here; a CR LF pair is one character and does not.
    const auto pieces = text::splitCharacters(output, U'\n', true);
    PrOutput result;
    if (pieces.empty()) return result;
    result.slug = text::trimWhitespaceAndNewlines(pieces.front());
    for (std::size_t i = 1; i < pieces.size(); ++i)
        if (auto row = readRow(pieces[i])) result.rows.push_back(std::move(*row));
    return result;
}

std::vector<std::string> parseSlugList(std::string_view output) {
    std::vector<std::string> out;
    std::unordered_set<std::string> seen;
    for (auto& line : lines(output))
        if (seen.insert(line).second) out.push_back(std::move(line));
    return out;
}

}  // namespace velmar::Formats
