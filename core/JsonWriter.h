// Compact JSON text written straight into a string, without building a
// document first: what dumpCompact gives of the same value, byte for byte.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace velmar {

/// Text that is not valid UTF-8 cannot be written as a JSON string.
struct InvalidUtf8 : std::runtime_error {
    InvalidUtf8() : std::runtime_error("invalid UTF-8 in a JSON string") {}
};

/// Appends JSON to a string as values, keys and brackets come. The caller
/// gives the keys of an object in the order it wants them, and commas and
/// colons are placed here. Strings are escaped as nlohmann does without
/// `ensure_ascii`; "/" stays as it is.
class JsonWriter {
public:
    explicit JsonWriter(std::string& out) : out_(out) {}

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }
    void key(std::string_view k);

    /// Throws InvalidUtf8 (having written part of the string).
    void string(std::string_view s);
    void boolean(bool b);
    void integer(std::int64_t i);
    /// Shortest text that reads back as the same double; "null" for NaN and infinities.
    void number(double d);

private:
    void separate() {
        if (more_) out_ += ',';
    }
    void open(char bracket) {
        separate();
        out_ += bracket;
        more_ = false;
    }
    void close(char bracket) {
        out_ += bracket;
        more_ = true;
    }
    void quoted(std::string_view s);

    std::string& out_;
    bool more_ = false;  // a value came before at this level, so the next needs a comma
};

}  // namespace velmar
