// Text rules shared by the whole core, over ICU: characters are extended
// grapheme clusters (a CR LF pair is one), byte limits count UTF-8 bytes, and
// the three character sets the program names are defined here once.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmar::text {

/// U+0009 and Unicode category Zs.
bool isWhitespace(char32_t c);
/// Unicode category Z, U+0009 to U+000D and U+0085.
bool isWhitespaceOrNewline(char32_t c);
/// U+000A to U+000D, U+0085, U+2028, U+2029.
bool isNewline(char32_t c);
/// Length in bytes of the newline character starting at byte `i` of `s`, or 0
/// if none starts there. A CR LF pair is a single character and so one break.
std::size_t newlineAt(std::string_view s, std::size_t i);
/// Has a Unicode numeric property (numeric type other than none).
bool isNumeric(char32_t c);

/// Trims whitespace (tab and Zs) from both ends.
std::string trimWhitespace(std::string_view s);
/// Trims whitespace and newlines from both ends.
std::string trimWhitespaceAndNewlines(std::string_view s);

/// The text cut into extended grapheme clusters, each as its UTF-8 bytes.
/// Invalid UTF-8 is repaired first.
std::vector<std::string> characters(std::string_view s);
/// The first code point of a UTF-8 cluster (U+FFFD for invalid or empty).
char32_t firstScalar(std::string_view cluster);

/// Splits at every character equal to `separator` (a single code point).
/// A CR LF cluster never equals U+000A, so it is not a split point for "\n".
std::vector<std::string> splitCharacters(std::string_view s, char32_t separator,
                                         bool keepEmpty);

bool isValidUtf8(std::string_view s);
/// Replaces every invalid sequence by U+FFFD.
std::string repairUtf8(std::string_view s);

/// Case-insensitive containment (full case folding); an empty needle is contained.
bool containsCaseInsensitive(std::string_view haystack, std::string_view needle);
/// Upper-cased text, full case mapping.
std::string uppercased(std::string_view s);

}  // namespace velmar::text
