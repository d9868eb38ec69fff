// The text side of JSON output. Strings are the bulk of it (gh answers travel
// inside messages), so runs of bytes that need no escape are copied whole.
#include "JsonWriter.h"

#include <array>
#include <charconv>

#include <nlohmann/json.hpp>

namespace velmar {

namespace {

// Bytes that end a run: controls, the quote, the backslash and every non-ASCII
// byte (which starts a sequence to validate).
constexpr auto stops = [] {
    std::array<bool, 256> table{};
    for (int c = 0; c < 0x20; ++c) table[c] = true;
    table['"'] = table['\\'] = true;
    for (int c = 0x80; c < 0x100; ++c) table[c] = true;
    return table;
}();

// Length of the well-formed UTF-8 sequence at the start of `s` (its first byte
// is not ASCII), or 0. Well-formed means no overlong forms, no surrogates and
// nothing above U+10FFFF, the same rule as nlohmann's decoder.
std::size_t sequenceLength(std::string_view s) {
    auto at = [&](std::size_t i) { return i < s.size() ? static_cast<unsigned char>(s[i]) : 0u; };
    auto in = [](unsigned c, unsigned lo, unsigned hi) { return c >= lo && c <= hi; };
    const unsigned b0 = at(0), b1 = at(1);
    if (in(b0, 0xC2, 0xDF)) return in(b1, 0x80, 0xBF) ? 2 : 0;
    std::size_t length = 0;
    bool second = false;
    if (b0 == 0xE0) length = 3, second = in(b1, 0xA0, 0xBF);
    else if (in(b0, 0xE1, 0xEC) || in(b0, 0xEE, 0xEF)) length = 3, second = in(b1, 0x80, 0xBF);
    else if (b0 == 0xED) length = 3, second = in(b1, 0x80, 0x9F);
    else if (b0 == 0xF0) length = 4, second = in(b1, 0x90, 0xBF);
    else if (in(b0, 0xF1, 0xF3)) length = 4, second = in(b1, 0x80, 0xBF);
    else if (b0 == 0xF4) length = 4, second = in(b1, 0x80, 0x8F);
    if (!second) return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (!in(at(i), 0x80, 0xBF)) return 0;
    return length;
}

}  // namespace

void JsonWriter::key(std::string_view k) {
    separate();
    quoted(k);
    out_ += ':';
    more_ = false;
}

void JsonWriter::string(std::string_view s) {
    separate();
    more_ = true;
    quoted(s);
}

void JsonWriter::boolean(bool b) {
    separate();
    more_ = true;
    out_ += b ? "true" : "false";
}

void JsonWriter::integer(std::int64_t i) {
    separate();
    more_ = true;
    char digits[24];
    auto end = std::to_chars(digits, digits + sizeof digits, i).ptr;
    out_.append(digits, end);
}

void JsonWriter::number(double d) {
    separate();
    more_ = true;
    // Rare (window frames only): nlohmann's own float format, so that both
    // writers agree on every digit and exponent.
    out_ += nlohmann::json(d).dump();
}

void JsonWriter::quoted(std::string_view s) {
    out_ += '"';
    std::size_t i = 0;
    while (i < s.size()) {
        std::size_t run = i;
        while (run < s.size() && !stops[static_cast<unsigned char>(s[run])]) ++run;
        out_.append(s.data() + i, run - i);
        i = run;
        if (i == s.size()) break;
        const auto c = static_cast<unsigned char>(s[i]);
        if (c >= 0x80) {
            const std::size_t n = sequenceLength(s.substr(i));
            if (n == 0) throw InvalidUtf8();
            out_.append(s.data() + i, n);
            i += n;
            continue;
        }
        switch (c) {
        case '"': out_ += "\\\""; break;
        case '\\': out_ += "\\\\"; break;
        case '\b': out_ += "\\b"; break;
        case '\f': out_ += "\\f"; break;
        case '\n': out_ += "\\n"; break;
        case '\r': out_ += "\\r"; break;
        case '\t': out_ += "\\t"; break;
        default: {
            constexpr char hex[] = "0123456789abcdef";
            const char escape[] = {'\\', 'u', '0', '0', hex[c >> 4], hex[c & 0xF]};
            out_.append(escape, sizeof escape);
        }
        }
        ++i;
    }
    out_ += '"';
}

}  // namespace velmar
