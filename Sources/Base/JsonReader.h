#pragma once

#include <functional>
#include <istream>
#include <memory>
#include <string>
#include <string_view>

#include "Base/JsonValue.h"

namespace stintbook {

/// Reads one document, from a stream or a text that outlives the reader. Memory holds one value at a time: lists and
/// objects that are visited may be of any length. A value of more than 64 MB, or nested more than 16 deep, is refused.
class JsonReader {
public:
    explicit JsonReader(std::istream& stream);
    explicit JsonReader(std::string_view text);
    ~JsonReader();
    /// Reads another document, in the memory that it has.
    void startOver(std::string_view text);
    JsonReader(const JsonReader&) = delete;
    JsonReader& operator=(const JsonReader&) = delete;

    /// Which of these is called says what has to come; the visitor has to read the member's value.
    JsonRead<void> object(const std::function<JsonRead<void>(const std::string& key)>& visit);
    JsonRead<void> array(const std::function<JsonRead<void>(const JsonValue& element)>& visit);
    JsonRead<JsonValue> value();
    /// Passes over a value of any length.
    JsonRead<void> skip();
    /// Behind the document comes nothing.
    JsonRead<void> end();

    /// Of what is read next: its line, from 1, and how many bytes come before it.
    std::size_t line() const;
    std::size_t position() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace stintbook
