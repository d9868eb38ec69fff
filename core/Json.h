// The JSON forms of records, messages and effects. Optional fields without a
// value are left out, never written as null. Decoding a message never throws:
// it gives the message or a DecodeError.
#pragma once

#include <nlohmann/json.hpp>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "Effect.h"
#include "JsonWriter.h"
#include "Model.h"
#include "Msg.h"

namespace velmar {

using Json = nlohmann::json;  // std::map objects: keys come out sorted

Json toJson(const Model&);
Json toJson(const Repo&);
Json toJson(const PR&);
Json toJson(const Browser&);
Json toJson(const DetectedBrowser&);
Json toJson(const Suggestion&);
Json toJson(const WindowFrame&);
Json toJson(const Msg&);
Json toJson(const Effect&);

/// The same forms written as text, as dumpCompact(toJson(x)) reads; throws
/// InvalidUtf8 where that would throw.
void write(JsonWriter&, const Model&);
void write(JsonWriter&, const Msg&);
void write(JsonWriter&, const Effect&);

/// Why a message could not be decoded.
struct DecodeError {
    enum class Kind { keyNotFound, valueNotFound, typeMismatch, dataCorrupted };
    Kind kind = Kind::dataCorrupted;
    std::string key;          // keyNotFound: the missing key alone
    std::string type;         // valueNotFound, typeMismatch: "String", "Int", "Int32", "Double", "Bool", ...
    std::string path;         // keys leading to the value, joined by "."
    std::string description;  // dataCorrupted: the error's own words (one line)
    bool operator==(const DecodeError&) const = default;
};

/// Puts a decoding failure into words, e.g. "missing field 'on'".
std::string describe(const DecodeError&);

using DecodeResult = std::variant<Msg, DecodeError>;

/// Parses UTF-8 JSON text the way the message decoder does: a number whose
/// text names an integer in the 64-bit range is stored as an integer, any
/// other number as a double. Absent when the text is no valid JSON.
std::optional<Json> parseJson(std::string_view text);
/// Decodes one message from UTF-8 JSON text.
DecodeResult decodeMsg(std::string_view text);
/// Decodes one message from an already parsed JSON value, as parseJson or
/// toJson give it: an integer key takes only a number stored as an integer.
DecodeResult decodeMsg(const Json& value);

/// Compact JSON text with sorted keys and "/" unescaped; throws on text that
/// cannot be encoded (invalid UTF-8).
std::string dumpCompact(const Json&);

/// GoogleTest printers: a message, an effect, the model or one of its
/// records reads as its compact JSON form, so a failed whole-value comparison
/// shows something a person can diff.
void PrintTo(const Msg&, std::ostream*);
void PrintTo(const Effect&, std::ostream*);
void PrintTo(const Model&, std::ostream*);
void PrintTo(const Repo&, std::ostream*);
void PrintTo(const PR&, std::ostream*);
void PrintTo(const Browser&, std::ostream*);

namespace detail {
template <typename T, typename Variant> struct IsAlternative;
template <typename T, typename... Ts>
struct IsAlternative<T, std::variant<Ts...>> : std::bool_constant<(std::is_same_v<T, Ts> || ...)> {};
}  // namespace detail

// GoogleTest prints a std::variant through the alternative it holds, and finds
// the alternative's printer by argument-dependent lookup in these namespaces.
namespace msg {
template <typename T>
    requires detail::IsAlternative<T, Msg>::value
void PrintTo(const T& m, std::ostream* os) { velmar::PrintTo(Msg(m), os); }
}  // namespace msg
namespace effect {
template <typename T>
    requires detail::IsAlternative<T, Effect>::value
void PrintTo(const T& e, std::ostream* os) { velmar::PrintTo(Effect(e), os); }
}  // namespace effect

}  // namespace velmar
