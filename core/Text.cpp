// Text rules over ICU. Inputs may be any bytes: invalid UTF-8 never crashes a
// function here; it is either repaired or treated as an ordinary character.
#include "Text.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <cstring>
#include <memory>

namespace velmar::text {

namespace {

struct Decoded {
    char32_t scalar;  // U+FFFD for an invalid sequence
    std::size_t next;
};

Decoded decodeAt(std::string_view s, std::size_t i) {
    int32_t pos = static_cast<int32_t>(i);
    UChar32 c;
    const auto* bytes = reinterpret_cast<const uint8_t*>(s.data());
    U8_NEXT(bytes, pos, static_cast<int32_t>(s.size()), c);
    return {c < 0 ? U'\uFFFD' : static_cast<char32_t>(c), static_cast<std::size_t>(pos)};
}

// Start of the code point that ends just before `end` (>= 1).
std::size_t previousStart(std::string_view s, std::size_t end) {
    std::size_t i = end - 1;
    std::size_t steps = 0;
    while (i > 0 && steps < 3 && (static_cast<unsigned char>(s[i]) & 0xC0) == 0x80) {
        --i;
        ++steps;
    }
    // Only accept the lead byte if it decodes to exactly this span.
    if (decodeAt(s, i).next == end) return i;
    return end - 1;
}

// Length of the leading run of ASCII bytes, scanned a word at a time: the
// texts of a fetch are kilobytes of mostly ASCII markup.
std::size_t asciiPrefix(std::string_view s) {
    std::size_t i = 0;
    for (; i + 8 <= s.size(); i += 8) {
        std::uint64_t word;
        std::memcpy(&word, s.data() + i, sizeof word);
        if (word & 0x8080808080808080ULL) break;
    }
    while (i < s.size() && static_cast<unsigned char>(s[i]) < 0x80) ++i;
    return i;
}

bool isAscii(std::string_view s) { return asciiPrefix(s) == s.size(); }

template <typename Pred>
std::string trimBy(std::string_view s, Pred pred) {
    std::size_t begin = 0;
    while (begin < s.size()) {
        auto d = decodeAt(s, begin);
        if (!pred(d.scalar)) break;  // U+FFFD for invalid bytes is never trimmed
        begin = d.next;
    }
    std::size_t end = s.size();
    while (end > begin) {
        std::size_t start = previousStart(s, end);
        auto d = decodeAt(s, start);
        if (d.next != end || !pred(d.scalar)) break;
        end = start;
    }
    return std::string(s.substr(begin, end - begin));
}

icu::UnicodeString toUnicode(std::string_view s) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(s.data(), static_cast<int32_t>(s.size())));
}

std::string toUtf8(const icu::UnicodeString& u) {
    std::string out;
    u.toUTF8String(out);
    return out;
}

}  // namespace

bool isWhitespace(char32_t c) {
    return c == U'\t' || u_charType(static_cast<UChar32>(c)) == U_SPACE_SEPARATOR;
}

bool isWhitespaceOrNewline(char32_t c) {
    if ((c >= 0x09 && c <= 0x0D) || c == 0x85) return true;
    auto type = u_charType(static_cast<UChar32>(c));
    return type == U_SPACE_SEPARATOR || type == U_LINE_SEPARATOR ||
           type == U_PARAGRAPH_SEPARATOR;
}

bool isNewline(char32_t c) {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

std::size_t newlineAt(std::string_view s, std::size_t i) {
    if (s[i] == '\r') return (i + 1 < s.size() && s[i + 1] == '\n') ? 2 : 1;
    const auto d = decodeAt(s, i);
    return isNewline(d.scalar) ? d.next - i : 0;
}

bool isNumeric(char32_t c) {
    return u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

std::string trimWhitespace(std::string_view s) { return trimBy(s, isWhitespace); }

std::string trimWhitespaceAndNewlines(std::string_view s) {
    return trimBy(s, isWhitespaceOrNewline);
}

bool isValidUtf8(std::string_view s) {
    std::size_t i = 0;
    while (i < s.size()) {
        i += asciiPrefix(s.substr(i));
        if (i == s.size()) break;
        int32_t pos = static_cast<int32_t>(i);
        UChar32 c;
        U8_NEXT(reinterpret_cast<const uint8_t*>(s.data()), pos, static_cast<int32_t>(s.size()), c);
        if (c < 0) return false;
        i = static_cast<std::size_t>(pos);
    }
    return true;
}

std::string repairUtf8(std::string_view s) {
    if (isValidUtf8(s)) return std::string(s);
    std::string out;
    out.reserve(s.size() + 8);
    std::size_t i = 0;
    while (i < s.size()) {
        // An invalid sequence decodes as U+FFFD, whose bytes are the same as
        // those of a valid U+FFFD in the input.
        const auto d = decodeAt(s, i);
        if (d.scalar == U'\uFFFD') {
            out += "\xEF\xBF\xBD";
        } else {
            out.append(s.substr(i, d.next - i));
        }
        i = d.next;
    }
    return out;
}

char32_t firstScalar(std::string_view cluster) {
    if (cluster.empty()) return U'\uFFFD';
    return decodeAt(cluster, 0).scalar;
}

std::vector<std::string> characters(std::string_view input) {
    std::string repaired = repairUtf8(input);
    std::vector<std::string> out;
    if (repaired.empty()) return out;
    // In ASCII every byte is a cluster of its own but for CR LF, so the break
    // iterator can be skipped.
    if (isAscii(repaired)) {
        out.reserve(repaired.size());
        for (std::size_t i = 0; i < repaired.size(); ++i) {
            const bool crlf = repaired[i] == '\r' && i + 1 < repaired.size() && repaired[i + 1] == '\n';
            out.emplace_back(repaired.substr(i, crlf ? 2 : 1));
            if (crlf) ++i;
        }
        return out;
    }

    // One character iterator per thread; creating one is far dearer than using it.
    thread_local std::unique_ptr<icu::BreakIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::BreakIterator> it(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        return U_SUCCESS(status) ? std::move(it) : nullptr;
    }();
    if (!iterator) {  // no ICU data: fall back to code points
        std::size_t i = 0;
        while (i < repaired.size()) {
            auto d = decodeAt(repaired, i);
            out.emplace_back(repaired.substr(i, d.next - i));
            i = d.next;
        }
        return out;
    }

    UErrorCode status = U_ZERO_ERROR;
    UText* ut = utext_openUTF8(nullptr, repaired.data(), static_cast<int64_t>(repaired.size()), &status);
    if (U_FAILURE(status)) return {repaired};
    iterator->setText(ut, status);
    int32_t start = iterator->first();
    for (int32_t end = iterator->next(); end != icu::BreakIterator::DONE;
         start = end, end = iterator->next()) {
        out.emplace_back(repaired.substr(static_cast<std::size_t>(start),
                                         static_cast<std::size_t>(end - start)));
    }
    // Detach the iterator before the UText goes away.
    iterator->setText(icu::UnicodeString());
    utext_close(ut);
    return out;
}

namespace {
// A character of grapheme-break class Control, CR or LF is always a cluster of
// its own, except that CR followed by LF is one cluster.
bool isAlwaysOwnCluster(char32_t c) {
    return c < 0x20 || c == 0x7F || c == 0x85 || c == 0x2028 || c == 0x2029;
}

std::string encodeUtf8(char32_t c) {
    icu::UnicodeString u(static_cast<UChar32>(c));
    return toUtf8(u);
}
}  // namespace

std::vector<std::string> splitCharacters(std::string_view s, char32_t separator, bool keepEmpty) {
    std::vector<std::string> out;
    auto emit = [&](std::string_view piece) {
        if (keepEmpty || !piece.empty()) out.emplace_back(piece);
    };
    // In ASCII text an ASCII separator is always a cluster of its own too.
    if (isAlwaysOwnCluster(separator) || (separator < 0x80 && isAscii(s))) {
        // Fast path: no segmentation needed, only the CR LF rule.
        const std::string sep = encodeUtf8(separator);
        std::size_t start = 0;
        std::size_t at = 0;
        while ((at = s.find(sep, at)) != std::string_view::npos) {
            bool joinedToCr = separator == U'\n' && at > 0 && s[at - 1] == '\r';
            bool joinedToLf = separator == U'\r' && at + 1 < s.size() && s[at + 1] == '\n';
            if (!joinedToCr && !joinedToLf) {
                emit(s.substr(start, at - start));
                start = at + sep.size();
            }
            at += sep.size();
        }
        emit(s.substr(start));
        return out;
    }
    std::string current;
    for (auto& ch : characters(s)) {
        auto d = decodeAt(ch, 0);
        if (d.next == ch.size() && d.scalar == separator) {
            emit(current);
            current.clear();
        } else {
            current += ch;
        }
    }
    emit(current);
    return out;
}

bool containsCaseInsensitive(std::string_view haystack, std::string_view needle) {
    if (needle.empty()) return true;
    icu::UnicodeString h = toUnicode(haystack);
    icu::UnicodeString n = toUnicode(needle);
    h.foldCase(U_FOLD_CASE_DEFAULT);
    n.foldCase(U_FOLD_CASE_DEFAULT);
    return h.indexOf(n) >= 0;
}

std::string uppercased(std::string_view s) {
    icu::UnicodeString u = toUnicode(s);
    u.toUpper(icu::Locale::getRoot());
    return toUtf8(u);
}

}  // namespace velmar::text
